#include "tools/pagexport/export_options.h"

#include "tools/common/tool_error.h"

#include <charconv>
#include <limits>
#include <string_view>
#include <vector>

namespace tools {

namespace {

[[noreturn]] void throwUsage(const std::string &reason)
{
    throw ToolError("", reason + " (see pagexport --help)", exitUsageError);
}

long long pageNumber(std::string_view option, std::string_view text)
{
    long long number = 0;
    const char *const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (stop != end || text.empty() || error == std::errc::invalid_argument) {
        throwUsage(std::string(option) + " needs a page number, not \"" + std::string(text) + '"');
    }
    return error == std::errc::result_out_of_range ? std::numeric_limits<long long>::max() : number;
}

/// Walks over the arguments.
class Arguments
{
public:
    Arguments(int argc, const char *const *argv) : m_values(argv + (argc > 0 ? 1 : 0), argv + argc)
    {
    }

    bool atEnd() const { return m_next == m_values.size(); }
    std::string_view take() { return m_values[m_next++]; }
    std::string_view takeValue(std::string_view option)
    {
        if (atEnd()) {
            throwUsage(std::string(option) + " needs a page number");
        }
        return take();
    }

private:
    std::vector<std::string_view> m_values;
    std::size_t m_next = 0;
};

void takeFiles(ExportOptions &options, const std::vector<std::string_view> &files, bool hasFormat)
{
    if (!hasFormat) {
        throwUsage("-htmlformat is missing");
    }
    if (files.size() != 2) {
        throwUsage(files.size() < 2 ? "the input or the output file is missing"
                                    : "more than two files are given");
    }
    if (files[0].empty() || files[1].empty()) {
        throwUsage("a file name is empty");
    }
    options.input = files[0];
    options.output = files[1];
}

} // namespace

ExportOptions parseExportOptions(int argc, const char *const *argv)
{
    ExportOptions options;
    Arguments arguments(argc, argv);
    std::vector<std::string_view> files;
    bool hasFormat = false;
    bool onlyFiles = false;
    while (!arguments.atEnd()) {
        const std::string_view argument = arguments.take();
        if (onlyFiles || argument.size() < 2 || argument[0] != '-') {
            files.push_back(argument);
        } else if (argument == "--") {
            onlyFiles = true;
        } else if (argument == "-htmlformat") {
            hasFormat = true;
        } else if (argument == "-f") {
            options.firstPage = pageNumber(argument, arguments.takeValue(argument));
        } else if (argument == "-l") {
            options.lastPage = pageNumber(argument, arguments.takeValue(argument));
        } else if (argument == "--help" || argument == "-h") {
            options.action = ExportOptions::Action::showHelp;
            return options;
        } else if (argument == "--version") {
            options.action = ExportOptions::Action::showVersion;
            return options;
        } else {
            throwUsage("unknown option \"" + std::string(argument) + '"');
        }
    }
    takeFiles(options, files, hasFormat);
    return options;
}

std::string exportHelp()
{
    return R"(Usage: pagexport -htmlformat [-f FIRST] [-l LAST] [--] INPUT.pdf FOLDER/NAME.xml

Writes the text items of a PDF's pages, with their positions, into FOLDER:
  NAME_pg_0001.htm ...  one file per exported page, numbered from 0001
  NAME_pg_0001.png ...  the page's picture, only with -f or -l
  NAME.xml              an index of the pages, written last

  -htmlformat  the format of the page files (always needed)
  -f FIRST     first page to export (1 when left out)
  -l LAST      last page to export (the last one when left out)
  --           what follows are files, even if they begin with "-"
  --help       print this text
  --version    print the version

Positions and sizes are in units of 1/108 inch from the top left of the page as
shown; a picture has one pixel per unit. Files of an earlier export of the same
NAME are removed first.

Exit status: 0 done, 1 unreadable input, pages that do not exist or output that
cannot be written, 2 wrong usage. Messages go to standard error.
)";
}

} // namespace tools
