#pragma once

#include <QString>

namespace quorlin {

/// Folder that the window gives the outputs of @p inputPath: named after it, in @p outputFolder.
QString outputFolderOf(const QString &inputPath, const QString &outputFolder);

/// Most bytes that a file name may have in @p folder, as far as its disk says.
qsizetype nameLimitOf(const QString &folder);

/// Base name of an input: its file name up to the first dot ("report.v2.pdf" gives "report").
QString inputBaseName(const QString &inputPath);

/// Full path of the output for one group.
/// @param outputFolder folder chosen by the user
/// @param inputPath the file being split; its base name is the sub-folder and part of the name
/// @param groupIndex position of the group, counted from 0; names count from 1
/// @param groupText text of the group; every "/" becomes "-", nothing else changes
/// @param pageRange pages of the group; part of the name except with method 2
/// @param method index of the split method, 0 to 2
QString outputPath(const QString &outputFolder, const QString &inputPath, qsizetype groupIndex,
                   const QString &groupText, const QString &pageRange, int method);

} // namespace quorlin
