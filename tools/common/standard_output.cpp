#include "tools/common/standard_output.h"

#include "tools/common/tool_error.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace tools {

namespace {

/// A pipe that its reader has set not to block: wait until it takes something.
void waitForReader()
{
    pollfd reader{STDOUT_FILENO, POLLOUT, 0};
    poll(&reader, 1, -1);
}

} // namespace

void openStandardStreams()
{
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        const int mode = descriptor == STDOUT_FILENO ? O_RDONLY : O_WRONLY;
        if (fcntl(descriptor, F_GETFD) < 0 && open("/dev/null", mode) < 0) {
            return;
        }
    }
}

void writeStandardOutput(std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(STDOUT_FILENO, bytes.data(), bytes.size());
        if (written >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN || errno == EWOULDBLOCK) {
            waitForReader();
        } else if (errno == EPIPE) {
            throw ReaderGone();
        } else if (errno != EINTR) {
            throw ToolError("standard output",
                            std::string("cannot be written: ") + std::strerror(errno));
        }
    }
}

} // namespace tools
