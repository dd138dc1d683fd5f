#include "tools/pagexport/export_job.h"

#include "tools/common/report.h"
#include "tools/pagexport/output/page_html.h"
#include "tools/pagexport/text/geometry.h"
#include "tools/pdf/page_lookup.h"

#include <algorithm>
#include <system_error>
#include <thread>

namespace tools {

namespace {

constexpr int pagesPerStep = 8;
constexpr std::size_t mostWorkers = 8;
constexpr std::size_t pagesPerWorker = 8;
constexpr int mostPageWarnings = 10;
constexpr std::chrono::milliseconds tick{50};
constexpr std::chrono::seconds openTime{60};
constexpr std::chrono::milliseconds pageTime{5000};
constexpr std::chrono::milliseconds pictureTime{10000};
constexpr std::chrono::milliseconds shortPageTime{500};
constexpr int pagesWithFullTime = 12; // that may run past it before the others get less
constexpr int mostLostThreads = 4;

void appendEscaped(std::string &xml, std::string_view text)
{
    for (const char c : text) {
        switch (c) {
        case '<':
            xml += "&lt;";
            break;
        case '&':
            xml += "&amp;";
            break;
        case '"':
            xml += "&quot;";
            break;
        default:
            xml += static_cast<unsigned char>(c) < 0x20 ? '?' : c;
            break;
        }
    }
}

void appendAttribute(std::string &xml, std::string_view name, std::string_view value)
{
    xml += ' ';
    xml += name;
    xml += "=\"";
    appendEscaped(xml, value);
    xml += '"';
}

} // namespace

ExportJob::ExportJob(const ExportOptions &options, const OutputFolder &folder)
    : m_options(options), m_folder(folder)
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
    while (!m_changed.wait_for(lock, tick, [this] { return m_running == 0; })) {
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
    --m_running;
    ++m_lost;
    const int position = worker.position;
    try {
        if (position < 0) {
            throw ToolError(m_options.input, "takes too long to open");
        }
        if (m_lost > mostLostThreads) {
            throw ToolError(m_options.input, "has too many pages that take too long");
        }
        warn(position, "takes too long; its text is left out");
        std::string html;
        writePageHtml(html, PageItems(), m_first + position + 1);
        m_folder.write(m_folder.pageName(position + 1), html);
        startWorker(position + 1, worker.end);
    } catch (...) {
        m_stops = true;
        if (!m_error) {
            m_error = std::current_exception();
        }
    }
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
        m_stops = true;
        if (!m_error) {
            m_error = error;
        }
    }
    --m_running;
    m_changed.notify_one();
}

