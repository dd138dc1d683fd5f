#include "tools/common/resource_limits.h"
#include "tools/pagexport/output/page_export.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

namespace {

constexpr std::uint64_t gibibyte = 1ULL << 30;

// A file opened under the number of a closed standard stream would receive our messages.
void openStandardStreams()
{
    for (int descriptor = 0; descriptor <= 2; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) < 0 && open("/dev/null", O_RDWR) < 0) {
            return;
        }
    }
}

} // namespace

int main(int argc, char **argv)
{
    openStandardStreams();
    // A full disk, a lowered limit and a closed pipe are reported as errors of the write.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    tools::applyResourceLimits(
        {.addressSpaceBytes = 4 * gibibyte, .cpuSeconds = 3600, .fileBytes = gibibyte});
    return tools::runPageExport(argc, argv);
}
