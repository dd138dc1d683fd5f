#pragma once

#include "tools/pagexport/text/font_program.h"
#include "tools/pagexport/text/text_codes.h"

#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

#include <array>
#include <cstdint>
#include <memory>
#include <unordered_map>

namespace tools {

/// One character code of a string, looked up in its font.
struct FontCode
{
    std::uint32_t code = 0;
    int bytes = 0;           ///< length of the code in the string; 0: nothing looked up yet
    int cid = 0;             ///< negative when the font's encoding does not know the code
    float width = 0;         ///< along a horizontal line, in ems
    float verticalWidth = 0; ///< down a vertical line, in ems
    Letters letters;         ///< what it stands for
};

/// Looks character codes up in a font once and remembers the answers: the library searches
/// its own tables again for every character.
class CachedFont
{
public:
    CachedFont(fz_context *context, pdf_font_desc *font);
    ~CachedFont();
    CachedFont(const CachedFont &) = delete;
    CachedFont &operator=(const CachedFont &) = delete;

    bool isVertical() const noexcept { return m_font->wmode != 0; }
    /// Width of the font's blank in ems; 0 when the font has none.
    double blank() const noexcept { return m_blank; }
    /// The code at the start of the bytes from @p begin to @p end, which must not be empty.
    const FontCode &next(unsigned char *begin, unsigned char *end) noexcept
    {
        const FontCode &entry = m_codes[*begin];
        return m_hasOneByteCodes && entry.bytes == 1 ? entry : find(begin, end);
    }

private:
    const FontCode &find(unsigned char *begin, unsigned char *end) noexcept;
    void lookUp(FontCode &entry) noexcept;
    Letters lettersOf(int cid) noexcept;
    float widthOf(int cid) const noexcept;
    double findBlank() noexcept;

    fz_context *m_context;
    pdf_font_desc *m_font;
    bool m_hasOneByteCodes;
    double m_blank = 0;
    FontProgram m_program;
    std::array<FontCode, 256> m_codes;
};

/// The fonts of a document seen so far, at most some dozens at a time.
class FontCache
{
public:
    explicit FontCache(fz_context *context) : m_context(context) {}

    /// The cached tables of @p font, or null when memory is short.
    CachedFont *find(pdf_font_desc *font) noexcept;
    /// Drops what is held beyond the limit. Pointers that find() gave become invalid: call it
    /// between pages only.
    void trim();

private:
    fz_context *m_context;
    std::unordered_map<const pdf_font_desc *, std::unique_ptr<CachedFont>> m_fonts;
    const pdf_font_desc *m_lastKey = nullptr;
    CachedFont *m_last = nullptr;
};

} // namespace tools
