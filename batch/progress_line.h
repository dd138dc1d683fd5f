#pragma once

#include <QString>

namespace quorlin::batch {

/// What a line of the progress pane says.
enum class LineKind {
    Loaded,       ///< the pages of a file were counted (or could not be)
    CountingDone, ///< every file was counted
    RunStarts,
    FileStarts, ///< the line is the path of the next file
    PageRead,   ///< a page is about to be read
    Output,     ///< an output is about to be written
    RunDone,
    Other
};

/// A line of the progress pane, read.
struct ProgressLine
{
    LineKind kind = LineKind::Other;
    /// Path that the line names, where it names one.
    QString path;
    /// Number of the page, where the line names one.
    int page = 0;
};

/// Reads @p line. @p nextFile is the path of the file whose turn is next: only that text announces
/// a file.
ProgressLine readProgressLine(const QString &line, const QString &nextFile);

/// The one line shown on a terminal while a file is worked on: "[2/3] name: what", control
/// characters as "?", the name cut where the line would exceed @p columns characters.
QString liveText(qsizetype number, qsizetype count, const QString &name, const QString &what,
                 int columns);

/// @p text with every control character shown as "?", so that no file name can steer a terminal.
QString printable(const QString &text);

} // namespace quorlin::batch
