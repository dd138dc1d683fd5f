// A PDF file of any content through pagexport, in process: its pages are exported, index last, or
// it is refused by a ToolError and nothing is left; no page file holds a line that could be taken
// for an item without being one.

#include "fuzz/scratch_file.h"
#include "tools/common/tool_error.h"
#include "tools/pagexport/pagexport.h"

#include <sys/stat.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <new>
#include <string>

namespace {

bool isOwnersOnly(const std::string &path)
{
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 && (status.st_mode & 0777U) == 0600U;
}

/// Whether @p line, which holds "</span>", begins with a position that can be matched.
bool isItem(const std::string &line)
{
    return line.find("left:") != std::string::npos && line.find("top:") != std::string::npos &&
           line.find("left:0") == std::string::npos && line.find("left:-") == std::string::npos;
}

void checkPage(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file || !isOwnersOnly(path)) {
        std::abort();
    }
    std::string line;
    while (std::getline(file, line)) {
        const bool holdsItem = line.find("</span>") != std::string::npos;
        if (holdsItem != (line.find("left:") < line.find('>') && isItem(line))) {
            std::abort();
        }
    }
}

void tryExport(const fuzz::ScratchFile &scratch, bool firstPageOnly)
{
    tools::ExportArguments arguments;
    arguments.input = scratch.input();
    arguments.output = scratch.path("split.xml");
    if (firstPageOnly) {
        arguments.firstPage = 1;
        arguments.lastPage = 1;
    }
    try {
        tools::exportPages(arguments);
        checkPage(scratch.path("split_pg_0001.htm"));
        scratch.clear();
    } catch (const tools::ToolError &) {
        if (scratch.clear() != 0) {
            std::abort();
        }
    } catch (const std::bad_alloc &) {
        scratch.clear();
    }
}

/// The fuzzer's timer sends a signal that the tool would end by. What is ignored it leaves so.
class IgnoredTimer
{
public:
    IgnoredTimer()
    {
        struct sigaction ignored = {};
        ignored.sa_handler = SIG_IGN;
        sigaction(SIGALRM, &ignored, &m_former);
    }
    ~IgnoredTimer() { sigaction(SIGALRM, &m_former, nullptr); }
    IgnoredTimer(const IgnoredTimer &) = delete;
    IgnoredTimer &operator=(const IgnoredTimer &) = delete;

private:
    struct sigaction m_former = {};
};

} // namespace

// The library keeps a reference to some pages for good (a program of three calls, open, load a
// page, drop it, shows it), which ends with the process.
extern "C" int __lsan_is_turned_off() // NOLINT(bugprone-reserved-identifier)
{
    return 1;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const fuzz::ScratchFile scratch;
    const IgnoredTimer ignored;
    scratch.write(data, size);
    tryExport(scratch, false);
    // Drawing is slow: a quarter of the files is enough for it.
    if (size % 4 == 0) {
        tryExport(scratch, true);
    }
    return 0;
}
