#pragma once

#include <string>

namespace tools {

/// What --version prints: the tool's own version, that of the PDF library it was built with, and
/// whether it can lock itself up, a line each. The library is part of the program where that is
/// linked statically, so its version tells whether a correction of the library is in.
std::string versionText(const std::string &tool);

} // namespace tools
