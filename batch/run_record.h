#pragma once

#include "batch/file_identity.h"
#include "batch/file_record.h"
#include "batch/progress_line.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <utility>

namespace quorlin::batch {

/// How a run looks at the disk; tests hand in functions of their own.
struct DiskView
{
    std::function<FileIdentity(const QString &path)> identify;
    /// Whether the export of the file that is being split ended well.
    std::function<bool()> exportIsWhole;
};

/// What the caller has to do after a progress line.
enum class Step {
    None,
    Split,      ///< every file was counted: start the split
    FileBegins, ///< the export of the next file is about to start
    SkipFile,   ///< the export failed: let no output be made of what is not there
    RunDone
};

/// Device and inode of an output.
using OutputKey = std::pair<quint64, quint64>;

/// Follows a run by its progress lines and keeps, for every file, what became of it. It decides,
/// and touches nothing: the disk is seen through DiskView.
class RunRecord
{
public:
    RunRecord(const QStringList &files, DiskView diskView);

    /// Takes the next progress line.
    Step take(const QString &line);

    /// Notes the page counts as the file list shows them, one a file, after counting.
    void setPageCounts(const QStringList &counts);
    /// Files that have pages: the rows that stay in the file list, as indices into files().
    QList<qsizetype> countedFiles() const;
    /// Notes the results of the rows that stayed, in their order.
    void setResults(const QStringList &results);

    /// Notes lines that a tool wrote on its error stream, for the file that is worked on.
    void addToolMessages(const QString &text);
    /// Notes that a tool of the file that is worked on was ended for standing still.
    void noteStall();

    const QList<FileRecord> &files() const { return records; }
    /// The file that is worked on; nothing before the first and after the last.
    const FileRecord *currentFile() const;
    /// Position of the current file among all that are split (or counted), from 1.
    qsizetype currentNumber() const { return turn + 1; }
    qsizetype turnCount() const;
    const ProgressLine &lastLine() const { return last; }

private:
    FileRecord *current();
    QString nextFile() const;
    Step startFile();
    Step readPage();
    void beginOutput(const QString &path);
    void endOutput();
    void endFile();

    DiskView disk;
    QList<FileRecord> records;
    QList<qsizetype> splitOrder;
    bool splitting = false;
    qsizetype turn = 0; ///< while counting: the file; while splitting: position in splitOrder
    bool fileOpen = false;
    QString outputPath;
    FileIdentity outputBefore;
    /// Outputs made so far and the files they belong to, to see one being replaced.
    QHash<OutputKey, qsizetype> madeOutputs;
    ProgressLine last;
};

} // namespace quorlin::batch
