#pragma once

#include "tools/common/password_reader.h"
#include "tools/pagebinder/page_ranges.h"

#include <string>
#include <string_view>
#include <vector>

namespace tools {

/// What one start of the program is asked to do.
struct BinderArguments
{
    enum class Action { getInformation, merge, split, showHelp, showVersion };

    Action action = Action::showHelp;
    std::string input;
    std::string output;            ///< "-" for standard output; empty for split
    std::string list;              ///< for split: the file with the entries, "-" for standard input
    int passwords = noPasswords;   ///< descriptor to read passwords from
    std::vector<PageRange> ranges; ///< for merge, in the order given
};

/// Reads the arguments after the program's name.
/// @throws ToolError with exitUsageError when they make no sense
BinderArguments parseBinderArguments(const std::vector<std::string_view> &arguments);

/// The text of --help.
const char *helpText();

} // namespace tools
