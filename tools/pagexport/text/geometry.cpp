#include "tools/pagexport/text/geometry.h"

#include <algorithm>
#include <cmath>

namespace tools {

int toUnits(double points) noexcept
{
    constexpr double farthest = 1e7;
    if (std::isnan(points)) {
        return 0;
    }
    const long long hundredths = std::llround(std::clamp(points, -farthest, farthest) * 100.0);
    const long long scaled = 3 * hundredths + 100;
    const long long quotient = scaled / 200;
    return static_cast<int>(scaled % 200 < 0 ? quotient - 1 : quotient);
}

} // namespace tools
