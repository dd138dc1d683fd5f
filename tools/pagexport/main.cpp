#include "tools/common/resource_limits.h"
#include "tools/common/sanitized_run.h"
#include "tools/common/standard_output.h"
#include "tools/pagexport/pagexport.h"

#include <csignal>

namespace {

constexpr std::uint64_t gibibyte = 1ULL << 30;

} // namespace

int main(int argc, char **argv)
{
    tools::noteMemoryAtStart();
    tools::openStandardStreams();
    // A full disk, a lowered limit and a closed pipe are reported as errors of the write.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    tools::applyResourceLimits(
        {.addressSpaceBytes = 4 * gibibyte, .cpuSeconds = 3600, .fileBytes = gibibyte});
    return tools::runPageExport(argc, argv);
}
