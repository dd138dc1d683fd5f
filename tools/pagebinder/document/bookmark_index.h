#pragma once

#include "tools/pagebinder/copying/page_writer.h"
#include "tools/pagebinder/document/named_destinations.h"

#include <cstddef>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tools {

/// All bookmarks of a document in their order, read once, and which of them lead to which page.
class BookmarkIndex
{
public:
    /// A bookmark. A negative parent stands for none.
    struct Entry
    {
        KeptObject reference; ///< to its dictionary
        int parent = -1;      ///< place in the index of the one above
        bool isOpen = false;
    };

    BookmarkIndex(PdfSource &source, NamedDestinations &names) : m_source(source), m_names(names) {}

    /// Places in the index of the bookmarks that lead to @p pages, and of those above them, in the
    /// document's order.
    std::vector<int> select(const std::vector<OutputPage> &pages);

    const Entry &at(int place) const { return m_entries[static_cast<std::size_t>(place)]; }

    /// Where a bookmark leads, as it stands; null when it leads to no page of this document.
    pdf_obj *destinationOf(pdf_obj *dictionary);

private:
    using Places = std::vector<int>;

    void read();
    void collect(pdf_obj *first, int parent, int depth);
    void addTarget(pdf_obj *dictionary, int place);

    PdfSource &m_source;
    NamedDestinations &m_names;
    bool m_isRead = false;
    std::vector<Entry> m_entries;
    std::unordered_map<int, Places> m_byObject;
    std::unordered_map<int, Places> m_byPage;
    std::unordered_set<int> m_seen; ///< object numbers met while reading
};

} // namespace tools
