// Does, as a tool would, what its first argument says: "keep" memory that a global still points to,
// "lose" it, "free" it, or "overflow" a number.

#include "tools/common/sanitized_run.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace {

char *volatile kept = nullptr;

void keep()
{
    kept = new char[1000];
    kept[0] = 'k';
}

int overflow(int number)
{
    return number + 1;
}

} // namespace

int main(int argc, char **argv)
{
    tools::noteMemoryAtStart();
    const char *const deed = argc > 1 ? argv[1] : "";
    if (std::strcmp(deed, "keep") == 0) {
        keep();
    } else if (std::strcmp(deed, "lose") == 0) {
        keep();
        kept = nullptr;
    } else if (std::strcmp(deed, "free") == 0) {
        keep();
        delete[] kept;
    } else if (std::strcmp(deed, "overflow") == 0) {
        volatile int largest = std::numeric_limits<int>::max();
        std::printf("%d\n", overflow(largest));
    } else {
        std::fputs("unknown deed\n", stderr);
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