void ExportJob::workAsFirst(Worker &worker) noexcept
{
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
    std::exception_ptr error;
    try {
        fz_cookie cookie{};
        worker.watch.begin(cookie, openTime);
        std::unique_ptr<PageReader> reader;
        try {
            reader = std::make_unique<PageReader>(m_options.input, PageReader::Warnings::silent);
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
    worker.watch.begin(cookie, openTime);
    try {
        reader = std::make_unique<PageReader>(m_options.input, PageReader::Warnings::shown);
        const int pages = reader->pageCount();
        if (pages <= 0) {
            throw ToolError(m_options.input, "has no pages");
        }
        if (pages - mostPagesBeyondObjects > reader->objectCount()) {
            throw ToolError(m_options.input,
                            "states more pages than it can have: " + std::to_string(pages));
        }
        setRange(pages);
        m_objects = reader->findPageObjects(m_first, static_cast<int>(m_records.size()));
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
    const long long first = m_options.firstPage.value_or(1);
    const long long last = m_options.lastPage.value_or(pages);
    if (first < 1 || last > pages || first > last) {
        throw ToolError(m_options.input,
                        "pages " + std::to_string(first) + " to " + std::to_string(last) +
                            " do not exist; it has pages 1 to " + std::to_string(pages));
    }
    m_first = static_cast<int>(first) - 1;
    m_records.resize(static_cast<std::size_t>(last - first + 1));
}

std::size_t ExportJob::workerCount() const
{
    const std::size_t processors = std::max(1U, std::thread::hardware_concurrency());
    const std::size_t useful = std::max<std::size_t>(1, m_objects.size() / pagesPerWorker);
    return std::min({processors, useful, mostWorkers});
}

ExportJob::Step ExportJob::work(Worker &worker, PageReader &reader)
{
    std::string html;
    PageItems items;
    const int pages = static_cast<int>(m_objects.size());
    while (!m_stops) {
        if (worker.next >= worker.end) {
            worker.next = m_next.fetch_add(pagesPerStep, std::memory_order_relaxed);
            worker.end = std::min(worker.next + pagesPerStep, pages);
            if (worker.next >= pages) {
                break;
            }
        }
        worker.position = worker.next++;
        if (exportPage(worker, reader, html, items) == Step::lost) {
            return Step::lost;
        }
    }
    return Step::done;
}

ExportJob::Step ExportJob::exportPage(Worker &worker, PageReader &reader, std::string &html,
                                      PageItems &items)
{
    if (readPage(worker, reader, items) == Step::lost) {
        return Step::lost;
    }
    const int number = worker.position + 1;
    if (m_options.hasBounds() && reader.hasPage() && drawPage(worker, reader) == Step::lost) {
        return Step::lost;
    }
    reader.closePage();
    writePageHtml(html, items, m_first + number);
    m_folder.write(m_folder.pageName(number), html);
    return Step::done;
}

PageWatch::Duration ExportJob::textTime() const noexcept
{
    return m_expired < pagesWithFullTime ? pageTime : shortPageTime;
}

ExportJob::Step ExportJob::readPage(Worker &worker, PageReader &reader, PageItems &items)
{
    const auto position = static_cast<std::size_t>(worker.position);
    fz_cookie cookie{};
    std::string reason;
    worker.watch.begin(cookie, textTime());
    try {
        items.clear();
        reason = reader.openPage(m_first + worker.position, m_objects[position]);
        if (reason.empty()) {
            reason = reader.readText(items, cookie);
        }
    } catch (const std::bad_alloc &) {
        items = PageItems();
        reason = "out of memory";
    }
    const PageWatch::Outcome outcome = worker.watch.end();
    if (outcome == PageWatch::Outcome::abandoned) {
        return Step::lost;
    }
    if (outcome == PageWatch::Outcome::expired) {
        ++m_expired;
        items.clear();
        reason = "takes too long; its text is left out";
    }
    PageRecord &record = m_records[position];
    record.width = toUnits(reader.pageSize().width);
    record.height = toUnits(reader.pageSize().height);
    record.items = static_cast<int>(items.items.size());
    if (!reason.empty()) {
        warn(worker.position, reason);
    }
    return Step::done;
}

ExportJob::Step ExportJob::drawPage(Worker &worker, PageReader &reader)
{
    fz_cookie cookie{};
    Picture picture;
    worker.watch.begin(cookie, pictureTime);
    try {
        picture = reader.drawPicture(cookie);
    } catch (const std::bad_alloc &) {
        picture = {{}, "out of memory"};
    }
    const PageWatch::Outcome outcome = worker.watch.end();
    if (outcome == PageWatch::Outcome::abandoned) {
        return Step::lost;
    }
    if (outcome == PageWatch::Outcome::expired) {
        picture = {{}, "drawing takes too long"};
    }
    if (!picture.error.empty()) {
        warn(worker.position,
             (picture.png.empty() ? "no picture: " : "picture not complete: ") + picture.error);
    }
    if (!picture.png.empty()) {
        m_folder.write(m_folder.pictureName(worker.position + 1), picture.png);
        m_records[static_cast<std::size_t>(worker.position)].hasPicture = true;
    }
    return Step::done;
}

void ExportJob::warn(int position, const std::string &reason)
{
    m_records[static_cast<std::size_t>(position)].isComplete = false;
    const int earlier = m_warnings++;
    if (earlier < mostPageWarnings) {
        reportLine("pagexport", m_options.input,
                   "warning: page " + std::to_string(m_first + position + 1) + ": " + reason);
    } else if (earlier == mostPageWarnings) {
        reportLine("pagexport", m_options.input, "warning: more pages are not complete");
    }
}

std::string ExportJob::index() const
{
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<export";
    appendAttribute(xml, "version", QUORLIN_VERSION);
    appendAttribute(xml, "unit", "1/108 inch");
    appendAttribute(xml, "pages", std::to_string(m_records.size()));
    xml += ">\n";
    for (std::size_t i = 0; i < m_records.size(); ++i) {
        const PageRecord &record = m_records[i];
        const int number = static_cast<int>(i) + 1;
        xml += "<page";
        appendAttribute(xml, "number", std::to_string(m_first + number));
        appendAttribute(xml, "width", std::to_string(record.width));
        appendAttribute(xml, "height", std::to_string(record.height));
        appendAttribute(xml, "items", std::to_string(record.items));
        appendAttribute(xml, "file", m_folder.pageName(number));
        if (record.hasPicture) {
            appendAttribute(xml, "picture", m_folder.pictureName(number));
        }
        if (!record.isComplete) {
            appendAttribute(xml, "complete", "no");
        }
        xml += "/>\n";
    }
    xml += "</export>\n";
    return xml;
}

} // namespace tools
