#include "tools/common/ending_signals.h"

#include "tools/common/sanitizers.h"

#include <array>
#include <csignal>

namespace tools {

namespace {

constexpr std::array fromOutside = {
    SIGTERM, SIGINT,  SIGHUP,    SIGQUIT, SIGUSR1, SIGUSR2,
    SIGALRM, SIGXCPU, SIGVTALRM, SIGPROF, SIGTRAP, SIGSYS,
#ifdef __linux__
    SIGIO,   SIGPWR,  SIGSTKFLT,
#endif
};
[[maybe_unused]] constexpr std::array faults = {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT};

void (*beforeEnding)() = nullptr;

void cleanUpAndEnd(int signal)
{
    beforeEnding();
    endBySignal(signal);
}

/// @returns whether the signal was ignored until now
bool handle(int signal, void (*handler)(int), int flags)
{
    struct sigaction action = {};
    struct sigaction former = {};
    action.sa_handler = handler;
    action.sa_flags = flags;
    sigfillset(&action.sa_mask); // one signal is enough to end by
    return sigaction(signal, &action, &former) == 0 && former.sa_handler == SIG_IGN;
}

} // namespace

void handleEndingSignals(void (*handler)(int))
{
    for (const int signal : fromOutside) {
        // Whoever starts the program with a signal ignored, as nohup does, wants it to stay so.
        if (handle(signal, handler, 0)) {
            std::signal(signal, SIG_IGN);
        }
    }
}

void callBeforeEnding(void (*cleanUp)())
{
    beforeEnding = cleanUp;
    handleEndingSignals(cleanUpAndEnd);
#if !TOOLS_SANITIZED
    for (const int signal : faults) {
        handle(signal, cleanUpAndEnd, SA_ONSTACK);
    }
#endif
}

void endBySignal(int signal)
{
    std::signal(signal, SIG_DFL);
    sigset_t own;
    sigemptyset(&own);
    sigaddset(&own, signal);
    std::raise(signal);
    pthread_sigmask(SIG_UNBLOCK, &own, nullptr);
}

void useSignalStack()
{
#if !TOOLS_SANITIZED
    thread_local std::array<char, 16384> room;
    stack_t stack{};
    stack.ss_sp = room.data();
    stack.ss_size = room.size();
    sigaltstack(&stack, nullptr);
#endif
}

} // namespace tools
