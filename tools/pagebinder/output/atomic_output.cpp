#include "tools/pagebinder/output/atomic_output.h"

#include "tools/common/tool_error.h"
#include "tools/pagebinder/output/hidden_names.h"
#include "tools/pagebinder/output/signal_cleanup.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace tools {

AtomicOutput::AtomicOutput(const OutputPlace &place) : Output(place.path), m_place(place)
{
    m_descriptor = createHiddenFile(place.folder, *place.hiddenNames, m_hidden);
    if (m_descriptor < 0) {
        fail(errno);
    }
}

AtomicOutput::~AtomicOutput()
{
    discard();
}

void AtomicOutput::fail(int reason)
{
    throw ToolError(path(), std::string("cannot be written: ") + std::strerror(reason));
}

void AtomicOutput::store(const char *data, std::size_t size)
{
    while (size > 0) {
        const ssize_t written = ::write(m_descriptor, data, size);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            fail(errno);
        }
        data += written;
        size -= static_cast<std::size_t>(written);
    }
}

void AtomicOutput::clear()
{
    if (ftruncate(m_descriptor, 0) != 0 || lseek(m_descriptor, 0, SEEK_SET) != 0) {
        fail(errno);
    }
}

void AtomicOutput::complete()
{
    // Its copy keeps the lock until the file has its name.
    m_lock = fcntl(m_descriptor, F_DUPFD_CLOEXEC, 3);
    const int descriptor = m_descriptor;
    m_descriptor = -1;
    if (close(descriptor) != 0) {
        fail(errno);
    }
}

void AtomicOutput::publish()
{
    if (renameat(m_place.folder, m_hidden, m_place.folder, m_place.name) != 0) {
        fail(errno);
    }
    m_hidden = nullptr;
    forgetHiddenFile();
    close(m_lock);
    m_lock = -1;
}

void AtomicOutput::discard() noexcept
{
    if (m_hidden != nullptr) {
        unlinkat(m_place.folder, m_hidden, 0);
        forgetHiddenFile();
    }
    for (const int descriptor : {m_descriptor, m_lock}) {
        if (descriptor >= 0) {
            close(descriptor);
        }
    }
}

void removeFile(const std::string &path)
{
    struct stat status
    {
    };
    if (lstat(path.c_str(), &status) == 0 && (S_ISREG(status.st_mode) || S_ISLNK(status.st_mode))) {
        unlink(path.c_str());
    }
}

} // namespace tools
