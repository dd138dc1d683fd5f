#include "tools/pagebinder/split_list.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace tools {

namespace {

constexpr const char *standardInputName = "-";

std::vector<PageRange> parseRanges(std::string_view text)
{
    std::vector<PageRange> ranges;
    while (!text.empty()) {
        const std::size_t blank = text.find(' ');
        const std::string_view piece = text.substr(0, blank);
        PageRange range;
        if (!piece.empty() && !parsePageRange(piece, range)) {
            return {};
        }
        if (!piece.empty()) {
            ranges.push_back(range);
        }
        text.remove_prefix(blank == std::string_view::npos ? text.size() : blank + 1);
    }
    return ranges;
}

SplitEntry parseEntry(std::string_view text, const std::string &list, std::size_t number)
{
    const auto fail = [&list, number](const char *reason) {
        throw ToolError(list, "entry " + std::to_string(number) + reason, exitUsageError);
    };
    const std::size_t tab = text.find('\t');
    if (tab == std::string_view::npos) {
        fail(" has no tab after the pages");
    }
    SplitEntry entry{parseRanges(text.substr(0, tab)), std::string(text.substr(tab + 1))};
    if (entry.ranges.empty()) {
        fail(" begins with no pages or ranges of pages");
    }
    if (entry.output.empty()) {
        fail(" names no output");
    }
    if (entry.output == "-") {
        fail(" names standard output, where the outputs are reported");
    }
    return entry;
}

class Descriptor
{
public:
    explicit Descriptor(int number) : m_number(number) {}
    ~Descriptor()
    {
        if (m_number > STDERR_FILENO) {
            close(m_number);
        }
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    int get() const noexcept { return m_number; }

private:
    int m_number;
};

} // namespace

std::vector<SplitEntry> parseSplitList(std::string_view list, const std::string &name)
{
    const char end = list.find('\0') == std::string_view::npos ? '\n' : '\0';
    if (list.empty()) {
        throw ToolError(name, "the list is empty", exitUsageError);
    }
    if (list.back() != end) {
        throw ToolError(name, "the last entry is cut off", exitUsageError);
    }
    std::vector<SplitEntry> entries;
    while (!list.empty()) {
        const std::size_t length = list.find(end);
        entries.push_back(parseEntry(list.substr(0, length), name, entries.size() + 1));
        list.remove_prefix(length + 1);
    }
    return entries;
}

std::vector<SplitEntry> readSplitList(const std::string &path)
{
    const bool isStandardInput = path == standardInputName;
    const std::string name = isStandardInput ? "standard input" : path;
    const Descriptor file(isStandardInput ? STDIN_FILENO
                                          : open(path.c_str(), O_RDONLY | O_CLOEXEC));
    std::string list;
    std::array<char, 65536> buffer;
    for (;;) {
        const ssize_t count = read(file.get(), buffer.data(), buffer.size());
        if (count == 0) {
            return parseSplitList(list, name);
        }
        if (count < 0 && errno != EINTR) {
            throw ToolError(name, std::string("cannot be read: ") + std::strerror(errno));
        }
        list.append(buffer.data(), count < 0 ? 0 : static_cast<std::size_t>(count));
    }
}

} // namespace tools
