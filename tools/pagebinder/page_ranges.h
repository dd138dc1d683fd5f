#pragma once

#include <string_view>
#include <vector>

namespace tools {

/// Pages first to last, both counted from 1 and both included.
struct PageRange
{
    int first = 0;
    int last = 0;

    bool operator==(const PageRange &) const = default;
};

/// Reads "7" or "3-6". Nothing but digits and one hyphen is taken, pages count from 1 and a range
/// runs forwards. @returns false, and leaves @p range alone, when @p text is anything else
bool parsePageRange(std::string_view text, PageRange &range);

/// The page numbers that @p ranges name, in the order given; a page named twice comes twice.
std::vector<int> expandPageRanges(const std::vector<PageRange> &ranges);

/// The number of pages that @p ranges name; no page list is built for it.
long long countPages(const std::vector<PageRange> &ranges);

} // namespace tools
