#include "app/folder_claim.h"

#include <QFile>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quorlin {

namespace {

constexpr int attempts = 10;

FolderClaim::State lock(int descriptor)
{
    if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0) {
        return FolderClaim::State::Held;
    }
    return errno == EWOULDBLOCK ? FolderClaim::State::Refused : FolderClaim::State::Unavailable;
}

} // namespace

FolderClaim::~FolderClaim()
{
    release();
}

void FolderClaim::release()
{
    if (descriptor < 0) {
        return;
    }
    // Removed while it is still locked: whoever opened it meanwhile finds it without its name.
    if (!fileName.isEmpty() && isStillNamed()) {
        ::unlink(fileName.constData());
    }
    ::close(descriptor);
    descriptor = -1;
    fileName.clear();
}

FolderClaim::State FolderClaim::claimFolder(const QString &folder)
{
    release();
    descriptor = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) {
        return State::Unavailable;
    }
    const State state = lock(descriptor);
    if (state != State::Held) {
        release();
    }
    return state;
}

FolderClaim::State FolderClaim::claimFile(const QString &file)
{
    for (int attempt = 0; attempt < attempts; ++attempt) {
        release();
        fileName = QFile::encodeName(file);
        State state = openClaimFile();
        if (state == State::Held) {
            state = lock(descriptor);
        }
        if (state == State::Held && !isStillNamed()) {
            continue; // its holder removed it between our opening and our locking
        }
        if (state != State::Held) {
            fileName.clear();
            release();
        }
        return state;
    }
    fileName.clear();
    release();
    return State::Unavailable;
}

FolderClaim::State FolderClaim::openClaimFile()
{
    descriptor =
        ::open(fileName.constData(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600);
    struct stat status = {};
    if (descriptor < 0) {
        // What exists and cannot be opened is another user's, or was put there on purpose.
        return ::lstat(fileName.constData(), &status) == 0 ? State::Refused : State::Unavailable;
    }
    const bool ours = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
                      status.st_uid == ::geteuid();
    return ours ? State::Held : State::Refused;
}

bool FolderClaim::isStillNamed() const
{
    struct stat opened = {};
    struct stat named = {};
    return ::fstat(descriptor, &opened) == 0 && ::lstat(fileName.constData(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

} // namespace quorlin
