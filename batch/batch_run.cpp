#include "batch/batch_run.h"

#include "batch/console.h"
#include "batch/shown_text.h"
#include "batch/stop_signals.h"

#include <QFileInfo>

#include <algorithm>
#include <csignal>
#include <utility>

namespace quorlin::batch {

namespace {

constexpr int refreshMilliseconds = 250;

/// What a file's result says of it: "(5 pages, 3 outputs)" and what is worth a look.
QString summaryOf(const SplitFacts &facts)
{
    QString summary = QString::number(facts.pages) + QStringLiteral(" pages, ") +
                      QString::number(facts.outputs.size()) + QStringLiteral(" outputs");
    if (facts.pagesWithoutText > 0) {
        summary +=
            QStringLiteral(", pages without text: ") + QString::number(facts.pagesWithoutText);
    }
    if (facts.droppedPages > 0) {
        summary += QStringLiteral(", pages dropped: ") + QString::number(facts.droppedPages);
    }
    if (facts.pageWarnings > 0) {
        summary += QStringLiteral(", page warnings: ") + QString::number(facts.pageWarnings);
    }
    return summary;
}

/// What is being done with the file of which @p facts are known.
QString stepOf(const SplitFacts &facts)
{
    if (!facts.outputs.isEmpty()) {
        const auto reported = std::count_if(facts.outputs.begin(), facts.outputs.end(),
                                            [](const OutputResult &output) {
                                                return output.state != OutputResult::State::Planned;
                                            });
        return QStringLiteral("writing output ") + QString::number(reported) +
               QStringLiteral(" of ") + QString::number(facts.outputs.size());
    }
    if (facts.pages > 0) {
        return QStringLiteral("analysing page ") + QString::number(facts.pagesRead) +
               QStringLiteral(" of ") + QString::number(facts.pages);
    }
    return QStringLiteral("counting pages");
}

} // namespace

BatchRun::BatchRun(RunPlan runPlan, const SplitSettings &settings, int jobs, Console &output)
    : plan(std::move(runPlan)), console(output), batch(plan.files, settings, jobs)
{
    connectBatch();
    connect(&refreshTimer, &QTimer::timeout, this, &BatchRun::refresh);
}

void BatchRun::connectBatch()
{
    connect(&batch, &SplitBatch::fileBegins, this, &BatchRun::beginFile);
    connect(&batch, &SplitBatch::pageRead, this, [this](qsizetype, int page) {
        console.writeProgress(QStringLiteral("Analyzing page ") + QString::number(page));
        showLive();
    });
    connect(&batch, &SplitBatch::outputReported, this,
            [this](qsizetype, const OutputResult &output) {
                console.writeProgress(QStringLiteral("Generating ") + output.path);
                showLive();
            });
    connect(&batch, &SplitBatch::fileEnds, this,
            [this](qsizetype, const SplitResult &result) { endFile(result); });
    connect(&batch, &SplitBatch::toolSaid, this,
            [this](const QByteArray &text) { console.passOn(text); });
    connect(&batch, &SplitBatch::finished, &loop, &QEventLoop::quit);
}

int BatchRun::run()
{
    for (const QString &warning : std::as_const(plan.warnings)) {
        console.complain(QStringLiteral("warning: ") + warning);
    }
    const StopSignals stopSignals([this](int signal) { stop(signal); });
    refreshTimer.start(refreshMilliseconds);
    console.writeProgress(QStringLiteral("Conversion Start:"));
    batch.start();
    loop.exec();
    printRefused(plan.files.size());
    if (batch.isGivenUp()) {
        console.complain(QStringLiteral("tools hang again and again, the run is given up"));
    }
    if (stopSignal == 0) {
        console.writeProgress(QStringLiteral("Conversion Finished."));
    }
    const qsizetype total = plan.refusedFiles.size() + plan.files.size();
    console.writeLine(QString::number(splitFiles) + QStringLiteral(" of ") +
                      QString::number(total) + QStringLiteral(" files split."));
    if (stopSignal != 0) {
        return 128 + stopSignal;
    }
    return splitFiles == total ? 0 : 1;
}

void BatchRun::beginFile(qsizetype index)
{
    printRefused(index);
    console.writeProgress(plan.files.at(index));
    showLive();
}

void BatchRun::endFile(const SplitResult &result)
{
    if (result.verdict.succeeded) {
        ++splitFiles;
        console.writeLine(QStringLiteral("Succeed  ") + printable(result.path) +
                          QStringLiteral(" (") + summaryOf(result.facts) + u')');
    } else {
        printFailure(result.path, result.verdict.reason);
    }
}

void BatchRun::refresh()
{
    console.flush();
    if (console.hasLostReader()) {
        stop(SIGPIPE);
    } else {
        showLive();
    }
}

void BatchRun::stop(int signal)
{
    if (std::exchange(stopSignal, signal) != 0) {
        return;
    }
    if (signal != SIGPIPE) {
        console.complain(QStringLiteral("asked to end"));
    }
    batch.cancel();
}

void BatchRun::showLive()
{
    const SplitResult *file = console.isLiveDue() ? batch.current() : nullptr;
    if (file != nullptr) {
        console.showLive(liveText(batch.currentIndex() + 1, plan.files.size(),
                                  QFileInfo(file->path).fileName(), stepOf(file->facts),
                                  console.columns()));
    }
}

void BatchRun::printFailure(const QString &path, const QString &reason)
{
    console.complain(path + QStringLiteral(": ") + reason);
    console.writeLine(QStringLiteral("Failed   ") + printable(path));
}

void BatchRun::printRefused(qsizetype filesBefore)
{
    for (const RefusedFile &file : std::as_const(plan.refusedFiles)) {
        if (file.filesBefore == filesBefore) {
            printFailure(file.path, file.reason);
        }
    }
}

} // namespace quorlin::batch
