#pragma once

#include <array>

namespace tools {

/// Whether a character of a name or text may be shown to people as it is. Control characters can
/// begin a line or steer a terminal, and those that turn the direction of writing can make a path
/// look like another one; the invisible ones beside them hide what a name really is.
///
/// The programs share this header, which needs nothing but the language.
constexpr bool canBeShown(char32_t character)
{
    struct Stretch
    {
        char32_t first;
        char32_t last;
    };
    constexpr std::array hidden = {
        Stretch{0x0000, 0x001f},   Stretch{0x007f, 0x009f}, Stretch{0x061c, 0x061c},
        Stretch{0x200b, 0x200f},   Stretch{0x2028, 0x202e}, Stretch{0x2060, 0x2069},
        Stretch{0xd800, 0xdfff},   Stretch{0xfeff, 0xfeff}, Stretch{0xfff9, 0xfffb},
        Stretch{0xe0000, 0xe007f},
    };
    for (const Stretch &stretch : hidden) {
        if (character >= stretch.first && character <= stretch.last) {
            return false;
        }
    }
    return character <= 0x10ffff;
}

} // namespace tools
