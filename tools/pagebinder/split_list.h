#pragma once

#include "tools/common/tool_error.h"
#include "tools/pagebinder/page_ranges.h"

#include <string>
#include <string_view>
#include <vector>

namespace tools {

/// One output that -split writes.
struct SplitEntry
{
    std::vector<PageRange> ranges; ///< in the order given
    std::string output;

    bool operator==(const SplitEntry &) const = default;
};

/// Takes the list of outputs apart. An entry is "RANGES TAB PATH", RANGES separated by blanks; it
/// ends with a NUL or, in a list without any NUL, with a line feed. So a path may hold whatever a
/// file system takes.
/// @param name of the list, for the message
/// @throws ToolError with exitUsageError when there is no entry, or one that is not as it should
///     be, or the last one is cut off
std::vector<SplitEntry> parseSplitList(std::string_view list, const std::string &name);

/// Reads the file @p path, or standard input for "-", to its end and takes it apart.
/// @throws ToolError as parseSplitList() does, or when it cannot be read
std::vector<SplitEntry> readSplitList(const std::string &path);

} // namespace tools
