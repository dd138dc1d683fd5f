#pragma once

#include <vector>

namespace tools {

/// Closes every descriptor of this process but the three standard ones and @p kept.
void closeAllBut(std::vector<int> kept);

} // namespace tools
