#include "common/folders.h"

#include <QCoreApplication>
#include <QStandardPaths>

namespace quorlin {

namespace {

QString &applicationFolderOverride()
{
    static QString folder;
    return folder;
}

} // namespace

QString applicationFolder()
{
    const QString &chosen = applicationFolderOverride();
    return chosen.isEmpty() ? QCoreApplication::applicationDirPath() : chosen;
}

void setApplicationFolder(const QString &folder)
{
    applicationFolderOverride() = folder;
}

QString temporaryFolder()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::TempLocation);
    return folder.isEmpty() ? QStringLiteral("/tmp") : folder;
}

QString dataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
}

QString logFilePath()
{
    return dataFolder() + QStringLiteral("/splitterlog.txt");
}

} // namespace quorlin
