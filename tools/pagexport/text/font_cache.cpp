#include "tools/pagexport/text/font_cache.h"

namespace tools {

namespace {

constexpr std::size_t maximumFonts = 64;
constexpr float perMille = 0.001F;

// Tables that name no letter for a code often name a zero or a control character.
bool isUsable(int code)
{
    return code != replacementCharacter && (code >= 0x20 || (code >= 0x09 && code <= 0x0d));
}

bool hasOneByteCodes(const pdf_cmap *encoding)
{
    return encoding->codespace_len == 1 && encoding->codespace[0].n == 1 &&
           encoding->codespace[0].low == 0 && encoding->codespace[0].high >= 0xff;
}

} // namespace

CachedFont::CachedFont(fz_context *context, pdf_font_desc *font)
    : m_context(context), m_font(pdf_keep_font(context, font)),
      m_hasOneByteCodes(hasOneByteCodes(font->encoding)), m_program(context, font)
{
    m_blank = findBlank();
}

CachedFont::~CachedFont()
{
    pdf_drop_font(m_context, m_font);
}

const FontCode &CachedFont::find(unsigned char *begin, unsigned char *end) noexcept
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
    entry.letters = {};
    if (entry.cid < 0) {
        return;
    }
    entry.width = widthOf(entry.cid);
    if (isVertical()) {
        entry.verticalWidth = pdf_lookup_vmtx(m_context, m_font, entry.cid).w * perMille;
    }
    entry.letters = lettersOf(entry.cid);
}

float CachedFont::widthOf(int cid) const noexcept
{
    return static_cast<float>(pdf_lookup_hmtx(m_context, m_font, cid).w) * perMille;
}

Letters CachedFont::lettersOf(int cid) noexcept
{
    std::array<int, PDF_MRANGE_CAP> codes{};
    int count = 0;
    if (m_font->to_unicode != nullptr) {
        count = pdf_lookup_cmap_full(m_font->to_unicode, static_cast<unsigned>(cid), codes.data());
        if (count > 1 || (count == 1 && isUsable(codes[0]))) {
            return Letters::of(codes.data(), count);
        }
    }
    // Names count where the file says nothing else: they may be mere numbers.
    const auto index = static_cast<std::size_t>(cid);
    const int named = count == 0 && index < m_font->cid_to_ucs_len ? m_font->cid_to_ucs[index] : 0;
    if (isUsable(named)) {
        const int letters = m_program.ligatureOf(cid, codes);
        if (letters != 0) {
            return Letters::of(codes.data(), letters);
        }
    }
    int code = isUsable(named) ? named : m_program.codeOf(cid);
    if (!isUsable(code)) { // the control character that the file names, if any
        const int control = count == 1 ? codes[0] : named;
        code = control == 0 ? replacementCharacter : control;
    }
    return Letters::of(&code, 1);
}

// The blank is looked for among the codes that stand for it: its own code point says nothing about
// the code under which a font has it.
double CachedFont::findBlank() noexcept
{
    if (m_hasOneByteCodes) {
        unsigned char code = ' ';
        const FontCode &entry = next(&code, &code + 1);
        if (entry.cid >= 0 && entry.letters.kind == CodeKind::blank) {
            return entry.width;
        }
    }
    if (m_font->to_unicode == nullptr) {
        return 0;
    }
    for (int i = 0; i < m_font->to_unicode->rlen; ++i) {
        const pdf_range &range = m_font->to_unicode->ranges[i];
        for (const int blank : {0x20, 0xa0}) {
            if (range.out <= blank && blank - range.out <= range.high - range.low) {
                return widthOf(range.low + blank - range.out);
            }
        }
    }
    return 0;
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
