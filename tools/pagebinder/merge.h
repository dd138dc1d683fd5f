#pragma once

#include "tools/common/tool_error.h"
#include "tools/pagebinder/output/output.h"
#include "tools/pagebinder/page_ranges.h"
#include "tools/pdf/source_file.h"

#include <memory>
#include <string>
#include <vector>

namespace tools {

struct DocumentParts;

/// What became of one output.
struct MergeResult
{
    std::uint64_t bytes = 0;
    std::vector<int> standIns; ///< pages that cannot be read, counted from 1, in the output's order
};

/// Writes outputs of pages of one file. What is looked up in the whole document is read once for
/// all of them.
class PageMerger
{
public:
    /// @param file must outlive the merger
    explicit PageMerger(SourceFile &file);
    ~PageMerger();
    PageMerger(const PageMerger &) = delete;
    PageMerger &operator=(const PageMerger &) = delete;

    /// Writes the pages that @p ranges name to @p output and publishes it, provided that the input
    /// has not changed.
    /// @throws ToolError when a page does not exist or the output cannot be written, InputChanged
    MergeResult merge(const std::vector<PageRange> &ranges, Output &output);

private:
    MergeResult copyPages(const std::vector<int> &pages, Output &output);
    void forgetObjects();

    SourceFile &m_file;
    std::unique_ptr<DocumentParts> m_parts;
    std::size_t m_copied = 0; ///< objects since the document forgot the last ones
};

/// Writes one output to @p output, which appears whole or not at all.
/// @throws ToolError as PageMerger::merge() does
MergeResult mergePages(SourceFile &file, const std::vector<PageRange> &ranges,
                       const OutputPlace &output);

} // namespace tools
