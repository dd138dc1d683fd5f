#include "tools/pagebinder/output/pdf_writer.h"

#include "tools/pdf/pdf_syntax.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

namespace tools {

namespace {

constexpr std::size_t largeText = std::size_t{1} << 22;
constexpr char hexDigits[] = "0123456789ABCDEF";

bool isRegular(unsigned char byte)
{
    return byte > 0x20 && byte < 0x7f && std::strchr("()<>[]{}/%#", byte) == nullptr;
}

/// Whether a number sign in a name, with @p next behind it, stood there as itself in the input:
/// where half an escape follows, or that of the null character, which is none. Contents go on
/// spelling the name like this, and readers disagree about what it means.
bool isUnescaped(std::string_view next)
{
    const bool first = !next.empty() && isHexDigit(next[0]);
    const bool second = next.size() > 1 && isHexDigit(next[1]);
    return (first && !second) || next == "00";
}

} // namespace

void PdfWriter::begin(int version)
{
    m_text.clear();
    m_written = 0;
    m_offsets.assign(1, 0);
    m_text.reserve(32768);
    m_text += "%PDF-";
    appendNumber(version / 10);
    m_text += '.';
    appendNumber(version % 10);
    // Four bytes above 127 tell transfer programs that the file is not text.
    m_text += "\n%\xe2\xe3\xcf\xd3\n";
}

int PdfWriter::allocate()
{
    m_offsets.push_back(0);
    return static_cast<int>(m_offsets.size()) - 1;
}

std::string PdfWriter::encrypted(int number, std::string_view bytes) const
{
    return m_cipher->encrypt(number, bytes);
}

void PdfWriter::beginObject(int number, bool plain)
{
    m_current = plain ? 0 : number;
    m_offsets[static_cast<std::size_t>(number)] = m_written + m_text.size();
    appendNumber(number);
    m_text += " 0 obj\n";
}

void PdfWriter::endObject()
{
    m_text += "\nendobj\n";
    m_current = 0;
    flushIfLarge();
}

void PdfWriter::flushIfLarge()
{
    if (m_text.size() >= largeText) {
        m_output.write(m_text.data(), m_text.size());
        m_written += m_text.size();
        m_text.clear();
    }
}

void PdfWriter::finish(std::string_view trailerEntries)
{
    const std::uint64_t start = m_written + m_text.size();
    m_text += "xref\n0 ";
    appendNumber(static_cast<std::int64_t>(m_offsets.size()));
    m_text += "\n0000000000 65535 f \n";
    for (std::size_t i = 1; i < m_offsets.size(); ++i) {
        std::array<char, 21> entry;
        std::memcpy(entry.data(),
                    m_offsets[i] == 0 ? "0000000000 00001 f \n" : "0000000000 00000 n \n", 20);
        std::uint64_t rest = m_offsets[i];
        for (int place = 9; place >= 0 && rest != 0; --place) {
            entry[static_cast<std::size_t>(place)] = static_cast<char>('0' + rest % 10);
            rest /= 10;
        }
        m_text.append(entry.data(), 20);
        flushIfLarge();
    }
    m_text += "trailer\n<</Size ";
    appendNumber(static_cast<std::int64_t>(m_offsets.size()));
    m_text += trailerEntries;
    m_text += ">>\nstartxref\n";
    appendNumber(static_cast<std::int64_t>(start));
    m_text += "\n%%EOF\n";
    m_output.write(m_text.data(), m_text.size());
    m_text.clear();
}

void PdfWriter::appendNumber(std::int64_t number)
{
    std::array<char, 24> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    m_text.append(digits.data(), end);
}

void PdfWriter::appendReal(float number)
{
    if (!std::isfinite(number)) {
        m_text += '0';
        return;
    }
    std::array<char, 64> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                   std::chars_format::fixed)
                         .ptr;
    m_text.append(digits.data(), end);
}

void PdfWriter::appendReference(int number)
{
    appendNumber(number);
    m_text += " 0 R";
}

void PdfWriter::appendName(std::string_view name)
{
    m_text += '/';
    for (std::size_t i = 0; i < name.size(); ++i) {
        const auto byte = static_cast<unsigned char>(name[i]);
        if (isRegular(byte) || (byte == '#' && isUnescaped(name.substr(i + 1, 2)))) {
            m_text += name[i];
        } else {
            m_text += '#';
            m_text += hexDigits[byte >> 4U];
            m_text += hexDigits[byte & 15U];
        }
    }
}

void PdfWriter::appendString(std::string_view bytes)
{
    if (m_cipher != nullptr && m_current != 0) {
        appendPlainString(encrypted(m_current, bytes));
    } else {
        appendPlainString(bytes);
    }
}

void PdfWriter::appendPlainString(std::string_view bytes)
{
    std::size_t odd = 0;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        odd += byte < 0x20 || byte >= 0x7f ? 1 : 0;
    }
    if (odd * 4 > bytes.size()) {
        m_text += '<';
        for (const char c : bytes) {
            const auto byte = static_cast<unsigned char>(c);
            m_text += hexDigits[byte >> 4U];
            m_text += hexDigits[byte & 15U];
        }
        m_text += '>';
        return;
    }
    m_text += '(';
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '(' || c == ')' || c == '\\') {
            m_text += '\\';
            m_text += c;
        } else if (byte < 0x20 || byte == 0x7f) {
            m_text += '\\';
            m_text += static_cast<char>('0' + (byte >> 6U));
            m_text += static_cast<char>('0' + ((byte >> 3U) & 7U));
            m_text += static_cast<char>('0' + (byte & 7U));
        } else {
            m_text += c;
        }
    }
    m_text += ')';
}

} // namespace tools
