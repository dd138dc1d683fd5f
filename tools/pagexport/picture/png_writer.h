#pragma once

#include "tools/pagexport/picture/rgb_picture.h"

#include <string>

namespace tools {

/// @p picture as a PNG file, made for speed and not for the last byte. Pictures of at most 256
/// colours, which pages of text are, become palette pictures.
/// @throws std::bad_alloc
std::string encodePng(const RgbPicture &picture);

} // namespace tools
