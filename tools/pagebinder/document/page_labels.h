#pragma once

#include "tools/pagebinder/copying/object_copier.h"

#include <vector>

namespace tools {

/// How the pages of a document are labelled: numbering that begins at one page and runs on.
class PageLabels
{
public:
    explicit PageLabels(ObjectCopier &copier) : m_copier(copier), m_source(copier.source()) {}

    /// Writes the catalog's entry /PageLabels, in which every page keeps the label it had.
    /// Documents without labels get none.
    /// @param pages numbers of the pages in the input, counted from 1
    void write(const std::vector<int> &pages);

private:
    struct Numbering
    {
        int first = -1; ///< index of the page where it begins
        int next = 0;   ///< index of the page where the next one begins
        pdf_obj *dictionary = nullptr;
    };

    Numbering find(pdf_obj *root, int index);
    void search(pdf_obj *node, int index, int depth, Numbering &best);
    void writeNumbering(const Numbering &numbering, int index);

    ObjectCopier &m_copier;
    PdfSource &m_source;
    int m_nodesLeft = 0;
};

} // namespace tools
