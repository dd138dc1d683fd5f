#pragma once

#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

#include <array>
#include <vector>

namespace tools {

/// What a font program itself says about its glyphs: the last resort for a character code that the
/// file has no text for.
class FontProgram
{
public:
    /// @param font must outlive this object
    FontProgram(fz_context *context, pdf_font_desc *font) noexcept
        : m_context(context), m_font(font)
    {
    }

    /// The code point of the glyph that the font draws for @p cid: as its own table of characters
    /// has it, or as the glyph's name tells; U+0020 for a glyph without ink. U+FFFD when nothing
    /// tells, and for fonts that are not embedded, whose glyphs are another font's.
    int codeOf(int cid) noexcept;
    /// The letters of a ligature whose glyph is named by them ("f_i").
    /// @return how many; 0 for all other glyphs
    int ligatureOf(int cid, std::array<int, PDF_MRANGE_CAP> &codes) const noexcept;

private:
    using Name = std::array<char, 64>;

    bool hasGlyphs() const noexcept;
    Name nameOf(unsigned glyph) const noexcept;
    int glyphOf(int cid) const noexcept;
    int codeFromTable(unsigned glyph);
    int codeFromName(unsigned glyph) const noexcept;
    bool isWithoutInk(unsigned glyph) const noexcept;
    void readTable();

    fz_context *m_context;
    pdf_font_desc *m_font;
    std::vector<unsigned short> m_codes; ///< by glyph; read when it is first needed
    bool m_isRead = false;
};

} // namespace tools
