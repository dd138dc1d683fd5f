#pragma once

#include "pipeline/split_result.h"
#include "pipeline/tool_run.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>

namespace quorlin {

/// What the outputs of a file are made from, and how.
struct OutputJob
{
    QString program; ///< pagebinder
    QString input;
    QByteArray inputIdentity;
    QByteArray passwords; ///< to try on it, each ended by a line feed
    int timeoutSeconds = 600;
};

/// Has a stretch of a file's outputs written by one pagebinder after another. One process writes
/// all of them where nothing goes wrong. Where it ends before its time, the output that it was at
/// gets a second try alone; then the next process goes on behind it.
class OutputPass : public QObject
{
    Q_OBJECT

public:
    /// @param outputs of the whole file; must outlive the pass
    /// @param begin, end the stretch that this pass writes
    OutputPass(OutputJob job, QList<OutputResult> &outputs, qsizetype begin, qsizetype end,
               QObject *parent);

    void start();
    void cancel();

    bool foundInputChanged() const { return inputChanged; }
    bool hasStalled() const { return stalled; }
    /// Whether a tool had to be killed, so that it may have left an unfinished output.
    bool killedATool() const { return killed; }

signals:
    /// The output at @p index was written or failed.
    void reported(qsizetype index);
    void said(const QByteArray &text);
    /// Comes once: every output of the stretch was reported, or the pass was given up.
    void ended();

private:
    void run(qsizetype from, qsizetype to);
    QByteArray nextEntries();
    void take(const QByteArray &bytes);
    void takeLine(QByteArrayView line);
    void goOn(const ToolEnd &end);
    void judgeLoneTry(const ToolEnd &end);
    void fail(qsizetype index, const QString &reason);
    void failAllLeft(const QString &reason);
    qsizetype firstLeft() const;

    OutputJob job;
    QList<OutputResult> &outputs;
    qsizetype passEnd;
    qsizetype next;         ///< no output before this one is left
    qsizetype runBegin = 0; ///< first output of the process that runs
    qsizetype runEnd = 0;
    qsizetype sent = 0; ///< next output whose entry the process is given
    bool lone = false;  ///< whether the process that runs is a second try
    int failuresInARow = 0;
    QList<qsizetype> listed; ///< positions of the outputs whose entries the process was given
    QByteArray rest;         ///< the beginning of a line whose end has not arrived
    QPointer<ToolRun> tool;
    bool inputChanged = false;
    bool stalled = false;
    bool cancelled = false;
    bool killed = false;
};

} // namespace quorlin
