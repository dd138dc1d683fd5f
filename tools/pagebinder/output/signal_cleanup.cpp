#include "tools/pagebinder/output/signal_cleanup.h"

#include "tools/common/ending_signals.h"
#include "tools/common/printable.h"
#include "tools/common/sanitizers.h"
#include "tools/common/tool_error.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace tools {

namespace {

// A signal handler may touch nothing but plain memory and a few system calls.
std::atomic<const char *> hiddenFile = nullptr;
std::atomic<int> hiddenFileFolder = -1;
constexpr std::uintptr_t belowStackEnd = 65'536;
constexpr std::uintptr_t largestFrame = 1'048'576;
std::array<char, 512> overflowLine{};
std::array<char, 512> timeLine{};

void removeHiddenFile()
{
    if (const char *name = hiddenFile.exchange(nullptr)) {
        unlinkat(hiddenFileFolder, name, 0);
    }
}

void say(const char *line)
{
    if (write(STDERR_FILENO, line, std::strlen(line)) < 0) {
        return;
    }
}

void removeAndEnd(int signal)
{
    removeHiddenFile();
    if (signal == SIGXCPU) {
        say(timeLine.data());
        _exit(exitInputError); // the file's fault, not a crash
    }
    endBySignal(signal);
}

/// Where the interrupted code's stack ended; 0 on machines where that is not known.
std::uintptr_t stackPointer(const void *context)
{
    const auto *state = static_cast<const ucontext_t *>(context);
#if defined(__linux__) && defined(__x86_64__)
    return static_cast<std::uintptr_t>(state->uc_mcontext.gregs[REG_RSP]);
#elif defined(__linux__) && defined(__aarch64__)
    return static_cast<std::uintptr_t>(state->uc_mcontext.sp);
#elif defined(__APPLE__) && defined(__x86_64__)
    return static_cast<std::uintptr_t>(state->uc_mcontext->__ss.__rsp);
#elif defined(__APPLE__) && defined(__aarch64__)
    return static_cast<std::uintptr_t>(state->uc_mcontext->__ss.__sp);
#else
    static_cast<void>(state);
    return 0;
#endif
}

// A stack that has grown too far faults where it is being written: next to its own end. All the
// memory above that end is there, so no stray pointer faults at such a place.
bool isOverflow(const siginfo_t &information, const void *context)
{
    const std::uintptr_t end = stackPointer(context);
    const auto address = reinterpret_cast<std::uintptr_t>(information.si_addr);
    return information.si_code > 0 && end != 0 && address + belowStackEnd >= end &&
           address < end + largestFrame;
}

[[maybe_unused]] void endByFault(int signal, siginfo_t *information, void *context)
{
    removeHiddenFile();
    if (isOverflow(*information, context)) {
        say(overflowLine.data());
        _exit(exitInputError);
    }
    endBySignal(signal); // a fault of our own is seen as the crash it is
}

void fillLine(std::array<char, 512> &line, const std::string &input, const char *reason)
{
    const std::string text = "pagebinder: " + printable(input.substr(0, 300)) + reason;
    std::memcpy(line.data(), text.c_str(), text.size() + 1);
}

[[maybe_unused]] void handleFaults()
{
    static std::array<char, 65536> handlerStack;
    stack_t stack{};
    stack.ss_sp = handlerStack.data();
    stack.ss_size = handlerStack.size();
    if (sigaltstack(&stack, nullptr) != 0) {
        return;
    }
    struct sigaction action
    {
    };
    action.sa_sigaction = endByFault;
    action.sa_flags = SA_ONSTACK | SA_SIGINFO;
    sigfillset(&action.sa_mask);
    for (const int signal : {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT}) {
        sigaction(signal, &action, nullptr);
    }
}

} // namespace

void removeHiddenFileOnSignals(const std::string &input)
{
    fillLine(timeLine, input, ": takes too long\n");
    fillLine(overflowLine, input, ": its objects are nested too deeply\n");
    handleEndingSignals(removeAndEnd);
    std::signal(SIGXFSZ, SIG_IGN);
#if !TOOLS_SANITIZED
    handleFaults();
#endif
}

void watchHiddenFile(int folder, const char *name)
{
    hiddenFileFolder = folder;
    hiddenFile = name;
}

void forgetHiddenFile()
{
    hiddenFile = nullptr;
}

} // namespace tools
