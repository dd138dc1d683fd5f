#include "tools/sandbox/system_call_filter.h"

#include "tools/sandbox/sealed_region.h"

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>

namespace tools {

namespace {

#include "system_call_filter.inc"

template <std::size_t size> std::string load(std::array<sock_filter, size> program)
{
    for (sock_filter &instruction : program) {
        if (instruction.k == ownProcessPlaceholder) {
            instruction.k = static_cast<std::uint32_t>(getpid());
        }
    }
    const sock_fprog code{static_cast<unsigned short>(program.size()), program.data()};
    if (syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, 0, &code) != 0) {
        return std::strerror(errno);
    }
    return {};
}

} // namespace

std::string filterSystemCalls(bool hasNewFiles, bool hasThreads)
{
    if (hasNewFiles) {
        return hasThreads ? load(writingInThreads) : load(writing);
    }
    return hasThreads ? load(readingInThreads) : load(reading);
}

} // namespace tools
