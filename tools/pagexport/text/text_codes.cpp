#include "tools/pagexport/text/text_codes.h"

#include <algorithm>
#include <array>

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

constexpr std::array<Range, 6> rightToLeftRanges{{{0x590, 0x8ff},
                                                  {0xfb1d, 0xfdcf},
                                                  {0xfdf0, 0xfdff},
                                                  {0xfe70, 0xfefe},
                                                  {0x10800, 0x10fff},
                                                  {0x1e800, 0x1efff}}};

constexpr std::array<const char *, 7> latinLigatures{"ff", "fi", "fl", "ffi", "ffl", "st", "st"};
constexpr int firstLatinLigature = 0xfb00;
constexpr int replacementCharacter = 0xfffd;

template <std::size_t Size> bool contains(const std::array<Range, Size> &ranges, int code)
{
    return std::any_of(ranges.begin(), ranges.end(), [code](const Range &range) {
        return code >= range.first && code <= range.last;
    });
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
    return code >= 0x590 && contains(rightToLeftRanges, code);
}

void appendCode(std::string &text, int code)
{
    const int ligature = code - firstLatinLigature;
    if (ligature >= 0 && ligature < static_cast<int>(latinLigatures.size())) {
        text += latinLigatures[static_cast<std::size_t>(ligature)];
        return;
    }
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
