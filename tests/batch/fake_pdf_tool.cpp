// Stands in for pagexport and pagebinder, by the name it is started under, over plain text files:
// every line of an input is a page, and stands on it at 100,50. A line that begins with "~" is a
// page of which a part cannot be read, "!" alone one that cannot be read at all. What the input's
// name holds makes it fail; the list stands beside FakeTools. Every start and end is recorded in
// "calls.txt" beside the program.
#include <fcntl.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct Entry
{
    std::string ranges;
    std::string path;
};

std::string toolName;
std::string input;

bool isOrdered(const char *order)
{
    return fs::path(input).filename().string().find(order) != std::string::npos;
}

int refuse(const std::string &what, const std::string &reason)
{
    std::cerr << toolName << ": " << what << ": " << reason << std::endl;
    return 1;
}

[[noreturn]] void hang()
{
    for (;;) {
        pause();
    }
}

[[noreturn]] void crash()
{
    std::cout.flush();
    std::signal(SIGSEGV, SIG_DFL);
    std::raise(SIGSEGV);
    std::abort();
}

std::vector<std::string> pagesOfInput()
{
    std::vector<std::string> pages;
    std::ifstream file(input);
    for (std::string line; std::getline(file, line);) {
        pages.push_back(line);
    }
    return pages;
}

/// What the real tools compare with the identity they are told.
std::string identityOfInput()
{
    struct stat status = {};
    if (stat(input.c_str(), &status) != 0) {
        return {};
    }
    char text[160];
    std::snprintf(text, sizeof text, "%llu:%llu:%lld:%lld.%09ld",
                  static_cast<unsigned long long>(status.st_dev),
                  static_cast<unsigned long long>(status.st_ino),
                  static_cast<long long>(status.st_size),
                  static_cast<long long>(status.st_ctim.tv_sec), status.st_ctim.tv_nsec);
    return text;
}

bool isChanged()
{
    const char *told = std::getenv("QUORLIN_INPUT_IDENTITY");
    return told != nullptr && identityOfInput() != told;
}

int count()
{
    if (isOrdered("uncountable")) {
        return refuse(input, "it is locked");
    }
    if (isOrdered("protected")) {
        return refuse(input, "needs a password");
    }
    if (isOrdered("hangcount")) {
        hang();
    }
    const std::size_t more = isOrdered("miscounted") ? 1 : 0;
    std::cout << "NumberOfPages: " << pagesOfInput().size() + more << "\n";
    return 0;
}

void writePage(std::size_t number, const std::string &line)
{
    const char *state = line == "!" ? "unreadable" : line.front() == '~' ? "partial" : "whole";
    std::cout << "page\t" << number << "\t893\t1263\t" << state << "\n";
    const std::string text = line == "!" ? "" : line.front() == '~' ? line.substr(1) : line;
    if (text != " ") {
        std::cout << "item\t" << number << "\t20\t30\t90\t12\tStatement\n";
    }
    if (!text.empty() && text != " ") {
        std::cout << "item\t" << number << "\t100\t50\t40\t12\t" << text << "\n";
    }
    std::cout.flush();
}

int exportItems(std::size_t first, std::size_t last)
{
    if (isOrdered("unexportable")) {
        return refuse(input, "its fonts are broken");
    }
    if (isOrdered("crashexport")) {
        crash();
    }
    const std::vector<std::string> pages = pagesOfInput();
    if (first > pages.size()) {
        return refuse(input, "there is no such page");
    }
    std::size_t written = 0;
    for (std::size_t i = first; i <= pages.size() && i <= last; ++i, ++written) {
        const std::string &line = pages[i - 1];
        writePage(i, line.empty() ? " " : line);
        if (isOrdered("hangexport")) {
            hang();
        }
        if (isOrdered("cutexport")) {
            return 0;
        }
    }
    std::cout << "end\t" << written << "\n";
    return 0;
}

std::vector<Entry> readEntries()
{
    std::vector<Entry> entries;
    for (std::string text; std::getline(std::cin, text, '\0');) {
        const std::size_t tab = text.find('\t');
        entries.push_back({text.substr(0, tab), text.substr(tab + 1)});
    }
    return entries;
}

std::string pagesOf(const std::string &ranges)
{
    const std::vector<std::string> pages = pagesOfInput();
    std::istringstream pieces(ranges);
    std::string text;
    for (std::string piece; pieces >> piece;) {
        const std::size_t first = std::stoul(piece);
        const std::size_t dash = piece.find('-');
        const std::size_t last =
            dash == std::string::npos ? first : std::stoul(piece.substr(dash + 1));
        for (std::size_t page = first; page <= last; ++page) {
            text += pages.at(page - 1) + "\n";
        }
    }
    return text;
}

/// Writes the output as the real tool does: under a hidden name first.
std::size_t writeOutput(const Entry &entry)
{
    const std::string text = pagesOf(entry.ranges);
    const std::string hidden = entry.path + ".new";
    std::ofstream(hidden, std::ios::binary) << text;
    if (!isOrdered("vanishing")) {
        fs::rename(hidden, entry.path);
    } else {
        fs::remove(hidden);
    }
    return text.size();
}

