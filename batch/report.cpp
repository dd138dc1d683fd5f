#include "batch/report.h"

#include "analysis/grouping.h"
#include "batch/shown_text.h"
#include "pipeline/name_pattern.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <cstdio>

namespace quorlin::batch {

namespace {

const char lineEnd[] = "\r\n";

/// What became of one output of a file with that @p outcome.
SplitOutcome outcomeOfOutput(const OutputResult &output, SplitOutcome outcome, bool dryRun)
{
    switch (output.state) {
    case OutputResult::State::Written:
    case OutputResult::State::StandIns:
        return SplitOutcome::Succeeded;
    case OutputResult::State::Skipped:
        return SplitOutcome::Skipped;
    case OutputResult::State::Planned:
        return dryRun && outcome != SplitOutcome::Failed ? SplitOutcome::Planned
                                                         : SplitOutcome::Failed;
    case OutputResult::State::Failed:
        break;
    }
    return SplitOutcome::Failed;
}

QJsonObject outputEntry(const OutputResult &output, SplitOutcome outcome, bool dryRun)
{
    QJsonArray pages;
    for (const int page : pagesOfRange(output.range)) {
        pages.append(page);
    }
    return {{"number", output.number},
            {"text", output.text == noTextMarker() ? QString() : output.text},
            {"pages", pages},
            {"range", output.range},
            {"path", output.path},
            {"bytes", output.bytes},
            {"result", outcomeText(outcomeOfOutput(output, outcome, dryRun))}};
}

QByteArray csvField(QString text)
{
    if (text.contains(u'"') || text.contains(u',') || text.contains(u'\r') ||
        text.contains(u'\n')) {
        text = u'"' + text.replace(u'"', QStringLiteral("\"\"")) + u'"';
    }
    return text.toUtf8();
}

QString joined(const QJsonArray &values, const QString &separator)
{
    QStringList texts;
    for (const auto &value : values) {
        texts.append(value.toVariant().toString());
    }
    return texts.join(separator);
}

QByteArray csvLine(const QStringList &fields)
{
    QByteArrayList encoded;
    for (const QString &field : fields) {
        encoded.append(csvField(field));
    }
    return encoded.join(',') + lineEnd;
}

QStringList outputFields(const QJsonObject &output)
{
    return {QString::number(output["number"].toInteger()),
            output["text"].toString(),
            joined(output["pages"].toArray(), QStringLiteral(" ")),
            output["range"].toString(),
            output["path"].toString(),
            QString::number(output["bytes"].toInteger()),
            output["result"].toString()};
}

} // namespace

QString outcomeText(SplitOutcome outcome)
{
    switch (outcome) {
    case SplitOutcome::Succeeded:
        return QStringLiteral("succeeded");
    case SplitOutcome::Planned:
        return QStringLiteral("planned");
    case SplitOutcome::Skipped:
        return QStringLiteral("skipped");
    case SplitOutcome::Failed:
        break;
    }
    return QStringLiteral("failed");
}

QStringList warningsOf(const SplitFacts &facts)
{
    QStringList warnings;
    if (facts.pageWarnings > 0) {
        warnings.append(countedText(facts.pageWarnings, "page", "pages") +
                        QStringLiteral(" could be read only in part"));
    }
    if (facts.droppedPages > 0) {
        warnings.append(countedText(facts.droppedPages, "page", "pages") +
                        QStringLiteral(" without text dropped"));
    }
    if (facts.numberedOutputs > 0) {
        warnings.append(countedText(facts.numberedOutputs, "output", "outputs") +
                        QStringLiteral(" numbered because of equal names"));
    }
    if (facts.otherOutputs > 0) {
        warnings.append(countedText(facts.otherOutputs, "PDF file", "PDF files") +
                        QStringLiteral(" of earlier runs in the output folder"));
    }
    return warnings;
}

QJsonObject reportEntry(const SplitResult &result, const SplitSettings &settings)
{
    const SplitOutcome outcome = outcomeOf(result, settings);
    QJsonArray outputs;
    for (const OutputResult &output : result.facts.outputs) {
        outputs.append(outputEntry(output, outcome, settings.dryRun));
    }
    return {{"path", result.path},
            {"result", outcomeText(outcome)},
            {"reason", result.verdict.reason},
            {"pages", result.facts.pages},
            {"pagesWithoutText", result.facts.pagesWithoutText},
            {"warnings", QJsonArray::fromStringList(warningsOf(result.facts))},
            {"outputs", outputs}};
}

QByteArray csvHeading()
{
    return csvLine({"path", "result", "reason", "pages", "pagesWithoutText", "warnings",
                    "output.number", "output.text", "output.pages", "output.range", "output.path",
                    "output.bytes", "output.result"});
}

QByteArray csvLines(const QJsonObject &entry)
{
    const QStringList input = {entry["path"].toString(),
                               entry["result"].toString(),
                               entry["reason"].toString(),
                               QString::number(entry["pages"].toInteger()),
                               QString::number(entry["pagesWithoutText"].toInteger()),
                               joined(entry["warnings"].toArray(), QStringLiteral("; "))};
    QByteArray lines;
    const QJsonArray outputs = entry["outputs"].toArray();
    for (const auto &output : outputs) {
        lines += csvLine(input + outputFields(output.toObject()));
    }
    return lines.isEmpty() ? csvLine(input + QStringList(7)) : lines;
}

Report::Report(const QString &reportPath)
    : path(reportPath), isCsv(reportPath.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive))
{
}

Report::~Report() = default;

QString Report::fault() const
{
    return path + QStringLiteral(": the report could not be written: ") + file->errorString();
}

QString Report::begin()
{
    bool isOpen = false;
    // A pipe or a device would be replaced by the report.
    if (const QFileInfo info(path); info.exists() && !info.isFile()) {
        return path + QStringLiteral(": the report could not be written: it is not a regular file");
    }
    if (path == QLatin1String("-")) {
        auto output = std::make_unique<QFile>();
        isOpen = output->open(stdout, QIODevice::WriteOnly);
        file = std::move(output);
    } else {
        file = std::make_unique<QSaveFile>(path);
        isOpen = file->open(QIODevice::WriteOnly);
    }
    if (!isOpen) {
        return fault();
    }
    file->write(isCsv ? csvHeading() : QByteArray("{\"version\":1,\"inputs\":["));
    return {};
}

void Report::add(const SplitResult &result, const SplitSettings &settings)
{
    const QJsonObject entry = reportEntry(result, settings);
    if (isCsv) {
        file->write(csvLines(entry));
        return;
    }
    file->write(std::exchange(isFirst, false) ? "\n" : ",\n");
    file->write(QJsonDocument(entry).toJson(QJsonDocument::Compact));
}

QString Report::finish()
{
    if (!isCsv) {
        file->write("\n]}\n");
    }
    auto *saved = dynamic_cast<QSaveFile *>(file.get());
    const bool isWritten = saved != nullptr ? saved->commit() : file->flush();
    return isWritten && file->error() == QFileDevice::NoError ? QString() : fault();
}

} // namespace quorlin::batch
