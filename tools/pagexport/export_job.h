#pragma once

#include "tools/pagexport/arguments.h"
#include "tools/pagexport/output/page_sink.h"
#include "tools/pagexport/pages/page_reader.h"
#include "tools/pagexport/pages/page_watch.h"
#include "tools/pagexport/pages/time_budget.h"

#include <atomic>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace tools {

/// Exports a range of pages of one document, by as many threads as there are processors. The thread
/// that calls run() works on no page: it watches over the others, and goes on without one that a
/// hostile page holds for good.
class ExportJob
{
public:
    /// @param sink takes the pages; it must outlive run()
    ExportJob(const ExportArguments &arguments, InputFile input, PageSink &sink);

    /// Opens the document and hands its pages to the sink.
    /// @throws ToolError when it cannot be read, the pages do not exist or cannot be written
    void run();
    /// @throws InputChanged when the document is not what it was when the job began
    void checkInput() const { m_input.checkUnchanged(); }
    /// True when a thread could not be ended: it still uses this object, which must then live on.
    bool hasLostThreads() const noexcept { return m_lost > 0; }

private:
    /// One thread with what it works on; pages are counted from 0 as exported.
    struct Worker
    {
        std::thread thread;
        PageWatch watch;
        std::atomic<int> position{-1}; ///< the page in work; -1 while the document is opened
        int next = 0;                  ///< the pages from here on, up to "end", are this worker's
        int end = 0;
        bool isLost = false;
    };
    enum class Step { done, lost };

    void startWorker(int next, int end);
    void startOtherWorkers();
    void finishWorker(const std::exception_ptr &error) noexcept;
    void workAsFirst(Worker &worker) noexcept;
    void workAsOther(Worker &worker) noexcept;
    Step openDocument(Worker &worker, std::unique_ptr<PageReader> &reader);
    Step work(Worker &worker, PageReader &reader);
    Step exportPage(Worker &worker, PageReader &reader, ExportedPage &page);
    Step readPage(Worker &worker, PageReader &reader, ExportedPage &page);
    Step drawPage(Worker &worker, PageReader &reader, ExportedPage &page);

    void supervise();
    void abandon(Worker &worker);
    void stop(const std::exception_ptr &error) noexcept;
    void setRange(int pages);
    std::size_t workerCount() const;
    void warn(int position, const std::string &reason);

    const ExportArguments m_arguments;
    const InputFile m_input; ///< read by all threads
    PageSink &m_sink;
    TimeBudget m_time;
    std::shared_ptr<const PageList> m_pages; ///< of the whole document
    int m_first = 0;                         ///< 0-based
    int m_count = 0;                         ///< of the pages exported

    std::atomic<int> m_next{0};
    std::atomic<int> m_warnings{0};
    std::atomic<bool> m_stops{false};

    std::mutex m_mutex; ///< guards what follows
    std::condition_variable m_changed;
    std::vector<std::unique_ptr<Worker>> m_workers;
    int m_running = 0;
    int m_lost = 0;
    std::exception_ptr m_error;
};

} // namespace tools
