#include "batch/run_plan.h"

#include "pipeline/output_path.h"
#include "pipeline/split_batch.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <QSet>

namespace quorlin::batch {

QString absolutePath(const QString &path, const QString &currentFolder)
{
    return QDir::cleanPath(QDir(currentFolder).absoluteFilePath(path));
}

QString refusalOf(const QString &path)
{
    const QFileInfo file(path);
    if (!file.exists()) {
        return QStringLiteral("there is no such file");
    }
    if (file.isDir()) {
        return QStringLiteral("it is a folder (name its files, for example with \"find FOLDER "
                              "-name '*.pdf' | quorlin-batch --files-from -\")");
    }
    if (!file.isFile()) {
        return QStringLiteral("it is not a regular file");
    }
    if (!file.isReadable()) {
        return QStringLiteral("you have no permission to read it");
    }
    return {};
}

QStringList sharedFolderWarnings(const QStringList &files, const QString &outputFolder)
{
    QStringList warnings;
    for (const QList<qsizetype> &sharing : filesSharingFolders(files)) {
        // Spellings that differ share a folder on some disks only.
        QMap<QString, QStringList> byName;
        for (const qsizetype index : sharing) {
            byName[inputBaseName(files.at(index))].append(files.at(index));
        }
        for (auto entry = byName.cbegin(); entry != byName.cend(); ++entry) {
            if (entry.value().size() > 1) {
                warnings.append(QString::number(entry.value().size()) +
                                QStringLiteral(" files share the output folder ") + outputFolder +
                                u'/' + entry.key() +
                                QStringLiteral(" (--flat keeps the outputs of all): ") +
                                entry.value().join(QStringLiteral(", ")));
            }
        }
    }
    return warnings;
}

RunPlan planRun(const Arguments &arguments, const QString &currentFolder, const QStringList &listed)
{
    RunPlan plan;
    QSet<QString> seen;
    plan.outputFolder = absolutePath(arguments.outputFolder, currentFolder);
    for (const QString &name : arguments.files + listed) {
        const QString path = absolutePath(name, currentFolder);
        const QString refusal =
            name.isEmpty() ? QStringLiteral("an empty file name") : refusalOf(path);
        if (!refusal.isEmpty()) {
            plan.refusedFiles.append({path, refusal, plan.files.size()});
        } else if (seen.contains(path)) {
            plan.warnings.append(path + QStringLiteral(": listed twice, but split only once"));
        } else {
            seen.insert(path);
            plan.files.append(path);
        }
    }
    if (!arguments.flat) {
        plan.warnings += sharedFolderWarnings(plan.files, plan.outputFolder);
    }
    return plan;
}

QString prepareOutputFolder(const QString &folder, bool create, bool dryRun)
{
    const QFileInfo info(folder);
    if (info.exists() && !info.isDir()) {
        return folder + QStringLiteral(": the output folder is a file");
    }
    if (!info.exists() && !create) {
        return folder + QStringLiteral(": there is no such output folder (--create makes it)");
    }
    if (!info.exists() && dryRun) {
        return {};
    }
    if (!info.exists() && !QDir().mkpath(folder)) {
        return folder + QStringLiteral(": the output folder could not be created");
    }
    if (!QFileInfo(folder).isWritable()) {
        return folder + QStringLiteral(": you have no permission to write to the output folder");
    }
    return {};
}

} // namespace quorlin::batch
