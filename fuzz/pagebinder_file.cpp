// A PDF file of any content through pagebinder, in process: it is counted and merged or refused by
// a ToolError, a refusal leaves nothing behind, and what was written is a PDF with the pages asked
// for.

#include "fuzz/scratch_file.h"
#include "tools/pagebinder/information.h"
#include "tools/pagebinder/merge.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <string>

namespace {

constexpr char toolName[] = "pagebinder";

/// Number of pages that pagebinder states for @p path. @throws ToolError
int statedPages(const std::string &path)
{
    tools::PdfContext context(toolName);
    tools::PdfFile file(context, path);
    const std::string text = tools::describeDocument(file);
    return std::atoi(text.c_str() + text.find(' '));
}

void tryMerge(const fuzz::ScratchFile &scratch, const std::vector<tools::PageRange> &ranges)
{
    const std::string output = scratch.path("output.pdf");
    try {
        tools::PdfContext context(toolName);
        tools::PdfFile file(context, scratch.input());
        tools::mergePages(file, ranges, output);
    } catch (const tools::ToolError &) {
        if (scratch.clear() != 0) {
            std::abort();
        }
        return;
    }
    try {
        if (statedPages(output) != tools::countPages(ranges)) {
            std::abort();
        }
    } catch (const tools::ToolError &) {
        std::abort(); // what was written cannot be opened
    }
    if (scratch.clear() != 1) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const fuzz::ScratchFile scratch;
    scratch.write(data, size);
    try {
        const int pages = statedPages(scratch.input());
        tryMerge(scratch, {{1, std::min(pages, 3)}});
        tryMerge(scratch, {{pages, pages}, {1, 1}, {pages, pages}});
    } catch (const tools::ToolError &) {
        return 0;
    } catch (const std::bad_alloc &) {
        return 0;
    }
    return 0;
}
