#pragma once

#include "tools/pagebinder/atomic_output.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tools {

/// Writes the objects of a new PDF file one after another, with a classic cross-reference table
/// behind them. Small files reach the disk in a single write.
class PdfWriter
{
public:
    explicit PdfWriter(AtomicOutput &output) : m_output(output) {}

    /// Begins the file. @param version 17 for PDF 1.7
    void begin(int version);

    /// A number for an object that is written later.
    int allocate();
    int objectCount() const noexcept { return static_cast<int>(m_offsets.size()); }

    /// Begins object @p number; its value is appended to text().
    void beginObject(int number);
    void endObject();

    /// The end of the file as far as it waits in memory; values are appended here.
    std::string &text() noexcept { return m_text; }
    /// Passes what waits on to the disk when it has become much.
    void flushIfLarge();

    /// Writes the cross-reference table and the trailer, whose entries are @p trailerEntries.
    void finish(std::string_view trailerEntries);

    void appendNumber(std::int64_t number);
    void appendReal(float number);
    void appendReference(int number);
    void appendName(std::string_view name);
    void appendString(std::string_view bytes);

private:
    AtomicOutput &m_output;
    std::string m_text;
    std::uint64_t m_written = 0;
    std::vector<std::uint64_t> m_offsets = {0}; ///< of each object; 0: not written
};

} // namespace tools
