#include "runner_process.h"

#include <QProcessEnvironment>

namespace {

constexpr int longestRunMilliseconds = 120000;

QString runnerFolder = QStringLiteral(QUORLIN_BIN_DIR);

} // namespace

QString runnerPath()
{
    return runnerFolder + QStringLiteral("/quorlin-batch");
}

void useRunnerIn(const QString &folder)
{
    runnerFolder = folder;
}

void prepareRunner(QProcess &process, const QStringList &arguments, const QString &currentFolder,
                   const QString &temporaryFolder)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TMPDIR"), temporaryFolder);
    // The runner must choose its platform itself: whoever starts it may have no display.
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(currentFolder);
    process.setProgram(runnerPath());
    process.setArguments(arguments);
}

RunnerResult runRunner(const QStringList &arguments, const QString &currentFolder,
                       const QString &temporaryFolder, const QByteArray &input)
{
    QProcess process;
    prepareRunner(process, arguments, currentFolder, temporaryFolder);
    process.start();
    process.write(input);
    process.closeWriteChannel();
    RunnerResult result;
    if (!process.waitForFinished(longestRunMilliseconds)) {
        process.kill();
        process.waitForFinished();
    }
    result.crashed = process.exitStatus() != QProcess::NormalExit;
    result.exitCode = process.exitCode();
    result.output = QString::fromUtf8(process.readAllStandardOutput());
    result.errors = QString::fromUtf8(process.readAllStandardError());
    return result;
}
