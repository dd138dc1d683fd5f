#pragma once

#include "tools/pagexport/export_options.h"
#include "tools/pagexport/output_folder.h"
#include "tools/pagexport/page_reader.h"
#include "tools/pagexport/watchdog.h"

#include <atomic>
#include <exception>
#include <mutex>
#include <string>
#include <vector>

namespace tools {

/// What the index says about an exported page.
struct PageRecord
{
    int width = 0; ///< in units
    int height = 0;
    int items = 0;
    bool hasPicture = false;
    bool isComplete = true; ///< false for pages that gave a warning
};

/// Exports a range of pages of one document, by as many threads as there are processors.
class ExportJob
{
public:
    /// Opens the document and checks the bounds.
    /// @throws ToolError
    ExportJob(const ExportOptions &options, const OutputFolder &folder);

    /// Writes the page files and pictures.
    /// @throws ToolError when one cannot be written
    void run();
    /// The index file, once run() is done.
    std::string index() const;

private:
    void setRange(int pages);
    void findPages(int statedPages);
    std::size_t workerCount() const;
    void work(std::size_t worker, PageReader &reader);
    void workWithOwnReader(std::size_t worker) noexcept;
    void exportPage(std::size_t worker, PageReader &reader, int position, std::string &html,
                    PageItems &items);
    void readPage(std::size_t worker, PageReader &reader, int position, PageItems &items);
    void drawPage(std::size_t worker, PageReader &reader, int position);
    Watchdog::Milliseconds timeLimit() const noexcept;
    void warn(int position, const std::string &reason);

    const ExportOptions &m_options;
    const OutputFolder &m_folder;
    PageReader m_reader;
    PageObjects m_objects; ///< of the pages exported
    int m_first = 0;       ///< 0-based
    std::vector<PageRecord> m_records;
    Watchdog *m_watchdog = nullptr;

    std::atomic<int> m_next{0};
    std::atomic<int> m_expired{0};
    std::atomic<int> m_warnings{0};
    std::atomic<bool> m_stops{false};
    std::mutex m_errorMutex;
    std::exception_ptr m_error;
};

} // namespace tools
