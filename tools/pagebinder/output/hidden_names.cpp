#include "tools/pagebinder/output/hidden_names.h"

#include "tools/common/file_status.h"
#include "tools/pagebinder/output/signal_cleanup.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <random>

namespace tools {

namespace {

constexpr int namesInTurn = 16;
constexpr int secretNames = 2;
constexpr int fewestLookedAt = 4; // beyond these, the first free name ends the search

/// Keeps signals away for as long as it lives.
class SignalsBlocked
{
public:
    SignalsBlocked()
    {
        sigset_t all;
        sigfillset(&all);
        sigprocmask(SIG_SETMASK, &all, &m_former);
    }
    ~SignalsBlocked() { sigprocmask(SIG_SETMASK, &m_former, nullptr); }
    SignalsBlocked(const SignalsBlocked &) = delete;
    SignalsBlocked &operator=(const SignalsBlocked &) = delete;

private:
    sigset_t m_former{};
};

/// Whether the file open as @p descriptor is locked by now, and still has the name it was opened
/// by.
bool takeOver(int descriptor, int folder, const char *name)
{
    struct stat opened = {};
    struct stat named = {};
    return flock(descriptor, LOCK_EX | LOCK_NB) == 0 && lookAtOpen(descriptor, opened) == 0 &&
           fstatat(folder, name, &named, AT_SYMLINK_NOFOLLOW) == 0 &&
           opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
}

/// @returns false when nothing has the name
bool removeAbandoned(int folder, const char *name)
{
    struct stat status = {};
    if (fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return false;
    }
    if (!S_ISREG(status.st_mode) || status.st_uid != geteuid()) {
        return true;
    }
    const int file = openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (file >= 0) {
        if (takeOver(file, folder, name)) {
            unlinkat(folder, name, 0);
        }
        close(file);
    }
    return true;
}

/// A file whose creator has not locked it yet looks abandoned to others. @returns false when one of
/// them has removed it
bool lockNewFile(int descriptor)
{
    struct stat status = {};
    static_cast<void>(flock(descriptor, LOCK_EX)); // where there are no locks, nobody removes it
    return lookAtOpen(descriptor, status) != 0 || status.st_nlink > 0;
}

} // namespace

std::vector<std::string> hiddenNames()
{
    std::vector<std::string> names;
    std::array<char, 64> name{};
    for (int i = 0; i < namesInTurn; ++i) {
        std::snprintf(name.data(), name.size(), ".pagebinder-%lu-%d.part",
                      static_cast<unsigned long>(geteuid()), i);
        names.emplace_back(name.data());
    }
    std::random_device random;
    for (int i = 0; i < secretNames; ++i) {
        std::snprintf(name.data(), name.size(), ".pagebinder-%08x%08x.part", random(), random());
        names.emplace_back(name.data());
    }
    return names;
}

void removeAbandonedFiles(int folder, const std::vector<std::string> &names)
{
    for (int i = 0; i < namesInTurn; ++i) {
        const bool isTaken = removeAbandoned(folder, names[static_cast<std::size_t>(i)].c_str());
        if (!isTaken && i >= fewestLookedAt) {
            return;
        }
    }
}

int createHiddenFile(int folder, const std::vector<const char *> &names, const char *&name)
{
    for (const char *candidate : names) {
        const SignalsBlocked untilItIsWatched;
        const int file =
            openat(folder, candidate, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666);
        if (file >= 0 && lockNewFile(file)) {
            name = candidate;
            watchHiddenFile(folder, candidate);
            return file;
        }
        if (file >= 0) {
            close(file);
        } else if (errno != EEXIST) {
            return -1;
        }
    }
    errno = EEXIST;
    return -1;
}

} // namespace tools
