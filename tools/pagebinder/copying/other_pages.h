#pragma once

#include "tools/pagebinder/copying/drawn_content.h"
#include "tools/pdf/page_tree.h"

#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace tools {

/// Which pages of a document draw a form or picture, for all outputs of that document. It is asked
/// only where the content of a copied page cannot be read to its end, reads the pages in their
/// order until it has the answer, and each of them once.
class PageDrawings
{
public:
    PageDrawings(PdfSource &source, PageTree &tree);

    /// Whether any page draws the form or picture with the number @p object that is not among
    /// @p copied, counted from 1.
    bool isDrawnBeside(const std::unordered_set<int> &copied, int object);

    /// Must be called when the library may forget objects. What the pages draw stays known.
    void forgetObjects();

    /// Pages read since the last call.
    int takeReadCount() noexcept { return std::exchange(m_readCount, 0); }

private:
    /// Neighbouring pages that draw the same thing.
    struct Run
    {
        int first;
        int last;
    };

    void read(int page);
    void readContent(const FoundPage &page, const std::vector<Drawing> &appearances);
    bool takeUnlistedOfAll(ResourceUse &use);
    bool takeUnlisted(ResourceUse &use, const Drawing &drawing);
    void add(ResourceUse &use);
    void addEntry(ResourceKind kind, pdf_obj *value);
    void addDrawing(const Drawing &drawing);
    void note(int object);

    PdfSource &m_source;
    PageTree &m_tree;
    std::unique_ptr<DrawnContent> m_drawn;
    std::unordered_map<int, std::vector<Run>> m_runs; ///< by the number of what is drawn
    int m_page = 0;                                   ///< that was read last
    int m_readCount = 0;
    std::unordered_set<pdf_obj *> m_seen; ///< drawings of the page whose own resources are added
    std::vector<Drawing> m_waiting;
};

/// What the pages draw that are not copied into an output.
class OtherPages
{
public:
    explicit OtherPages(PageDrawings &drawings) : m_drawings(drawings) {}

    /// @param page counted from 1
    void addCopied(int page) { m_copied.insert(page); }

    /// Whether any of them draws the form or picture with the number @p object.
    bool draw(int object) { return m_drawings.isDrawnBeside(m_copied, object); }

private:
    PageDrawings &m_drawings;
    std::unordered_set<int> m_copied;
};

/// The streams that a page's /Contents, as it stands, names, in their order.
std::vector<int> contentStreams(PdfSource &source, pdf_obj *contents);

/// The appearances of an annotation.
std::vector<Drawing> appearancesOf(PdfSource &source, DrawnContent &drawn, pdf_obj *annotation);

} // namespace tools
