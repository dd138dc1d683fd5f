#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tools {

/// What a text begins with.
struct LeadingCharacter
{
    std::size_t bytes = 1;   ///< at least 1
    bool canBeShown = false; ///< false for bytes that are no UTF-8, too
};

/// @param text UTF-8, not empty
LeadingCharacter leadingCharacter(std::string_view text);

/// @p text with "?" in place of every character that must not be shown (see canBeShown()) and of
/// every byte that is no UTF-8.
std::string printable(std::string_view text);

} // namespace tools
