#include "tools/pagexport/picture/row_deflate.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace tools {

namespace {

constexpr std::size_t shortestMatch = 3;
constexpr std::size_t longestMatch = 258;
constexpr std::size_t farthestMatch = 32768;
constexpr int endOfBlock = 256;

/// Bits as the stream takes them, the first one lowest.
struct Code
{
    std::uint32_t bits = 0;
    int length = 0;
};

constexpr Code reversed(std::uint32_t bits, int length)
{
    Code code{0, length};
    for (int i = 0; i < length; ++i) {
        code.bits |= ((bits >> i) & 1U) << (length - 1 - i);
    }
    return code;
}

constexpr Code fixedCode(int symbol)
{
    const auto value = static_cast<std::uint32_t>(symbol);
    if (symbol < 144) {
        return reversed(0x30 + value, 8);
    }
    if (symbol < 256) {
        return reversed(0x190 + value - 144, 9);
    }
    return symbol < 280 ? reversed(value - 256, 7) : reversed(0xc0 + value - 280, 8);
}

// Lengths and distances fall into classes of 2^n values behind a code; n grows by one every four
// (lengths) or two (distances) classes.
constexpr Code withExtra(Code code, std::uint32_t extra, int extraBits)
{
    return {code.bits | extra << code.length, code.length + extraBits};
}

constexpr Code lengthCode(std::size_t length)
{
    if (length == longestMatch) {
        return fixedCode(285);
    }
    const auto value = static_cast<std::uint32_t>(length - shortestMatch);
    if (value < 8) {
        return fixedCode(static_cast<int>(257 + value));
    }
    const int extraBits = std::bit_width(value) - 3;
    const auto symbol =
        static_cast<int>(257 + 4 * static_cast<std::uint32_t>(extraBits) + (value >> extraBits));
    return withExtra(fixedCode(symbol), value & ((1U << extraBits) - 1), extraBits);
}

constexpr Code distanceCode(std::size_t distance)
{
    const auto value = static_cast<std::uint32_t>(distance - 1);
    if (value < 4) {
        return reversed(value, 5);
    }
    const int extraBits = std::bit_width(value) - 2;
    const auto symbol = 2 * static_cast<std::uint32_t>(extraBits) + (value >> extraBits);
    return withExtra(reversed(symbol, 5), value & ((1U << extraBits) - 1), extraBits);
}

constexpr auto literalCodes = [] {
    std::array<Code, 257> codes{};
    for (int symbol = 0; symbol < 257; ++symbol) {
        codes[static_cast<std::size_t>(symbol)] = fixedCode(symbol);
    }
    return codes;
}();

constexpr auto lengthCodes = [] {
    std::array<Code, longestMatch + 1> codes{};
    for (std::size_t length = shortestMatch; length <= longestMatch; ++length) {
        codes[length] = lengthCode(length);
    }
    return codes;
}();

/// Collects codes into bytes.
class BitWriter
{
public:
    explicit BitWriter(std::string &bytes) : m_bytes(bytes) {}

    void put(Code code)
    {
        m_pending |= static_cast<std::uint64_t>(code.bits) << m_count;
        m_count += code.length;
        while (m_count >= 8) {
            m_buffer[m_used++] = static_cast<char>(m_pending);
            m_pending >>= 8;
            m_count -= 8;
        }
        if (m_used > m_buffer.size() - 16) {
            flush();
        }
    }
    void finish()
    {
        put({0, (8 - m_count) % 8});
        flush();
    }

private:
    void flush()
    {
        m_bytes.append(m_buffer.data(), m_used);
        m_used = 0;
    }

