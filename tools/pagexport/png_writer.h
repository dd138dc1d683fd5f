#pragma once

#include <cstddef>
#include <string>

namespace tools {

/// A picture of 8-bit red, green and blue samples without gaps between the rows.
struct RgbPicture
{
    const unsigned char *samples = nullptr;
    int width = 0;
    int height = 0;
};

/// @p picture as a PNG file, made for speed and not for the last byte: grey samples only where no
/// pixel has a colour, a palette where there are few of them.
/// @throws std::bad_alloc
std::string encodePng(const RgbPicture &picture);

} // namespace tools
