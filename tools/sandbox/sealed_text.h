#pragma once

#include <cstddef>
#include <string_view>

namespace tools {

/// Text that nothing in this process can change once it is sealed. The system call filter knows the
/// place where it lies and lets files be created, renamed, removed or looked at only under names
/// that point there. Whoever takes over the process later can use these names and no others.
///
/// Names are those of files within a folder and hold no "/", so that no part of one leads
/// elsewhere. Paths are those of files that are only looked at.
class SealedText
{
public:
    /// Reserves room for texts of so many bytes in all, each with one more at its end.
    /// @throws std::bad_alloc
    SealedText(std::size_t nameBytes, std::size_t pathBytes);
    ~SealedText();
    SealedText(const SealedText &) = delete;
    SealedText &operator=(const SealedText &) = delete;

    /// Copies @p name. @throws std::length_error when the room is used up, std::invalid_argument
    ///     when it holds "/"
    const char *addName(std::string_view name);
    /// Copies @p path. @throws std::length_error when the room is used up
    const char *addPath(std::string_view path);
    /// Room for names of @p bytes in all that the caller writes itself, each with its end, until
    /// seal(). @throws std::length_error when there is less
    char *takeRoom(std::size_t bytes);
    /// From now on the text can only be read. @throws std::system_error
    void seal();

    /// Whether the text lies where the system call filter expects it. Elsewhere it is as fixed, but
    /// the filter does not know it.
    bool isInPlace() const noexcept;

private:
    struct Room
    {
        char *next;
        char *end;
        const char *add(std::string_view text);
    };

    std::size_t m_pathSize;
    std::size_t m_nameSize;
    char *m_begin;
    Room m_paths;
    Room m_names;
};

} // namespace tools
