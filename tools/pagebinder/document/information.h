#pragma once

#include "tools/common/tool_error.h"
#include "tools/pagebinder/output/output.h"
#include "tools/pdf/source_file.h"

#include <string>

namespace tools {

/// What is known about @p file, a line a fact. The first line is "NumberOfPages: N"; no value holds
/// a line break.
/// @throws ToolError when the file has no pages
std::string describeDocument(SourceFile &file);

/// Writes that to @p output, which appears whole or not at all.
/// @throws ToolError, InputChanged
void writeInformation(SourceFile &file, const OutputPlace &output);

/// @p value as it may stand in a line: characters that must not be shown become blanks, and a text
/// too long for a line is cut between two characters.
std::string cleanValue(const std::string &value);

} // namespace tools
