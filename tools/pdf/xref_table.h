#pragma once

#include "tools/pdf/file_window.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tools {

/// Where one object of a file stands.
struct XrefEntry
{
    enum class Kind : unsigned char { undefined, free, inUse, compressed };
    std::int64_t offset = 0;
    std::uint16_t generation = 0;
    Kind kind = Kind::undefined;
};

/// Takes the entries of a table in the order of the file. False ends the reading as a failure.
class XrefTarget
{
public:
    virtual ~XrefTarget() = default;
    /// Announces entries for @p count objects from @p first on.
    virtual bool expect(int first, int count) = 0;
    /// What was placed for an object before holds.
    virtual bool place(int number, const XrefEntry &entry) = 0;
};

/// One section of a cross-reference table in the classic form (ISO 32000-1, 7.5.4), exactly as the
/// standard wants it: entries of 20 bytes, no comments, no gaps. Files that deviate are not read
/// here; the library knows how to be lenient with them.
class XrefSection
{
public:
    explicit XrefSection(FileWindow &file) : m_file(file) {}

    /// Offset of the newest section as the end of the file states it; 0 when it states none.
    std::int64_t newestOffset();

    /// Reads the section at @p offset. @returns false when it is anything but exact
    bool read(std::int64_t offset, XrefTarget &target);

    /// What follows the word "trailer" of the section read last, at most 4,096 bytes.
    const std::string &trailer() const noexcept { return m_trailer; }
    /// Whether the section read last states a number too high for each of its objects; they have
    /// been placed right.
    bool isShifted() const noexcept { return m_isShifted; }

private:
    bool skipSpace(int least, int most);
    bool take(const char *word);
    bool readNumber(std::int64_t &number);
    bool readSubsections(XrefTarget &target);
    bool startsTooLate();
    bool readEntries(int first, int count, XrefTarget &target);

    FileWindow &m_file;
    std::int64_t m_position = 0;
    std::string m_trailer;
    bool m_isShifted = false;
};

} // namespace tools
