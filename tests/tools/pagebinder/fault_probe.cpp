// Comes to harm on purpose, with pagebinder's signal handlers in place: fault_probe KIND HIDDENFILE

#include "tools/pagebinder/output/signal_cleanup.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

// Ends only where the stack does; the compiler must not see that.
int dive(volatile char *above, int depth) // NOLINT(misc-no-recursion)
{
    std::array<volatile char, 3000> frame{};
    frame[0] = above[0];
    return depth == 0 ? frame[0] : dive(frame.data(), depth - 1) + frame[0];
}

// One frame as large as the largest that is taken for an overflow, touched at its far end first.
int diveInLargeSteps(volatile char *above, int depth) // NOLINT(misc-no-recursion)
{
    std::array<volatile char, 200000> frame;
    frame[0] = above[0];
    frame[frame.size() - 1] = above[0];
    return depth == 0 ? frame[0] : diveInLargeSteps(frame.data(), depth - 1) + frame[0];
}

void touch(volatile char *place)
{
    *place = 1;
}

char *unmapped()
{
    const auto size = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    void *place = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANON, -1, 0);
    munmap(place, size);
    return static_cast<char *>(place);
}

int comeToHarm(const std::string &kind, char *argument)
{
    if (kind == "overflow") {
        return dive(argument, 100000000);
    }
    if (kind == "overflow in large steps") {
        return diveInLargeSteps(argument, 100000000);
    }
    if (kind == "null pointer") {
        touch(nullptr);
    } else if (kind == "stray pointer") {
        touch(unmapped());
    } else if (kind == "read-only memory") {
        touch(const_cast<char *>("text"));
    } else if (kind == "abort") {
        std::abort();
    } else if (kind == "endless") {
        for (volatile bool isEndless = true; isEndless;) {
        }
    }
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3) {
        return 2;
    }
    tools::removeHiddenFileOnSignals("input.pdf");
    tools::watchHiddenFile(AT_FDCWD, argv[2]);
    return comeToHarm(argv[1], argv[0]) & 1;
}
