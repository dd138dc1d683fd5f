#include "pipeline/output_list.h"

#include "pipeline/output_path.h"
#include "pipeline/page_file_text.h"

#include <QFile>
#include <QFileInfo>

namespace quorlin {

namespace {

/// The path that an answer holds, which spells control characters and backslashes out.
QByteArray unescaped(QByteArrayView text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QByteArrayView rest = text.sliced(i);
        if (rest.startsWith("\\\\")) {
            bytes += '\\';
            ++i;
        } else if (rest.startsWith("\\x") && rest.size() >= 4) {
            bytes += QByteArray::fromHex(rest.sliced(2, 2).toByteArray());
            i += 3;
        } else {
            bytes += text.at(i);
        }
    }
    return bytes;
}

std::optional<qint64> numberIn(const QByteArray &field)
{
    bool whole = false;
    const qint64 number = field.toLongLong(&whole);
    return whole ? std::optional(number) : std::nullopt;
}

/// Gives @p report what stands behind kind and index; false when the fields are too few.
bool fillReport(OutputReport &report, const QList<QByteArray> &fields)
{
    const QByteArray &kind = fields.constFirst();
    if (kind == "failed" && fields.size() >= 3) {
        report.state = OutputResult::State::Failed;
        report.reason = QString::fromUtf8(fields.sliced(2).join('\t'));
        return true;
    }
    const bool hasStandIns = kind == "standin";
    if ((kind != "done" && !hasStandIns) || fields.size() != (hasStandIns ? 5 : 4)) {
        return false;
    }
    const std::optional<qint64> bytes = numberIn(fields.at(2));
    report.state = hasStandIns ? OutputResult::State::StandIns : OutputResult::State::Written;
    report.bytes = bytes.value_or(0);
    report.standInPages = hasStandIns ? QString::fromUtf8(fields.at(3)) : QString();
    report.path = QFile::decodeName(unescaped(fields.constLast()));
    return bytes.has_value();
}

} // namespace

QList<OutputResult> planOutputs(const PageGroups &groups, const QString &inputPath,
                                const QString &outputFolder, int method)
{
    QList<OutputResult> outputs;
    outputs.reserve(groups.ranges.size());
    for (qsizetype i = 0; i < groups.ranges.size(); ++i) {
        OutputResult output;
        output.number = i + 1;
        output.text = groups.texts.at(i);
        output.range = groups.ranges.at(i);
        output.path =
            outputPath(outputFolder, inputPath, i, pageFileText(output.text), output.range, method);
        outputs.append(output);
    }
    return outputs;
}

qsizetype nameOutputs(QList<OutputResult> &outputs, const QString &inputPath,
                      const SplitSettings &settings, UniqueNames &names)
{
    if (settings.names.isEmpty() && !settings.flat) {
        return 0;
    }
    const QString base = inputBaseName(inputPath);
    const QString folder =
        settings.flat ? settings.outputFolder : outputFolderOf(inputPath, settings.outputFolder);
    const qsizetype limit = nameLimitOf(settings.outputFolder);
    qsizetype numbered = 0;
    for (OutputResult &output : outputs) {
        const QString text = output.text == noTextMarker() ? QString() : output.text;
        const QString wanted =
            settings.names.isEmpty()
                ? QFileInfo(output.path).fileName()
                : settings.names.fileName({output.number, text, base, output.range}, limit);
        const QString name = names.claim(wanted, limit);
        numbered += name == wanted ? 0 : 1;
        output.path = folder + u'/' + name;
    }
    return numbered;
}

QByteArray listEntry(const OutputResult &output)
{
    return output.range.toLatin1() + '\t' + QFile::encodeName(output.path) + '\0';
}

std::optional<OutputReport> readOutputReport(QByteArrayView line)
{
    OutputReport report;
    if (line == QByteArrayView("changed")) {
        report.inputChanged = true;
        return report;
    }
    const QList<QByteArray> fields = line.toByteArray().split('\t');
    const std::optional<qint64> index = fields.size() < 3 ? std::nullopt : numberIn(fields.at(1));
    if (!index || *index < 1 || !fillReport(report, fields)) {
        return std::nullopt;
    }
    report.index = *index - 1;
    return report;
}

void applyReport(const OutputReport &report, OutputResult &output)
{
    output.state = report.state;
    output.bytes = report.bytes;
    output.standInPages = report.standInPages;
    output.reason = report.reason;
    if (!report.path.isEmpty()) {
        output.path = report.path;
    }
}

} // namespace quorlin
