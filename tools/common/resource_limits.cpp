#include "tools/common/resource_limits.h"

#include "tools/common/sanitizers.h"

#include <sys/resource.h>

namespace tools {

namespace {

template <typename Resource> void lowerLimit(Resource resource, rlim_t value)
{
    rlimit current{};
    if (getrlimit(resource, &current) != 0) {
        return;
    }
    if (current.rlim_cur == RLIM_INFINITY || current.rlim_cur > value) {
        current.rlim_cur = value;
        setrlimit(resource, &current);
    }
}

} // namespace

void applyResourceLimits(const ResourceLimits &limits)
{
    lowerLimit(RLIMIT_CORE, 0);
    if (limits.cpuSeconds != 0) {
        lowerLimit(RLIMIT_CPU, limits.cpuSeconds);
    }
    if (limits.fileBytes != 0) {
        lowerLimit(RLIMIT_FSIZE, limits.fileBytes);
    }
#if !TOOLS_SANITIZED
    if (limits.addressSpaceBytes != 0) {
        lowerLimit(RLIMIT_AS, limits.addressSpaceBytes);
    }
#endif
}

} // namespace tools
