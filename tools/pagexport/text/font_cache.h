#pragma once

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
    int codeCount = 0;
    std::array<int, 8> codes{}; ///< the code points it stands for
};

/// Looks character codes up in a font once and remembers the answers: the library's own tables are
/// searched anew for every character.
class CachedFont
{
public:
    CachedFont(fz_context *context, pdf_font_desc *font);
    ~CachedFont();
    CachedFont(const CachedFont &) = delete;
    CachedFont &operator=(const CachedFont &) = delete;

    bool isVertical() const noexcept { return m_font->wmode != 0; }
    /// The code at the start of the bytes from @p begin to @p end, which must not be empty.
    const FontCode &next(unsigned char *begin, unsigned char *end) noexcept;

private:
    void lookUp(FontCode &entry) noexcept;

    fz_context *m_context;
    pdf_font_desc *m_font;
    bool m_hasOneByteCodes;
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
