#include "tools/pagebinder/pagebinder.h"

#include "tools/common/argument_reader.h"
#include "tools/common/report.h"
#include "tools/common/resource_limits.h"
#include "tools/common/standard_output.h"
#include "tools/pagebinder/arguments.h"
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

/// The input of @p arguments, with the passwords to try on it.
InputFile inputOf(const BinderArguments &arguments, const std::optional<FileIdentity> &noted)
{
    std::vector<std::string> passwords = readPasswords(arguments.passwords);
    InputFile input(arguments.input, noted);
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

ExitStatus getInformation(PdfContext &context, const BinderArguments &arguments)
{
    const std::optional<FileIdentity> noted = notedIdentity();
    if (arguments.output != standardOutputName) {
        checkOutput(arguments.input, arguments.output);
        refuseSpecialFile(arguments.output);
        // Whatever happens from here on, nobody reads an older file's answer.
        removeFile(arguments.output);
    }
    SourceFile file(context, inputOf(arguments, noted));
    writeInformation(file, fittingOutput(arguments.input, arguments.output));
    return exitSuccess;
}

ExitStatus merge(PdfContext &context, const BinderArguments &arguments)
{
    if (arguments.output != standardOutputName) {
        checkOutput(arguments.input, arguments.output);
    }
    SourceFile file(context, inputOf(arguments, notedIdentity()));
    const MergeResult result =
        mergePages(file, arguments.ranges, fittingOutput(arguments.input, arguments.output));
    return result.standIns.empty() ? exitSuccess : exitStandIns;
}

ExitStatus split(PdfContext &context, const BinderArguments &arguments)
{
    const std::optional<FileIdentity> noted = notedIdentity();
    const std::vector<SplitEntry> entries = readSplitList(arguments.list);
    limitTime(entries.size());
    SourceFile file(context, inputOf(arguments, noted));
    return splitPages(file, entries);
}

ExitStatus execute(const BinderArguments &arguments)
{
    applyResourceLimits({.addressSpaceBytes = mostMemory, .fileBytes = largestOutput});
    if (arguments.action != BinderArguments::Action::split) {
        limitTime(1);
    }
    removeHiddenFileOnSignals(arguments.input);
    PdfContext context(toolName);
    switch (arguments.action) {
    case BinderArguments::Action::getInformation:
        return getInformation(context, arguments);
    case BinderArguments::Action::merge:
        return merge(context, arguments);
    default:
        return split(context, arguments);
    }
}

ExitStatus runCommand(int argc, char **argv, std::string &input)
{
    const BinderArguments arguments = parseBinderArguments(argumentsOf(argc, argv));
    switch (arguments.action) {
    case BinderArguments::Action::showHelp:
        writeStandardOutput(helpText());
        return exitSuccess;
    case BinderArguments::Action::showVersion:
        writeStandardOutput(std::string(toolName) + " " QUORLIN_VERSION "\n");
        return exitSuccess;
    default:
        input = arguments.input;
        return execute(arguments);
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
