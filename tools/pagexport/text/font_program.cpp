#include "tools/pagexport/text/font_program.h"

#include "tools/pagexport/text/text_codes.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <cstring>
#include <iterator>
#include <new>

namespace tools {

namespace {

constexpr FT_ULong firstPrivate = 0xe000; // private use says nothing about the letter
constexpr FT_ULong lastPrivate = 0xf8ff;
constexpr FT_ULong lastCode = 0xfffc;

FT_Face faceOf(const pdf_font_desc *font)
{
    return font->font == nullptr ? nullptr : static_cast<FT_Face>(font->font->ft_face);
}

// Other tables number the glyphs as the producer liked.
FT_CharMap unicodeTable(FT_Face face)
{
    FT_CharMap *const end = face->charmaps + face->num_charmaps;
    FT_CharMap *const found = std::find_if(face->charmaps, end, [](FT_CharMap table) {
        return table->encoding == FT_ENCODING_UNICODE;
    });
    return found == end ? nullptr : *found;
}

} // namespace

bool FontProgram::hasGlyphs() const noexcept
{
    return m_font->is_embedded != 0 && faceOf(m_font) != nullptr;
}

int FontProgram::ligatureOf(int cid, std::array<int, PDF_MRANGE_CAP> &codes) const noexcept
{
    const int glyph = hasGlyphs() ? glyphOf(cid) : 0;
    if (glyph <= 0) {
        return 0;
    }
    Name name = nameOf(static_cast<unsigned>(glyph));
    *std::find(name.begin(), std::prev(name.end()), '.') = '\0'; // a variant: "f_i.alt"
    int count = 0;
    char *part = name.data();
    while (part != nullptr && count < PDF_MRANGE_CAP) {
        char *next = std::strchr(part, '_');
        if (next != nullptr) {
            *next++ = '\0';
        }
        const int code = fz_unicode_from_glyph_name_strict(part);
        if (code <= 0) {
            return 0;
        }
        codes[static_cast<std::size_t>(count++)] = code;
        part = next;
    }
    return count > 1 ? count : 0;
}

int FontProgram::codeOf(int cid) noexcept
{
    if (!hasGlyphs()) {
        return replacementCharacter;
    }
    const int glyph = glyphOf(cid);
    if (glyph <= 0) {
        return replacementCharacter;
    }
    try {
        const auto index = static_cast<unsigned>(glyph);
        int code = codeFromTable(index);
        if (code == replacementCharacter) {
            code = codeFromName(index);
        }
        return code == replacementCharacter && isWithoutInk(index) ? ' ' : code;
    } catch (const std::bad_alloc &) {
        return replacementCharacter;
    }
}

int FontProgram::glyphOf(int cid) const noexcept
{
    int glyph = 0;
    fz_var(glyph);
    fz_try(m_context)
    {
        glyph = pdf_font_cid_to_gid(m_context, m_font, cid);
    }
    fz_catch(m_context)
    {
        glyph = 0;
    }
    return glyph;
}

// The table leads from code points to glyphs; it is turned round once.
void FontProgram::readTable()
{
    m_isRead = true;
    const FT_Face face = faceOf(m_font);
    const FT_CharMap table = unicodeTable(face);
    if (table == nullptr || face->num_glyphs <= 0) {
        return;
    }
    m_codes.resize(static_cast<std::size_t>(face->num_glyphs));
    const FT_CharMap inUse = face->charmap;
    FT_Set_Charmap(face, table);
    FT_UInt glyph = 0;
    for (FT_ULong code = FT_Get_First_Char(face, &glyph); glyph != 0 && code <= lastCode;
         code = FT_Get_Next_Char(face, code, &glyph)) {
        const bool isPrivate = code >= firstPrivate && code <= lastPrivate;
        if (glyph < m_codes.size() && m_codes[glyph] == 0 && !isPrivate) {
            m_codes[glyph] = static_cast<unsigned short>(code);
        }
    }
    face->charmap = inUse;
}

int FontProgram::codeFromTable(unsigned glyph)
{
    if (!m_isRead) {
        readTable();
    }
    return glyph < m_codes.size() && m_codes[glyph] != 0 ? m_codes[glyph] : replacementCharacter;
}

int FontProgram::codeFromName(unsigned glyph) const noexcept
{
    return fz_unicode_from_glyph_name(nameOf(glyph).data());
}

FontProgram::Name FontProgram::nameOf(unsigned glyph) const noexcept
{
    const FT_Face face = faceOf(m_font);
    Name name{};
    if (!FT_HAS_GLYPH_NAMES(face) ||
        FT_Get_Glyph_Name(face, glyph, name.data(), static_cast<FT_UInt>(name.size())) != 0) {
        name[0] = '\0';
    }
    return name;
}

bool FontProgram::isWithoutInk(unsigned glyph) const noexcept
{
    const FT_Face face = faceOf(m_font);
    return FT_Load_Glyph(face, glyph, FT_LOAD_NO_SCALE | FT_LOAD_NO_BITMAP) == 0 &&
           face->glyph->format == FT_GLYPH_FORMAT_OUTLINE && face->glyph->outline.n_points == 0;
}

} // namespace tools
