#include "tools/pagexport/picture/png_writer.h"

#include "tools/pagexport/picture/palette.h"
#include "tools/pagexport/picture/row_deflate.h"

#include <zlib.h>

#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

namespace tools {

namespace {

enum class ColorType : unsigned char { rgb = 2, palette = 3 };

void appendNumber(std::string &bytes, std::uint32_t number)
{
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes += static_cast<char>(number >> shift);
    }
}

void appendChunk(std::string &png, std::string_view type, std::string_view data)
{
    appendNumber(png, static_cast<std::uint32_t>(data.size()));
    const std::size_t begin = png.size();
    png += type;
    png += data;
    const uLong sum =
        crc32_z(0, reinterpret_cast<const Bytef *>(png.data() + begin), png.size() - begin);
    appendNumber(png, static_cast<std::uint32_t>(sum));
}

std::string header(const RgbPicture &picture, ColorType type)
{
    std::string data;
    appendNumber(data, static_cast<std::uint32_t>(picture.width));
    appendNumber(data, static_cast<std::uint32_t>(picture.height));
    data += '\x08';
    data += static_cast<char>(type);
    data.append(3, '\0');
    return data;
}

// Rows as PNG wants them: a filter byte (none) and the samples.
std::string unfilteredRows(const RgbPicture &picture)
{
    const std::size_t samples = 3 * static_cast<std::size_t>(picture.width);
    std::string rows((samples + 1) * static_cast<std::size_t>(picture.height), '\0');
    for (std::size_t y = 0; y < static_cast<std::size_t>(picture.height); ++y) {
        std::memcpy(rows.data() + (samples + 1) * y + 1, picture.samples + samples * y, samples);
    }
    return rows;
}

} // namespace

std::string encodePng(const RgbPicture &picture)
{
    const auto width = static_cast<std::size_t>(picture.width);
    std::string png("\x89PNG\r\n\x1a\n");
    if (const std::optional<PaletteRows> rows = paletteRows(picture)) {
        appendChunk(png, "IHDR", header(picture, ColorType::palette));
        appendChunk(png, "PLTE", rows->palette);
        appendChunk(png, "IDAT", deflateRows(rows->rows, width + 1, 1));
    } else {
        appendChunk(png, "IHDR", header(picture, ColorType::rgb));
        appendChunk(png, "IDAT", deflateRows(unfilteredRows(picture), 3 * width + 1, 3));
    }
    appendChunk(png, "IEND", {});
    return png;
}

} // namespace tools
