#pragma once

#include "tools/pagebinder/copying/drawn_content.h"
#include "tools/pdf/page_tree.h"

#include <unordered_set>
#include <vector>

namespace tools {

/// What the pages draw that are not copied. It is asked only where the content of a copied page
/// cannot be read to its end, and reads the other pages one by one until it has the answer.
class OtherPages
{
public:
    OtherPages(PdfSource &source, PageTree &tree, DrawnContent &drawn)
        : m_source(source), m_tree(tree), m_drawn(drawn)
    {
    }

    /// @param page counted from 1
    void addCopied(int page) { m_copied.insert(page); }

    /// Whether any of them draws the form or picture @p object, resolved.
    bool draw(pdf_obj *object);

private:
    void read(int page);
    void readContent(const FoundPage &page, const std::vector<Drawing> &appearances);
    bool takeUnlistedOfAll(ResourceUse &use);
    bool takeUnlisted(ResourceUse &use, const Drawing &drawing);
    void add(ResourceUse &use);
    void addEntry(ResourceKind kind, pdf_obj *value);
    void addDrawing(const Drawing &drawing);

    PdfSource &m_source;
    PageTree &m_tree;
    DrawnContent &m_drawn;
    std::unordered_set<int> m_copied;
    int m_next = 1; ///< page that has not been read yet
    std::unordered_set<pdf_obj *> m_found;
    std::unordered_set<pdf_obj *> m_seen; ///< drawings whose own resources have been added
    std::vector<Drawing> m_waiting;
};

/// The streams that a page's /Contents, as it stands, names, in their order.
std::vector<int> contentStreams(PdfSource &source, pdf_obj *contents);

/// The appearances of an annotation.
std::vector<Drawing> appearancesOf(PdfSource &source, DrawnContent &drawn, pdf_obj *annotation);

} // namespace tools
