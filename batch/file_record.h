#pragma once

#include <QString>
#include <QStringList>

namespace quorlin::batch {

/// What became of one input file, gathered while it was worked on.
struct FileRecord
{
    /// Absolute path, as it stands in the file list.
    QString path;
    /// Why the file was not even tried; empty when it was.
    QString refusal;
    /// The page count as the list shows it; empty when the file could not be counted.
    QString pageCount;
    /// Whether the export of its pages was there, and whole, when the first page was read.
    bool exported = false;
    /// Outputs begun.
    qsizetype outputs = 0;
    /// Outputs that were not there, or still the old ones, when the next step began.
    QStringList missingOutputs;
    /// Outputs that a later file of the same name replaced.
    QStringList replacedOutputs;
    /// What the tools said about this file, one line each.
    QStringList toolMessages;
    /// Whether a tool had to be ended because it made no progress.
    bool stalled = false;
    /// Whether the run went through this file to its end.
    bool finished = false;
    /// The result that the file list shows.
    QString windowResult;
};

/// Whether a file was split, and why not.
struct Verdict
{
    bool succeeded = false;
    QString reason;
};

/// Judges a file by its record: it succeeded when every page was read, every output is there and
/// new, and the file list says so too.
Verdict judge(const FileRecord &record);

/// How many warnings about single pages the export gave: pages whose text may be missing, so that
/// they lie in the output of the page before them.
qsizetype pageWarnings(const FileRecord &record);

/// The reason in a tool's message "TOOL: FILE: REASON"; the whole message when it is built
/// otherwise.
QString messageReason(const QString &message, const QString &file);

} // namespace quorlin::batch
