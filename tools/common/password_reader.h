#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tools {

class ArgumentReader;

/// The descriptor behind the option -passwords, -1 where it is not given.
inline constexpr int noPasswords = -1;

/// Takes the number of the descriptor behind @p option. @throws ToolError with exitUsageError
int takePasswordDescriptor(ArgumentReader &arguments, std::string_view option);

/// Reads the passwords that wait at @p descriptor, one a line, and closes it: a password in an
/// argument or in the environment could be seen by others. Empty lines are left out.
/// @throws ToolError with exitUsageError when they cannot be read or are more than 64 KiB
std::vector<std::string> readPasswords(int descriptor);

} // namespace tools
