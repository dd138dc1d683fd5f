#include "tools/pagebinder/pagebinder.h"

#include "tools/common/report.h"
#include "tools/common/resource_limits.h"
#include "tools/pagebinder/command_line.h"
#include "tools/pagebinder/document/information.h"
#include "tools/pagebinder/merge.h"
#include "tools/pagebinder/output/atomic_output.h"
#include "tools/pagebinder/output/output_name.h"
#include "tools/pagebinder/output/signal_cleanup.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <new>

namespace tools {

namespace {

constexpr char toolName[] = "pagebinder";
constexpr ResourceLimits limits = {std::uint64_t{2} << 30U, 600, std::uint64_t{16} << 30U};

std::string baseNameOf(const std::string &path)
{
    const std::string name = nameOf(path);
    return name.substr(0, name.find('.'));
}

/// The output's path, its last part shortened to what the file system takes.
std::string fittingOutput(const BinderCommand &command)
{
    const std::string folder = folderOf(command.output);
    const std::string name = nameOf(command.output);
    const long longest = pathconf(folder.c_str(), _PC_NAME_MAX);
    const auto limit = static_cast<std::size_t>(std::max(64L, longest > 0 ? longest : 255L));
    if (name.size() <= limit) {
        return command.output;
    }
    const std::string shortened = shortenOutputName(name, baseNameOf(command.input), limit);
    reportLine(toolName, name, "the name is too long, shortened to \"" + shortened + "\"");
    return command.output.substr(0, command.output.size() - name.size()) + shortened;
}

void checkOutput(const BinderCommand &command)
{
    if (nameOf(command.output).empty()) {
        throw ToolError(command.output, "is a folder");
    }
    if (isSameFile(command.input, command.output)) {
        throw ToolError(command.output, "is the input itself, which is never written");
    }
}

void execute(const BinderCommand &command)
{
    checkOutput(command);
    const bool merging = command.action == BinderCommand::Action::merge;
    if (!merging) {
        // Whatever happens from here on, nobody reads an older file's answer.
        removeFile(command.output);
    }
    PdfContext context(toolName);
    SourceFile file(context, command.input);
    if (merging) {
        mergePages(file, command.ranges, fittingOutput(command));
    } else {
        writeInformation(file, fittingOutput(command));
    }
}

int runCommand(int argc, char **argv, std::string &input)
{
    const BinderCommand command = parseCommandLine({argv + std::min(argc, 1), argv + argc});
    switch (command.action) {
    case BinderCommand::Action::showHelp:
        std::fputs(helpText(), stdout);
        return exitSuccess;
    case BinderCommand::Action::showVersion:
        std::printf("%s %s\n", toolName, QUORLIN_VERSION);
        return exitSuccess;
    default:
        break;
    }
    input = command.input;
    applyResourceLimits(limits);
    removeHiddenFileOnSignals(input);
    execute(command);
    return exitSuccess;
}

} // namespace

int runPageBinder(int argc, char **argv)
{
    std::string input;
    try {
        return runCommand(argc, argv, input);
    } catch (const ToolError &error) {
        return reportError(toolName, error);
    } catch (const std::bad_alloc &) {
        return reportError(toolName, ToolError(input, "needs too much memory"));
    } catch (const std::exception &error) {
        return reportError(toolName, ToolError(input, error.what()));
    }
}

} // namespace tools
