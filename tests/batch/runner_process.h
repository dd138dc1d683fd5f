#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

/// How a run of the headless runner ended, and what it printed.
struct RunnerResult
{
    int exitCode = -1;
    bool crashed = false;
    QString output;
    QString errors;
};

/// The runner's executable: in the build tree, or in the folder named last.
QString runnerPath();
/// From now on the runner of @p folder is run.
void useRunnerIn(const QString &folder);

/// Sets @p process up to run the runner with @p arguments: its scratch folders go below
/// @p temporaryFolder, relative paths belong to @p currentFolder.
void prepareRunner(QProcess &process, const QStringList &arguments, const QString &currentFolder,
                   const QString &temporaryFolder);

/// Runs the runner to its end. A run that hangs is killed and counts as crashed.
/// @param input what it reads from standard input
RunnerResult runRunner(const QStringList &arguments, const QString &currentFolder,
                       const QString &temporaryFolder, const QByteArray &input = {});
