#include "tool_run.h"

#include <QProcess>

QString binderPath()
{
    return QStringLiteral(QUORLIN_BIN_DIR "/pagebinder");
}

ToolRun runBinder(const QStringList &arguments, const QByteArray &input, const QString &identity)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!identity.isNull()) {
        environment.insert("QUORLIN_INPUT_IDENTITY", identity);
    }
    process.setProcessEnvironment(environment);
    process.start(binderPath(), arguments);
    process.write(input);
    process.closeWriteChannel();
    ToolRun run;
    if (!process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished();
        return run;
    }
    run.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.output = process.readAllStandardOutput();
    run.errors = process.readAllStandardError();
    return run;
}

ToolRun merge(const QString &input, const QString &ranges, const QString &output)
{
    return runBinder(QStringList{input, "-merge"} + ranges.split(' ', Qt::SkipEmptyParts) +
                     QStringList{"-outfile", output});
}

QList<int> pagesOf(const QString &ranges)
{
    QList<int> pages;
    for (const QString &range : ranges.split(' ')) {
        const QStringList ends = range.split('-');
        for (int page = ends.first().toInt(); page <= ends.last().toInt(); ++page) {
            pages << page;
        }
    }
    return pages;
}
