#include "tools/pagexport/export_job.h"

#include "tools/common/ending_signals.h"
#include "tools/common/report.h"
#include "tools/pagexport/text/geometry.h"

#include <algorithm>
#include <system_error>
#include <thread>

namespace tools {

namespace {

constexpr int pagesPerStep = 8;
constexpr std::size_t mostWorkers = 8;
constexpr std::size_t pagesPerWorker = 8;
constexpr int mostPageWarnings = 10;
constexpr int mostLostThreads = 4;

} // namespace

ExportJob::ExportJob(const ExportArguments &arguments, InputFile input, PageSink &sink)
    : m_arguments(arguments), m_input(std::move(input)), m_sink(sink),
      m_time(static_cast<std::uint64_t>(m_input.size()))
{
}

void ExportJob::run()
{
    {
        const std::lock_guard lock(m_mutex);
        startWorker(0, 0);
    }
    supervise();
    for (const std::unique_ptr<Worker> &worker : m_workers) {
        if (worker->isLost) {
            worker->thread.detach();
        } else {
            worker->thread.join();
        }
    }
    if (m_error) {
        std::rethrow_exception(m_error);
    }
}

void ExportJob::supervise()
{
    std::unique_lock lock(m_mutex);
    while (!m_changed.wait_for(lock, m_time.tick(), [this] { return m_running == 0; })) {
        for (std::size_t i = 0; i < m_workers.size(); ++i) {
            if (m_workers[i]->watch.check()) {
                abandon(*m_workers[i]);
            }
        }
    }
}

// Called with the mutex held. The thread itself cannot be ended; it is left alone with its page.
void ExportJob::abandon(Worker &worker)
{
    worker.isLost = true;
    m_time.charge(worker.watch.lastUsed(), true);
    --m_running;
    ++m_lost;
    const int position = worker.position;
    try {
        if (position < 0) {
            throw ToolError(m_arguments.input, "takes too long to open");
        }
        if (m_lost > mostLostThreads) {
            throw ToolError(m_arguments.input, "has too many pages that take too long");
        }
        warn(position, "takes too long; its text is left out");
        ExportedPage page;
        page.position = position;
        page.state = PageState::partial;
        m_sink.take(page);
        startWorker(position + 1, worker.end);
    } catch (...) {
        stop(std::current_exception());
    }
}

// Called with the mutex held. The first error is the one that is reported.
void ExportJob::stop(const std::exception_ptr &error) noexcept
{
    m_stops = true;
    if (!m_error) {
        m_error = error;
    }
    m_sink.abandon();
}

// Called with the mutex held. A worker whose thread the system refuses is not kept.
void ExportJob::startWorker(int next, int end)
{
    auto worker = std::make_unique<Worker>();
    worker->next = next;
    worker->end = end;
    const bool isFirst = m_workers.empty();
    m_workers.push_back(std::move(worker));
    Worker &started = *m_workers.back();
    try {
        started.thread = std::thread(
            [this, &started, isFirst] { isFirst ? workAsFirst(started) : workAsOther(started); });
    } catch (...) {
        m_workers.pop_back();
        throw;
    }
    ++m_running;
}

// The first worker can do all pages alone, so a refused thread costs time and no page.
void ExportJob::startOtherWorkers()
{
    m_time.shareAmong(workerCount());
    const std::lock_guard lock(m_mutex);
    try {
        while (m_workers.size() < workerCount()) {
            startWorker(0, 0);
        }
    } catch (const std::system_error &) {
        return;
    }
}

void ExportJob::finishWorker(const std::exception_ptr &error) noexcept
{
    const std::lock_guard lock(m_mutex);
    if (error) {
        stop(error);
    }
    --m_running;
    m_changed.notify_one();
}

void ExportJob::workAsFirst(Worker &worker) noexcept
{
    useSignalStack();
    std::exception_ptr error;
    try {
        std::unique_ptr<PageReader> reader;
        if (openDocument(worker, reader) == Step::lost) {
            return;
        }
        startOtherWorkers();
        if (work(worker, *reader) == Step::lost) {
            return;
        }
    } catch (...) {
        error = std::current_exception();
    }
    finishWorker(error);
}

void ExportJob::workAsOther(Worker &worker) noexcept
{
    useSignalStack();
    std::exception_ptr error;
    try {
        fz_cookie cookie{};
        worker.watch.begin(cookie, m_time.forOpening());
        std::unique_ptr<PageReader> reader;
        try {
            reader = std::make_unique<PageReader>(m_input, PageReader::Warnings::silent, m_pages);
        } catch (...) {
            error = std::current_exception();
        }
        if (worker.watch.end() == PageWatch::Outcome::abandoned ||
            (reader && work(worker, *reader) == Step::lost)) {
            return;
        }
    } catch (...) {
        error = std::current_exception();
    }
    finishWorker(error);
}

ExportJob::Step ExportJob::openDocument(Worker &worker, std::unique_ptr<PageReader> &reader)
{
    fz_cookie cookie{};
    std::exception_ptr error;
    worker.watch.begin(cookie, m_time.forOpening());
    try {
        reader = std::make_unique<PageReader>(m_input, PageReader::Warnings::shown);
        m_pages = reader->pages();
        if (m_pages->pages.empty()) {
            throw ToolError(m_arguments.input, "has no pages");
        }
        setRange(static_cast<int>(m_pages->pages.size()));
        reader->showWarnings();
        m_sink.begin(m_first + 1, m_count);
    } catch (...) {
        error = std::current_exception();
    }
    if (worker.watch.end() == PageWatch::Outcome::abandoned) {
        return Step::lost;
    }
    if (error) {
        std::rethrow_exception(error);
    }
    return Step::done;
}

void ExportJob::setRange(int pages)
{
    const long long first = m_arguments.firstPage.value_or(1);
    const long long last = m_arguments.lastPage.value_or(pages);
    if (first < 1 || last > pages || first > last) {
        const bool isOne = first == last || (first > pages && !m_arguments.lastPage);
        const std::string wanted =
            isOne ? "has no page " + std::to_string(first)
                  : "has no pages " + std::to_string(first) + " to " + std::to_string(last);
        throw ToolError(m_arguments.input,
                        wanted + "; its pages are 1 to " + std::to_string(pages));
    }
    m_first = static_cast<int>(first) - 1;
    m_count = static_cast<int>(last - first + 1);
}

std::size_t ExportJob::workerCount() const
{
    const std::size_t processors = std::max(1U, std::thread::hardware_concurrency());
    const std::size_t useful =
        std::max<std::size_t>(1, static_cast<std::size_t>(m_count) / pagesPerWorker);
    return std::min({m_arguments.mostThreads.value_or(processors), useful, mostWorkers});
}

ExportJob::Step ExportJob::work(Worker &worker, PageReader &reader)
{
    ExportedPage page;
    while (!m_stops) {
        if (worker.next >= worker.end) {
            worker.next = m_next.fetch_add(pagesPerStep, std::memory_order_relaxed);
            worker.end = std::min(worker.next + pagesPerStep, m_count);
            if (worker.next >= m_count) {
                break;
            }
        }
        worker.position = worker.next++;
        m_sink.await(worker.position);
        if (m_stops) {
            break;
        }
        if (exportPage(worker, reader, page) == Step::lost) {
            return Step::lost;
        }
    }
    return Step::done;
}

ExportJob::Step ExportJob::exportPage(Worker &worker, PageReader &reader, ExportedPage &page)
{
    page.clear();
    page.position = worker.position;
    if (readPage(worker, reader, page) == Step::lost ||
        (m_arguments.wantsPictures() && reader.hasPage() &&
         drawPage(worker, reader, page) == Step::lost)) {
        return Step::lost;
    }
    reader.closePage();
    m_sink.take(page);
    return Step::done;
}

ExportJob::Step ExportJob::readPage(Worker &worker, PageReader &reader, ExportedPage &page)
{
    fz_cookie cookie{};
    std::string reason;
    const PageWatch::Duration time = m_time.forText();
    const bool hasTime = time > PageWatch::Duration::zero();
    worker.watch.begin(cookie, time);
    try {
        reason = hasTime ? reader.openPage(m_first + worker.position)
                         : "takes too long, as others did; its text is left out";
        if (reason.empty()) {
            reason = reader.readText(page.items, cookie);
        }
    } catch (const std::bad_alloc &) {
        page.items = TextItems();
        reason = "out of memory";
    }
    const PageWatch::Outcome outcome = worker.watch.end();
    if (outcome == PageWatch::Outcome::abandoned) {
        return Step::lost;
    }
    m_time.charge(worker.watch.lastUsed(), outcome == PageWatch::Outcome::expired);
    if (hasTime && outcome == PageWatch::Outcome::expired) {
        page.items.clear();
        reason = "takes too long; its text is left out";
    }
    page.width = toUnits(reader.pageSize().width);
    page.height = toUnits(reader.pageSize().height);
    if (!reason.empty()) {
        page.state = reader.hasPage() ? PageState::partial : PageState::unreadable;
        warn(worker.position, reason);
    }
    return Step::done;
}

ExportJob::Step ExportJob::drawPage(Worker &worker, PageReader &reader, ExportedPage &page)
{
    fz_cookie cookie{};
    Picture picture;
    worker.watch.begin(cookie, m_time.forPicture());
    try {
        picture = reader.drawPicture(cookie);
    } catch (const std::bad_alloc &) {
        picture = {{}, "out of memory"};
    }
    const PageWatch::Outcome outcome = worker.watch.end();
    if (outcome == PageWatch::Outcome::abandoned) {
        return Step::lost;
    }
    m_time.charge(worker.watch.lastUsed(), outcome == PageWatch::Outcome::expired);
    if (outcome == PageWatch::Outcome::expired) {
        picture = {{}, "drawing takes too long"};
    }
    if (!picture.error.empty()) {
        page.state = PageState::partial;
        warn(worker.position,
             (picture.png.empty() ? "no picture: " : "picture not complete: ") + picture.error);
    }
    page.picture = std::move(picture.png);
    return Step::done;
}

void ExportJob::warn(int position, const std::string &reason)
{
    const int earlier = m_warnings++;
    if (earlier < mostPageWarnings) {
        reportLine("pagexport", m_arguments.input,
                   "warning: page " + std::to_string(m_first + position + 1) + ": " + reason);
    } else if (earlier == mostPageWarnings) {
        reportLine("pagexport", m_arguments.input, "warning: more pages are not complete");
    }
}

} // namespace tools
