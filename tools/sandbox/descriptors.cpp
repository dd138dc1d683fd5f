#include "tools/sandbox/descriptors.h"

#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <climits>

namespace tools {

namespace {

constexpr unsigned firstOfOurs = 3;
constexpr rlim_t mostTried = 65'536;

void closeRange(unsigned first, unsigned last)
{
    if (syscall(SYS_close_range, first, last, 0) == 0) {
        return;
    }
    // An older kernel, or a container that does not know the call.
    rlimit limit{};
    const bool isKnown = getrlimit(RLIMIT_NOFILE, &limit) == 0;
    const auto end = static_cast<unsigned>(std::min(isKnown ? limit.rlim_max : 0, mostTried));
    for (unsigned number = first; number <= last && number < end; ++number) {
        close(static_cast<int>(number));
    }
}

} // namespace

void closeAllBut(std::vector<int> kept)
{
    std::sort(kept.begin(), kept.end());
    unsigned next = firstOfOurs;
    for (const int descriptor : kept) {
        const auto number = static_cast<unsigned>(descriptor);
        if (number > next) {
            closeRange(next, number - 1);
        }
        next = std::max(next, number + 1);
    }
    closeRange(next, UINT_MAX);
}

} // namespace tools
