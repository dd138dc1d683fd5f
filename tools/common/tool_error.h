#pragma once

#include <stdexcept>
#include <string>

namespace tools {

/// Exit statuses of both tools.
enum ExitStatus : int {
    exitSuccess = 0,
    exitInputError =
        1, ///< unreadable input, pages that do not exist, output that cannot be written
    exitUsageError = 2, ///< the command line makes no sense
    exitStandIns = 3    ///< written, but stand-ins take the place of pages that cannot be read
};

/// The one error type that leaves the library's door. It carries the file it is about, so that the
/// line on stderr names file and reason.
class ToolError : public std::runtime_error
{
public:
    ToolError(std::string file, const std::string &reason, ExitStatus status = exitInputError)
        : std::runtime_error(reason), m_file(std::move(file)), m_status(status)
    {
    }

    const std::string &file() const noexcept { return m_file; }
    ExitStatus status() const noexcept { return m_status; }

private:
    std::string m_file;
    ExitStatus m_status;
};

} // namespace tools
