#include "tools/pagexport/export_job.h"

#include "tools/common/report.h"
#include "tools/pagexport/geometry.h"
#include "tools/pagexport/page_html.h"

#include <algorithm>
#include <thread>

namespace tools {

namespace {

constexpr int pagesLookedUpSingly = 4;
constexpr int pagesPerStep = 8;
constexpr std::size_t mostWorkers = 8;
constexpr std::size_t pagesPerWorker = 8;
constexpr int mostMissingPages = 10000;
constexpr int mostPageWarnings = 10;
constexpr Watchdog::Milliseconds pageTime{5000};
constexpr Watchdog::Milliseconds pictureTime{10000};
constexpr Watchdog::Milliseconds shortPageTime{500};
constexpr int pagesWithFullTime = 12; // that may run past it before the others get less

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
    : m_options(options), m_folder(folder), m_reader(options.input)
{
    const int pages = m_reader.statedPageCount();
    if (pages <= 0) {
        throw ToolError(options.input, "has no pages");
    }
    setRange(pages);
    findPages(pages);
}

void ExportJob::setRange(int pages)
{
    const long long first = m_options.firstPage.value_or(1);
    const long long last = m_options.lastPage.value_or(pages);
    if (first < 1 || last > pages || first > last) {
        throw ToolError(m_options.input,
                        "pages " + std::to_string(first) + " to " + std::to_string(last) +
                            " do not exist, it has pages 1 to " + std::to_string(pages));
    }
    m_first = static_cast<int>(first) - 1;
    m_objects.assign(
        static_cast<std::size_t>(std::min(last - first + 1, 1LL * pagesLookedUpSingly)), 0);
    if (last - first + 1 > pagesLookedUpSingly) {
        m_objects.clear();
    }
}

void ExportJob::findPages(int statedPages)
{
    bool allFound = !m_objects.empty();
    for (std::size_t i = 0; i < m_objects.size(); ++i) {
        m_objects[i] = m_reader.findPageObject(m_first + static_cast<int>(i));
        allFound = allFound && m_objects[i] != 0;
    }
    if (!allFound) {
        const long long wanted = m_objects.empty()
                                     ? m_options.lastPage.value_or(statedPages) - m_first
                                     : static_cast<long long>(m_objects.size());
        const int most = std::min(statedPages, m_reader.objectCount() + mostMissingPages);
        PageObjects all = m_reader.listPageObjects(most);
        if (statedPages - static_cast<long long>(all.size()) > mostMissingPages) {
            throw ToolError(m_options.input, "states " + std::to_string(statedPages) +
                                                 " pages and has " + std::to_string(all.size()));
        }
        all.resize(static_cast<std::size_t>(statedPages), 0);
        m_objects.assign(all.begin() + m_first, all.begin() + m_first + wanted);
    }
    m_records.resize(m_objects.size());
}

std::size_t ExportJob::workerCount() const
{
    const std::size_t processors = std::max(1U, std::thread::hardware_concurrency());
    const std::size_t useful = std::max<std::size_t>(1, m_objects.size() / pagesPerWorker);
    return std::min({processors, useful, mostWorkers});
}

void ExportJob::run()
{
    const std::size_t workers = workerCount();
    Watchdog watchdog(workers);
    m_watchdog = &watchdog;
    std::vector<std::thread> threads;
    threads.reserve(workers);
    for (std::size_t worker = 1; worker < workers; ++worker) {
        threads.emplace_back([this, worker] { workWithOwnReader(worker); });
    }
    try {
        work(0, m_reader);
    } catch (...) {
        m_stops = true;
        const std::lock_guard lock(m_errorMutex);
        m_error = std::current_exception();
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    m_watchdog = nullptr;
    if (m_error) {
        std::rethrow_exception(m_error);
    }
}

void ExportJob::workWithOwnReader(std::size_t worker) noexcept
{
    try {
        PageReader reader(m_options.input);
        work(worker, reader);
    } catch (...) {
        m_stops = true;
        const std::lock_guard lock(m_errorMutex);
        if (!m_error) {
            m_error = std::current_exception();
        }
    }
}

void ExportJob::work(std::size_t worker, PageReader &reader)
{
    std::string html;
    PageItems items;
    const int pages = static_cast<int>(m_objects.size());
    while (!m_stops) {
        const int begin = m_next.fetch_add(pagesPerStep, std::memory_order_relaxed);
        if (begin >= pages) {
            return;
        }
        const int end = std::min(begin + pagesPerStep, pages);
        for (int position = begin; position < end && !m_stops; ++position) {
            exportPage(worker, reader, position, html, items);
        }
    }
}

void ExportJob::exportPage(std::size_t worker, PageReader &reader, int position, std::string &html,
                           PageItems &items)
{
    readPage(worker, reader, position, items);
    if (m_options.hasBounds()) {
        drawPage(worker, reader, position);
    }
    reader.closePage();
    writePageHtml(html, items, m_first + position + 1);
    m_folder.write(m_folder.pageName(position + 1), html);
}

Watchdog::Milliseconds ExportJob::timeLimit() const noexcept
{
    return m_expired < pagesWithFullTime ? pageTime : shortPageTime;
}

void ExportJob::readPage(std::size_t worker, PageReader &reader, int position, PageItems &items)
{
    fz_cookie cookie{};
    std::string reason;
    m_watchdog->begin(worker, cookie, timeLimit());
    try {
        items.clear();
        reason = reader.openPage(m_first + position, m_objects[static_cast<std::size_t>(position)]);
        if (reason.empty()) {
            reason = reader.readText(items, cookie);
        }
    } catch (const std::bad_alloc &) {
        items = PageItems();
        reason = "out of memory";
    }
    if (m_watchdog->end(worker)) {
        ++m_expired;
        items.clear();
        reason = "takes too long; its text is left out";
    }
    PageRecord &record = m_records[static_cast<std::size_t>(position)];
    record.width = toUnits(reader.pageSize().width);
    record.height = toUnits(reader.pageSize().height);
    record.items = static_cast<int>(items.items.size());
    if (!reason.empty()) {
        warn(position, reason);
    }
}

void ExportJob::drawPage(std::size_t worker, PageReader &reader, int position)
{
    if (!reader.hasPage()) {
        return;
    }
    fz_cookie cookie{};
    std::string png;
    std::string reason;
    m_watchdog->begin(worker, cookie, pictureTime);
    try {
        png = reader.drawPicture(cookie);
    } catch (const ToolError &error) {
        reason = std::string("no picture: ") + error.what();
    } catch (const std::bad_alloc &) {
        reason = "no picture: out of memory";
    }
    if (m_watchdog->end(worker)) {
        reason = "no picture: drawing takes too long";
    }
    if (!reason.empty()) {
        warn(position, reason);
        return;
    }
    m_folder.write(m_folder.pictureName(position + 1), png);
    m_records[static_cast<std::size_t>(position)].hasPicture = true;
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
