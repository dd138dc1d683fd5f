#include "tools/pagebinder/output/pdf_writer.h"

#include "tools/pdf/pdf_syntax.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace tools {

namespace {

constexpr std::size_t largeText = std::size_t{1} << 22;
constexpr char hexDigits[] = "0123456789ABCDEF";

/// The bytes that stand in a name as they are.
constexpr auto regularBytes = [] {
    std::array<bool, 256> isRegular{};
    for (char byte = 0x21; byte < 0x7f; ++byte) {
        const bool isDelimiter =
            std::string_view("()<>[]{}/%#").find(byte) != std::string_view::npos;
        isRegular[static_cast<unsigned char>(byte)] = !isDelimiter;
    }
    return isRegular;
}();

bool isRegular(char byte)
{
    return regularBytes[static_cast<unsigned char>(byte)];
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
    m_text += "%PDF-" + std::to_string(version / 10) + '.' + std::to_string(version % 10);
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

PdfWriter &PdfWriter::beginDictionaryObject(int number, std::string_view type)
{
    beginObject(number);
    beginDictionary();
    return type.empty() ? *this : key("Type").appendName(type);
}

void PdfWriter::endDictionaryObject()
{
    endDictionary();
    endObject();
}

void PdfWriter::endStream()
{
    m_text += "\nendstream";
    endObject();
}

void PdfWriter::flushIfLarge()
{
    if (m_text.size() >= largeText) {
        m_output.write(m_text.data(), m_text.size());
        m_written += m_text.size();
        m_text.clear();
    }
}

PdfWriter &PdfWriter::beginTrailer()
{
    m_table = m_written + m_text.size();
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
    m_text += "trailer\n";
    return beginDictionary().key("Size").appendNumber(static_cast<std::int64_t>(m_offsets.size()));
}

void PdfWriter::finish()
{
    endDictionary().appendBytes("\nstartxref\n");
    appendNumber(static_cast<std::int64_t>(m_table)).appendBytes("\n%%EOF\n");
    m_output.write(m_text.data(), m_text.size());
    m_text.clear();
}

PdfWriter &PdfWriter::appendWord(std::string_view word)
{
    const char last = m_text.empty() ? ' ' : m_text.back();
    if (isRegular(last) || last == '/') {
        m_text += ' ';
    }
    return appendBytes(word);
}

PdfWriter &PdfWriter::appendNumber(std::int64_t number)
{
    std::array<char, 24> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    return appendWord({digits.data(), end});
}

PdfWriter &PdfWriter::appendReal(float number)
{
    if (!std::isfinite(number)) {
        return appendWord("0");
    }
    std::array<char, 64> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                   std::chars_format::fixed)
                         .ptr;
    return appendWord({digits.data(), end});
}

PdfWriter &PdfWriter::appendReference(int number)
{
    if (number == 0) {
        return appendNull();
    }
    std::array<char, 24> text;
    char *end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    end = std::copy_n(" 0 R", 4, end);
    return appendWord({text.data(), end});
}

PdfWriter &PdfWriter::appendReferences(const std::vector<int> &numbers)
{
    beginArray();
    for (const int number : numbers) {
        appendReference(number).appendBlank();
    }
    return endArray();
}

PdfWriter &PdfWriter::appendName(std::string_view name)
{
    m_text += '/';
    const char *const special = std::find_if_not(name.begin(), name.end(), isRegular);
    m_text.append(name.begin(), special);
    for (auto i = static_cast<std::size_t>(special - name.begin()); i < name.size(); ++i) {
        if (isRegular(name[i]) || (name[i] == '#' && isUnescaped(name.substr(i + 1, 2)))) {
            m_text += name[i];
        } else {
            const auto byte = static_cast<unsigned char>(name[i]);
            m_text += '#';
            m_text += hexDigits[byte >> 4U];
            m_text += hexDigits[byte & 15U];
        }
    }
    return *this;
}

PdfWriter &PdfWriter::appendString(std::string_view bytes)
{
    const bool isEncrypted = m_cipher != nullptr && m_current != 0;
    return isEncrypted ? appendPlainString(encrypted(m_current, bytes)) : appendPlainString(bytes);
}

PdfWriter &PdfWriter::appendPlainString(std::string_view bytes)
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
        return appendBytes(">");
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
    return appendBytes(")");
}

} // namespace tools
