#include "pipeline/existing_outputs.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QSet>

namespace quorlin {

QString applyExistingPolicy(QList<OutputResult> &outputs, ExistingOutputs policy,
                            const std::function<bool(const QString &path)> &exists)
{
    if (policy == ExistingOutputs::Replace) {
        return {};
    }
    qsizetype count = 0;
    QString first;
    for (OutputResult &output : outputs) {
        if (!exists(output.path)) {
            continue;
        }
        if (count++ == 0) {
            first = output.path;
        }
        if (policy == ExistingOutputs::Skip) {
            output.state = OutputResult::State::Skipped;
        }
    }
    if (policy == ExistingOutputs::Skip || count == 0) {
        return {};
    }
    return QString::number(count) + QStringLiteral(" of ") + QString::number(outputs.size()) +
           QStringLiteral(" outputs are there already, the first is ") + first +
           QStringLiteral(" (--existing replace or skip)");
}

bool isOutputThere(const QString &path)
{
    const QFileInfo file(path);
    return file.exists() || file.isSymLink();
}

qsizetype countOtherOutputs(const QString &folder, const QList<OutputResult> &outputs)
{
    QSet<QString> names;
    for (const OutputResult &output : outputs) {
        names.insert(QFileInfo(output.path).fileName());
    }
    qsizetype count = 0;
    for (QDirIterator files(folder, {QStringLiteral("*.pdf")}, QDir::Files); files.hasNext();) {
        files.next();
        count += names.contains(files.fileName()) ? 0 : 1;
    }
    return count;
}

} // namespace quorlin
