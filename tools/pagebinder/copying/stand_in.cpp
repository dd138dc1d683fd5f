#include "tools/pagebinder/copying/stand_in.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace tools {

namespace {

constexpr double largestFont = 14;
constexpr double smallestFont = 4;
constexpr double marginShare = 0.1;   // of the width
constexpr double widestLetter = 0.67; // of the font's size, for all but a few capitals
constexpr double lineDistance = 1.4;
constexpr std::size_t letters = 30; // of a line that is to fit in

/// The bytes of a text in WinAnsiEncoding: Latin letters stand there as in Unicode.
std::string toWinAnsi(std::string_view text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        const auto byte = static_cast<unsigned char>(text[i++]);
        const bool isLatin = (byte == 0xc2 || byte == 0xc3) && i < text.size() &&
                             (static_cast<unsigned char>(text[i]) & 0xc0U) == 0x80U;
        if (byte < 0x80) {
            result += byte < 0x20 || byte == 0x7f ? '?' : static_cast<char>(byte);
            continue;
        }
        const unsigned code =
            isLatin ? (byte & 0x1fU) << 6U | (static_cast<unsigned char>(text[i]) & 0x3fU) : 0;
        while (i < text.size() && (static_cast<unsigned char>(text[i]) & 0xc0U) == 0x80U) {
            ++i;
        }
        result += code >= 0xa0 ? static_cast<char>(code) : '?';
    }
    return result;
}

/// Lines of at most @p most characters, broken at blanks where there are any.
std::vector<std::string> broken(std::string text, std::size_t most)
{
    std::vector<std::string> lines;
    while (text.size() > most) {
        const std::size_t blank = text.rfind(' ', most);
        const bool atBlank = blank != std::string::npos && blank != 0;
        lines.push_back(text.substr(0, atBlank ? blank : most));
        text.erase(0, atBlank ? blank + 1 : most);
    }
    lines.push_back(text);
    return lines;
}

void appendString(std::string &content, const std::string &text)
{
    content += '(';
    for (const char c : text) {
        if (c == '(' || c == ')' || c == '\\') {
            content += '\\';
        }
        content += c;
    }
    content += ')';
}

std::string numbers(const char *format, double first, double second)
{
    char text[80];
    std::snprintf(text, sizeof text, format, first, second);
    return text;
}

} // namespace

std::string standInContent(double width, double height, int page, std::string_view file)
{
    const double room = width * (1 - 2 * marginShare);
    const double size = std::clamp(room / (widestLetter * letters), smallestFont, largestFont);
    const auto most = static_cast<std::size_t>(std::max(8.0, room / (size * widestLetter)));
    const std::string text = "Page " + std::to_string(page) + " of " + toWinAnsi(file) +
                             " could not be read. This page stands in its place.";
    std::string content =
        "BT /F " + numbers("%.2f Tf %.2f TL ", size, size * lineDistance) +
        numbers("%.2f %.2f Td", width * marginShare, height * (1 - marginShare) - size);
    for (const std::string &line : broken(text, most)) {
        content += ' ';
        appendString(content, line);
        content += " Tj T*";
    }
    return content + " ET";
}

} // namespace tools
