#include "batch/session.h"

#include "batch/run_plan.h"
#include "common/folders.h"
#include "common/settings_text.h"

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
    return arguments.settingsFile.isEmpty() ? programFolder + u'/' + settingsFileName()
                                            : callerPath(arguments.settingsFile);
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
