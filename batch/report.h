#pragma once

#include "pipeline/split_settings.h"
#include "pipeline/verdict.h"

#include <QByteArray>
#include <QFile>
#include <QJsonObject>
#include <QSaveFile>
#include <QString>
#include <QStringList>

#include <memory>

namespace quorlin::batch {

/// "succeeded", "failed", "planned" or "skipped".
QString outcomeText(SplitOutcome outcome);

/// What is worth a look in a file that was not at fault, one sentence each.
QStringList warningsOf(const SplitFacts &facts);

/// The entry of one input in the JSON report, as docs/report.schema.json describes it.
QJsonObject reportEntry(const SplitResult &result, const SplitSettings &settings);

/// The first line of the CSV report (RFC 4180): the names of its fields.
QByteArray csvHeading();

/// The lines of one input in the CSV report: one for each output, or a single one without output.
QByteArray csvLines(const QJsonObject &entry);

/// A report as it grows, file by file. It appears whole when it is finished, or not at all, and
/// nothing of it is kept in memory.
class Report
{
public:
    /// @param path file of the report, CSV when it ends in ".csv", else JSON; "-" for JSON on
    /// standard output
    explicit Report(const QString &path);
    ~Report();
    Report(const Report &) = delete;
    Report &operator=(const Report &) = delete;

    /// Begins the report. @returns what keeps it from being written; empty when all is well
    QString begin();
    void add(const SplitResult &result, const SplitSettings &settings);
    /// Ends the report and puts it in place. @returns what kept it from being written; empty when
    /// all is well
    QString finish();

private:
    QString fault() const;

    QString path;
    bool isCsv;
    std::unique_ptr<QFileDevice> file;
    bool isFirst = true;
};

} // namespace quorlin::batch
