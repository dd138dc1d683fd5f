#include "tools/pagebinder/copying/page_writer.h"

#include "tools/pagebinder/copying/stand_in.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tools {

namespace {

constexpr double smallestSide = 36;
constexpr double largestSide = 14400;

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
                       const std::vector<Drawing> &appearances)
{
    std::string &text = m_copier.text();
    m_copier.writer().beginObject(page.target);
    text += "<</Type/Page/Parent ";
    m_copier.writer().appendReference(parent);
    writeInherited(page.found);
    m_copier.writeEntries(page.found.page, Role::page, isPageKey);
    m_resources.writeForPage(m_tree.inherited(page.found, PDF_NAME(Resources)),
                             m_source.raw(page.found.page, PDF_NAME(Contents)), appearances);
    if (!annotations.empty()) {
        text += "/Annots[";
        text += annotations;
        text += ']';
    }
    text += ">>";
    m_copier.writer().endObject();
}

void PageWriter::writeStandIn(const OutputPage &page, int parent)
{
    const Size size = sizeOf(page.found);
    const std::string &path = m_source.path();
    const int content =
        m_copier.addStream("", standInContent(size.width, size.height, page.sourcePage,
                                              path.substr(path.find_last_of('/') + 1)));
    m_copier.writer().beginObject(page.target);
    m_copier.text() += "<</Type/Page/Parent ";
    m_copier.writer().appendReference(parent);
    m_copier.text() += "/MediaBox[0 0 ";
    m_copier.writer().appendReal(size.width);
    m_copier.text() += ' ';
    m_copier.writer().appendReal(size.height);
    m_copier.text() += "]/Resources<</Font<</F<</Type/Font/Subtype/Type1/BaseFont/Helvetica"
                       "/Encoding/WinAnsiEncoding>>>>>>/Contents ";
    m_copier.writer().appendReference(content);
    m_copier.text() += ">>";
    m_copier.writer().endObject();
}

/// The size that a page at this place in the tree has, as far as the tree says.
PageWriter::Size PageWriter::sizeOf(const FoundPage &page)
{
    pdf_obj *box = m_source.resolve(m_tree.inherited(page, PDF_NAME(MediaBox)));
    const auto side = [this, box](int index) {
        return static_cast<double>(pdf_to_real(m_source.context(), m_source.at(box, index)));
    };
    const Size size{std::abs(side(2) - side(0)), std::abs(side(3) - side(1))};
    const bool isUsable = size.width >= smallestSide && size.width <= largestSide &&
                          size.height >= smallestSide && size.height <= largestSide;
    return isUsable ? size : Size{};
}

void PageWriter::writeInherited(const FoundPage &page)
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
