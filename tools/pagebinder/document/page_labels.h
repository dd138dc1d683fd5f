#pragma once

#include "tools/pagebinder/copying/object_copier.h"
#include "tools/pagebinder/opening/kept_object.h"

#include <vector>

namespace tools {

/// The page labels of a document, read once: numberings that begin at one page and run on.
class PageLabelIndex
{
public:
    struct Numbering
    {
        int first = -1;                ///< index of the page where it begins
        int next = 0;                  ///< index of the page where the next one begins
        pdf_obj *dictionary = nullptr; ///< null for pages without labels
    };

    explicit PageLabelIndex(PdfSource &source) : m_source(source) {}

    /// Whether the document labels its pages at all.
    bool hasLabels();

    /// The numbering of the page with this index, counted from 0.
    Numbering find(int index);

private:
    struct Start
    {
        int first;
        KeptObject value;
    };

    void read();
    void collect(pdf_obj *node, int depth);

    PdfSource &m_source;
    bool m_isRead = false;
    bool m_hasLabels = false;
    std::vector<Start> m_starts; ///< in the order of the pages, once they are read
    int m_nodesLeft = 0;
};

/// Labels the pages of an output as they were labelled in the document.
class PageLabels
{
public:
    PageLabels(ObjectCopier &copier, PageLabelIndex &index)
        : m_copier(copier), m_source(copier.source()), m_index(index)
    {
    }

    /// Writes the catalog's entry /PageLabels, in which every page keeps the label it had.
    /// Documents without labels get none.
    /// @param pages numbers of the pages in the input, counted from 1
    void write(const std::vector<int> &pages);

private:
    void writeNumbering(const PageLabelIndex::Numbering &numbering, int index);

    ObjectCopier &m_copier;
    PdfSource &m_source;
    PageLabelIndex &m_index;
};

} // namespace tools
