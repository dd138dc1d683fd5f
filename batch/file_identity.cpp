#include "batch/file_identity.h"

#include <QFile>

#include <sys/stat.h>

namespace quorlin::batch {

FileIdentity identifyFile(const QString &path)
{
    struct stat status = {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return {};
    }
    FileIdentity identity;
    identity.exists = true;
    identity.device = static_cast<quint64>(status.st_dev);
    identity.inode = static_cast<quint64>(status.st_ino);
    identity.size = static_cast<qint64>(status.st_size);
#ifdef Q_OS_DARWIN
    const timespec &modified = status.st_mtimespec;
#else
    const timespec &modified = status.st_mtim;
#endif
    identity.modified = qint64{modified.tv_sec} * 1000 + modified.tv_nsec / 1000000;
    return identity;
}

} // namespace quorlin::batch
