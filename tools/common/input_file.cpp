#include "tools/common/input_file.h"

#include "tools/common/file_status.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace tools {

namespace {

constexpr const char *identityVariable = "QUORLIN_INPUT_IDENTITY";
constexpr std::size_t nanosecondDigits = 9;

/// Takes a decimal number and the character behind it, '\0' for the end.
template <typename Number> bool takeNumber(std::string_view &text, char behind, Number &number)
{
    const char *const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || (behind == '\0' ? stop != end : stop == end || *stop != behind)) {
        return false;
    }
    text.remove_prefix(static_cast<std::size_t>(stop - text.data()) + (behind == '\0' ? 0 : 1));
    return true;
}

} // namespace

FileIdentity identityOf(const struct stat &status)
{
#ifdef __APPLE__
    const timespec &changed = status.st_ctimespec;
#else
    const timespec &changed = status.st_ctim;
#endif
    return {static_cast<std::uint64_t>(status.st_dev), static_cast<std::uint64_t>(status.st_ino),
            static_cast<std::uint64_t>(status.st_size), changed.tv_sec, changed.tv_nsec};
}

std::optional<FileIdentity> parseIdentity(std::string_view text)
{
    FileIdentity identity;
    if (!takeNumber(text, ':', identity.device) || !takeNumber(text, ':', identity.inode) ||
        !takeNumber(text, ':', identity.size) || !takeNumber(text, '.', identity.seconds) ||
        text.size() != nanosecondDigits || text.front() == '-' ||
        !takeNumber(text, '\0', identity.nanoseconds)) {
        return std::nullopt;
    }
    return identity;
}

std::optional<FileIdentity> notedIdentity()
{
    const char *text = std::getenv(identityVariable);
    if (text == nullptr || *text == '\0') {
        return std::nullopt;
    }
    const std::optional<FileIdentity> identity = parseIdentity(text);
    if (!identity) {
        throw ToolError("", std::string(identityVariable) + " is not a valid identity: " + text,
                        exitUsageError);
    }
    return identity;
}

InputFile::InputFile(std::string path, const std::optional<FileIdentity> &noted)
    // Not to wait for a writer should the path name a pipe.
    : m_path(std::move(path)), m_descriptor(open(m_path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK))
{
    const int reason = errno;
    struct stat status
    {
    };
    if (m_descriptor < 0) {
        throw ToolError(m_path, std::strerror(reason));
    }
    if (fstat(m_descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        close(m_descriptor);
        throw ToolError(m_path, "not a regular file");
    }
    m_identity = identityOf(status);
    m_isNoted = noted.has_value();
    if (noted && *noted != m_identity) {
        close(m_descriptor);
        failChanged();
    }
}

InputFile::InputFile(InputFile &&other) noexcept
    : m_path(std::move(other.m_path)), m_descriptor(std::exchange(other.m_descriptor, -1)),
      m_identity(other.m_identity), m_isNoted(other.m_isNoted), m_fixedPath(other.m_fixedPath),
      m_passwords(std::move(other.m_passwords))
{
}

InputFile::~InputFile()
{
    if (m_descriptor >= 0) {
        close(m_descriptor);
    }
}

void InputFile::checkUnchanged() const
{
    struct stat opened
    {
    };
    struct stat named
    {
    };
    const char *path = m_fixedPath != nullptr ? m_fixedPath : m_path.c_str();
    if (lookAtOpen(m_descriptor, opened) != 0 || identityOf(opened) != m_identity ||
        lookAt(path, named) != 0 || identityOf(named) != m_identity) {
        failChanged();
    }
}

void InputFile::failChanged() const
{
    throw InputChanged(m_path, m_isNoted ? "changed since its pages were counted"
                                         : "changed while it was read");
}

} // namespace tools
