#include "tools/pagebinder/output/hidden_names.h"

#include "tools/common/file_status.h"
#include "tools/pagebinder/output/signal_cleanup.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#ifdef __APPLE__
#include <sys/random.h>
#endif

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>

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
    const std::string own = ".pagebinder-" + std::to_string(geteuid()) + '-';
    for (int i = 0; i < namesInTurn; ++i) {
        names.push_back(own + std::to_string(i) + ".part");
    }
    std::array<std::uint64_t, secretNames> secrets{};
    if (getentropy(secrets.data(), sizeof(secrets)) == 0) {
        for (const std::uint64_t secret : secrets) {
            names.push_back(own + 'x' + std::to_string(secret) + ".part");
        }
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
