#include "tools/pagebinder/pagebinder.h"

#include "tools/common/argument_reader.h"
#include "tools/common/output_path.h"
#include "tools/common/report.h"
#include "tools/common/resource_limits.h"
#include "tools/common/standard_output.h"
#include "tools/pagebinder/arguments.h"
#include "tools/pagebinder/document/information.h"
#include "tools/pagebinder/merge.h"
#include "tools/pagebinder/output/atomic_output.h"
#include "tools/pagebinder/output/output_name.h"
#include "tools/pagebinder/output/output_places.h"
#include "tools/pagebinder/output/signal_cleanup.h"
#include "tools/pagebinder/split.h"
#include "tools/pdf/memory_budget.h"
#include "tools/sandbox/version_text.h"

#include <algorithm>
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
constexpr std::uint64_t mostAddresses = std::uint64_t{4} << 30U;
constexpr std::uint64_t largestOutput = std::uint64_t{16} << 30U;
/// What the run may take at most; each part a multiple of what files take in earnest.
std::uint64_t cpuSecondsFor(std::uint64_t inputBytes, std::uint64_t outputs, std::uint64_t pages)
{
    constexpr std::uint64_t forAnyFile = 4;
    constexpr std::uint64_t bytesPerSecond = 1'000'000;
    constexpr std::uint64_t outputsPerSecond = 10;
    constexpr std::uint64_t pagesPerSecond = 2'000;
    return forAnyFile + inputBytes / bytesPerSecond + outputs / outputsPerSecond +
           pages / pagesPerSecond;
}

/// The last step before the first byte of the input is read: bounds time and memory by what there
/// is to do, and gives up what is not needed for it.
void lockUp(const InputFile &input, const OutputPlaces &places, std::uint64_t outputs,
            std::uint64_t pages)
{
    const auto bytes = static_cast<std::uint64_t>(input.size());
    applyResourceLimits({.cpuSeconds = cpuSecondsFor(bytes, outputs, pages)});
    setMemoryBudget(memoryBudgetFor(bytes));
    enterSandboxOf(toolName, places.sandboxNeeds(input));
}

ExitStatus getInformation(const BinderArguments &arguments)
{
    const std::optional<FileIdentity> noted = notedIdentity();
    if (arguments.output != standardOutputName) {
        checkOutput(arguments.input, arguments.output);
        refuseSpecialFile(arguments.output);
        // Whatever happens from here on, nobody reads an older file's answer.
        removeFile(arguments.output);
    }
    InputFile input = inputOf(arguments, noted);
    const OutputPlaces places(input, {arguments.output});
    lockUp(input, places, 1, 0);
    PdfContext context(toolName);
    SourceFile file(context, std::move(input));
    writeInformation(file, places.at(0));
    context.showWarnings();
    return exitSuccess;
}

std::uint64_t pagesIn(const std::vector<PageRange> &ranges)
{
    return static_cast<std::uint64_t>(std::clamp<long long>(countPages(ranges), 0, 1'000'000));
}

ExitStatus merge(const BinderArguments &arguments)
{
    InputFile input = inputOf(arguments, notedIdentity());
    const OutputPlaces places(input, {arguments.output});
    const OutputPlace &output = places.at(0);
    lockUp(input, places, 1, pagesIn(arguments.ranges));
    PdfContext context(toolName);
    SourceFile file(context, std::move(input));
    const MergeResult result = mergePages(file, arguments.ranges, output);
    context.showWarnings();
    return result.standIns.empty() ? exitSuccess : exitStandIns;
}

ExitStatus split(const BinderArguments &arguments)
{
    const std::optional<FileIdentity> noted = notedIdentity();
    const std::vector<SplitEntry> entries = readSplitList(arguments.list);
    std::vector<std::string> outputs;
    std::uint64_t pages = 0;
    for (const SplitEntry &entry : entries) {
        outputs.push_back(entry.output);
        pages += pagesIn(entry.ranges);
    }
    InputFile input = inputOf(arguments, noted);
    const OutputPlaces places(input, outputs);
    lockUp(input, places, entries.size(), pages);
    PdfContext context(toolName);
    SourceFile file(context, std::move(input));
    context.showWarnings();
    return splitPages(file, entries, places);
}

ExitStatus execute(const BinderArguments &arguments)
{
    applyResourceLimits({.addressSpaceBytes = mostAddresses, .fileBytes = largestOutput});
    removeHiddenFileOnSignals(arguments.input);
    switch (arguments.action) {
    case BinderArguments::Action::getInformation:
        return getInformation(arguments);
    case BinderArguments::Action::merge:
        return merge(arguments);
    default:
        return split(arguments);
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
        writeStandardOutput(versionText(toolName));
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
