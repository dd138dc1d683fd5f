#pragma once

namespace tools {

/// A picture of 8-bit red, green and blue samples without gaps between the rows.
struct RgbPicture
{
    const unsigned char *samples = nullptr;
    int width = 0;
    int height = 0;
};

} // namespace tools
