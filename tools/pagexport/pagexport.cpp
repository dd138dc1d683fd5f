#include "tools/pagexport/pagexport.h"

#include "tools/common/report.h"
#include "tools/common/standard_output.h"
#include "tools/common/tool_error.h"
#include "tools/pagexport/export_job.h"
#include "tools/pagexport/output/item_stream.h"
#include "tools/pagexport/output/output_folder.h"
#include "tools/pagexport/output/page_files.h"
#include "tools/pdf/memory_budget.h"
#include "tools/sandbox/sandbox.h"
#include "tools/sandbox/version_text.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

namespace tools {

namespace {

constexpr const char *toolName = "pagexport";

int run(ExportArguments arguments)
{
    if (!arguments.input.empty()) {
        arguments.identity = notedIdentity();
        arguments.passwordList = readPasswords(arguments.passwords);
    }
    arguments.locksUp = true;
    switch (arguments.action) {
    case ExportArguments::Action::showHelp:
        writeStandardOutput(exportHelp());
        break;
    case ExportArguments::Action::showVersion:
        writeStandardOutput(versionText(toolName));
        break;
    case ExportArguments::Action::exportPages:
        exportPages(arguments);
        break;
    case ExportArguments::Action::listItems:
        listItems(arguments);
        break;
    }
    return exitSuccess;
}

/// A thread that could not be ended keeps its job, and what the job holds, for good.
struct KeepForLostThreads
{
    void operator()(ExportJob *job) const
    {
        if (!job->hasLostThreads()) {
            delete job;
        }
    }
};
using Job = std::unique_ptr<ExportJob, KeepForLostThreads>;

/// Hands the pages of @p input to @p sink.
Job runJob(const ExportArguments &arguments, InputFile input, PageSink &sink)
{
    try {
        Job job(new ExportJob(arguments, std::move(input), sink));
        try {
            job->run();
        } catch (const ToolError &) {
            job->checkInput(); // what a file that changes meanwhile looks like says nothing
            throw;
        }
        return job;
    } catch (const std::bad_alloc &) {
        throw ToolError(arguments.input, "needs more memory than there is");
    }
}

/// Opens the input and bounds the memory by its size.
InputFile openInput(const ExportArguments &arguments)
{
    InputFile input(arguments.input, arguments.identity);
    input.setPasswords(arguments.passwordList);
    setMemoryBudget(memoryBudgetFor(static_cast<std::uint64_t>(input.size())));
    return input;
}

/// How many pages an export can have at most.
int mostPages(const ExportArguments &arguments, const InputFile &input)
{
    const long long bySize = mostPagesOf(static_cast<std::uint64_t>(input.size()));
    const long long first = arguments.firstPage.value_or(1);
    const long long chosen = arguments.lastPage ? *arguments.lastPage - first + 1 : bySize;
    return static_cast<int>(std::clamp<long long>(chosen, 0, bySize));
}

} // namespace

void exportPages(const ExportArguments &arguments)
{
    OutputFolder folder(arguments.output);
    folder.removeEarlierExport(arguments.input);
    InputFile input = openInput(arguments);
    folder.fixNames(mostPages(arguments, input), arguments.wantsPictures(), input);
    if (arguments.locksUp) {
        enterSandboxOf(toolName, {{input.descriptor(), folder.descriptor()},
                                  {folder.descriptor()},
                                  folder.names().areInPlace(),
                                  true});
    }
    PageFiles files(folder, arguments.input);
    try {
        const Job job = runJob(arguments, std::move(input), files);
        folder.prepareIndex(files.index());
        job->checkInput();
        folder.publishIndex();
    } catch (...) {
        folder.removeThisExport();
        throw;
    }
}

void listItems(const ExportArguments &arguments)
{
    InputFile input = openInput(arguments);
    SealedText text(0, arguments.input.size() + 1);
    input.setFixedPath(text.addPath(arguments.input));
    text.seal();
    if (arguments.locksUp) {
        enterSandboxOf(toolName, {{input.descriptor()}, {}, text.isInPlace(), true});
    }
    ItemStream stream;
    const Job job = runJob(arguments, std::move(input), stream);
    job->checkInput();
    stream.finish();
}

int runPageExport(int argc, const char *const *argv)
{
    try {
        return run(parseExportArguments(argc, argv));
    } catch (const ToolError &error) {
        return reportError(toolName, error);
    } catch (const ReaderGone &) {
        return exitInputError;
    } catch (const std::bad_alloc &) {
        reportLine(toolName, "", "out of memory");
    } catch (const std::exception &error) {
        reportLine(toolName, "", error.what());
    }
    return exitInputError;
}

} // namespace tools
