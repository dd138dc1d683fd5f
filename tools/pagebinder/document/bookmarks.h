#pragma once

#include "tools/pagebinder/document/bookmark_index.h"
#include "tools/pagebinder/document/destinations.h"

#include <cstddef>
#include <vector>

namespace tools {

/// Copies the bookmarks that lead to copied pages, with those above them.
class Bookmarks
{
public:
    Bookmarks(ObjectCopier &copier, Destinations &destinations, BookmarkIndex &index)
        : m_copier(copier), m_source(copier.source()), m_destinations(destinations), m_index(index)
    {
    }

    /// Writes those of @p pages. @returns the number of their root in the output, 0 when there are
    /// none
    int write(const std::vector<OutputPage> &pages);

private:
    struct Item
    {
        pdf_obj *dictionary = nullptr;
        pdf_obj *destination = nullptr; ///< null when it leads to no copied page
        bool isOpen = false;
        int target = 0;
        std::vector<Item> kids;
    };

    std::vector<Item> collect(const std::vector<int> &places, std::size_t &next, int parent);
    void number(std::vector<Item> &items);
    void writeItems(const std::vector<Item> &items, int parent);
    void writeItem(const std::vector<Item> &items, std::size_t place, int parent);
    void writeChildEntries(const Item &item);
    static int visibleCount(const std::vector<Item> &items);

    ObjectCopier &m_copier;
    PdfSource &m_source;
    Destinations &m_destinations;
    BookmarkIndex &m_index;
};

} // namespace tools
