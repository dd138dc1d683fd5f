#include "tools/pagexport/pagexport.h"

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

int run(ExportArguments arguments)
{
    if (!arguments.input.empty()) {
        arguments.identity = notedIdentity();
        arguments.passwordList = readPasswords(arguments.passwords);
    }
    switch (arguments.action) {
    case ExportArguments::Action::showHelp:
        writeStandardOutput(exportHelp());
        break;
    case ExportArguments::Action::showVersion:
        writeStandardOutput("pagexport " QUORLIN_VERSION "\n");
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

/// Opens the input and hands its pages to @p sink.
Job runJob(const ExportArguments &arguments, PageSink &sink)
{
    try {
        InputFile input(arguments.input, arguments.identity);
        input.setPasswords(arguments.passwordList);
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

} // namespace

void exportPages(const ExportArguments &arguments)
{
    OutputFolder folder(arguments.output);
    folder.removeEarlierExport(arguments.input);
    PageFiles files(folder);
    try {
        const Job job = runJob(arguments, files);
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
    ItemStream stream;
    const Job job = runJob(arguments, stream);
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
