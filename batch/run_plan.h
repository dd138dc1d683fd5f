#pragma once

#include "batch/arguments.h"

#include <QString>
#include <QStringList>

namespace quorlin::batch {

/// A file that is not even tried.
struct RefusedFile
{
    QString path;
    QString reason;
    /// How many files that are tried stand before it on the command line.
    qsizetype filesBefore = 0;
};

/// Everything a run needs to know, all paths absolute.
struct RunPlan
{
    QStringList files;
    QList<RefusedFile> refusedFiles;
    QString outputFolder;
    /// What the caller should hear before the run.
    QStringList warnings;
};

/// @p path made absolute against @p currentFolder, "." and ".." taken out.
QString absolutePath(const QString &path, const QString &currentFolder);

/// Why @p path cannot be split, by what the file system says of it; empty when it can be tried.
QString refusalOf(const QString &path);

/// One warning for every output folder that several of @p files would share.
QStringList sharedFolderWarnings(const QStringList &files, const QString &outputFolder);

/// Sorts the files of @p arguments into those to split and those to refuse. A file named twice is
/// split once.
/// @param listed files named elsewhere than on the command line, behind those
RunPlan planRun(const Arguments &arguments, const QString &currentFolder,
                const QStringList &listed = {});

/// Sees to the output folder: it must be a folder, and is made where @p create says so. Gives what
/// is wrong with it, or an empty text. A dry run makes nothing.
QString prepareOutputFolder(const QString &folder, bool create, bool dryRun = false);

} // namespace quorlin::batch
