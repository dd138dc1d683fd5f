#include "batch/session.h"

#include "batch/run_plan.h"
#include "batch/settings_location.h"
#include "common/folders.h"

#include <QDir>
#include <QFileInfo>

namespace quorlin::batch {

Session::Session(const Arguments &read)
    : arguments(read), callerFolder(QDir::currentPath()), programFolder(applicationFolder()),
      console(read.quiet)
{
}

int Session::complain(const QString &line, int status)
{
    console.complain(line);
    return status;
}

QString Session::settings() const
{
    const SettingsPlaces places{
        arguments.settingsFile.isEmpty() ? QString() : callerPath(arguments.settingsFile),
        programFolder, QString::fromLatin1(systemSettingsFolder)};
    return settingsLocation(places, [](const QString &path) { return QFileInfo::exists(path); });
}

QString Session::toolFolder() const
{
    return arguments.toolFolder.isEmpty() ? programFolder : callerPath(arguments.toolFolder);
}

QString Session::toolFault() const
{
    for (const char *name : {"/pagexport", "/pagebinder"}) {
        const QFileInfo tool(toolFolder() + QLatin1String(name));
        if (!tool.isFile() || !tool.isExecutable()) {
            return QStringLiteral("the tool is missing or cannot be run: ") + tool.filePath();
        }
    }
    return {};
}

QString Session::callerPath(const QString &path) const
{
    return path == QLatin1String("-") ? path : absolutePath(path, callerFolder);
}

} // namespace quorlin::batch
