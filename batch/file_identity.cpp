#include "batch/file_identity.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

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
    identity.modified = QFileInfo(path).lastModified().toMSecsSinceEpoch();
    return identity;
}

} // namespace quorlin::batch
