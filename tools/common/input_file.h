#pragma once

#include "tools/common/tool_error.h"

#include <sys/stat.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tools {

/// What tells a file from any other and from its own earlier and later states: any write, and a
/// new file put in its place, gives another one.
struct FileIdentity
{
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t size = 0;       ///< in bytes
    std::int64_t seconds = 0;     ///< time of the last change of content or status
    std::int64_t nanoseconds = 0; ///< 0 to 999,999,999

    bool operator==(const FileIdentity &) const = default;
};

FileIdentity identityOf(const struct stat &status);

/// Reads "DEVICE:INODE:SIZE:SECONDS.NANOSECONDS": decimal numbers, nine digits of nanoseconds.
/// @returns nothing when @p text is anything else
std::optional<FileIdentity> parseIdentity(std::string_view text);

/// The identity that the caller noted when it counted the input's pages, from the environment
/// variable QUORLIN_INPUT_IDENTITY; nothing when that is not set or empty.
/// @throws ToolError with exitUsageError when it cannot be read
std::optional<FileIdentity> notedIdentity();

/// Thrown when the input is no longer what it was.
class InputChanged : public ToolError
{
public:
    using ToolError::ToolError;
};

/// The input, opened once: all that is read comes from the one file that was found then, whatever
/// is put in its place meanwhile.
class InputFile
{
public:
    /// Opens @p path for reading.
    /// @param noted the identity the file must have, if one was noted before
    /// @throws ToolError when there is no such regular file, InputChanged when it is another
    explicit InputFile(std::string path, const std::optional<FileIdentity> &noted = {});
    ~InputFile();
    InputFile(InputFile &&other) noexcept;
    InputFile(const InputFile &) = delete;
    InputFile &operator=(const InputFile &) = delete;
    InputFile &operator=(InputFile &&) = delete;

    /// Passwords to try in turn where the file does not open without one.
    void setPasswords(std::vector<std::string> passwords) { m_passwords = std::move(passwords); }
    const std::vector<std::string> &passwords() const noexcept { return m_passwords; }

    const std::string &path() const noexcept { return m_path; }
    int descriptor() const noexcept { return m_descriptor; }
    /// Bytes in the file when it was opened.
    std::int64_t size() const noexcept { return static_cast<std::int64_t>(m_identity.size); }

    /// Makes checkUnchanged() use this copy of the path, because the sandbox lets no other be
    /// looked at. @param copy must outlive the object
    void setFixedPath(const char *copy) noexcept { m_fixedPath = copy; }

    /// Compares both the open file and what goes by its path now with what was opened. To be called
    /// when the reading is done and before anything is made of it.
    /// @throws InputChanged
    void checkUnchanged() const;

private:
    [[noreturn]] void failChanged() const;

    std::string m_path;
    int m_descriptor = -1;
    FileIdentity m_identity;
    bool m_isNoted = false;
    const char *m_fixedPath = nullptr;
    std::vector<std::string> m_passwords;
};

} // namespace tools