    std::string &m_bytes;
    std::array<char, 4096> m_buffer;
    std::size_t m_used = 0;
    std::uint64_t m_pending = 0;
    int m_count = 0;
};

std::size_t equalBytes(const char *first, const char *second, std::size_t most)
{
    std::size_t length = 0;
    while (length + sizeof(std::uint64_t) <= most) {
        std::uint64_t a = 0;
        std::uint64_t b = 0;
        std::memcpy(&a, first + length, sizeof a);
        std::memcpy(&b, second + length, sizeof b);
        if (a != b) {
            break;
        }
        length += sizeof a;
    }
    while (length < most && first[length] == second[length]) {
        ++length;
    }
    return length;
}

void writeRows(BitWriter &writer, std::string_view rows, std::size_t rowLength,
               std::size_t pixelLength)
{
    const Code runDistance = distanceCode(pixelLength);
    const bool reachesAbove = rowLength <= farthestMatch;
    const Code aboveDistance = reachesAbove ? distanceCode(rowLength) : Code{};
    const char *const bytes = rows.data();
    for (std::size_t i = 0; i < rows.size();) {
        const std::size_t most = std::min(longestMatch, rows.size() - i);
        const std::size_t run =
            i >= pixelLength ? equalBytes(bytes + i, bytes + i - pixelLength, most) : 0;
        const std::size_t above = run < most && reachesAbove && i >= rowLength
                                      ? equalBytes(bytes + i, bytes + i - rowLength, most)
                                      : 0;
        const std::size_t length = std::max(run, above);
        if (length < shortestMatch) {
            writer.put(literalCodes[static_cast<unsigned char>(bytes[i])]);
            ++i;
        } else {
            writer.put(lengthCodes[length]);
            writer.put(run >= above ? runDistance : aboveDistance);
            i += length;
        }
    }
}

/// What a row adds to the checksum.
struct RowSums
{
    std::uint64_t plain = 0;    ///< sum of the bytes
    std::uint64_t weighted = 0; ///< each byte counted as often as bytes follow it, itself included
};

RowSums sumsOf(std::string_view row)
{
    constexpr std::size_t blockLength = 4096; // so that 32 bits hold the sums, for vector code
    RowSums sums;
    for (std::size_t begin = 0; begin < row.size(); begin += blockLength) {
        const auto length = static_cast<std::uint32_t>(std::min(blockLength, row.size() - begin));
        const auto *const bytes = reinterpret_cast<const unsigned char *>(row.data() + begin);
        std::uint32_t plain = 0;
        std::uint32_t ranked = 0;
        for (std::uint32_t i = 0; i < length; ++i) {
            plain += bytes[i];
            ranked += i * bytes[i];
        }
        sums.plain += plain;
        sums.weighted += std::uint64_t{row.size() - begin} * plain - ranked;
    }
    return sums;
}

// The Adler-32 checksum. Rows like the one above, which most are, cost a comparison.
std::uint32_t adlerSum(std::string_view rows, std::size_t rowLength)
{
    constexpr std::uint64_t modulus = 65521;
    std::uint64_t low = 1;
    std::uint64_t high = 0;
    RowSums sums;
    for (std::size_t i = 0; i < rows.size(); i += rowLength) {
        const std::string_view row = rows.substr(i, rowLength);
        if (i == 0 || row != rows.substr(i - rowLength, row.size())) {
            sums = sumsOf(row);
        }
        high = (high + row.size() % modulus * low + sums.weighted) % modulus;
        low = (low + sums.plain) % modulus;
    }
    return static_cast<std::uint32_t>(high << 16 | low);
}

} // namespace

std::string deflateRows(std::string_view rows, std::size_t rowLength, std::size_t pixelLength)
{
    std::string stream("\x78\x01"); // deflate with a window of 32 KiB, fastest level
    BitWriter writer(stream);
    writer.put({0b011, 3}); // last block, fixed codes
    writeRows(writer, rows, rowLength, pixelLength);
    writer.put(literalCodes[endOfBlock]);
    writer.finish();
    const std::uint32_t sum = adlerSum(rows, rowLength);
    for (int shift = 24; shift >= 0; shift -= 8) {
        stream += static_cast<char>(sum >> shift);
    }
    return stream;
}

} // namespace tools
