#include "tools/pagexport/output/item_stream.h"

#include "tools/common/standard_output.h"

#include <charconv>
#include <string_view>

namespace tools {

namespace {

constexpr int mostPagesAhead = 64;
constexpr std::size_t mostBytesAhead = std::size_t{16} << 20U;

void appendField(std::string &line, int number)
{
    char digits[16];
    const auto result = std::to_chars(digits, digits + sizeof digits, number);
    line += '\t';
    line.append(digits, result.ptr);
}

std::string_view nameOf(PageState state)
{
    switch (state) {
    case PageState::whole:
        return "whole";
    case PageState::partial:
        return "partial";
    default:
        return "unreadable";
    }
}

} // namespace

void appendItemLines(std::string &lines, const ExportedPage &page, int number)
{
    lines.reserve(lines.size() + page.items.texts.size() + 48 * page.items.items.size() + 64);
    lines += "page";
    appendField(lines, number);
    appendField(lines, page.width);
    appendField(lines, page.height);
    lines += '\t';
    lines += nameOf(page.state);
    lines += '\n';
    for (const TextItem &item : page.items.items) {
        lines += "item";
        appendField(lines, number);
        appendField(lines, item.left);
        appendField(lines, item.top);
        appendField(lines, item.width);
        appendField(lines, item.height);
        lines += '\t';
        lines += page.items.text(item);
        lines += '\n';
    }
}

void ItemStream::begin(int first, int count)
{
    m_first = first;
    m_count = count;
}

bool mayRunAhead(int position, int due, std::size_t waiting)
{
    return position == due || (position < due + mostPagesAhead && waiting < mostBytesAhead);
}

void ItemStream::await(int position)
{
    std::unique_lock lock(m_mutex);
    m_advanced.wait(lock, [this, position] {
        return m_isAbandoned || mayRunAhead(position, m_next, m_earlyBytes);
    });
}

void ItemStream::take(const ExportedPage &page)
{
    std::string lines;
    appendItemLines(lines, page, m_first + page.position);
    const std::lock_guard lock(m_mutex);
    if (page.position != m_next) {
        m_earlyBytes += lines.size();
        m_early.emplace(page.position, std::move(lines));
        return;
    }
    for (;;) {
        writeStandardOutput(lines);
        ++m_next;
        const auto due = m_early.find(m_next);
        if (due == m_early.end()) {
            break;
        }
        lines = std::move(due->second);
        m_earlyBytes -= lines.size();
        m_early.erase(due);
    }
    m_advanced.notify_all();
}

void ItemStream::abandon() noexcept
{
    const std::lock_guard lock(m_mutex);
    m_isAbandoned = true;
    m_advanced.notify_all();
}

void ItemStream::finish()
{
    std::string line = "end";
    appendField(line, m_count);
    line += '\n';
    writeStandardOutput(line);
}

} // namespace tools
