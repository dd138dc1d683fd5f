#include "pipeline/verdict.h"

#include <QFile>

#include <algorithm>

namespace quorlin {

namespace {

bool wasWritten(const OutputResult &output)
{
    return output.state == OutputResult::State::Written ||
           output.state == OutputResult::State::StandIns;
}

/// "page 7" or "3 pages, the first is page 7".
QString pagesText(const QList<int> &pages)
{
    const QString first = QStringLiteral("page ") + QString::number(pages.constFirst());
    return pages.size() == 1
               ? first
               : QString::number(pages.size()) + QStringLiteral(" pages, the first is ") + first;
}

QString faultOfReading(const SplitFacts &facts, const SplitSettings &settings)
{
    if (!facts.unreadablePages.isEmpty()) {
        return QStringLiteral("it has unreadable pages: ") + pagesText(facts.unreadablePages);
    }
    if (!facts.doubtfulPages.isEmpty()) {
        return QStringLiteral("pages could be read only in part, and the text ") +
               describePlace(settings.place) + QStringLiteral(" may be in the rest: ") +
               pagesText(facts.doubtfulPages);
    }
    return {};
}

/// Whether the output is as it should be, by this run or an earlier one.
bool isInOrder(const OutputResult &output)
{
    return wasWritten(output) || output.state == OutputResult::State::Skipped;
}

QString faultOfOutputs(const SplitFacts &facts, const SplitSettings &settings)
{
    if (settings.dryRun) {
        return {};
    }
    const auto first = std::find_if_not(facts.outputs.begin(), facts.outputs.end(), isInOrder);
    if (first == facts.outputs.end()) {
        return {};
    }
    const auto missing =
        std::count_if(first, facts.outputs.end(), [](const auto &o) { return !isInOrder(o); });
    QString fault = QString::number(missing) + QStringLiteral(" of ") +
                    QString::number(facts.outputs.size()) +
                    QStringLiteral(" outputs were not written, the first is ") + first->path;
    if (!first->reason.isEmpty()) {
        fault += QStringLiteral(" (") + first->reason + u')';
    }
    return fault;
}

QString faultOfStandIns(const SplitFacts &facts)
{
    for (const OutputResult &output : facts.outputs) {
        if (output.state == OutputResult::State::StandIns) {
            return QStringLiteral("unreadable pages have a stand-in: page ") +
                   output.standInPages.section(u' ', 0, 0) + QStringLiteral(" in ") + output.path;
        }
    }
    return {};
}

QString faultOfReplacing(const SplitFacts &facts)
{
    if (facts.replacedOutputs.isEmpty()) {
        return {};
    }
    return QStringLiteral("another file of the same name replaced ") +
           QString::number(facts.replacedOutputs.size()) +
           QStringLiteral(" of its outputs, the first is ") + facts.replacedOutputs.constFirst();
}

QString faultOfTaking(const SplitFacts &facts)
{
    if (facts.takenOutputs.isEmpty()) {
        return {};
    }
    return QStringLiteral("another file of the same name wrote ") +
           QString::number(facts.takenOutputs.size()) +
           QStringLiteral(" of its outputs in this run, the first is ") +
           facts.takenOutputs.constFirst();
}

QString faultOf(const SplitFacts &facts, const SplitSettings &settings)
{
    if (facts.inputChanged) {
        return QStringLiteral("it changed while it was split; its outputs were removed");
    }
    if (!facts.fault.isEmpty()) {
        return facts.fault;
    }
    if (facts.stalled) {
        return QStringLiteral("a tool made no progress and was ended");
    }
    if (facts.cancelled) {
        return QStringLiteral("the run ended before it was done");
    }
    for (const QString &fault : {faultOfOutputs(facts, settings), faultOfReading(facts, settings),
                                 faultOfPages(facts, settings), faultOfStandIns(facts),
                                 faultOfReplacing(facts), faultOfTaking(facts)}) {
        if (!fault.isEmpty()) {
            return fault;
        }
    }
    return facts.outputs.isEmpty() ? QStringLiteral("no output was written") : QString();
}

} // namespace

QString faultOfPages(const SplitFacts &facts, const SplitSettings &settings)
{
    const bool isAllBlank = facts.pagesWithoutText == facts.pages;
    const bool isDropped = settings.blankPages == BlankPages::Drop;
    if (isAllBlank && (!settings.blankPages || settings.blankPagesFail || isDropped)) {
        return QStringLiteral("no page has text ") + describePlace(settings.place) +
               QStringLiteral(" (--list-items shows where text stands)");
    }
    if (settings.blankPagesFail && facts.pagesWithoutText > 0) {
        return QString::number(facts.pagesWithoutText) + QStringLiteral(" of ") +
               QString::number(facts.pages) + QStringLiteral(" pages have no text ") +
               describePlace(settings.place);
    }
    return {};
}

SplitOutcome outcomeOf(const SplitResult &result, const SplitSettings &settings)
{
    if (!result.verdict.succeeded) {
        return SplitOutcome::Failed;
    }
    const QList<OutputResult> &outputs = result.facts.outputs;
    const bool areSkipped =
        std::all_of(outputs.begin(), outputs.end(), [](const OutputResult &output) {
            return output.state == OutputResult::State::Skipped;
        });
    if (areSkipped) {
        return SplitOutcome::Skipped;
    }
    return settings.dryRun ? SplitOutcome::Planned : SplitOutcome::Succeeded;
}

Verdict judge(const SplitFacts &facts, const SplitSettings &settings)
{
    const QString fault = faultOf(facts, settings);
    return {fault.isEmpty(), fault};
}

void inspectOutputs(QList<OutputResult> &outputs)
{
    for (OutputResult &output : outputs) {
        if (!wasWritten(output)) {
            continue;
        }
        output.identity = identifyFile(output.path);
        if (!output.identity || output.identity->size != output.bytes) {
            output.state = OutputResult::State::Failed;
            output.reason = output.identity
                                ? QStringLiteral("its length is not the one that was written")
                                : QStringLiteral("it is no longer there");
        }
    }
}

void noteReplacedOutputs(SplitFacts &facts)
{
    for (const OutputResult &output : std::as_const(facts.outputs)) {
        if (wasWritten(output) && identifyFile(output.path) != output.identity) {
            facts.replacedOutputs.append(output.path);
        }
    }
}

void removeOutputs(QList<OutputResult> &outputs)
{
    inspectOutputs(outputs);
    for (OutputResult &output : outputs) {
        if (wasWritten(output)) {
            const bool isGone = QFile::remove(output.path) || !QFile::exists(output.path);
            output.state = OutputResult::State::Failed;
            output.reason =
                isGone ? QStringLiteral("removed because the input changed")
                       : QStringLiteral("the input changed, but the output could not be removed");
        }
    }
}

} // namespace quorlin
