#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tools {

/// An object whose syntax has been mended.
struct MendedObject
{
    std::string text;       ///< the value in proper syntax; empty when there is none
    std::size_t stream = 0; ///< where the data of a stream begins in the source; 0: no stream
    bool isThere = false;   ///< whether the source begins with the object's number
};

/// Reads an object that breaks the syntax the way tolerant readers do: what is no name where a key
/// should be is passed over, a value that makes no sense is null, and what is not closed ends with
/// the object.
/// @param source the bytes of the file from "NUMBER GENERATION obj" on
/// @param number that of the object; nothing is made of another one
MendedObject mendObject(std::string_view source, int number);

} // namespace tools
