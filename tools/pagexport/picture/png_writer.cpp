#include "tools/pagexport/picture/png_writer.h"

#include "tools/pagexport/picture/palette.h"

#include <zlib.h>

#include <array>
#include <cstdint>
#include <new>
#include <optional>
#include <string_view>
#include <utility>

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

/// Packs rows, each behind its filter byte (none). Pages are runs of one colour: zlib packs those
/// and looks for nothing else, which would take longer than drawing the page.
class RowPacker
{
public:
    RowPacker()
    {
        constexpr int largestWindow = 15;
        constexpr int usualMemory = 8;
        if (deflateInit2(&m_stream, Z_BEST_SPEED, Z_DEFLATED, largestWindow, usualMemory, Z_RLE) !=
            Z_OK) {
            throw std::bad_alloc();
        }
    }
    ~RowPacker() { deflateEnd(&m_stream); }
    RowPacker(const RowPacker &) = delete;
    RowPacker &operator=(const RowPacker &) = delete;

    void add(std::string_view bytes) { pack(bytes, Z_NO_FLUSH); }

    /// Ends the data. @returns all of it
    std::string finish()
    {
        pack({}, Z_FINISH);
        return std::move(m_packed);
    }

private:
    void pack(std::string_view bytes, int flush)
    {
        m_stream.next_in =
            const_cast<Bytef *>(reinterpret_cast<const Bytef *>(bytes.data())); // only read
        m_stream.avail_in = static_cast<uInt>(bytes.size());
        do {
            m_stream.next_out = m_piece.data();
            m_stream.avail_out = static_cast<uInt>(m_piece.size());
            deflate(&m_stream, flush);
            m_packed.append(reinterpret_cast<const char *>(m_piece.data()),
                            m_piece.size() - m_stream.avail_out);
        } while (m_stream.avail_out == 0);
    }

    z_stream m_stream{};
    std::array<Bytef, 32768> m_piece;
    std::string m_packed;
};

std::string packedPalette(const PaletteRows &rows)
{
    RowPacker packer;
    packer.add(rows.rows);
    return packer.finish();
}

std::string packedColors(const RgbPicture &picture)
{
    const std::size_t length = 3 * static_cast<std::size_t>(picture.width);
    const auto *samples = reinterpret_cast<const char *>(picture.samples);
    RowPacker packer;
    for (int y = 0; y < picture.height; ++y) {
        packer.add(std::string_view("\0", 1));
        packer.add({samples + length * static_cast<std::size_t>(y), length});
    }
    return packer.finish();
}

} // namespace

std::string encodePng(const RgbPicture &picture)
{
    std::string png("\x89PNG\r\n\x1a\n");
    if (const std::optional<PaletteRows> rows = paletteRows(picture)) {
        appendChunk(png, "IHDR", header(picture, ColorType::palette));
        appendChunk(png, "PLTE", rows->palette);
        appendChunk(png, "IDAT", packedPalette(*rows));
    } else {
        appendChunk(png, "IHDR", header(picture, ColorType::rgb));
        appendChunk(png, "IDAT", packedColors(picture));
    }
    appendChunk(png, "IEND", {});
    return png;
}

} // namespace tools
