#include "batch/plan_table.h"

#include "batch/shown_text.h"

#include <QFileInfo>

#include <algorithm>
#include <array>

namespace quorlin::batch {

namespace {

/// Columns before the last one are at most so wide; longer fields push the next ones to the right.
constexpr qsizetype widestColumn = 40;

using Row = std::array<QString, 4>;

Row rowOf(const OutputResult &output)
{
    const QString name = printable(QFileInfo(output.path).fileName());
    const bool isSkipped = output.state == OutputResult::State::Skipped;
    return {QString::number(output.number), output.range, printable(output.text.trimmed()),
            isSkipped ? name + QStringLiteral(" (exists, skipped)") : name};
}

} // namespace

QString planTable(const QList<OutputResult> &outputs)
{
    QList<Row> rows = {{QStringLiteral("number"), QStringLiteral("pages"), QStringLiteral("text"),
                        QStringLiteral("name")}};
    for (const OutputResult &output : outputs) {
        rows.append(rowOf(output));
    }
    std::array<qsizetype, 4> widths{};
    for (const Row &row : std::as_const(rows)) {
        for (size_t column = 0; column + 1 < row.size(); ++column) {
            widths[column] = std::min(std::max(widths[column], row[column].size()), widestColumn);
        }
    }
    QString table;
    for (const Row &row : std::as_const(rows)) {
        table += row[0].rightJustified(widths[0]);
        for (size_t column = 1; column < row.size(); ++column) {
            table += QStringLiteral("  ") + row[column].leftJustified(widths[column]);
        }
        table += u'\n';
    }
    return table;
}

} // namespace quorlin::batch
