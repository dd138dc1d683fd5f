#pragma once

#include "batch/run_plan.h"
#include "pipeline/split_batch.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QObject>
#include <QTimer>

namespace quorlin::batch {

class Console;
class Report;

/// One run: splits the files of a plan and prints what becomes of them, file by file in the order
/// of the command line.
class BatchRun : public QObject
{
public:
    /// @param jobs how many tools may run at the same time, at least one
    /// @param report gets every input's result; null for none
    BatchRun(RunPlan plan, const SplitSettings &settings, int jobs, Console &console,
             Report *report);

    /// Lets the tools' own messages through to the error stream.
    void showToolMessages() { showsToolMessages = true; }

    /// Splits the files and prints the results.
    /// @returns 0 when every file was split, 1 when one was not, 128 and the signal's number when
    /// the run was asked to end.
    int run();

private:
    void connectBatch();
    void beginFile(qsizetype index);
    void endFile(const SplitResult &result);
    void refresh();
    void stop(int signal);
    void showLive();
    double doneShare() const;
    void printRefused(qsizetype filesBefore);
    void printResult(const SplitResult &result);
    void printTotals();
    qsizetype total() const { return plan.refusedFiles.size() + plan.files.size(); }

    RunPlan plan;
    SplitSettings settings;
    Console &console;
    Report *report;
    bool showsToolMessages = false;
    SplitBatch batch;
    QEventLoop loop;
    QTimer refreshTimer;
    QElapsedTimer sinceStart;
    QList<qint64> bytesBefore; ///< of the files before each file; one entry more for all
    qsizetype splitFiles = 0;
    qsizetype skippedFiles = 0;
    qsizetype refusedFiles = 0; ///< that were told of
    int stopSignal = 0;
};

} // namespace quorlin::batch
