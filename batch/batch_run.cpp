#include "batch/batch_run.h"

#include "batch/advice.h"
#include "batch/console.h"
#include "batch/plan_table.h"
#include "batch/report.h"
#include "batch/shown_text.h"
#include "common/stop_signals.h"
#include "pipeline/verdict.h"

#include <QFileInfo>

#include <algorithm>
#include <csignal>
#include <utility>

namespace quorlin::batch {

namespace {

constexpr int refreshMilliseconds = 250;
/// How much of a file's work the reading of its pages is, as a share of all.
constexpr double readingShare = 0.75;

/// What a file's result says of it: "(5 pages, 3 outputs)" and what is worth a look.
QString summaryOf(const SplitFacts &facts)
{
    const auto skipped =
        std::count_if(facts.outputs.begin(), facts.outputs.end(), [](const OutputResult &output) {
            return output.state == OutputResult::State::Skipped;
        });
    const std::pair<const char *, qsizetype> notes[] = {
        {"outputs skipped", skipped},
        {"pages without text", facts.pagesWithoutText},
        {"pages dropped", facts.droppedPages},
        {"page warnings", facts.pageWarnings},
        {"outputs numbered because of equal names", facts.numberedOutputs},
        {"PDF files of earlier runs in its output folder", facts.otherOutputs}};
    QString summary = countedText(facts.pages, "page", "pages") + QStringLiteral(", ") +
                      countedText(facts.outputs.size(), "output", "outputs");
    for (const auto &[what, count] : notes) {
        if (count > 0) {
            summary += QStringLiteral(", ") + QLatin1String(what) + QStringLiteral(": ") +
                       QString::number(count);
        }
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

BatchRun::BatchRun(RunPlan runPlan, const SplitSettings &splitSettings, int jobs, Console &output,
                   Report *reportFile)
    : plan(std::move(runPlan)), settings(splitSettings), console(output), report(reportFile),
      batch(plan.files, settings, jobs)
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
    connect(&batch, &SplitBatch::toolSaid, this, [this](qsizetype index, const QByteArray &text) {
        if (showsToolMessages) {
            console.passOn(plan.files.at(index), text);
        }
    });
    connect(&batch, &SplitBatch::finished, &loop, &QEventLoop::quit);
}

int BatchRun::run()
{
    for (const QString &warning : std::as_const(plan.warnings)) {
        console.complain(QStringLiteral("warning: ") + warning);
    }
    const StopSignals stopSignals([this](int signal) { stop(signal); });
    sinceStart.start();
    refreshTimer.start(refreshMilliseconds);
    console.writeProgress(QStringLiteral("Conversion Start:"));
    batch.start();
    loop.exec();
    printRefused(plan.files.size());
    if (batch.isGivenUp()) {
        console.complain(QStringLiteral("tools hang again and again; the run ends here"));
    }
    if (stopSignal == 0) {
        console.writeProgress(QStringLiteral("Conversion Finished."));
    }
    printTotals();
    if (stopSignal != 0) {
        return 128 + stopSignal;
    }
    return splitFiles + skippedFiles == total() ? 0 : 1;
}

void BatchRun::printTotals()
{
    QString line = QString::number(splitFiles) + QStringLiteral(" of ") + QString::number(total()) +
                   QStringLiteral(" files") +
                   (settings.dryRun ? QStringLiteral(" planned") : QStringLiteral(" split"));
    if (skippedFiles > 0) {
        line += QStringLiteral(", ") + QString::number(skippedFiles) + QStringLiteral(" skipped");
    }
    console.writeLine(line + u'.');
}

void BatchRun::beginFile(qsizetype index)
{
    printRefused(index);
    console.writeProgress(plan.files.at(index));
    showLive();
}

void BatchRun::endFile(const SplitResult &result)
{
    if (report != nullptr) {
        report->add(result, settings);
    }
    printResult(result);
}

void BatchRun::printResult(const SplitResult &result)
{
    const QString path = printable(result.path);
    const QString summary = QStringLiteral(" (") + summaryOf(result.facts) + u')';
    switch (outcomeOf(result, settings)) {
    case SplitOutcome::Succeeded:
        ++splitFiles;
        console.writeLine(QStringLiteral("Succeed  ") + path + summary);
        return;
    case SplitOutcome::Planned:
        ++splitFiles;
        console.writeLine(QStringLiteral("Planned  ") + path + summary);
        console.writeLine(planTable(result.facts.outputs).chopped(1));
        return;
    case SplitOutcome::Skipped:
        ++skippedFiles;
        console.writeLine(QStringLiteral("Skipped  ") + path + summary);
        return;
    case SplitOutcome::Failed:
        break;
    }
    console.complain(result.path + QStringLiteral(": ") + advisedReason(result.verdict.reason));
    console.writeLine(QStringLiteral("Failed   ") + path);
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

double BatchRun::doneShare() const
{
    const SplitResult *file = batch.current();
    if (file == nullptr || bytesBefore.constLast() == 0) {
        return 0;
    }
    const SplitFacts &facts = file->facts;
    const auto reported =
        std::count_if(facts.outputs.begin(), facts.outputs.end(), [](const OutputResult &output) {
            return output.state != OutputResult::State::Planned;
        });
    const double read = facts.pages > 0 ? double(facts.pagesRead) / facts.pages : 0;
    const double written =
        facts.outputs.isEmpty() ? 0 : double(reported) / double(facts.outputs.size());
    const double share = readingShare * read + (1 - readingShare) * written;
    const qsizetype index = batch.currentIndex();
    const auto before = double(bytesBefore.at(index));
    return (before + share * (double(bytesBefore.at(index + 1)) - before)) /
           double(bytesBefore.constLast());
}

void BatchRun::showLive()
{
    const SplitResult *file = console.isLiveDue() ? batch.current() : nullptr;
    if (file == nullptr) {
        return;
    }
    if (bytesBefore.isEmpty()) {
        bytesBefore.append(0);
        for (const QString &path : std::as_const(plan.files)) {
            bytesBefore.append(bytesBefore.constLast() + QFileInfo(path).size());
        }
    }
    constexpr double millisecondsInASecond = 1000;
    const QString timeLeft =
        timeLeftText(double(sinceStart.elapsed()) / millisecondsInASecond, doneShare());
    const QString step = stepOf(file->facts);
    console.showLive(liveText(
        refusedFiles + batch.currentIndex() + 1, total(), QFileInfo(file->path).fileName(),
        timeLeft.isEmpty() ? step : step + QStringLiteral(", ") + timeLeft, console.columns()));
}

void BatchRun::printRefused(qsizetype filesBefore)
{
    for (const RefusedFile &file : std::as_const(plan.refusedFiles)) {
        if (file.filesBefore == filesBefore) {
            ++refusedFiles;
            SplitResult result;
            result.path = file.path;
            result.verdict.reason = file.reason;
            endFile(result);
        }
    }
}

} // namespace quorlin::batch
