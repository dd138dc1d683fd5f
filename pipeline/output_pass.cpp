#include "pipeline/output_pass.h"

#include "pipeline/output_list.h"

#include <utility>

namespace quorlin {

namespace {

/// Entries are handed on in pieces of about this size, so that a long list is never copied whole.
constexpr qsizetype pieceBytes = 65536;
/// After so many outputs in a row that failed twice, the fault is not in one of them.
constexpr int maximumFailuresInARow = 3;

} // namespace

OutputPass::OutputPass(OutputJob outputJob, QList<OutputResult> &allOutputs, qsizetype begin,
                       qsizetype end, QObject *parent)
    : QObject(parent), job(std::move(outputJob)), outputs(allOutputs), passEnd(end), next(begin)
{
}

void OutputPass::start()
{
    next = firstLeft();
    if (next == passEnd) {
        QMetaObject::invokeMethod(this, &OutputPass::ended, Qt::QueuedConnection);
    } else {
        run(next, passEnd);
    }
}

void OutputPass::cancel()
{
    cancelled = true;
    if (!tool.isNull()) {
        tool->cancel();
    }
}

void OutputPass::run(qsizetype from, qsizetype to)
{
    runBegin = from;
    runEnd = to;
    sent = from;
    listed.clear();
    rest.clear();
    ToolCommand command;
    command.program = job.program;
    command.arguments = {job.input, QStringLiteral("-split"), QStringLiteral("-")};
    command.inputIdentity = job.inputIdentity;
    command.passwords = job.passwords;
    command.nextInput = [this] { return nextEntries(); };
    auto *process = new ToolRun(std::move(command), job.timeoutSeconds, this);
    tool = process;
    connect(process, &ToolRun::wrote, this, &OutputPass::take);
    connect(process, &ToolRun::said, this, &OutputPass::said);
    connect(process, &ToolRun::ended, this, [this, process](const ToolEnd &end) {
        killed = killed || process->wasKilled();
        process->deleteLater();
        goOn(end);
    });
    process->start();
}

QByteArray OutputPass::nextEntries()
{
    QByteArray piece;
    while (sent < runEnd && piece.size() < pieceBytes) {
        if (outputs.at(sent).state == OutputResult::State::Planned) {
            piece += listEntry(outputs.at(sent));
            listed.append(sent);
        }
        ++sent;
    }
    return piece;
}

void OutputPass::take(const QByteArray &bytes)
{
    rest += bytes;
    qsizetype begin = 0;
    for (qsizetype end = rest.indexOf('\n'); end >= 0; end = rest.indexOf('\n', begin)) {
        takeLine(QByteArrayView(rest).sliced(begin, end - begin));
        begin = end + 1;
    }
    rest.remove(0, begin);
}

void OutputPass::takeLine(QByteArrayView line)
{
    const std::optional<OutputReport> report = readOutputReport(line);
    if (!report) {
        return;
    }
    if (report->inputChanged) {
        inputChanged = true;
        return;
    }
    const qsizetype index = listed.value(report->index, -1);
    if (index >= 0 && outputs.at(index).state == OutputResult::State::Planned) {
        applyReport(*report, outputs[index]);
        emit reported(index);
    }
}

qsizetype OutputPass::firstLeft() const
{
    qsizetype index = next;
    while (index < passEnd && outputs.at(index).state != OutputResult::State::Planned) {
        ++index;
    }
    return index;
}

void OutputPass::goOn(const ToolEnd &end)
{
    const qsizetype before = std::exchange(next, firstLeft());
    stalled = stalled || end.kind == ToolEnd::Kind::Stalled;
    if (cancelled || stalled || inputChanged || next == passEnd) {
        emit ended();
    } else if (end.kind == ToolEnd::Kind::NotStarted) {
        failAllLeft(reasonOf(end, QStringLiteral("pagebinder"), job.input));
    } else if (lone) {
        judgeLoneTry(end);
    } else {
        failuresInARow = next > before ? 0 : failuresInARow;
        lone = true;
        run(next, next + 1);
    }
}

void OutputPass::judgeLoneTry(const ToolEnd &end)
{
    lone = false;
    if (runBegin == next) {
        // Twice ended without a word about it.
        const QString reason = reasonOf(end, QStringLiteral("pagebinder"), job.input);
        fail(next, reason);
        next = firstLeft();
        if (++failuresInARow >= maximumFailuresInARow || next == passEnd) {
            failAllLeft(reason);
            return;
        }
    }
    run(next, passEnd);
}

void OutputPass::fail(qsizetype index, const QString &reason)
{
    outputs[index].state = OutputResult::State::Failed;
    outputs[index].reason = reason;
    emit reported(index);
}

void OutputPass::failAllLeft(const QString &reason)
{
    for (next = firstLeft(); next < passEnd; next = firstLeft()) {
        fail(next, reason);
    }
    emit ended();
}

} // namespace quorlin
