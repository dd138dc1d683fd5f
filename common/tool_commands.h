#pragma once

#include <QString>

namespace quorlin {

// Command lines of the two tools, each one string in which the program and every file path stand in
// double quotes and single blanks separate the pieces. A double quote inside a path ends the
// quoting early; the tool then gets other arguments and fails, which is accepted.

/// Page count of @p pdf, written by the tool into @p informationFile.
QString pageCountCommand(const QString &applicationFolder, const QString &pdf,
                         const QString &informationFile);

/// Text of every page of @p pdf, exported beside @p outputFile.
QString splitExportCommand(const QString &applicationFolder, const QString &pdf,
                           const QString &outputFile);

/// Text and picture of page @p page (counted from 1) of @p pdf, exported beside @p outputFile.
/// Page 0 leaves the page bounds out.
QString pageExportCommand(const QString &applicationFolder, const QString &pdf, int page,
                          const QString &outputFile);

/// Merge of the pages @p ranges ("1-2 4 7-9") of @p pdf into @p outputFile. The ranges stand
/// unquoted, so that each piece is an argument of its own.
QString mergeCommand(const QString &applicationFolder, const QString &pdf, const QString &ranges,
                     const QString &outputFile);

} // namespace quorlin
