#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace tools {

/// U+FFFD, which stands for a letter that is not known.
inline constexpr int replacementCharacter = 0xfffd;

/// What a code point of a PDF text means for the exported text.
enum class CodeKind : std::uint8_t {
    visible, ///< stands in the text
    blank,   ///< white space of any kind: one blank between visible characters
    dropped  ///< never appears: control, format, zero-width and direction marks, soft hyphen
};

/// The kind of @p code. Values that are no code points (negative, beyond U+10FFFF, surrogates) are
/// visible, since a glyph stands there; they are written as U+FFFD.
CodeKind codeKind(int code) noexcept;

/// True for letters of scripts that are written from right to left.
bool isRightToLeft(int code) noexcept;

/// True for letters and digits of any script.
bool isLetterOrDigit(int code) noexcept;

/// What one glyph stands for: the letters themselves, where the file names a form of them.
/// Ligatures and presentation forms of Arabic and Hebrew are spelt out, radicals are the ideographs
/// that they are drawn as.
struct Letters
{
    static constexpr int most = 18;

    int count = 0;
    CodeKind kind = CodeKind::visible; ///< of the first code
    bool rightToLeft = false;          ///< whether any of them is
    bool spaced = false;               ///< whether the first one is a letter or digit
    bool plain = false;                ///< one visible letter that is read from left to right
    std::array<int, most> codes{};

    /// The letters of the @p codeCount code points at @p source; what exceeds the space is cut.
    static Letters of(const int *source, int codeCount) noexcept;
};

/// Appends @p code to @p text as UTF-8, invalid values as U+FFFD.
void appendCode(std::string &text, int code);

/// Whether @p code is one byte of UTF-8.
constexpr bool isAscii(int code) noexcept
{
    return code >= 0 && code < 0x80;
}

} // namespace tools
