#include "tools/pagexport/arguments.h"

#include "tools/common/argument_reader.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>
#include <vector>

namespace tools {

namespace {

using Action = ExportArguments::Action;

/// Takes the number behind @p option; @p kind says what it counts.
long long takeNumber(ArgumentReader &arguments, std::string_view option, const std::string &kind)
{
    if (arguments.atEnd()) {
        arguments.fail(std::string(option) + " needs a " + kind);
    }
    const std::string_view text = arguments.take();
    long long number = 0;
    const char *const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (stop != end || text.empty() || error == std::errc::invalid_argument) {
        arguments.fail(std::string(option) + " needs a " + kind + ", not \"" + std::string(text) +
                       '"');
    }
    return error == std::errc::result_out_of_range ? std::numeric_limits<long long>::max() : number;
}

std::size_t takeThreadCount(ArgumentReader &arguments, std::string_view option)
{
    const long long number = takeNumber(arguments, option, "number of threads");
    if (number < 1) {
        arguments.fail(std::string(option) + " needs at least one thread");
    }
    return static_cast<std::size_t>(number);
}

/// What the options say, and the files that stand between them.
struct Taken
{
    ExportArguments result;
    std::vector<std::string_view> files;
    bool hasFormat = false;
    bool hasItems = false;
};

/// @returns whether the rest of the command line counts no longer
bool takeOption(ArgumentReader &arguments, std::string_view option, Taken &taken)
{
    if (option == "-htmlformat") {
        taken.hasFormat = true;
    } else if (option == "-items") {
        taken.hasItems = true;
    } else if (option == "-f") {
        taken.result.firstPage = takeNumber(arguments, option, "page number");
    } else if (option == "-l") {
        taken.result.lastPage = takeNumber(arguments, option, "page number");
    } else if (option == "-threads") {
        taken.result.mostThreads = takeThreadCount(arguments, option);
    } else if (option == "-passwords") {
        taken.result.passwords = takePasswordDescriptor(arguments, option);
    } else if (option == "--help" || option == "-h") {
        taken.result.action = Action::showHelp;
        return true;
    } else if (option == "--version") {
        taken.result.action = Action::showVersion;
        return true;
    } else {
        arguments.fail("unknown option \"" + std::string(option) + '"');
    }
    return false;
}

void takeFiles(const ArgumentReader &arguments, Taken &taken)
{
    if (taken.hasFormat == taken.hasItems) {
        arguments.fail(taken.hasFormat ? "only one of -htmlformat and -items can be used at once"
                                       : "-htmlformat is missing");
    }
    const std::size_t wanted = taken.hasItems ? 1 : 2;
    if (taken.files.size() < wanted) {
        arguments.fail(taken.hasItems ? "the input file is missing"
                                      : "the input or the output file is missing");
    }
    if (taken.files.size() > wanted) {
        arguments.fail(taken.hasItems ? "more than one file is given"
                                      : "more than two files are given");
    }
    if (std::find(taken.files.begin(), taken.files.end(), "") != taken.files.end()) {
        arguments.fail("a file name is empty");
    }
    taken.result.action = taken.hasItems ? Action::listItems : Action::exportPages;
    taken.result.input = taken.files.front();
    taken.result.output = taken.hasItems ? "" : taken.files.back();
}

} // namespace

ExportArguments parseExportArguments(int argc, const char *const *argv)
{
    ArgumentReader arguments(argumentsOf(argc, argv), "see pagexport --help");
    Taken taken;
    bool onlyFiles = false;
    while (!arguments.atEnd()) {
        const std::string_view argument = arguments.take();
        if (onlyFiles || argument.size() < 2 || argument[0] != '-') {
            taken.files.push_back(argument);
        } else if (argument == "--") {
            onlyFiles = true;
        } else if (takeOption(arguments, argument, taken)) {
            return taken.result;
        }
    }
    takeFiles(arguments, taken);
    return taken.result;
}

std::string exportHelp()
{
    return R"(Usage: pagexport -htmlformat [-f FIRST] [-l LAST] [--] INPUT.pdf FOLDER/NAME.xml
       pagexport -items [-f FIRST] [-l LAST] [-threads N] [--] INPUT.pdf

With -htmlformat it writes the text items of a PDF's pages, with their positions, into FOLDER:
  NAME_pg_0001.htm ...  one file per exported page, numbered from 0001
  NAME_pg_0001.png ...  the page's picture, only with -f or -l
  NAME.xml              an index of the pages, written last

With -items it writes them to standard output instead, page by page, a line each,
with tabs between the fields:
  page  NUMBER  WIDTH  HEIGHT  whole, partial or unreadable
  item  NUMBER  LEFT  TOP  WIDTH  HEIGHT  TEXT
  end   PAGES   the last line, written only if no page is missing

  -htmlformat  write page files
  -items       write to standard output
  -f FIRST     first page to export (default 1)
  -l LAST      last page to export (default: the last one)
  -threads N   read the pages with at most N threads (default: one per processor)
  -passwords N try the lines of descriptor N as passwords of the input
  --           all further arguments are files, even if they begin with "-"
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
