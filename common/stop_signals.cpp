#include "common/stop_signals.h"

#include <array>
#include <csignal>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace quorlin {

namespace {

// Every signal that ends a program unless it is handled, but for those of a crash.
constexpr std::array stopSignals = {SIGINT,  SIGTERM, SIGHUP,    SIGQUIT, SIGUSR1,
                                    SIGUSR2, SIGALRM, SIGVTALRM, SIGPROF, SIGXCPU};

// The handler may only touch what is safe between any two instructions: a pipe's end.
volatile std::sig_atomic_t writeEnd = -1;
volatile std::sig_atomic_t asked = 0;

void forwardSignal(int signal)
{
    asked = 1;
    const auto number = static_cast<unsigned char>(signal);
    [[maybe_unused]] const ssize_t written = write(writeEnd, &number, 1);
}

void handle(int signal, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(signal, &action, nullptr);
}

/// Whether @p handler is what the signal does. What the caller had ignored, as nohup does, or a
/// profiler handles, stays as it is.
bool isHandledBy(int signal, void (*handler)(int))
{
    struct sigaction action = {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == handler;
}

} // namespace

StopSignals::StopSignals(std::function<void(int signal)> whenAsked) : notify(std::move(whenAsked))
{
    asked = 0;
    std::array<int, 2> ends = {};
    if (pipe(ends.data()) != 0) {
        return;
    }
    for (const int end : ends) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    readEnd = ends[0];
    writeEnd = ends[1];
    notifier = std::make_unique<QSocketNotifier>(readEnd, QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(),
                     [this] { readSignal(); });
    for (const int signal : stopSignals) {
        if (isHandledBy(signal, SIG_DFL)) {
            handle(signal, forwardSignal);
        }
    }
}

StopSignals::~StopSignals()
{
    for (const int signal : stopSignals) {
        if (isHandledBy(signal, forwardSignal)) {
            handle(signal, SIG_DFL);
        }
    }
    if (readEnd >= 0) {
        close(readEnd);
        close(writeEnd);
        writeEnd = -1;
    }
}

bool StopSignals::isAsked()
{
    return asked != 0;
}

void StopSignals::readSignal()
{
    unsigned char number = 0;
    if (read(readEnd, &number, 1) == 1) {
        notify(number);
    }
}

} // namespace quorlin
