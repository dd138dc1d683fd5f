#include "tools/pagexport/picture/palette.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace tools {

namespace {

constexpr std::uint32_t white = 0xffffff;
constexpr int mostColors = 256;

/// Gives each colour a number, in the order in which they come.
class ColorTable
{
public:
    ColorTable() { m_places.fill({empty, 0}); }

    /// The number of @p color, or -1 when there is none left for it.
    int numberOf(std::uint32_t color)
    {
        for (std::size_t i = color * 0x9e3779b1U >> 22;; ++i) {
            Place &place = m_places[i % m_places.size()];
            if (place.color == color) {
                return place.number;
            }
            if (place.color == empty) {
                if (m_count == mostColors) {
                    return -1;
                }
                place = {color, m_count};
                return m_count++;
            }
        }
    }
    std::string palette() const
    {
        std::string bytes(3 * static_cast<std::size_t>(m_count), '\0');
        for (const Place &place : m_places) {
            if (place.color != empty) {
                char *const to = bytes.data() + 3 * static_cast<std::size_t>(place.number);
                to[0] = static_cast<char>(place.color >> 16);
                to[1] = static_cast<char>(place.color >> 8);
                to[2] = static_cast<char>(place.color);
            }
        }
        return bytes;
    }

private:
    static constexpr std::uint32_t empty = 0xffffffff;
    struct Place
    {
        std::uint32_t color;
        int number;
    };

    std::array<Place, 1024> m_places;
    int m_count = 0;
};

// Number of bytes at the start that are all 0xff.
std::size_t whiteBytes(const unsigned char *bytes, std::size_t size)
{
    std::size_t i = 0;
    for (; i + sizeof(std::uint64_t) <= size; i += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes + i, sizeof word);
        if (word != ~std::uint64_t{0}) {
            return i;
        }
    }
    return i;
}

// Writes the numbers of a row's colours over zeros; false when the colours are too many.
bool indexRow(ColorTable &colors, const unsigned char *from, std::size_t width, char *to)
{
    std::uint32_t last = white;
    int number = 0;
    std::size_t x = 0;
    while (x < width) {
        const unsigned char *const pixel = from + 3 * x;
        const std::uint32_t color = static_cast<std::uint32_t>(pixel[0]) << 16 |
                                    static_cast<std::uint32_t>(pixel[1]) << 8 | pixel[2];
        if (color == white) {
            x += std::max<std::size_t>(1, whiteBytes(pixel, 3 * (width - x)) / 3);
            continue;
        }
        if (color != last) {
            number = colors.numberOf(color);
            if (number < 0) {
                return false;
            }
            last = color;
        }
        to[x++] = static_cast<char>(number);
    }
    return true;
}

} // namespace

std::optional<PaletteRows> paletteRows(const RgbPicture &picture)
{
    ColorTable colors;
    colors.numberOf(white);
    PaletteRows result;
    const auto width = static_cast<std::size_t>(picture.width);
    result.rows.assign((width + 1) * static_cast<std::size_t>(picture.height), '\0');
    for (std::size_t y = 0; y < static_cast<std::size_t>(picture.height); ++y) {
        if (!indexRow(colors, picture.samples + 3 * width * y, width,
                      result.rows.data() + (width + 1) * y + 1)) {
            return std::nullopt;
        }
    }
    result.palette = colors.palette();
    return result;
}

} // namespace tools
