#pragma once

#include "tools/pagebinder/output/output.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tools {

/// Encrypts what stands in the objects of the new file.
class ObjectCipher
{
public:
    virtual ~ObjectCipher() = default;
    virtual std::string encrypt(int object, std::string_view bytes) = 0;
};

/// Writes the objects of a new PDF file one after another, with a classic cross-reference table
/// behind them. Small files reach the disk in a single write.
class PdfWriter
{
public:
    explicit PdfWriter(Output &output) : m_output(output) {}

    /// Begins the file. @param version 17 for PDF 1.7
    void begin(int version);

    /// From now on strings are encrypted; @p cipher must outlive the writing.
    void setCipher(ObjectCipher *cipher) noexcept { m_cipher = cipher; }
    bool isEncrypting() const noexcept { return m_cipher != nullptr; }
    /// @p bytes as they stand in object @p number of the file.
    std::string encrypted(int number, std::string_view bytes) const;

    /// A number for an object that is written later.
    int allocate();

    /// How many objects have a number.
    std::size_t objectCount() const noexcept { return m_offsets.size(); }

    /// Begins object @p number; its value is appended to text().
    /// @param plain whether its strings are never encrypted
    void beginObject(int number, bool plain = false);
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
    void appendPlainString(std::string_view bytes);

    Output &m_output;
    std::string m_text;
    ObjectCipher *m_cipher = nullptr;
    int m_current = 0; ///< object whose strings are encrypted, 0 for none
    std::uint64_t m_written = 0;
    std::vector<std::uint64_t> m_offsets = {0}; ///< of each object; 0: not written
};

} // namespace tools
