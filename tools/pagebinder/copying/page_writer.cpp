#include "tools/pagebinder/copying/page_writer.h"

#include "tools/pagebinder/copying/stand_in.h"
#include "tools/pagebinder/structure/structure_tags.h"

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
    constexpr std::array<std::string_view, 15> keys = {
        "BleedBox", "TrimBox",       "ArtBox", "UserUnit", "Group", "Tabs",         "Trans", "Dur",
        "Metadata", "OutputIntents", "VP",     "Contents", "PZ",    "BoxColorInfo", "AF"};
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

} // namespace

void PageWriter::write(const OutputPage &page, int parent, const std::vector<int> &annotations,
                       const std::vector<Drawing> &appearances)
{
    PdfWriter &writer = m_copier.writer();
    writer.beginDictionaryObject(page.target, "Page").key("Parent").appendReference(parent);
    writeInherited(page.found);
    m_copier.writeEntries(page.found.page, Role::page, isPageKey);
    m_resources.writeForPage(m_tree.inherited(page.found, PDF_NAME(Resources)),
                             m_source.raw(page.found.page, PDF_NAME(Contents)), appearances);
    m_tags.writePageKey();
    if (!annotations.empty()) {
        writer.key("Annots").appendReferences(annotations);
    }
    writer.endDictionaryObject();
}

void PageWriter::writeStandIn(const OutputPage &page, int parent)
{
    const Size size = sizeOf(page.found);
    const std::string &path = m_source.path();
    const int content = m_copier.addStream(standInContent(size.width, size.height, page.sourcePage,
                                                          path.substr(path.find_last_of('/') + 1)));
    PdfWriter &writer = m_copier.writer();
    writer.beginDictionaryObject(page.target, "Page").key("Parent").appendReference(parent);
    writeMediaBox(size);
    writer.key("Resources").beginDictionary().key("Font").beginDictionary();
    writer.key("F").beginDictionary().key("Type").appendName("Font");
    writer.key("Subtype").appendName("Type1").key("BaseFont").appendName("Helvetica");
    writer.key("Encoding").appendName("WinAnsiEncoding");
    writer.endDictionary().endDictionary().endDictionary();
    writer.key("Contents").appendReference(content);
    writer.endDictionaryObject();
}

void PageWriter::writeMediaBox(const Size &size)
{
    PdfWriter &writer = m_copier.writer();
    writer.key("MediaBox").beginArray();
    for (const double side : {0.0, 0.0, size.width, size.height}) {
        writer.appendReal(static_cast<float>(side));
    }
    writer.endArray();
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
        writeMediaBox({});
    }
    m_copier.writeEntry("CropBox", m_source.resolve(m_tree.inherited(page, PDF_NAME(CropBox))),
                        Role::plain);
    m_copier.writeEntry("Rotate", m_source.resolve(m_tree.inherited(page, PDF_NAME(Rotate))),
                        Role::plain);
}

} // namespace tools
