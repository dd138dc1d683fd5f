#pragma once

#include <string>
#include <string_view>

namespace tools {

/// The content of a page that stands for one that could not be read, and says so in print: which
/// page of which file. It draws with the font "F", Helvetica in WinAnsiEncoding.
/// @param width, height of the page in points, its lower left corner at (0, 0)
/// @param page counted from 1
/// @param file name in UTF-8; characters that the font does not have are shown as "?"
std::string standInContent(double width, double height, int page, std::string_view file);

} // namespace tools
