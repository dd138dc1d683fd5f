#pragma once

#include "tools/pagebinder/merge.h"
#include "tools/pagebinder/output/output_places.h"
#include "tools/pagebinder/split_list.h"

#include <string>
#include <string_view>
#include <vector>

namespace tools {

/// Writes the outputs of @p entries, to @p places in the same order, one after another and reports
/// each on standard output as soon as it is there. One that fails is named on stderr, too, and the
/// others go on. When the input has changed, all that are not there yet fail.
/// @returns exitSuccess, exitStandIns when an output has some, exitInputError when one failed
/// @throws ReaderGone, ToolError when standard output takes no more
ExitStatus splitPages(SourceFile &file, const std::vector<SplitEntry> &entries,
                      const OutputPlaces &places);

/// The lines that report an output, as standard output has them. @p index counts from 1.
std::string doneLine(std::size_t index, const MergeResult &result, std::string_view path);
std::string failedLine(std::size_t index, std::string_view reason);

/// @p path as it stands in a report: bytes that cannot be shown (see printable()) as "\xHH" each, a
/// backslash as two.
std::string escapedPath(std::string_view path);

} // namespace tools
