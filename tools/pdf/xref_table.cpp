#include "tools/pdf/xref_table.h"

#include "tools/pdf/node_scan.h"
#include "tools/pdf/pdf_syntax.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string_view>

namespace tools {

namespace {

constexpr std::size_t endOfFile = 1024; // in which the library looks for "startxref", too
constexpr std::size_t longestTrailer = 4096;
constexpr std::size_t entryLength = 20;
constexpr std::size_t entriesAtOnce = 3200;
constexpr int longestNumber = 10;

/// @p count digits as a number; negative when there is anything else.
std::int64_t digits(const char *text, int count)
{
    std::int64_t number = 0;
    unsigned wrong = 0;
    for (int i = 0; i < count; ++i) {
        const unsigned digit = static_cast<unsigned char>(text[i]) - unsigned{'0'};
        wrong |= static_cast<unsigned>(digit > 9);
        number = number * 10 + digit;
    }
    return wrong != 0 ? -1 : number;
}

/// The same for eight digits in a few steps, since long files have a hundred thousand entries:
/// neighbours become pairs, pairs fours, and fours the number, in all places of a word at once.
std::int64_t eightDigits(const char *text)
{
    if constexpr (std::endian::native != std::endian::little) {
        return digits(text, 8);
    }
    std::uint64_t word = 0;
    std::memcpy(&word, text, sizeof word);
    constexpr std::uint64_t upperHalves = 0xf0f0f0f0f0f0f0f0;
    // The upper half of a digit's byte is 3, even with 6 added.
    const std::uint64_t later = (word + 0x0606060606060606) & upperHalves;
    if (((word & upperHalves) | later >> 4U) != 0x3333333333333333) {
        return -1;
    }
    word &= ~upperHalves;
    word = word * 10 + (word >> 8U);
    word = (word & 0x00ff00ff00ff00ff) * 100 + (word >> 16U & 0x00ff00ff00ff00ff);
    word = (word & 0x0000ffff0000ffff) * 10000 + (word >> 32U & 0x0000ffff);
    return static_cast<std::int64_t>(word & 0xffffffff);
}

bool endsLine(char c)
{
    return c == ' ' || c == '\r' || c == '\n';
}

/// "nnnnnnnnnn ggggg n" and two bytes of line end.
bool parseEntry(const char *text, XrefEntry &entry)
{
    const std::int64_t begin = eightDigits(text);
    const std::int64_t end = digits(text + 8, 2);
    const bool isOrdinary = std::memcmp(text + 10, " 00000 n", 8) == 0;
    const std::int64_t generation = isOrdinary ? 0 : digits(text + 11, 5);
    const char kind = text[17];
    if (begin < 0 || end < 0 || generation < 0 || generation > largestGeneration ||
        text[10] != ' ' || text[16] != ' ' || (kind != 'n' && kind != 'f') || !endsLine(text[18]) ||
        !endsLine(text[19])) {
        return false;
    }
    const std::int64_t offset = begin * 100 + end;
    entry.offset = offset;
    entry.generation = static_cast<std::uint16_t>(generation);
    // Some producers mark free objects by an offset of 0 alone.
    entry.kind = kind == 'n' && offset != 0 ? XrefEntry::Kind::inUse : XrefEntry::Kind::free;
    return true;
}

} // namespace

std::int64_t XrefSection::newestOffset()
{
    const std::int64_t start =
        std::max<std::int64_t>(0, m_file.size() - static_cast<std::int64_t>(endOfFile));
    const FileWindow::Bytes bytes = m_file.at(start, endOfFile);
    const std::string_view text(bytes.begin, static_cast<std::size_t>(bytes.end - bytes.begin));
    const std::size_t found = text.rfind("startxref");
    if (found == std::string_view::npos) {
        return 0;
    }
    m_position = start + static_cast<std::int64_t>(found) + 9;
    std::int64_t offset = 0;
    return skipSpace(1, 4) && readNumber(offset) ? offset : 0;
}

bool XrefSection::skipSpace(int least, int most)
{
    const FileWindow::Bytes bytes = m_file.at(m_position, static_cast<std::size_t>(most));
    const char *end = std::find_if_not(bytes.begin, bytes.end, isSpace);
    m_position += end - bytes.begin;
    return end - bytes.begin >= least;
}

bool XrefSection::take(const char *word)
{
    const std::size_t length = std::strlen(word);
    const FileWindow::Bytes bytes = m_file.at(m_position, length);
    if (static_cast<std::size_t>(bytes.end - bytes.begin) != length ||
        std::memcmp(bytes.begin, word, length) != 0) {
        return false;
    }
    m_position += static_cast<std::int64_t>(length);
    return true;
}

bool XrefSection::readNumber(std::int64_t &number)
{
    const FileWindow::Bytes bytes = m_file.at(m_position, longestNumber + 1);
    const char *end = std::find_if_not(bytes.begin, bytes.end, isDigit);
    const auto length = static_cast<int>(end - bytes.begin);
    if (length < 1 || length > longestNumber) {
        return false;
    }
    number = digits(bytes.begin, length);
    m_position += length;
    return true;
}

bool XrefSection::read(std::int64_t offset, XrefTarget &target)
{
    m_position = offset;
    if (!take("xref") || !skipSpace(1, 4) || !readSubsections(target) || !take("trailer")) {
        return false;
    }
    const FileWindow::Bytes bytes = m_file.at(m_position, longestTrailer);
    m_trailer.assign(bytes.begin, bytes.end);
    return true;
}

bool XrefSection::readSubsections(XrefTarget &target)
{
    for (;;) {
        const FileWindow::Bytes next = m_file.at(m_position, 1);
        if (next.begin == next.end || !isDigit(*next.begin)) {
            return skipSpace(0, 4);
        }
        std::int64_t first = 0;
        std::int64_t count = 0;
        if (!readNumber(first) || !take(" ") || !readNumber(count) || first > largestObject ||
            count > largestObject + 1 - first) {
            return false;
        }
        static_cast<void>(take(" "));
        if (!take("\r\n") && !take("\n") && !take("\r")) {
            return false;
        }
        const auto entries = static_cast<int>(count);
        if (first == 1 && entries > 1 && startsTooLate()) {
            first = 0;
            m_isShifted = true;
        }
        const auto number = static_cast<int>(first);
        // A table cannot have more entries than the file has bytes for.
        if (count > m_file.size() / static_cast<std::int64_t>(entryLength) ||
            !target.expect(number, entries) || !readEntries(number, entries, target)) {
            return false;
        }
    }
}

/// Some producers state 1 as the first object of a table that begins with object 0: its first entry
/// is the head of the free ones, and the second leads to object 1.
bool XrefSection::startsTooLate()
{
    const FileWindow::Bytes bytes = m_file.at(m_position, 2 * entryLength);
    XrefEntry head;
    XrefEntry second;
    if (static_cast<std::size_t>(bytes.end - bytes.begin) != 2 * entryLength ||
        !parseEntry(bytes.begin, head) || !parseEntry(bytes.begin + entryLength, second) ||
        head.kind != XrefEntry::Kind::free || head.generation != largestGeneration ||
        second.kind != XrefEntry::Kind::inUse) {
        return false;
    }
    const FileWindow::Bytes object = m_file.at(second.offset, entryLength);
    return startsObject({object.begin, static_cast<std::size_t>(object.end - object.begin)}, 1);
}

bool XrefSection::readEntries(int first, int count, XrefTarget &target)
{
    while (count > 0) {
        const std::size_t wanted =
            std::min<std::size_t>(entriesAtOnce, static_cast<std::size_t>(count)) * entryLength;
        const FileWindow::Bytes bytes = m_file.at(m_position, wanted);
        if (static_cast<std::size_t>(bytes.end - bytes.begin) != wanted) {
            return false;
        }
        for (const char *text = bytes.begin; text != bytes.end; text += entryLength) {
            XrefEntry entry;
            if (!parseEntry(text, entry) || !target.place(first, entry)) {
                return false;
            }
            ++first;
            --count;
        }
        m_position += static_cast<std::int64_t>(wanted);
    }
    return true;
}

} // namespace tools
