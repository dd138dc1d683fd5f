#include "tools/pagexport/text/font_cache.h"

namespace tools {

namespace {

constexpr std::size_t maximumFonts = 64;
constexpr float perMille = 0.001F;
constexpr int replacementCharacter = 0xfffd;

bool hasOneByteCodes(const pdf_cmap *encoding)
{
    return encoding->codespace_len == 1 && encoding->codespace[0].n == 1 &&
           encoding->codespace[0].low == 0 && encoding->codespace[0].high >= 0xff;
}

} // namespace

CachedFont::CachedFont(fz_context *context, pdf_font_desc *font)
    : m_context(context), m_font(pdf_keep_font(context, font)),
      m_hasOneByteCodes(hasOneByteCodes(font->encoding))
{
}

CachedFont::~CachedFont()
{
    pdf_drop_font(m_context, m_font);
}

const FontCode &CachedFont::next(unsigned char *begin, unsigned char *end) noexcept
{
    unsigned code = *begin;
    int bytes = 1;
    if (!m_hasOneByteCodes) {
        bytes = pdf_decode_cmap(m_font->encoding, begin, end, &code);
    }
    FontCode &entry = m_codes[code & 0xff];
    if (entry.bytes != bytes || entry.code != code) {
        entry.code = code;
        entry.bytes = bytes;
        lookUp(entry);
    }
    return entry;
}

void CachedFont::lookUp(FontCode &entry) noexcept
{
    entry.cid = pdf_lookup_cmap(m_font->encoding, entry.code);
    entry.codeCount = 0;
    if (entry.cid < 0) {
        return;
    }
    entry.width = static_cast<float>(pdf_lookup_hmtx(m_context, m_font, entry.cid).w) * perMille;
    if (isVertical()) {
        entry.verticalWidth = pdf_lookup_vmtx(m_context, m_font, entry.cid).w * perMille;
    }
    if (m_font->to_unicode != nullptr) {
        entry.codeCount = pdf_lookup_cmap_full(m_font->to_unicode, static_cast<unsigned>(entry.cid),
                                               entry.codes.data());
    }
    const auto cid = static_cast<std::size_t>(entry.cid);
    if (entry.codeCount == 0 && cid < m_font->cid_to_ucs_len) {
        entry.codes[0] = m_font->cid_to_ucs[cid];
        entry.codeCount = 1;
    }
    if (entry.codeCount == 0 || (entry.codeCount == 1 && entry.codes[0] == 0)) {
        entry.codes[0] = replacementCharacter;
        entry.codeCount = 1;
    }
}

CachedFont *FontCache::find(pdf_font_desc *font) noexcept
{
    if (font == m_lastKey) {
        return m_last;
    }
    try {
        std::unique_ptr<CachedFont> &place = m_fonts[font];
        if (!place) {
            place = std::make_unique<CachedFont>(m_context, font);
        }
        m_lastKey = font;
        m_last = place.get();
        return m_last;
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}

void FontCache::trim()
{
    if (m_fonts.size() > maximumFonts) {
        m_fonts.clear();
        m_lastKey = nullptr;
        m_last = nullptr;
    }
}

} // namespace tools
