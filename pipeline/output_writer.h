#pragma once

#include "pipeline/output_pass.h"
#include "pipeline/tool_budget.h"

#include <QList>
#include <QObject>

namespace quorlin {

/// Writes the outputs of a file, by several processes side by side where there are many outputs and
/// places for tools are free.
class OutputWriter : public QObject
{
    Q_OBJECT

public:
    /// @param outputs of the file; must outlive the writer
    /// @param budget gives the places beyond the first, which the caller has taken
    OutputWriter(OutputJob job, QList<OutputResult> &outputs, ToolBudget &budget, QObject *parent);

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
    void ended();

private:
    void startPass(qsizetype begin, qsizetype end);
    void finishPass(const OutputPass &pass);

    OutputJob job;
    QList<OutputResult> &outputs;
    ToolBudget &budget;
    QList<OutputPass *> passes;
    qsizetype running = 0;
    bool inputChanged = false;
    bool stalled = false;
    bool killed = false;
};

/// How many processes share @p outputs, at most @p places: another one pays only for some hundred
/// outputs, because it opens the input again.
qsizetype passCount(qsizetype outputs, qsizetype places);

} // namespace quorlin
