#include "tools/common/printable.h"

#include "tools/common/shown_character.h"

namespace tools {

namespace {

/// Length of the character that begins with @p first, 0 when none does.
std::size_t lengthOf(unsigned char first)
{
    if (first < 0x80) {
        return 1;
    }
    if (first < 0xc2 || first > 0xf4) {
        return 0;
    }
    return first < 0xe0 ? 2 : first < 0xf0 ? 3 : 4;
}

/// Whether so long a form was needed for @p character.
bool isShortest(char32_t character, std::size_t length)
{
    return length < 3 || character >= (length == 3 ? 0x800U : 0x10000U);
}

} // namespace

LeadingCharacter leadingCharacter(std::string_view text)
{
    const auto first = static_cast<unsigned char>(text.front());
    const std::size_t length = lengthOf(first);
    if (length == 0 || length > text.size()) {
        return {};
    }
    char32_t character = length == 1 ? first : first & (0xffU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xc0U) != 0x80U) {
            return {};
        }
        character = character << 6U | (byte & 0x3fU);
    }
    if (!isShortest(character, length)) {
        return {};
    }
    return {length, canBeShown(character)};
}

std::string printable(std::string_view text)
{
    std::string shown;
    while (!text.empty()) {
        const LeadingCharacter character = leadingCharacter(text);
        if (character.canBeShown) {
            shown += text.substr(0, character.bytes);
        } else {
            shown += '?';
        }
        text.remove_prefix(character.bytes);
    }
    return shown;
}

} // namespace tools
