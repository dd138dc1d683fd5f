#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tools {

/// Compresses the rows of a picture into a zlib stream, several times as fast as zlib itself: a
/// page is mostly paper, so the only repetitions looked for are runs of one pixel and the row
/// above, and the codes are the fixed ones.
/// @param rows all rows, one behind the other
/// @param rowLength bytes of one row, at least 1
/// @param pixelLength bytes of one pixel
/// @throws std::bad_alloc
std::string deflateRows(std::string_view rows, std::size_t rowLength, std::size_t pixelLength);

} // namespace tools
