#include "tools/pagexport/output/page_html.h"

#include <charconv>

namespace tools {

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isLetterOrDigit(char c)
{
    return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// "&amp;", "&#38;" and "&#x26;" at the start of the text; "& Co" and "AT&T" are not.
bool readsAsReference(std::string_view text)
{
    std::size_t i = 1;
    if (i < text.size() && text[i] == '#') {
        ++i;
    }
    const std::size_t first = i;
    while (i < text.size() && isLetterOrDigit(text[i])) {
        ++i;
    }
    return i > first && i < text.size() && text[i] == ';';
}

void appendHtmlText(std::string &html, std::string_view text)
{
    std::size_t done = 0;
    for (std::size_t i = text.find_first_of("<>\"&"); i != std::string_view::npos;
         i = text.find_first_of("<>\"&", i + 1)) {
        const char *reference = nullptr;
        switch (text[i]) {
        case '<':
            reference = "&lt;";
            break;
        case '>':
            reference = "&gt;";
            break;
        case '"':
            reference = "&quot;";
            break;
        default:
            reference = readsAsReference(text.substr(i)) ? "&amp;" : "&";
            break;
        }
        html += text.substr(done, i - done);
        html += reference;
        done = i + 1;
    }
    html += text.substr(done);
}

void appendNumber(std::string &html, int number)
{
    char digits[16];
    const auto result = std::to_chars(digits, digits + sizeof digits, number);
    html.append(digits, result.ptr);
}

} // namespace

void writePageHtml(std::string &html, const TextItems &page, int number)
{
    // No document type: browsers then read the bare numbers as pixels.
    html = "<html><head><meta charset=\"utf-8\"><title>Page ";
    appendNumber(html, number);
    html += "</title>\n<style>span{position:absolute;white-space:pre}</style></head><body>\n";
    html.reserve(html.size() + page.texts.size() + 64 * page.items.size() + 32);
    for (const TextItem &item : page.items) {
        html += "<span style=\"left:";
        appendNumber(html, item.left);
        html += ";top:";
        appendNumber(html, item.top);
        html += ";width:";
        appendNumber(html, item.width);
        html += ";height:";
        appendNumber(html, item.height);
        html += "\">";
        appendHtmlText(html, page.text(item));
        html += "</span>\n";
    }
    html += "</body></html>\n";
}

} // namespace tools
