#include "tools/pagexport/png_writer.h"

#include <zlib.h>

#include <array>
#include <cstdint>
#include <memory>
#include <new>
#include <string_view>

namespace tools {

namespace {

enum class ColorType : unsigned char { grey = 0, rgb = 2 };

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

bool isGrey(const unsigned char *row, std::size_t pixels)
{
    unsigned difference = 0;
    for (std::size_t i = 0; i < pixels; ++i) {
        difference |= static_cast<unsigned>(row[3 * i] ^ row[3 * i + 1]);
        difference |= static_cast<unsigned>(row[3 * i] ^ row[3 * i + 2]);
    }
    return difference == 0;
}

ColorType colorTypeOf(const RgbPicture &picture)
{
    const auto width = static_cast<std::size_t>(picture.width);
    for (int y = 0; y < picture.height; ++y) {
        if (!isGrey(picture.samples + 3 * width * static_cast<std::size_t>(y), width)) {
            return ColorType::rgb;
        }
    }
    return ColorType::grey;
}

// Rows as PNG wants them: a filter byte (none) and the samples.
std::string filteredRows(const RgbPicture &picture, ColorType type)
{
    const auto width = static_cast<std::size_t>(picture.width);
    const std::size_t samples = type == ColorType::grey ? width : 3 * width;
    std::string rows((samples + 1) * static_cast<std::size_t>(picture.height), '\0');
    for (int y = 0; y < picture.height; ++y) {
        const unsigned char *from = picture.samples + 3 * width * static_cast<std::size_t>(y);
        char *to = rows.data() + (samples + 1) * static_cast<std::size_t>(y) + 1;
        if (type == ColorType::rgb) {
            std::copy(from, from + samples, reinterpret_cast<unsigned char *>(to));
        } else {
            for (std::size_t x = 0; x < width; ++x) {
                to[x] = static_cast<char>(from[3 * x]);
            }
        }
    }
    return rows;
}

std::string compressed(std::string_view rows)
{
    std::string data(compressBound(static_cast<uLong>(rows.size())), '\0');
    auto size = static_cast<uLongf>(data.size());
    if (compress2(reinterpret_cast<Bytef *>(data.data()), &size,
                  reinterpret_cast<const Bytef *>(rows.data()), static_cast<uLong>(rows.size()),
                  Z_BEST_SPEED) != Z_OK) {
        throw std::bad_alloc();
    }
    data.resize(size);
    return data;
}

} // namespace

std::string encodePng(const RgbPicture &picture)
{
    const ColorType type = colorTypeOf(picture);
    std::string header;
    appendNumber(header, static_cast<std::uint32_t>(picture.width));
    appendNumber(header, static_cast<std::uint32_t>(picture.height));
    header += '\x08';
    header += static_cast<char>(type);
    header.append(3, '\0');

    std::string png("\x89PNG\r\n\x1a\n");
    appendChunk(png, "IHDR", header);
    appendChunk(png, "IDAT", compressed(filteredRows(picture, type)));
    appendChunk(png, "IEND", {});
    return png;
}

} // namespace tools
