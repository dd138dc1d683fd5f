#pragma once

#include "tools/pagexport/text/text_items.h"

#include <cstddef>
#include <vector>

namespace tools {

/// Remembers which text was drawn where on a page, to find text drawn a second time at nearly the
/// same place (a shadow, or bold made by drawing twice). Looking up costs the same on a page of any
/// length.
class DrawnItems
{
public:
    /// Notes that @p text was drawn at x, y (points) in ems of @p em.
    /// @return true when the same text already stands within a small part of an em
    bool isRepeated(std::string_view text, double x, double y, double em);

private:
    struct Entry
    {
        std::size_t hash = 0; ///< of text and cell; 0 marks a free place
        double x = 0;
        double y = 0;
    };

    const Entry *find(std::size_t hash, double x, double y, double tolerance) const;
    void insert(const Entry &entry);
    void grow();

    std::vector<Entry> m_table;
    std::size_t m_used = 0;
};

} // namespace tools
