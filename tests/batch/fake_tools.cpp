#include "fake_tools.h"

#include <QFile>

namespace {

const QStringList toolNames = {QStringLiteral("pagexport"), QStringLiteral("pagebinder")};

} // namespace

FakeTools::FakeTools(const QString &toolFolder) : path(toolFolder)
{
    for (const QString &name : toolNames) {
        if (!QFile::link(QStringLiteral(QUORLIN_FAKE_PDF_TOOL), path + u'/' + name)) {
            qFatal("The stand-in for the tools is missing");
        }
    }
}

void FakeTools::breakTool(const QString &name) const
{
    QFile::remove(path + u'/' + name);
    QFile file(path + u'/' + name);
    if (!file.open(QIODevice::WriteOnly) || file.write("#!/nonexistent/interpreter\n") < 0 ||
        !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner)) {
        qFatal("%s", qPrintable(file.errorString()));
    }
}

QStringList FakeTools::calls() const
{
    QFile file(path + QStringLiteral("/calls.txt"));
    return file.open(QIODevice::ReadOnly)
               ? QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts)
               : QStringList();
}

int FakeTools::mostAtOnce() const
{
    int running = 0;
    int most = 0;
    for (const QString &call : calls()) {
        running += call.startsWith(QLatin1String("start ")) ? 1 : -1;
        most = qMax(most, running);
    }
    return most;
}
