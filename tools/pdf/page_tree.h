#pragma once

#include "tools/pdf/pdf_source.h"
#include "tools/pdf/page_lookup.h"

namespace tools {

/// The page tree of a document: its pages by number, and what a page takes over from it.
class PageTree
{
public:
    explicit PageTree(PdfSource &source) : m_source(source), m_lookup(source) {}

    int pageCount() { return m_lookup.pageCount(); }

    /// @param page counted from 1
    FoundPage find(int page) { return m_lookup.find(page); }

    /// The value of a key that a page may take over from the nodes above it.
    pdf_obj *inherited(pdf_obj *page, pdf_obj *key);

private:
    PdfSource &m_source;
    PageLookup<PdfSource> m_lookup;
};

} // namespace tools
