#pragma once

#include "batch/run_plan.h"
#include "pipeline/split_batch.h"

#include <QEventLoop>
#include <QObject>
#include <QTimer>

namespace quorlin::batch {

class Console;

/// One run: splits the files of a plan and prints what becomes of them, file by file in the order
/// of the command line.
class BatchRun : public QObject
{
public:
    /// @param jobs how many tools may run at the same time, at least one
    BatchRun(RunPlan plan, const SplitSettings &settings, int jobs, Console &console);

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
    void printRefused(qsizetype filesBefore);
    void printFailure(const QString &path, const QString &reason);

    RunPlan plan;
    Console &console;
    SplitBatch batch;
    QEventLoop loop;
    QTimer refreshTimer;
    qsizetype splitFiles = 0;
    int stopSignal = 0;
};

} // namespace quorlin::batch
