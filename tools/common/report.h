#pragma once

#include "tools/common/printable.h"
#include "tools/common/tool_error.h"

#include <string>
#include <string_view>

namespace tools {

/// Writes "TOOL: FILE: REASON" as one printable() line on stderr. An empty @p file leaves that
/// piece out.
void reportLine(std::string_view tool, std::string_view file, std::string_view reason);

/// Reports @p error and gives the exit status that goes with it.
int reportError(std::string_view tool, const ToolError &error);

} // namespace tools
