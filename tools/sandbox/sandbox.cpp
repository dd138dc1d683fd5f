#include "tools/sandbox/sandbox.h"

#include "tools/common/report.h"

#include <cstdlib>
#include <string_view>

#if defined(QUORLIN_SANDBOX)
#include "tools/sandbox/descriptors.h"
#include "tools/sandbox/landlock.h"
#include "tools/sandbox/system_call_filter.h"

#include <sys/prctl.h>

#include <cerrno>
#include <cstring>

#if __has_include(<valgrind/valgrind.h>)
#include <valgrind/valgrind.h>
#else
#define RUNNING_ON_VALGRIND 0
#endif
#endif

namespace tools {

namespace {

std::string_view switchedTo()
{
    const char *value = std::getenv("QUORLIN_SANDBOX");
    return value != nullptr ? value : "";
}

#if defined(QUORLIN_SANDBOX)

/// Why the sandbox must be left out; empty when it need not.
std::string_view obstacle()
{
    if (switchedTo() == "off") {
        return "switched off";
    }
    return RUNNING_ON_VALGRIND != 0 ? "valgrind is running" : "";
}

std::string giveUpNewPrivileges()
{
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 ? "" : std::strerror(errno);
}

#endif

} // namespace

#if defined(QUORLIN_SANDBOX)

SandboxState enterSandbox(const SandboxNeeds &needs, SandboxParts parts)
{
    SandboxState state;
    if (const std::string_view reason = obstacle(); !reason.empty()) {
        state.privileges = state.filter = state.landlock = reason;
        return state;
    }
    closeAllBut(needs.descriptors);
    state.privileges = giveUpNewPrivileges();
    state.landlock = parts == SandboxParts::filterOnly
                         ? "left out"
                         : confineToFolders(needs.outputFolders, state.landlockVersion);
    if (parts == SandboxParts::landlockOnly) {
        state.filter = "left out";
    } else if (!needs.namesAreSealed) {
        state.filter = "the place of the sealed names is taken";
    } else {
        state.filter = filterSystemCalls(!needs.outputFolders.empty(), needs.usesThreads);
    }
    return state;
}

const char *sandboxSummary()
{
    return "sandbox: system call filter, Landlock where the kernel has it";
}

#else

SandboxState enterSandbox(const SandboxNeeds & /*needs*/, SandboxParts /*parts*/)
{
    const char *reason = "not part of this build";
    return {reason, reason, reason, 0};
}

const char *sandboxSummary()
{
    return "sandbox: none in this build";
}

#endif

std::string describeSandbox(const SandboxState &state)
{
    const auto word = [](const std::string &reason, const std::string &granted) {
        return reason.empty() ? granted : "no (" + reason + ")";
    };
    return "sandbox: system call filter " + word(state.filter, "on") + ", Landlock " +
           word(state.landlock, "version " + std::to_string(state.landlockVersion)) +
           ", privileges given up " + word(state.privileges, "yes");
}

void enterSandboxOf(const char *tool, const SandboxNeeds &needs)
{
    const SandboxState state = enterSandbox(needs);
    if (switchedTo() == "report") {
        reportLine(tool, "", describeSandbox(state));
    }
}

} // namespace tools
