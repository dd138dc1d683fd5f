#include "runner_bench.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

QString toolFolderIn(const QTemporaryDir &root)
{
    for (const char *folder : {"tools", "in", "out", "tmp"}) {
        if (!QDir(root.path()).mkdir(QLatin1String(folder))) {
            qFatal("no folder to run in");
        }
    }
    return root.filePath(QStringLiteral("tools"));
}

} // namespace

RunnerBench::RunnerBench() : fakeTools(toolFolderIn(root)) {}

QString RunnerBench::path(const QString &name) const
{
    return name.isEmpty() ? root.path() : root.filePath(name);
}

QString RunnerBench::input(const QString &name, const QByteArray &pages) const
{
    write(QStringLiteral("in/") + name, pages);
    return QStringLiteral("in/") + name;
}

void RunnerBench::write(const QString &name, const QByteArray &bytes) const
{
    QDir().mkpath(QFileInfo(path(name)).path());
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("%s", qPrintable(file.errorString()));
    }
}

QByteArray RunnerBench::read(const QString &name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList RunnerBench::outputs(const QString &subFolder) const
{
    return QDir(path(QStringLiteral("out/") + subFolder))
        .entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

RunnerResult RunnerBench::run(const QStringList &words, const QByteArray &input) const
{
    return runRunner(words, path(), path(QStringLiteral("tmp")), input);
}

RunnerResult RunnerBench::split(const QStringList &words, const QByteArray &input) const
{
    return splitBy(QStringList{QStringLiteral("--position"), FakeTools::position()} + words, input);
}

RunnerResult RunnerBench::splitBy(const QStringList &words, const QByteArray &input) const
{
    return run(QStringList{QStringLiteral("--output"), QStringLiteral("out"),
                           QStringLiteral("--tools"), QStringLiteral("tools")} +
                   words,
               input);
}
