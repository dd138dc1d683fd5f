#pragma once

#include "tools/common/name_shortening.h"

#include <string>

namespace tools {

/// @p output with its last part shortened to what the file system takes, which is then said on
/// stderr. @param input path of the input
std::string fittingOutput(const std::string &input, const std::string &output);

/// Refuses what can never be an output: a folder's name, and the input itself, under whatever name.
/// @throws ToolError
void checkOutput(const std::string &input, const std::string &output);

} // namespace tools
