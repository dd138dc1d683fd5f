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

QString placeText(const SplitSettings &settings)
{
    return QString::number(settings.position.x()) + u',' + QString::number(settings.position.y());
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
        return QStringLiteral("pages could be read only in part, and the text at ") +
               placeText(settings) + QStringLiteral(" may be in the rest: ") +
               pagesText(facts.doubtfulPages);
    }
    return {};
}

QString faultOfOutputs(const SplitFacts &facts)
{
    const auto first = std::find_if_not(facts.outputs.begin(), facts.outputs.end(), wasWritten);
    if (first == facts.outputs.end()) {
        return {};
    }
    const auto missing =
        std::count_if(first, facts.outputs.end(), [](const auto &o) { return !wasWritten(o); });
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
    for (const QString &fault :
         {faultOfOutputs(facts), faultOfReading(facts, settings), faultOfPages(facts, settings),
          faultOfStandIns(facts), faultOfReplacing(facts)}) {
        if (!fault.isEmpty()) {
            return fault;
        }
    }
    return facts.outputs.isEmpty() ? QStringLiteral("no output was made") : QString();
}

} // namespace

QString faultOfPages(const SplitFacts &facts, const SplitSettings &settings)
{
    const bool isAllBlank = facts.pagesWithoutText == facts.pages;
    const bool isDropped = settings.blankPages == BlankPages::Drop;
    if (isAllBlank && (!settings.blankPages || settings.blankPagesFail || isDropped)) {
        return QStringLiteral("no page has text at ") + placeText(settings) +
               QStringLiteral(" (--list-items shows where text stands)");
    }
    if (settings.blankPagesFail && facts.pagesWithoutText > 0) {
        return QString::number(facts.pagesWithoutText) + QStringLiteral(" of ") +
               QString::number(facts.pages) + QStringLiteral(" pages have no text at ") +
               placeText(settings);
    }
    return {};
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
            output.reason = output.identity ? QStringLiteral("it is not as long as it was written")
                                            : QStringLiteral("it has vanished");
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
            QFile::remove(output.path);
            output.state = OutputResult::State::Failed;
            output.reason = QStringLiteral("removed because the input changed");
        }
    }
}

} // namespace quorlin
