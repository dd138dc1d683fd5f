#pragma once

#include "tools/pdf/page_list.h"
#include "tools/pdf/pdf_source.h"

#include <memory>

namespace tools {

/// A page found by its number.
struct FoundPage
{
    pdf_obj *page = nullptr; ///< the page dictionary, resolved; null when there is no such page
    int number = 0;          ///< its object number, 0 when it stands in its parent's list itself
    /// The tree has a place for this page and nothing that can be read there. It counts as a page,
    /// or all pages behind it would go by wrong numbers.
    bool isUnreadable = false;
    int node = -1; ///< what PageList says
};

/// The pages of a document by their numbers, and what a page takes over from the nodes above it.
/// The tree is walked once for a file; whoever asks again, after a repair too, finds the same
/// pages.
class PageTree
{
public:
    explicit PageTree(PdfSource &source) : m_source(source) {}

    int pageCount() { return static_cast<int>(list().pages.size()); }
    const PageList &list() { return *sharedList(); }
    /// The same, to be given to others who have the file open.
    std::shared_ptr<const PageList> sharedList();

    /// @param page counted from 1
    FoundPage find(int page);

    /// The value of a key that a page may take over from the nodes above it, as it stands: those
    /// through which the tree leads to the page, not those that the page names as its parents.
    pdf_obj *inherited(const FoundPage &page, pdf_obj *key);

private:
    bool isRectangle(pdf_obj *value);
    void tryTableAlone(const PageList &pages);
    pdf_obj *object(int number, int node, int place);
    pdf_obj *node(int index);

    PdfSource &m_source;
};

} // namespace tools
