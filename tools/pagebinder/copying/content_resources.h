#pragma once

#include "tools/pagebinder/copying/drawn_content.h"
#include "tools/pagebinder/copying/object_copier.h"
#include "tools/pagebinder/copying/other_pages.h"
#include "tools/pagebinder/copying/resource_use.h"

#include <vector>

namespace tools {

/// Writes the resource dictionaries of pages, forms, patterns and fonts, pruned to the names that
/// are used: producers let all pages share one dictionary, and whole it would carry the pictures
/// and forms of every other page along.
///
/// Where content cannot be read to its end, nobody knows what it uses: then only those forms and
/// pictures are left out that other pages draw.
class ContentResources
{
public:
    ContentResources(ObjectCopier &copier, PageDrawings &drawings)
        : m_copier(copier), m_source(copier.source()), m_drawn(m_source), m_others(drawings)
    {
    }

    /// Must be told of all pages that are copied, before anything is written.
    void addCopied(int page) { m_others.addCopied(page); }

    /// Writes the entry /Resources of a page.
    /// @param resources its dictionary as it stands, inherited perhaps
    /// @param contents value of /Contents as it stands
    /// @param appearances appearance streams of its annotations, which may use the page's resources
    void writeForPage(pdf_obj *resources, pdf_obj *contents,
                      const std::vector<Drawing> &appearances);

    /// Writes the entry /Resources of the form or pattern with this number.
    void writeForStream(pdf_obj *stream, int number);

    /// Writes the entry /Resources of a Type 3 font, if it is one and has any.
    void writeForFont(pdf_obj *font);

    DrawnContent &drawn() noexcept { return m_drawn; }

private:
    using Streams = std::vector<int>;
    /// Names of a dictionary that have come into use, and what they stand for.
    struct Found
    {
        ResourceKind kind;
        pdf_obj *value;
    };

    void writeForDrawing(const Drawing &drawing);
    void write(pdf_obj *resources, const Streams &streams, const std::vector<Drawing> &appearances);
    void writePruned(pdf_obj *resources, ResourceUse &use);
    void writeKind(ResourceUse &use, ResourceKind kind);
    void findUse(ResourceUse &use, const Streams &streams, const std::vector<Drawing> &appearances);
    bool takeUnlisted(ResourceUse &use, const Drawing &drawing, std::vector<Found> &found);
    void keepDoubtful(ResourceUse &use);

    ObjectCopier &m_copier;
    PdfSource &m_source;
    DrawnContent m_drawn;
    OtherPages m_others;
};

} // namespace tools