/// Whether this is the first time that this is asked about @p output.
bool isFirstTime(const Entry &output)
{
    const std::string mark = fs::path(output.path).parent_path().parent_path().string() + "/tried";
    return close(open(mark.c_str(), O_CREAT | O_EXCL | O_CLOEXEC, 0600)) == 0;
}

/// Does what the input's name orders for the output; false when it has failed.
bool obey(const Entry &entry, std::size_t number, std::string &reason)
{
    const std::string name = fs::path(entry.path).filename().string();
    const bool isSecond = name.rfind("2 ", 0) == 0;
    const fs::path folder = fs::path(entry.path).parent_path().parent_path();
    if (isOrdered("hangmerge")) {
        std::ofstream(folder / "hanging") << getpid() << "\n";
        hang();
    }
    if (isOrdered("unfolder")) {
        fs::remove_all(folder);
    }
    if ((isOrdered("crashonce") && isSecond && isFirstTime(entry)) ||
        (isOrdered("crashtwice") && isSecond) || isOrdered("crashmerge")) {
        crash();
    }
    if (isOrdered("hangsecond") && isSecond) {
        hang();
    }
    if (isOrdered("unmergeable") || (isOrdered("halfmerge") && number > 1) ||
        !fs::is_directory(fs::path(entry.path).parent_path())) {
        reason = "no space is left";
        return false;
    }
    if (isOrdered("changing") && isSecond) {
        std::ofstream(input, std::ios::app) << "Z\n";
    }
    return true;
}

std::string escapedPath(const std::string &path)
{
    std::string escaped;
    for (const char c : path) {
        char spelt[8];
        std::snprintf(spelt, sizeof spelt, c == '\\' ? "\\\\" : "\\x%02x", c);
        escaped += c == '\\' || (c >= 0 && c < ' ') ? std::string(spelt) : std::string(1, c);
    }
    return escaped;
}

/// Writes an answer; where that is ordered in two parts, the second once the first was read, or
/// together with another answer about the same output.
void answer(std::size_t index, const std::string &line)
{
    std::size_t written = 0;
    if (isOrdered("piecemeal")) {
        written = line.size() / 2;
        std::cout << line.substr(0, written) << std::flush;
        for (int unread = 1; ioctl(STDOUT_FILENO, FIONREAD, &unread) == 0 && unread > 0;) {
            sched_yield();
        }
    }
    std::cout << line.substr(written) << "\n";
    if (isOrdered("repeating")) {
        std::cout << "failed\t" << index << "\tit was asked for once only\n";
    }
    std::cout << std::flush;
}

int split()
{
    const std::vector<Entry> entries = readEntries();
    int status = 0;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const Entry &entry = entries[i];
        std::string reason;
        const bool isWritable = obey(entry, i + 1, reason);
        if (isChanged()) {
            std::cout << "failed\t" << i + 1 << "\tchanged since its pages were counted\nchanged\n";
            return refuse(input, "changed since its pages were counted");
        }
        if (!isWritable) {
            status = refuse(entry.path, reason);
            std::cout << "failed\t" << i + 1 << "\t" << reason << std::endl;
            continue;
        }
        const std::size_t bytes = writeOutput(entry);
        const bool hasStandIn = isOrdered("standin") && i == 1;
        answer(i + 1, (hasStandIn ? "standin\t" : "done\t") + std::to_string(i + 1) + "\t" +
                          std::to_string(bytes) + "\t" + (hasStandIn ? entry.ranges + "\t" : "") +
                          escapedPath(entry.path));
        status = hasStandIn ? 3 : status;
    }
    return status;
}

void record(const char *program, const char *event)
{
    const fs::path calls = fs::path(program).parent_path() / "calls.txt";
    std::ofstream(calls, std::ios::app) << event << " " + toolName + " " + input + "\n";
}

/// Whether the words behind the input ask for one page: "-items -f N -l N".
bool isPageRequest(const std::vector<std::string> &words)
{
    return words.size() == 5 && words[1] == "-f";
}

int run(const std::vector<std::string> &words)
{
    if (isOrdered("talkative")) {
        std::cerr << toolName << ": " << input << ": warning: page 1 is odd" << std::endl;
    }
    if (std::getenv("QUORLIN_INPUT_IDENTITY") == nullptr && !isPageRequest(words)) {
        return refuse(input, "nobody said what the input is");
    }
    if (isChanged()) {
        return refuse(input, "changed since its pages were counted");
    }
    if (words[0] == "-getinfo") {
        return count();
    }
    if (words[0] == "-split") {
        return split();
    }
    return isPageRequest(words) ? exportItems(std::stoul(words[2]), std::stoul(words[4]))
                                : exportItems(1, ~std::size_t{0});
}

} // namespace

int main(int argc, char *argv[])
{
    std::vector<std::string> words(argv + 1, argv + argc);
    if (words.size() < 2) {
        return 2;
    }
    toolName = fs::path(argv[0]).filename().string();
    // The one word that is neither an option nor a number is the input.
    const auto file = std::find_if(words.begin(), words.end(),
                                   [](const std::string &word) { return word.front() == '/'; });
    if (file == words.end()) {
        return 2;
    }
    input = *file;
    words.erase(file);
    record(argv[0], "start");
    const int status = run(words);
    std::cout.flush();
    record(argv[0], "end");
    return status;
}
