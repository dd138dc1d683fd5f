#include "pipeline/input_identity.h"

#include <QFile>

#include <sys/stat.h>

namespace quorlin {

namespace {

const timespec &changeTime(const struct stat &status)
{
#ifdef Q_OS_DARWIN
    return status.st_ctimespec;
#else
    return status.st_ctim;
#endif
}

} // namespace

std::optional<FileIdentity> identifyFile(const QString &path)
{
    struct stat status = {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    FileIdentity identity;
    identity.device = static_cast<quint64>(status.st_dev);
    identity.inode = static_cast<quint64>(status.st_ino);
    identity.size = static_cast<qint64>(status.st_size);
    identity.changedSeconds = qint64{changeTime(status).tv_sec};
    identity.changedNanoseconds = static_cast<qint32>(changeTime(status).tv_nsec);
    return identity;
}

QByteArray inputIdentityText(const FileIdentity &identity)
{
    return QByteArray::number(identity.device) + ':' + QByteArray::number(identity.inode) + ':' +
           QByteArray::number(identity.size) + ':' + QByteArray::number(identity.changedSeconds) +
           '.' + QByteArray::number(identity.changedNanoseconds).rightJustified(9, '0');
}

} // namespace quorlin
