#include "tools/pagebinder/command_line.h"

#include "tools/common/tool_error.h"

namespace tools {

namespace {

[[noreturn]] void failUsage(const std::string &reason)
{
    throw ToolError("", reason + " (--help shows the usage)", exitUsageError);
}

class Reader
{
public:
    explicit Reader(const std::vector<std::string> &arguments) : m_arguments(arguments) {}

    bool atEnd() const { return m_next >= m_arguments.size(); }
    const std::string &peek() const { return m_arguments[m_next]; }
    const std::string &take() { return m_arguments[m_next++]; }

    const std::string &takeValue(const char *option)
    {
        if (atEnd() || peek().empty()) {
            failUsage(std::string(option) + " needs a file");
        }
        return take();
    }

private:
    const std::vector<std::string> &m_arguments;
    std::size_t m_next = 0;
};

void takeRanges(Reader &reader, std::vector<PageRange> &ranges)
{
    while (!reader.atEnd() && reader.peek() != "-outfile") {
        PageRange range;
        const std::string &text = reader.take();
        if (!parsePageRange(text, range)) {
            failUsage("\"" + text + "\" is no page or range of pages");
        }
        ranges.push_back(range);
    }
    if (ranges.empty()) {
        failUsage("-merge needs the pages");
    }
}

void takeAction(Reader &reader, BinderCommand &command, bool &found)
{
    const std::string &option = reader.take();
    if (option != "-getinfo" && option != "-merge") {
        failUsage("\"" + option + "\" is not understood");
    }
    if (found) {
        failUsage("only one of -getinfo and -merge can be done at once");
    }
    found = true;
    if (option == "-merge") {
        command.action = BinderCommand::Action::merge;
        takeRanges(reader, command.ranges);
    } else {
        command.action = BinderCommand::Action::getInformation;
    }
}

} // namespace

BinderCommand parseCommandLine(const std::vector<std::string> &arguments)
{
    BinderCommand command;
    Reader reader(arguments);
    if (reader.atEnd()) {
        failUsage("no input file");
    }
    if (arguments.size() == 1 && (arguments[0] == "--help" || arguments[0] == "-h")) {
        return command;
    }
    if (arguments.size() == 1 && arguments[0] == "--version") {
        command.action = BinderCommand::Action::showVersion;
        return command;
    }
    // The input stands first, so that its name may look like an option.
    command.input = reader.takeValue("the command line");
    bool found = false;
    while (!reader.atEnd()) {
        if (reader.peek() == "-outfile") {
            reader.take();
            if (!command.output.empty()) {
                failUsage("-outfile is given twice");
            }
            command.output = reader.takeValue("-outfile");
        } else {
            takeAction(reader, command, found);
        }
    }
    if (!found) {
        failUsage("one of -getinfo and -merge is needed");
    }
    if (command.output.empty()) {
        failUsage("-outfile is needed");
    }
    return command;
}

const char *helpText()
{
    return "Usage:\n"
           "  pagebinder INPUT -getinfo -outfile FILE\n"
           "      writes the number of pages and other facts about the PDF file INPUT to FILE\n"
           "  pagebinder INPUT -merge RANGE... -outfile OUTPUT\n"
           "      writes the pages to the PDF file OUTPUT, in the order given\n"
           "  pagebinder --help | --version\n"
           "\n"
           "RANGE is a page (7) or a range of pages (3-6), counted from 1. INPUT is never "
           "changed;\n"
           "FILE and OUTPUT appear whole or not at all.\n"
           "\n"
           "Exit status: 0 done, 1 a file cannot be read or written, 2 wrong command line.\n";
}

} // namespace tools
