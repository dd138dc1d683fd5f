#pragma once

#include "tools/pagexport/picture/rgb_picture.h"

#include <optional>
#include <string>

namespace tools {

/// A picture as indices into a palette.
struct PaletteRows
{
    std::string palette; ///< red, green and blue of each colour; the first one is white
    std::string rows;    ///< a zero byte and the indices, row by row
};

/// @p picture by palette, or nothing when it has more than 256 colours.
/// @throws std::bad_alloc
std::optional<PaletteRows> paletteRows(const RgbPicture &picture);

} // namespace tools
