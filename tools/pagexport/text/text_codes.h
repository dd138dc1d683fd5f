#pragma once

#include <cstdint>
#include <string>

namespace tools {

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

/// Appends @p code to @p text as UTF-8, ligatures spelt out, invalid values as U+FFFD.
void appendCode(std::string &text, int code);

} // namespace tools
