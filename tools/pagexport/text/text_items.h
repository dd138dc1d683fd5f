#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tools {

/// One text item of a page: a run of text on one line, and the frame around it in units
/// (see geometry.h). All four numbers are at least 1, because readers take 0 as "missing".
struct TextItem
{
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    std::uint32_t textBegin = 0;  ///< offset of the text in TextItems::texts
    std::uint32_t textLength = 0; ///< in bytes
};

/// The text items of one page, in the order of the page's content. The texts lie one behind the
/// other in one string, so that a page costs two allocations and not one an item.
struct TextItems
{
    std::vector<TextItem> items;
    std::string texts; ///< UTF-8

    std::string_view text(const TextItem &item) const
    {
        return std::string_view(texts).substr(item.textBegin, item.textLength);
    }
    void clear()
    {
        items.clear();
        texts.clear();
    }
};

} // namespace tools
