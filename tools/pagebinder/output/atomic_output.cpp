#include "tools/pagebinder/output/atomic_output.h"

#include "tools/common/tool_error.h"
#include "tools/pagebinder/output/signal_cleanup.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string_view>

namespace tools {

namespace {

constexpr int longestLinkChain = 40;

std::string hiddenName()
{
    std::random_device random;
    std::array<char, 40> name{};
    std::snprintf(name.data(), name.size(), ".pagebinder-%08x%08x.part", random(), random());
    return name.data();
}

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
        std::string next(target.data(), static_cast<std::size_t>(length));
        path = next.front() == '/' ? next : folderOf(path) + "/" + next;
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

AtomicOutput::AtomicOutput(std::string path) : Output(std::move(path))
{
    refuseSpecialFile(this->path());
    open(folderOf(this->path()));
}

AtomicOutput::~AtomicOutput()
{
    discard();
}

void AtomicOutput::open(const std::string &folder)
{
    for (int attempt = 0; attempt < 8 && m_descriptor < 0; ++attempt) {
        m_hidden = folder + "/" + hiddenName();
        if (!watchHiddenFile(m_hidden)) {
            throw ToolError(path(), "path is too long");
        }
        m_descriptor =
            ::open(m_hidden.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666);
        if (m_descriptor < 0 && errno != EEXIST) {
            break;
        }
    }
    if (m_descriptor < 0) {
        const int reason = errno;
        m_hidden.clear();
        forgetHiddenFile();
        fail(reason);
    }
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
    const int descriptor = m_descriptor;
    m_descriptor = -1;
    if (close(descriptor) != 0) {
        fail(errno);
    }
}

void AtomicOutput::publish()
{
    if (rename(m_hidden.c_str(), path().c_str()) != 0) {
        fail(errno);
    }
    m_hidden.clear();
    forgetHiddenFile();
}

void AtomicOutput::discard() noexcept
{
    if (m_descriptor >= 0) {
        close(m_descriptor);
        m_descriptor = -1;
    }
    if (!m_hidden.empty()) {
        unlink(m_hidden.c_str());
        forgetHiddenFile();
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
