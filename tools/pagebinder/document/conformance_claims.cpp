#include "tools/pagebinder/document/conformance_claims.h"

#include <algorithm>
#include <array>
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

/// Calls @p take with the place of the level that each statement of a conformance claims.
template <typename Take> void forEachLevelA(const std::string &xmp, Take &&take)
{
    constexpr std::string_view property = "pdfaid:conformance";
    for (std::size_t found = xmp.find(property); found != std::string::npos;
         found = xmp.find(property, found + 1)) {
        const std::size_t place = valuePlace(xmp, found + property.size());
        if (place != std::string::npos && (xmp[place] == 'A' || xmp[place] == 'a')) {
            take(place);
        }
    }
}

constexpr std::array<std::string_view, 4> invoice = {"fx:DocumentType", "fx:DocumentFileName",
                                                     "fx:Version", "fx:ConformanceLevel"};

constexpr std::array<std::string_view, 3> universalAccess = {"pdfuaid:part", "pdfuaid:amd",
                                                             "pdfuaid:rev"};

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

bool removeProperties(std::string &xmp, const std::string_view *properties, std::size_t count)
{
    bool changed = false;
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t found = xmp.find(properties[i]); found != std::string::npos;
             found = xmp.find(properties[i], found + 1)) {
            changed = blankOut(xmp, found, properties[i]) || changed;
        }
    }
    return changed;
}

} // namespace

bool claimsPdfA(const std::string &xmp)
{
    return xmp.find("pdfaid:part") != std::string::npos;
}

bool claimsLevelA(const std::string &xmp)
{
    bool isClaimed = false;
    forEachLevelA(xmp, [&isClaimed](std::size_t) { isClaimed = true; });
    return isClaimed;
}

bool lowerLevel(std::string &xmp)
{
    bool changed = false;
    forEachLevelA(xmp, [&xmp, &changed](std::size_t place) {
        xmp[place] = 'B';
        changed = true;
    });
    return changed;
}

bool claimsUniversalAccess(const std::string &xmp)
{
    return std::any_of(universalAccess.begin(), universalAccess.end(),
                       [&xmp](auto property) { return xmp.find(property) != std::string::npos; });
}

bool removeUniversalAccess(std::string &xmp)
{
    return removeProperties(xmp, universalAccess.data(), universalAccess.size());
}

bool removeInvoiceClaim(std::string &xmp)
{
    return removeProperties(xmp, invoice.data(), invoice.size());
}

} // namespace tools
