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

namespace tools {

namespace {

constexpr const char *toolName = "pagexport";

int runOptions(const ExportOptions &options)
{
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

/// Runs the job. A thread that could not be ended keeps it for good.
void runJob(const ExportOptions &options, PageSink &sink)
{
    auto job = std::make_unique<ExportJob>(options, sink);
    const auto keepForLostThreads = [&job] {
        if (job->hasLostThreads()) {
            static_cast<void>(job.release());
        }
    };
    try {
        job->run();
    } catch (const std::bad_alloc &) {
        keepForLostThreads();
        throw ToolError(options.input, "needs more memory than there is");
    } catch (...) {
        keepForLostThreads();
        throw;
    }
    keepForLostThreads();
}

} // namespace

void exportPages(const ExportOptions &options)
{
    OutputFolder folder(options.output);
    folder.removeEarlierExport(options.input);
    PageFiles files(folder);
    try {
        runJob(options, files);
        folder.writeIndex(files.index());
    } catch (...) {
        folder.removeThisExport();
        throw;
    }
}

void listItems(const ExportOptions &options)
{
    ItemStream stream;
    runJob(options, stream);
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
