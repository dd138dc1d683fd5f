#pragma once

#include "batch/run_plan.h"
#include "batch/run_record.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QObject>
#include <QPointer>
#include <QProcess>
#include <QTimer>

#include <memory>

class Process;

namespace quorlin::batch {

class Console;

/// One run: a main window that is never shown gets the files, the rule and the method, and splits
/// them as it would for a user; the run follows its progress lines and judges every file by what
/// lies on the disk. What a user would have to end by hand (a hung tool, a message box) it ends
/// itself.
class BatchRun : public QObject
{
public:
    /// The private folders must have been entered and hold the rule.
    BatchRun(RunPlan plan, Console &console);
    ~BatchRun() override;

    /// Splits the files and prints the results.
    /// @returns 0 when every file was split, 1 when one was not, 128 and the signal's number when
    /// the run was asked to end.
    int run();

protected:
    /// Answers a message box that nobody would see.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void prepareWindow();
    void followLine(const QString &line);
    void followTool(QProcess &tool);
    void hearTool(QProcess &tool);
    void tellCrash(const QString &tool);
    void toolCannotStart(const QString &command);
    void startSplit();
    void readResults();
    void watchProgress();
    void end(const QString &complaint);
    void stop(int signal);
    void showLive();
    void printRefused(qsizetype filesBefore);
    void printFailure(const QString &path, const QString &reason);
    int printResults();

    RunPlan plan;
    Console &console;
    QString pagesFolder;
    RunRecord record;
    std::unique_ptr<Process> window;
    QPointer<QProcess> currentTool;
    QEventLoop loop;
    QTimer watchTimer;
    QElapsedTimer sinceProgress;
    int stalls = 0;
    int stopSignal = 0;
    bool splitting = false;
    bool ended = false;
};

} // namespace quorlin::batch
