#pragma once

#include "tools/pagexport/output/page_sink.h"

#include <condition_variable>
#include <map>
#include <mutex>

namespace tools {

/// Writes the pages' items to standard output, in page order, as soon as each page's turn has come.
/// Pages that are done early wait in memory, a bounded number of them; threads that are ahead of
/// that wait before they read on.
class ItemStream : public PageSink
{
public:
    void begin(int first, int count) override;
    void await(int position) override;
    /// @throws ReaderGone, ToolError
    void take(const ExportedPage &page) override;
    void abandon() noexcept override;

    /// Writes the last line, which says that nothing is missing.
    void finish();

private:
    bool hasRoom(int position) const;

    int m_first = 0;
    int m_count = 0;

    std::mutex m_mutex; ///< guards what follows
    std::condition_variable m_advanced;
    int m_next = 0; ///< position of the page that is due
    bool m_isAbandoned = false;
    std::map<int, std::string> m_early;
    std::size_t m_earlyBytes = 0;
};

/// Appends the lines of a page to @p lines: "page", its number, width and height in units and its
/// state; then a line an item: "item", the page's number, left, top, width, height and the text as
/// UTF-8. Tabs stand between the fields; no text holds one.
void appendItemLines(std::string &lines, const ExportedPage &page, int number);

} // namespace tools
