#include "tools/pagebinder/pagebinder.h"

#include "tools/common/argument_reader.h"
#include "tools/common/report.h"
#include "tools/common/resource_limits.h"
#include "tools/common/standard_output.h"
#include "tools/pagebinder/command_line.h"
#include "tools/pagebinder/document/information.h"
#include "tools/pagebinder/merge.h"
#include "tools/pagebinder/output/atomic_output.h"
#include "tools/pagebinder/output/output_name.h"
#include "tools/pagebinder/output/signal_cleanup.h"
#include "tools/pagebinder/split.h"

#include <csignal>
#include <new>

namespace tools {

namespace {

/// The input of @p command, with the passwords to try on it.
InputFile inputOf(const BinderCommand &command, const std::optional<FileIdentity> &noted)
{
    std::vector<std::string> passwords = readPasswords(command.passwords);
    InputFile input(command.input, noted);
    input.setPasswords(std::move(passwords));
    return input;
}

constexpr char toolName[] = "pagebinder";
constexpr std::uint64_t mostMemory = std::uint64_t{2} << 30U;
constexpr std::uint64_t largestOutput = std::uint64_t{16} << 30U;
constexpr std::uint64_t cpuSeconds = 600;
constexpr std::uint64_t cpuSecondsPerOutput = 1; // a thousand times what one usually takes

/// Bounds the whole run; the time by the number of outputs it writes.
void limitTime(std::size_t outputs)
{
    applyResourceLimits({.cpuSeconds = cpuSeconds + cpuSecondsPerOutput * outputs});
}

ExitStatus getInformation(PdfContext &context, const BinderCommand &command)
{
    const std::optional<FileIdentity> noted = notedIdentity();
    if (command.output != standardOutputName) {
        checkOutput(command.input, command.output);
        refuseSpecialFile(command.output);
        // Whatever happens from here on, nobody reads an older file's answer.
        removeFile(command.output);
    }
    SourceFile file(context, inputOf(command, noted));
    writeInformation(file, fittingOutput(command.input, command.output));
    return exitSuccess;
}

ExitStatus merge(PdfContext &context, const BinderCommand &command)
{
    if (command.output != standardOutputName) {
        checkOutput(command.input, command.output);
    }
    SourceFile file(context, inputOf(command, notedIdentity()));
    const MergeResult result =
        mergePages(file, command.ranges, fittingOutput(command.input, command.output));
    return result.standIns.empty() ? exitSuccess : exitStandIns;
}

ExitStatus split(PdfContext &context, const BinderCommand &command)
{
    const std::optional<FileIdentity> noted = notedIdentity();
    const std::vector<SplitEntry> entries = readSplitList(command.list);
    limitTime(entries.size());
    SourceFile file(context, inputOf(command, noted));
    return splitPages(file, entries);
}

ExitStatus execute(const BinderCommand &command)
{
    applyResourceLimits({.addressSpaceBytes = mostMemory, .fileBytes = largestOutput});
    if (command.action != BinderCommand::Action::split) {
        limitTime(1);
    }
    removeHiddenFileOnSignals(command.input);
    PdfContext context(toolName);
    switch (command.action) {
    case BinderCommand::Action::getInformation:
        return getInformation(context, command);
    case BinderCommand::Action::merge:
        return merge(context, command);
    default:
        return split(context, command);
    }
}

ExitStatus runCommand(int argc, char **argv, std::string &input)
{
    const BinderCommand command = parseCommandLine(argumentsOf(argc, argv));
    switch (command.action) {
    case BinderCommand::Action::showHelp:
        writeStandardOutput(helpText());
        return exitSuccess;
    case BinderCommand::Action::showVersion:
        writeStandardOutput(std::string(toolName) + " " QUORLIN_VERSION "\n");
        return exitSuccess;
    default:
        input = command.input;
        return execute(command);
    }
}

} // namespace

int runPageBinder(int argc, char **argv)
{
    std::string input;
    openStandardStreams();
    // Whoever reads the reports may stop: that ends the program where it writes to them.
    std::signal(SIGPIPE, SIG_IGN);
    try {
        return runCommand(argc, argv, input);
    } catch (const ReaderGone &) {
        return exitInputError;
    } catch (const ToolError &error) {
        return reportError(toolName, error);
    } catch (const std::bad_alloc &) {
        return reportError(toolName, ToolError(input, "needs too much memory"));
    } catch (const std::exception &error) {
        return reportError(toolName, ToolError(input, error.what()));
    }
}

} // namespace tools
