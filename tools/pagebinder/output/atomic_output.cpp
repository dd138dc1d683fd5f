#include "tools/pagebinder/output/atomic_output.h"

#include "tools/common/tool_error.h"
#include "tools/pagebinder/output/hidden_names.h"
#include "tools/pagebinder/output/signal_cleanup.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace tools {

namespace {

constexpr int longestLinkChain = 40;

/// Whether the link @p path, or one that it leads to, points to an open file of a process. Such a
/// link stands for a stream, even where that happens to be a file just now.
bool leadsToOpenFile(std::string path)
{
    for (int link = 0; link < longestLinkChain; ++link) {
        std::array<char, PATH_MAX> target{};
        const ssize_t length = readlink(path.c_str(), target.data(), target.size());
        if (length <= 0) {
            return false;
        }
        const std::string_view next(target.data(), static_cast<std::size_t>(length));
        path = next.front() == '/' ? std::string() : folderOf(path) + '/';
        path += next;
        std::array<char, PATH_MAX> folder{};
        if (realpath(folderOf(path).c_str(), folder.data()) != nullptr &&
            std::string_view(folder.data()).starts_with("/proc/")) {
            return true;
        }
    }
    return true;
}

} // namespace

void refuseSpecialFile(const std::string &path)
{
    struct stat status
    {
    };
    if (lstat(path.c_str(), &status) != 0) {
        return;
    }
    if (S_ISLNK(status.st_mode)) {
        if (leadsToOpenFile(path)) {
            throw ToolError(path, "leads to an open file; \"-\" names standard output");
        }
        // A link that leads nowhere, or to a file, is replaced.
        if (stat(path.c_str(), &status) != 0) {
            return;
        }
    }
    if (S_ISDIR(status.st_mode)) {
        throw ToolError(path, "is a folder");
    }
    if (!S_ISREG(status.st_mode)) {
        throw ToolError(path, "is not a regular file");
    }
}

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

bool isSameFile(const std::string &first, const std::string &second)
{
    struct stat one
    {
    };
    struct stat two
    {
    };
    return stat(first.c_str(), &one) == 0 && stat(second.c_str(), &two) == 0 &&
           one.st_dev == two.st_dev && one.st_ino == two.st_ino;
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

std::string folderOf(const std::string &path)
{
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) {
        return ".";
    }
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string nameOf(const std::string &path)
{
    return path.substr(path.rfind('/') + 1);
}

} // namespace tools
