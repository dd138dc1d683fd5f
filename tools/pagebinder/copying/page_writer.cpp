#include "tools/pagebinder/copying/page_writer.h"

#include <algorithm>
#include <array>

namespace tools {

namespace {

/// What a page says about itself beyond its content; anything else is the document's business.
bool isPageKey(std::string_view key)
{
    constexpr std::array<std::string_view, 14> keys = {
        "BleedBox", "TrimBox",  "ArtBox",        "UserUnit", "Group",    "Tabs", "Trans",
        "Dur",      "Metadata", "OutputIntents", "VP",       "Contents", "PZ",   "BoxColorInfo"};
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

} // namespace

void PageWriter::write(const OutputPage &page, int parent, const std::string &annotations,
                       const std::vector<Drawing> &borrowers)
{
    std::string &text = m_copier.text();
    m_copier.writer().beginObject(page.target);
    text += "<</Type/Page/Parent ";
    m_copier.writer().appendReference(parent);
    writeInherited(page.found.page);
    m_copier.writeEntries(page.found.page, Role::page, isPageKey);
    m_resources.writeForPage(m_tree.inherited(page.found.page, PDF_NAME(Resources)),
                             m_source.raw(page.found.page, PDF_NAME(Contents)), borrowers);
    if (!annotations.empty()) {
        text += "/Annots[";
        text += annotations;
        text += ']';
    }
    text += ">>";
    m_copier.writer().endObject();
}

void PageWriter::writeBlank(const OutputPage &page, int parent)
{
    m_copier.writer().beginObject(page.target);
    m_copier.text() += "<</Type/Page/Resources<<>>/Parent ";
    m_copier.writer().appendReference(parent);
    writeInherited(m_source.get(m_source.catalog(), PDF_NAME(Pages)));
    m_copier.text() += ">>";
    m_copier.writer().endObject();
}

void PageWriter::writeInherited(pdf_obj *page)
{
    pdf_obj *box = m_tree.inherited(page, PDF_NAME(MediaBox));
    if (box != nullptr) {
        m_copier.writeEntry("MediaBox", m_source.resolve(box), Role::plain);
    } else {
        m_copier.text() += "/MediaBox[0 0 612 792]";
    }
    m_copier.writeEntry("CropBox", m_source.resolve(m_tree.inherited(page, PDF_NAME(CropBox))),
                        Role::plain);
    m_copier.writeEntry("Rotate", m_source.resolve(m_tree.inherited(page, PDF_NAME(Rotate))),
                        Role::plain);
}

} // namespace tools
