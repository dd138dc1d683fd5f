#pragma once

#include "tools/common/tool_error.h"

#include <string>
#include <string_view>

namespace tools {

/// @p text with every control character shown as "?".
std::string printable(std::string_view text);

/// Writes "TOOL: FILE: REASON" as one line on stderr; control characters are shown as "?", so that
/// no file name can break the line. An empty @p file leaves that piece out.
void reportLine(std::string_view tool, std::string_view file, std::string_view reason);

/// Reports @p error and gives the exit status that goes with it.
int reportError(std::string_view tool, const ToolError &error);

} // namespace tools
