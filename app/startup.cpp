#include "app/startup.h"

#include "app/message_log.h"
#include "app/translation.h"
#include "common/folders.h"
#include "pipeline/input_identity.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QLoggingCategory>

namespace quorlin {

namespace {

void setPluginFolder()
{
    QDir folder(QCoreApplication::applicationDirPath());
    folder.cdUp();
    // Without "Plugins" the parent folder stays, where no plug-in is found.
    folder.cd(QStringLiteral("Plugins"));
    QCoreApplication::setLibraryPaths({folder.absolutePath()});
}

} // namespace

void installMessageLog()
{
    qInstallMessageHandler(customMessageHandler);
}

void prepareApplication()
{
    // The log is meant to be whole, whatever the logging rules of the desktop switch off.
    QLoggingCategory::defaultCategory()->setEnabled(QtDebugMsg, true);
    setPluginFolder();
    // Each split names its own input; one that this program was started with means another file.
    qunsetenv(inputIdentityVariable);
    QDir::setCurrent(applicationFolder());
    QFile::remove(logFilePath());
    qDebug().noquote().nospace() << "Current path: \"" << QDir::currentPath() << "\"  ";
    installTranslation(applicationFolder());
}

} // namespace quorlin
