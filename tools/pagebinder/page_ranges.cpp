#include "tools/pagebinder/page_ranges.h"

#include <charconv>

namespace tools {

namespace {

bool parsePageNumber(std::string_view text, int &number)
{
    if (text.empty() || text.front() < '0' || text.front() > '9') {
        return false;
    }
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < 1) {
        return false;
    }
    number = value;
    return true;
}

} // namespace

bool parsePageRange(std::string_view text, PageRange &range)
{
    const std::size_t hyphen = text.find('-');
    PageRange parsed;
    if (!parsePageNumber(text.substr(0, hyphen), parsed.first)) {
        return false;
    }
    parsed.last = parsed.first;
    if (hyphen != std::string_view::npos &&
        !parsePageNumber(text.substr(hyphen + 1), parsed.last)) {
        return false;
    }
    if (parsed.last < parsed.first) {
        return false;
    }
    range = parsed;
    return true;
}

std::vector<int> expandPageRanges(const std::vector<PageRange> &ranges)
{
    std::vector<int> pages;
    for (const PageRange &range : ranges) {
        for (long long page = range.first; page <= range.last; ++page) {
            pages.push_back(static_cast<int>(page));
        }
    }
    return pages;
}

long long countPages(const std::vector<PageRange> &ranges)
{
    long long count = 0;
    for (const PageRange &range : ranges) {
        count += static_cast<long long>(range.last) - range.first + 1;
    }
    return count;
}

} // namespace tools
