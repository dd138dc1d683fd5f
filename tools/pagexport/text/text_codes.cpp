#include "tools/pagexport/text/text_codes.h"

#include <mupdf/ucdn.h>

#include <algorithm>

namespace tools {

namespace {

struct Range
{
    int first;
    int last;
};

constexpr std::array<Range, 6> blankRanges{{{0x20, 0x20},
                                            {0xa0, 0xa0},
                                            {0x1680, 0x1680},
                                            {0x2000, 0x200a},
                                            {0x202f, 0x202f},
                                            {0x205f, 0x205f}}};

constexpr std::array<Range, 16> droppedRanges{{{0x00, 0x1f},
                                               {0x7f, 0x9f},
                                               {0xad, 0xad},
                                               {0x34f, 0x34f},
                                               {0x61c, 0x61c},
                                               {0x180b, 0x180f},
                                               {0x200b, 0x200f},
                                               {0x202a, 0x202e},
                                               {0x2060, 0x206f},
                                               {0xfdd0, 0xfdef},
                                               {0xfe00, 0xfe0f},
                                               {0xfeff, 0xfeff},
                                               {0xfff0, 0xfffc},
                                               {0xfffe, 0xffff},
                                               {0x1bca0, 0x1bca3},
                                               {0xe0000, 0xe0fff}}};

template <std::size_t Size> bool contains(const std::array<Range, Size> &ranges, int code)
{
    return std::any_of(ranges.begin(), ranges.end(), [code](const Range &range) {
        return code >= range.first && code <= range.last;
    });
}

// Ligatures of Latin and Armenian, presentation forms of Hebrew and Arabic; radicals.
constexpr std::array<Range, 4> formRanges{
    {{0xfb00, 0xfdff}, {0xfe70, 0xfefe}, {0x2e80, 0x2ef3}, {0x2f00, 0x2fd5}}};
constexpr int firstForm = 0x2e80;
constexpr int firstRightToLeft = 0x590;
constexpr int deepestForms = 4;

void append(Letters &letters, int code)
{
    if (letters.count < Letters::most) {
        letters.codes[static_cast<std::size_t>(letters.count++)] = code;
    }
}

// Forms of vowel signs that stand alone are spelt with a blank to carry them; on a page the letter
// before does.
bool carriesMark(const std::array<std::uint32_t, Letters::most> &parts, int count)
{
    return count > 1 && parts[0] == ' ' && ucdn_get_bidi_class(parts[1]) == UCDN_BIDI_CLASS_NSM;
}

// A form may be made of forms, and of letters of old spelling; a letter with its sign, which is
// canonically two, stays one.
bool isForm(int code, int depth)
{
    if (code >= firstForm && contains(formRanges, code)) {
        return true;
    }
    std::uint32_t first = 0;
    std::uint32_t second = 0;
    return depth > 0 && ucdn_decompose(static_cast<std::uint32_t>(code), &first, &second) == 0;
}

void spellOut(Letters &letters, int code, int depth)
{
    std::array<std::uint32_t, Letters::most> parts{};
    int count = 0;
    if (depth < deepestForms && isForm(code, depth)) {
        count = ucdn_compat_decompose(static_cast<std::uint32_t>(code), parts.data());
    }
    if (count == 0) {
        append(letters, code);
        return;
    }
    for (int i = carriesMark(parts, count) ? 1 : 0; i < count; ++i) {
        spellOut(letters, static_cast<int>(parts[static_cast<std::size_t>(i)]), depth + 1);
    }
}

bool isWhiteSpaceControl(int code)
{
    return (code >= 0x09 && code <= 0x0d) || code == 0x85;
}

} // namespace

CodeKind codeKind(int code) noexcept
{
    if (code > 0x20 && code < 0x7f) {
        return CodeKind::visible;
    }
    if (isWhiteSpaceControl(code) || contains(blankRanges, code) || code == 0x2028 ||
        code == 0x2029 || code == 0x3000) {
        return CodeKind::blank;
    }
    if (contains(droppedRanges, code) || (code > 0xffff && (code & 0xfffe) == 0xfffe)) {
        return CodeKind::dropped;
    }
    return CodeKind::visible;
}

bool isRightToLeft(int code) noexcept
{
    if (code < firstRightToLeft) {
        return false;
    }
    const int direction = ucdn_get_bidi_class(static_cast<std::uint32_t>(code));
    return direction == UCDN_BIDI_CLASS_R || direction == UCDN_BIDI_CLASS_AL;
}

bool isLetterOrDigit(int code) noexcept
{
    if (code < 0) {
        return false;
    }
    switch (ucdn_get_general_category(static_cast<std::uint32_t>(code))) {
    case UCDN_GENERAL_CATEGORY_LL:
    case UCDN_GENERAL_CATEGORY_LM:
    case UCDN_GENERAL_CATEGORY_LO:
    case UCDN_GENERAL_CATEGORY_LT:
    case UCDN_GENERAL_CATEGORY_LU:
    case UCDN_GENERAL_CATEGORY_ND:
        return true;
    default:
        return false;
    }
}

Letters Letters::of(const int *source, int codeCount) noexcept
{
    Letters letters;
    for (int i = 0; i < codeCount; ++i) {
        spellOut(letters, source[i], 0);
    }
    if (letters.count != 0) {
        letters.kind = codeKind(letters.codes[0]);
        letters.spaced = isLetterOrDigit(letters.codes[0]);
        letters.rightToLeft = std::any_of(letters.codes.begin(),
                                          letters.codes.begin() + letters.count, isRightToLeft);
        letters.plain =
            letters.count == 1 && letters.kind == CodeKind::visible && !letters.rightToLeft;
    }
    return letters;
}

void appendCode(std::string &text, int code)
{
    if (code < 0 || code > 0x10ffff || (code >= 0xd800 && code <= 0xdfff)) {
        code = replacementCharacter;
    }
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xc0 | (code >> 6));
        text += static_cast<char>(0x80 | (code & 0x3f));
    } else if (code < 0x10000) {
        text += static_cast<char>(0xe0 | (code >> 12));
        text += static_cast<char>(0x80 | ((code >> 6) & 0x3f));
        text += static_cast<char>(0x80 | (code & 0x3f));
    } else {
        text += static_cast<char>(0xf0 | (code >> 18));
        text += static_cast<char>(0x80 | ((code >> 12) & 0x3f));
        text += static_cast<char>(0x80 | ((code >> 6) & 0x3f));
        text += static_cast<char>(0x80 | (code & 0x3f));
    }
}

} // namespace tools
