#pragma once

#include "tools/sandbox/sealed_text.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tools {

/// What stands between the name of an export and the number of a page.
inline constexpr std::string_view numberMark = "_pg_";
/// Numbers of pages have at least as many digits.
inline constexpr std::size_t fewestDigits = 4;

/// The most pages that a file of @p bytes can have and be exported to page files. Every page takes
/// a few bytes at least: an entry of the page tree, an object and its place in the table.
int mostPagesOf(std::uint64_t bytes);

/// The names of all files that an export can write, fixed before its input is read.
class ExportNames
{
public:
    struct Wanted
    {
        std::string_view index;     ///< name of the index; without its ending it begins all others
        int pages = 0;              ///< how many pages there can be at most
        bool hasPictures = false;   ///< whether pages get a picture, too
        std::string_view inputPath; ///< fixed as well
    };

    /// @throws std::bad_alloc
    explicit ExportNames(const Wanted &wanted);

    const char *index() const noexcept { return m_index; }
    /// What the index is called until it is complete.
    const char *unfinishedIndex() const noexcept { return m_unfinishedIndex; }
    /// "NAME_pg_0001.htm" for the first page exported. @param number 1 to mostPages()
    const char *page(int number) const noexcept { return at(m_pages, number); }
    /// "NAME_pg_0001.png". @param number 1 to mostPages(), where there are pictures
    const char *picture(int number) const noexcept { return at(m_pictures, number); }
    bool hasPictures() const noexcept { return m_pictures != nullptr; }
    int mostPages() const noexcept { return m_mostPages; }

    const char *inputPath() const noexcept { return m_inputPath; }
    /// Whether the system call filter knows the names.
    bool areInPlace() const noexcept { return m_text.isInPlace(); }

private:
    const char *at(const char *first, int number) const noexcept
    {
        return first + static_cast<std::size_t>(number - 1) * m_stride;
    }
    const char *addNumbered(std::string_view base, std::string_view ending);

    int m_mostPages;
    std::size_t m_stride; ///< bytes from one page's name to the next one's
    SealedText m_text;
    const char *m_index;
    const char *m_unfinishedIndex;
    const char *m_pages;
    const char *m_pictures = nullptr;
    const char *m_inputPath;
};

/// @p indexName without its last ending.
std::string_view baseOfExport(std::string_view indexName);

} // namespace tools
