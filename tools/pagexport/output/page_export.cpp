#include "tools/pagexport/output/page_export.h"

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

namespace tools {

namespace {

constexpr const char *toolName = "pagexport";

int runOptions(ExportOptions options)
{
    if (!options.input.empty()) {
        options.identity = notedIdentity();
    }
    options.locksUp = true;
    switch (options.action) {
    case ExportOptions::Action::showHelp:
        writeStandardOutput(exportHelp());
        break;
    case ExportOptions::Action::showVersion:
        writeStandardOutput(versionText(toolName));
        break;
    case ExportOptions::Action::exportPages:
        exportPages(options);
        break;
    case ExportOptions::Action::listItems:
        listItems(options);
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
Job runJob(const ExportOptions &options, InputFile input, PageSink &sink)
{
    try {
        Job job(new ExportJob(options, std::move(input), sink));
        try {
            job->run();
        } catch (const ToolError &) {
            job->checkInput(); // what a file that changes meanwhile looks like says nothing
            throw;
        }
        return job;
    } catch (const std::bad_alloc &) {
        throw ToolError(options.input, "needs more memory than there is");
    }
}

/// Opens the input and bounds the memory by its size.
InputFile openInput(const ExportOptions &options)
{
    InputFile input(options.input, options.identity);
    setMemoryBudget(memoryBudgetFor(static_cast<std::uint64_t>(input.size())));
    return input;
}

/// How many pages an export can have at most.
int mostPages(const ExportOptions &options, const InputFile &input)
{
    const long long bySize = mostPagesOf(static_cast<std::uint64_t>(input.size()));
    const long long first = options.firstPage.value_or(1);
    const long long chosen = options.lastPage ? *options.lastPage - first + 1 : bySize;
    return static_cast<int>(std::clamp<long long>(chosen, 0, bySize));
}

} // namespace

void exportPages(const ExportOptions &options)
{
    OutputFolder folder(options.output);
    folder.removeEarlierExport(options.input);
    InputFile input = openInput(options);
    folder.fixNames(mostPages(options, input), options.wantsPictures(), input);
    if (options.locksUp) {
        enterSandboxOf(toolName, {{input.descriptor(), folder.descriptor()},
                                  {folder.descriptor()},
                                  folder.names().areInPlace(),
                                  true});
    }
    PageFiles files(folder, options.input);
    try {
        const Job job = runJob(options, std::move(input), files);
        folder.prepareIndex(files.index());
        job->checkInput();
        folder.publishIndex();
    } catch (...) {
        folder.removeThisExport();
        throw;
    }
}

void listItems(const ExportOptions &options)
{
    InputFile input = openInput(options);
    SealedText text(0, options.input.size() + 1);
    input.setFixedPath(text.addPath(options.input));
    text.seal();
    if (options.locksUp) {
        enterSandboxOf(toolName, {{input.descriptor()}, {}, text.isInPlace(), true});
    }
    ItemStream stream;
    const Job job = runJob(options, std::move(input), stream);
    job->checkInput();
    stream.finish();
}

int runPageExport(int argc, const char *const *argv)
{
    try {
        return runOptions(parseExportOptions(argc, argv));
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
