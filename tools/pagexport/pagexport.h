#pragma once

#include "tools/pagexport/arguments.h"

namespace tools {

/// The whole program but the limits it sets for its process: reads the arguments, exports, reports
/// errors on stderr.
/// @return exit status: 0 done, 1 input or output error, 2 wrong usage
int runPageExport(int argc, const char *const *argv);

/// Exports the pages. On failure nothing of this export and nothing of an earlier one is left.
/// @throws ToolError
void exportPages(const ExportArguments &arguments);

/// Writes the items of the pages to standard output.
/// @throws ToolError, ReaderGone
void listItems(const ExportArguments &arguments);

} // namespace tools
