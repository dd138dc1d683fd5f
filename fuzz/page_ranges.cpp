// Page selections, command lines and lists of outputs of any content: a selection that is taken
// stands for exactly what was written, and the rest is either understood or refused.

#include "tools/pagebinder/page_ranges.h"
#include "tools/common/tool_error.h"
#include "tools/pagebinder/arguments.h"
#include "tools/pagebinder/split_list.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

/// @p number without the zeros in front of it.
std::string plainNumber(const std::string &number)
{
    return number.substr(std::min(number.find_first_not_of('0'), number.size()));
}

bool standsFor(const tools::PageRange &range, const std::string &text)
{
    const std::size_t hyphen = text.find('-');
    const std::string last = hyphen == std::string::npos ? text : text.substr(hyphen + 1);
    return range.first >= 1 && range.first <= range.last &&
           std::to_string(range.first) == plainNumber(text.substr(0, hyphen)) &&
           std::to_string(range.last) == plainNumber(last);
}

void tryRange(const std::string &text)
{
    tools::PageRange range;
    const bool taken = tools::parsePageRange(text, range);
    if (taken ? !standsFor(range, text) : !(range == tools::PageRange())) {
        std::abort();
    }
}

void tryArguments(const std::vector<std::string> &arguments)
{
    try {
        const tools::BinderArguments read =
            tools::parseBinderArguments({arguments.begin(), arguments.end()});
        for (const tools::PageRange &range : read.ranges) {
            if (range.first < 1 || range.last < range.first) {
                std::abort();
            }
        }
        if (read.action == tools::BinderArguments::Action::split && read.list.empty()) {
            std::abort();
        }
        if (read.action == tools::BinderArguments::Action::merge &&
            (read.ranges.empty() || read.input.empty() || read.output.empty())) {
            std::abort();
        }
    } catch (const tools::ToolError &error) {
        if (error.status() != tools::exitUsageError) {
            std::abort();
        }
    }
}

/// A list that is taken names an output and pages in every entry, and as many as there are ends.
void trySplitList(const std::string &text)
{
    try {
        const std::vector<tools::SplitEntry> entries = tools::parseSplitList(text, "list");
        const char end = text.find('\0') == std::string::npos ? '\n' : '\0';
        bool isWhole =
            entries.size() == static_cast<std::size_t>(std::count(text.begin(), text.end(), end));
        for (const tools::SplitEntry &entry : entries) {
            isWhole = isWhole && !entry.ranges.empty() && !entry.output.empty();
        }
        if (!isWhole) {
            std::abort();
        }
    } catch (const tools::ToolError &error) {
        if (error.status() != tools::exitUsageError) {
            std::abort();
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), size);
    std::vector<std::string> arguments;
    std::size_t begin = 0;
    while (begin <= text.size()) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        arguments.push_back(text.substr(begin, end - begin));
        tryRange(arguments.back());
        begin = end + 1;
    }
    tryArguments(arguments);
    trySplitList(text);
    return 0;
}
