#include "tools/pagebinder/document/conformance_claims.h"

#include <string_view>

namespace tools {

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// The place of the value behind a property's name at @p end: NAME="value" or <NAME>value</NAME>.
std::size_t valuePlace(const std::string &xmp, std::size_t end)
{
    std::size_t place = end;
    while (place < xmp.size() && (isBlank(xmp[place]) || xmp[place] == '=')) {
        ++place;
    }
    if (place >= xmp.size() || (xmp[place] != '"' && xmp[place] != '\'' && xmp[place] != '>')) {
        return std::string::npos;
    }
    ++place;
    while (place < xmp.size() && isBlank(xmp[place])) {
        ++place;
    }
    return place < xmp.size() ? place : std::string::npos;
}

bool lowerLevel(std::string &xmp)
{
    constexpr std::string_view property = "pdfaid:conformance";
    bool changed = false;
    for (std::size_t found = xmp.find(property); found != std::string::npos;
         found = xmp.find(property, found + 1)) {
        const std::size_t place = valuePlace(xmp, found + property.size());
        if (place != std::string::npos && (xmp[place] == 'A' || xmp[place] == 'a')) {
            xmp[place] = 'B';
            changed = true;
        }
    }
    return changed;
}

/// Blanks out one statement of the property at @p found: an attribute or an element.
bool blankOut(std::string &xmp, std::size_t found, std::string_view property)
{
    std::size_t first = found;
    std::size_t last = std::string::npos;
    if (found > 0 && xmp[found - 1] == '<') {
        --first;
        const std::string closing = "</" + std::string(property) + ">";
        const std::size_t end = xmp.find(closing, found);
        last = end == std::string::npos ? end : end + closing.size();
    } else {
        const std::size_t quote = xmp.find_first_of("\"'", found);
        const std::size_t end =
            quote == std::string::npos ? quote : xmp.find(xmp[quote], quote + 1);
        last = end == std::string::npos ? end : end + 1;
    }
    if (last == std::string::npos || last - first > 200) {
        return false;
    }
    xmp.replace(first, last - first, last - first, ' ');
    return true;
}

} // namespace

bool claimsPdfA(const std::string &xmp)
{
    return xmp.find("pdfaid:part") != std::string::npos;
}

bool adaptToUntagged(std::string &xmp)
{
    bool changed = lowerLevel(xmp);
    for (const std::string_view property : {"pdfuaid:part", "pdfuaid:amd", "pdfuaid:rev"}) {
        std::size_t found = xmp.find(property);
        while (found != std::string::npos) {
            changed = blankOut(xmp, found, property) || changed;
            found = xmp.find(property, found + 1);
        }
    }
    return changed;
}

} // namespace tools
