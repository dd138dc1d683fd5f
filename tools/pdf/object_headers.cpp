#include "tools/pdf/object_headers.h"

#include "tools/pdf/pdf_syntax.h"

#include <charconv>
#include <optional>

namespace tools {

namespace {

constexpr std::string_view keyword = "obj";
/// Room for two numbers and the blanks around them.
constexpr std::size_t longestHeader = 64;

/// The integer that ends at @p end, blanks between passed over; @p end becomes its first digit.
std::optional<int> integerBefore(std::string_view bytes, std::size_t &end)
{
    std::size_t last = end;
    while (last > 0 && isSpace(bytes[last - 1])) {
        --last;
    }
    std::size_t first = last;
    while (first > 0 && isDigit(bytes[first - 1])) {
        --first;
    }
    int value = 0;
    const auto result = std::from_chars(bytes.data() + first, bytes.data() + last, value);
    if (first == last || result.ec != std::errc()) {
        return std::nullopt;
    }
    end = first;
    return value;
}

} // namespace

void ObjectHeaderScan::feed(std::string_view bytes)
{
    m_bytes += bytes;
    if (m_bytes.size() < 2 * longestHeader) {
        return;
    }
    // A word at the end may go on in the next bytes.
    scan(m_bytes.size() - keyword.size());
    const std::size_t done = m_bytes.size() - keyword.size() - longestHeader;
    m_bytes.erase(0, done);
    m_offset += static_cast<std::int64_t>(done);
}

const std::unordered_map<int, ObjectHeader> &ObjectHeaderScan::finish()
{
    scan(m_bytes.size());
    return m_found;
}

void ObjectHeaderScan::scan(std::size_t end)
{
    for (std::size_t word = m_bytes.find(keyword); word < end;
         word = m_bytes.find(keyword, word + keyword.size())) {
        const std::size_t after = word + keyword.size();
        if (after == m_bytes.size() || isDelimiter(m_bytes[after])) {
            take(word);
        }
    }
}

void ObjectHeaderScan::take(std::size_t word)
{
    std::size_t begin = word;
    const std::optional<int> generation = integerBefore(m_bytes, begin);
    if (!generation || begin == 0 || !isSpace(m_bytes[begin - 1])) {
        return;
    }
    const std::optional<int> number = integerBefore(m_bytes, begin);
    const bool isWhole = begin > 0 ? isSpace(m_bytes[begin - 1]) : m_offset == 0;
    if (number && isWhole && *number > 0 && *number < m_count) {
        m_found[*number] = {m_offset + static_cast<std::int64_t>(begin), *generation};
    }
}

} // namespace tools
