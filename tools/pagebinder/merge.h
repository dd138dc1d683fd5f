#pragma once

#include "tools/common/tool_error.h"
#include "tools/pdf/source_file.h"
#include "tools/pagebinder/page_ranges.h"

#include <string>
#include <vector>

namespace tools {

/// Writes the pages of @p file that @p ranges name to @p output, which appears whole or not at all.
/// @throws ToolError when a page does not exist or the output cannot be written
void mergePages(SourceFile &file, const std::vector<PageRange> &ranges, const std::string &output);

} // namespace tools
