#include "tests/faults/real_bench.h"

#include "tests/faults/statements.h"
#include "tests/support/programs.h"
#include "tests/support/waiting.h"

#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QTest>

namespace quorlin::test {

namespace {

QString realTool(const QString &tool)
{
    return startedPrograms() + QLatin1Char('/') + tool;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

RealBench::RealBench()
{
    restoreTool(QStringLiteral("pagexport"));
    restoreTool(QStringLiteral("pagebinder"));
    folders.saveRule(QStringLiteral("Account"), statementLeft, statementTop);
}

void RealBench::replaceTool(const QString &tool, const QByteArray &script) const
{
    const QString path = folders.application() + QLatin1Char('/') + tool;
    QFile::remove(path);
    writeFile(path, "#!/bin/sh\nREAL='" + QFile::encodeName(realTool(tool)) + "'\n" + script);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void RealBench::restoreTool(const QString &tool) const
{
    const QString path = folders.application() + QLatin1Char('/') + tool;
    QFile::remove(path);
    if (!QFile::link(realTool(tool), path)) {
        qFatal("%s cannot be linked", qPrintable(path));
    }
}

QString RealBench::addStatements(const QString &name, const QStringList &texts)
{
    const QByteArray content = statementPdf(texts);
    const QString path = folders.addInput(name, content);
    inputs.insert(path, content);
    return path;
}

bool RealBench::inputsAreUntouched() const
{
    for (auto input = inputs.begin(); input != inputs.end(); ++input) {
        if (contentOf(input.key()) != input.value()) {
            qWarning("%s was changed", qPrintable(input.key()));
            return false;
        }
    }
    return true;
}

void RealBench::list(const QStringList &files)
{
    window().addFiles(files);
    if (!waitUntil([this] { return controlsEnabled(); }, 60000)) {
        qFatal("The page counts do not end");
    }
}

bool RealBench::outputsAreWhole() const
{
    const QStringList files = folders.outputFiles();
    for (const QString &file : files) {
        if (!file.endsWith(QLatin1String(".pdf")) ||
            pagesOf(folders.outputs() + QLatin1Char('/') + file) < 1) {
            qWarning("%s should not be there", qPrintable(file));
            return false;
        }
    }
    return true;
}

} // namespace quorlin::test
