#pragma once

#include "tests/support/pdf_builder.h"

#include <QStringList>

#include <string>

namespace quorlin::test {

inline constexpr const char *goodText = "BT /F1 12 Tf 72 700 Td (Good page) Tj ET";
inline const QStringList good{"Good page"};

/// Three pages, the second of them bad.
inline void addThreePages(PdfBuilder &pdf, const std::string &content, const PdfBuilder::Page &page)
{
    pdf.addPage(goodText);
    pdf.addPage(content, page);
    pdf.addPage(goodText);
}

inline std::string form(const std::string &resources)
{
    return "/Type/XObject/Subtype/Form/BBox[0 0 500 500]/Resources<<" + resources + ">>";
}

/// A form that draws another ten times over, and so on down to @p innermost: more work than any
/// machine ends.
inline int addEndlessForms(PdfBuilder &pdf, int innermost)
{
    int inner = innermost;
    for (int level = 0; level < 25; ++level) {
        inner = pdf.addStream(form("/XObject<</X " + reference(inner) + ">>"),
                              "/X Do /X Do /X Do /X Do /X Do /X Do /X Do /X Do /X Do /X Do");
    }
    return inner;
}

/// Three pages, the second of them with one glyph that draws @p form.
inline void addPagesWithGlyph(PdfBuilder &pdf, int form)
{
    const int glyph = pdf.addStream({}, "500 0 0 0 500 500 d1 /X Do");
    const int font = pdf.add(
        "<</Type/Font/Subtype/Type3/FontBBox[0 0 500 500]/FontMatrix[.001 0 0 .001 0 0]"
        "/FirstChar 97/LastChar 97/Widths[500]/Encoding<</Differences[97/a]>>/CharProcs<</a " +
        reference(glyph) + ">>/Resources<</XObject<</X " + reference(form) + ">>>>>>");
    PdfBuilder::Page page;
    page.fonts = "/F9 " + reference(font);
    addThreePages(pdf, "BT /F9 12 Tf 10 10 Td (a) Tj ET", page);
}

} // namespace quorlin::test
