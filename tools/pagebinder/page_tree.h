#pragma once

#include "tools/pagebinder/pdf_source.h"

#include <vector>

namespace tools {

/// A page found in the page tree.
struct FoundPage
{
    pdf_obj *page = nullptr; ///< the page dictionary, resolved; null when there is no such page
    int number = 0;          ///< its object number, 0 when it stands in its parent's /Kids itself
    /// The tree names an object that cannot be read. It counts as a page, or all pages behind it
    /// would go by wrong numbers.
    bool isUnreadable = false;
};

/// Finds pages by number without reading the pages before them, as far as the tree's page counts
/// can be believed; where they contradict the tree, the tree is walked once.
class PageTree
{
public:
    explicit PageTree(PdfSource &source) : m_source(source) {}

    /// What the document states as its number of pages. A count that is larger than the number of
    /// objects in the file is no fact: the pages are counted then.
    int pageCount();

    /// @param page counted from 1
    FoundPage find(int page);

    /// The value of a key that a page may take over from the nodes above it.
    pdf_obj *inherited(pdf_obj *page, pdf_obj *key);

private:
    FoundPage descend(pdf_obj *node, int index, int depth);
    FoundPage leafAt(const PageKids &kids, int index);
    void walkOnce(pdf_obj *root);
    void walk(pdf_obj *node, int depth, std::vector<int> &path);
    bool isNode(pdf_obj *node);
    bool isPage(pdf_obj *node);

    PdfSource &m_source;
    bool m_walked = false;
    std::vector<FoundPage> m_pages; ///< all pages, once the tree is walked
};

} // namespace tools
