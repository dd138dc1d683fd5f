// A PDF file of any content through pagebinder, in process: it is counted and merged or refused by
// a ToolError, a refusal leaves nothing behind, what was written is a PDF with the pages asked for,
// and it is the same whether the file was opened quickly or by the library alone.

#include "fuzz/scratch_file.h"
#include "tools/pagebinder/document/information.h"
#include "tools/pagebinder/merge.h"
#include "tools/pagebinder/output/output_places.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <new>
#include <optional>
#include <string>

namespace {

constexpr char toolName[] = "pagebinder";

/// Number of pages that pagebinder states for @p path. @throws ToolError
int statedPages(const std::string &path)
{
    tools::PdfContext context(toolName);
    tools::SourceFile file(context, path);
    const std::string text = tools::describeDocument(file);
    return std::atoi(text.c_str() + text.find(' '));
}

std::string contentOf(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The output of a merge; nothing when it is refused.
std::optional<std::string> merged(const fuzz::ScratchFile &scratch,
                                  const std::vector<tools::PageRange> &ranges,
                                  tools::SourceFile::Opening opening)
{
    const std::string output = scratch.path("output.pdf");
    try {
        tools::PdfContext context(toolName);
        tools::InputFile input(scratch.input());
        const tools::OutputPlaces places(input, {output});
        tools::SourceFile file(context, std::move(input), opening);
        tools::mergePages(file, ranges, places.at(0));
    } catch (const tools::ToolError &) {
        if (scratch.clear() != 0) {
            std::abort();
        }
        return std::nullopt;
    }
    return contentOf(output);
}

void tryMerge(const fuzz::ScratchFile &scratch, const std::vector<tools::PageRange> &ranges)
{
    const std::optional<std::string> slow =
        merged(scratch, ranges, tools::SourceFile::Opening::byLibrary);
    const std::optional<std::string> quick =
        merged(scratch, ranges, tools::SourceFile::Opening::quick);
    // An encryption that is kept begins with random bytes, in every output anew.
    const bool isRandom = slow && quick && slow->find("/Encrypt") != std::string::npos;
    if (isRandom ? slow->size() != quick->size() : slow != quick) {
        std::abort(); // an output must not depend on how the file was opened
    }
    if (!slow) {
        return;
    }
    try {
        if (statedPages(scratch.path("output.pdf")) != tools::countPages(ranges)) {
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
