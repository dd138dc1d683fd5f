#include "tools/pagexport/output/page_export.h"

#include "tools/common/report.h"
#include "tools/common/standard_output.h"
#include "tools/common/tool_error.h"
#include "tools/pagexport/export_job.h"
#include "tools/pagexport/output/item_stream.h"
#include "tools/pagexport/output/output_folder.h"
#include "tools/pagexport/output/page_files.h"

#include <memory>
#include <new>
#include <utility>

namespace tools {

namespace {

constexpr const char *toolName = "pagexport";

int runOptions(ExportOptions options)
{
    if (!options.input.empty()) {
        options.identity = notedIdentity();
        options.passwordList = readPasswords(options.passwords);
    }
    switch (options.action) {
    case ExportOptions::Action::showHelp:
        writeStandardOutput(exportHelp());
        break;
    case ExportOptions::Action::showVersion:
        writeStandardOutput("pagexport " QUORLIN_VERSION "\n");
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

/// Opens the input and hands its pages to @p sink.
Job runJob(const ExportOptions &options, PageSink &sink)
{
    try {
        InputFile input(options.input, options.identity);
        input.setPasswords(options.passwordList);
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

} // namespace

void exportPages(const ExportOptions &options)
{
    OutputFolder folder(options.output);
    folder.removeEarlierExport(options.input);
    PageFiles files(folder);
    try {
        const Job job = runJob(options, files);
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
    ItemStream stream;
    const Job job = runJob(options, stream);
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
