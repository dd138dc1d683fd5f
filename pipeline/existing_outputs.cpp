#include "pipeline/existing_outputs.h"

#include "pipeline/output_path.h"
#include "tools/common/name_shortening.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSet>

namespace quorlin {

QString applyExistingPolicy(QList<OutputResult> &outputs, ExistingOutputs policy,
                            const std::function<QString(const QString &path)> &find)
{
    if (policy == ExistingOutputs::Replace) {
        return {};
    }
    qsizetype count = 0;
    QString first;
    for (OutputResult &output : outputs) {
        const QString path = find(output.path);
        if (path.isEmpty()) {
            continue;
        }
        if (count++ == 0) {
            first = path;
        }
        if (policy == ExistingOutputs::Skip) {
            output.path = path;
            output.state = OutputResult::State::Skipped;
        }
    }
    if (policy == ExistingOutputs::Skip || count == 0) {
        return {};
    }
    return QString::number(count) + QStringLiteral(" of ") + QString::number(outputs.size()) +
           QStringLiteral(" outputs already exist, the first is ") + first +
           QStringLiteral(" (--existing replace or skip)");
}

QString findOutput(const QString &path, const QString &inputPath)
{
    const QFileInfo wanted(path);
    const std::string shortened =
        tools::shortenOutputName(QFile::encodeName(wanted.fileName()).toStdString(),
                                 QFile::encodeName(inputBaseName(inputPath)).toStdString(),
                                 static_cast<std::size_t>(nameLimitOf(wanted.path())));
    const QFileInfo file(wanted.path() + u'/' + QFile::decodeName(shortened.c_str()));
    return file.exists() || file.isSymLink() ? file.filePath() : QString();
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
