#include "tools/pagexport/output/page_export.h"

#include "tools/common/report.h"
#include "tools/common/tool_error.h"
#include "tools/pagexport/export_job.h"
#include "tools/pagexport/output/output_folder.h"

#include <cstdio>
#include <memory>
#include <new>

namespace tools {

namespace {

constexpr const char *toolName = "pagexport";

int printText(const std::string &text)
{
    const bool printed = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    return printed && std::fflush(stdout) == 0 ? exitSuccess : exitInputError;
}

int runOptions(const ExportOptions &options)
{
    switch (options.action) {
    case ExportOptions::Action::showHelp:
        return printText(exportHelp());
    case ExportOptions::Action::showVersion:
        return printText("pagexport " QUORLIN_VERSION "\n");
    case ExportOptions::Action::exportPages:
        exportPages(options);
        break;
    }
    return exitSuccess;
}

} // namespace

void exportPages(const ExportOptions &options)
{
    OutputFolder folder(options.output);
    folder.removeEarlierExport(options.input);
    auto job = std::make_unique<ExportJob>(options, folder);
    const auto keepForLostThreads = [&job] {
        if (job->hasLostThreads()) {
            static_cast<void>(job.release());
        }
    };
    try {
        job->run();
        folder.writeIndex(job->index());
    } catch (const std::bad_alloc &) {
        folder.removeThisExport();
        keepForLostThreads();
        throw ToolError(options.input, "needs more memory than there is");
    } catch (...) {
        folder.removeThisExport();
        keepForLostThreads();
        throw;
    }
    keepForLostThreads();
}

int runPageExport(int argc, const char *const *argv)
{
    try {
        return runOptions(parseExportOptions(argc, argv));
    } catch (const ToolError &error) {
        return reportError(toolName, error);
    } catch (const std::bad_alloc &) {
        reportLine(toolName, "", "out of memory");
    } catch (const std::exception &error) {
        reportLine(toolName, "", error.what());
    }
    return exitInputError;
}

} // namespace tools
