#include "tools/pagebinder/arguments.h"

#include "tools/common/argument_reader.h"

namespace tools {

namespace {

using Action = BinderArguments::Action;

void takeRanges(ArgumentReader &reader, std::vector<PageRange> &ranges)
{
    while (!reader.atEnd() && reader.peek() != "-outfile" && reader.peek() != "-passwords") {
        PageRange range;
        const std::string_view text = reader.take();
        if (!parsePageRange(text, range)) {
            reader.fail("\"" + std::string(text) + "\" is not a page or range of pages");
        }
        ranges.push_back(range);
    }
    if (ranges.empty()) {
        reader.fail("-merge needs the pages");
    }
}

void takeAction(ArgumentReader &reader, BinderArguments &arguments)
{
    const std::string_view option = reader.take();
    const bool isFirst = arguments.action == Action::showHelp;
    if (option == "-getinfo") {
        arguments.action = Action::getInformation;
    } else if (option == "-merge") {
        arguments.action = Action::merge;
        takeRanges(reader, arguments.ranges);
    } else if (option == "-split") {
        arguments.action = Action::split;
        arguments.list = reader.takeValue(option, "a file");
    } else {
        reader.fail("\"" + std::string(option) + "\" is not understood");
    }
    if (!isFirst) {
        reader.fail("only one of -getinfo, -merge and -split can be used at once");
    }
}

void takeOutput(ArgumentReader &reader, BinderArguments &arguments)
{
    const std::string_view option = reader.take();
    if (!arguments.output.empty()) {
        reader.fail("-outfile is given twice");
    }
    arguments.output = reader.takeValue(option, "a file");
}

void takePasswords(ArgumentReader &reader, BinderArguments &arguments)
{
    const std::string_view option = reader.take();
    if (arguments.passwords != noPasswords) {
        reader.fail("-passwords is given twice");
    }
    arguments.passwords = takePasswordDescriptor(reader, option);
}

void checkWhole(const ArgumentReader &reader, const BinderArguments &arguments)
{
    if (arguments.action == Action::showHelp) {
        reader.fail("one of -getinfo, -merge and -split is needed");
    }
    if (arguments.action == Action::split) {
        if (!arguments.output.empty()) {
            reader.fail("the list of -split names the outputs, -outfile does not");
        }
    } else if (arguments.output.empty()) {
        reader.fail("-outfile is needed");
    }
}

} // namespace

BinderArguments parseBinderArguments(const std::vector<std::string_view> &words)
{
    BinderArguments arguments;
    ArgumentReader reader(words, "--help shows the usage");
    if (reader.atEnd()) {
        reader.fail("no input file");
    }
    if (reader.asksOnlyFor("--help") || reader.asksOnlyFor("-h")) {
        return arguments;
    }
    if (reader.asksOnlyFor("--version")) {
        arguments.action = Action::showVersion;
        return arguments;
    }
    // The input stands first, so that its name may look like an option.
    arguments.input = reader.takeValue("the command line", "a file");
    while (!reader.atEnd()) {
        if (reader.peek() == "-outfile") {
            takeOutput(reader, arguments);
        } else if (reader.peek() == "-passwords") {
            takePasswords(reader, arguments);
        } else {
            takeAction(reader, arguments);
        }
    }
    checkWhole(reader, arguments);
    return arguments;
}

const char *helpText()
{
    return R"(Usage:
  pagebinder INPUT -getinfo -outfile FILE
      writes the number of pages and other facts about the PDF file INPUT to FILE
  pagebinder INPUT -merge RANGE... -outfile OUTPUT
      writes the pages to the PDF file OUTPUT, in the order given
  pagebinder INPUT -split LIST
      writes an output for every entry of LIST, "RANGE... TAB OUTPUT"; entries end with a NUL
      or, if there is no NUL at all, with a line feed. Standard output gets a line for each:
      done INDEX BYTES OUTPUT, standin INDEX BYTES PAGES OUTPUT, or failed INDEX REASON
  pagebinder --help | --version

RANGE is a page (7) or a range of pages (3-6), counted from 1. "-" stands for standard output as
FILE or OUTPUT, and for standard input as LIST. INPUT is never changed. FILE and OUTPUT are
written atomically: you get the complete file or none. With -passwords N after any of these,
descriptor N is read to its end, and its lines are tried in turn as passwords of INPUT.

Exit status: 0 done, 1 a file cannot be read or written, 2 wrong command line or list, 3 written,
with stand-ins for pages that cannot be read.
)";
}

} // namespace tools
