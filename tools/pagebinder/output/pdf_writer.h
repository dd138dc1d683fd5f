#pragma once

#include "tools/pagebinder/output/output.h"

#include <algorithm>
#include <array>
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

    /// Begins object @p number; its value follows.
    /// @param plain whether its strings are never encrypted
    void beginObject(int number, bool plain = false);
    void endObject();
    /// Begins object @p number, a dictionary or the dictionary of a stream.
    /// @param type its /Type, "" for none
    PdfWriter &beginDictionaryObject(int number, std::string_view type = {});
    void endDictionaryObject();
    /// Ends a stream's dictionary, whose last entry is /Length, and begins its bytes.
    PdfWriter &beginStream() { return appendBytes(">>\nstream\n"); }
    /// Ends the stream and its object.
    void endStream();

    /// The end of the file as far as it waits in memory.
    const std::string &text() const noexcept { return m_text; }
    /// Passes what waits on to the disk when it has become much.
    void flushIfLarge();

    /// Writes the cross-reference table and begins the trailer; entries follow.
    PdfWriter &beginTrailer();
    /// Ends the trailer and the file.
    void finish();

    // All of these return the writer, so that a value can follow its key in one line.
    /// A dictionary's key; the value follows.
    PdfWriter &key(std::string_view key) { return appendName(key); }
    /// One that the program spells itself, so that nothing in it needs an escape.
    template <std::size_t Size> PdfWriter &key(const char (&key)[Size])
    {
        std::array<char, Size> name = {'/'};
        std::copy_n(key, Size - 1, name.begin() + 1);
        return appendBytes({name.data(), Size});
    }
    PdfWriter &beginDictionary() { return appendBytes("<<"); }
    PdfWriter &endDictionary() { return appendBytes(">>"); }
    PdfWriter &beginArray() { return appendBytes("["); }
    PdfWriter &endArray() { return appendBytes("]"); }
    // A blank parts numbers, references and words from a name or number before them.
    PdfWriter &appendNull() { return appendWord("null"); }
    PdfWriter &appendBoolean(bool value) { return appendWord(value ? "true" : "false"); }
    PdfWriter &appendNumber(std::int64_t number);
    PdfWriter &appendReal(float number);
    /// @param number that of an object, 0 for null
    PdfWriter &appendReference(int number);
    /// An array of references.
    PdfWriter &appendReferences(const std::vector<int> &numbers);
    PdfWriter &appendName(std::string_view name);
    PdfWriter &appendString(std::string_view bytes);
    /// A blank where none is needed.
    PdfWriter &appendBlank() { return appendBytes(" "); }
    /// Bytes as they are: those of a stream, or a value that is spelt already.
    PdfWriter &appendBytes(std::string_view bytes)
    {
        m_text += bytes;
        return *this;
    }

private:
    PdfWriter &appendWord(std::string_view word);
    PdfWriter &appendPlainString(std::string_view bytes);

    Output &m_output;
    std::string m_text;
    ObjectCipher *m_cipher = nullptr;
    int m_current = 0; ///< object whose strings are encrypted, 0 for none
    std::uint64_t m_written = 0;
    std::uint64_t m_table = 0;                  ///< where the cross-reference table begins
    std::vector<std::uint64_t> m_offsets = {0}; ///< of each object; 0: not written
};

} // namespace tools
