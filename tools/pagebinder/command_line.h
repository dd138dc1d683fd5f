#pragma once

#include "tools/pagebinder/page_ranges.h"

#include <string>
#include <vector>

namespace tools {

/// What one start of the program is asked to do.
struct BinderCommand
{
    enum class Action { getInformation, merge, showHelp, showVersion };

    Action action = Action::showHelp;
    std::string input;
    std::string output;
    std::vector<PageRange> ranges; ///< for merge, in the order given
};

/// Reads the arguments after the program's name.
/// @throws ToolError with exitUsageError when they make no sense
BinderCommand parseCommandLine(const std::vector<std::string> &arguments);

/// The text of --help.
const char *helpText();

} // namespace tools
