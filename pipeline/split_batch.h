#pragma once

#include "pipeline/split_job.h"
#include "pipeline/split_result.h"
#include "pipeline/split_settings.h"
#include "pipeline/tool_budget.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QSet>
#include <QStringList>

#include <map>

namespace quorlin {

/// Lists, as positions in @p files, of the files that share an output folder with another one, each
/// list in the order of the files. Names that a disk may take for one another count as the same.
QList<QList<qsizetype>> filesSharingFolders(const QStringList &files);

/// Splits a list of files, several side by side, and tells of them in the order of the list,
/// whichever is done first. It keeps a bounded number of results at a time, whatever the length of
/// the list. Files that share an output folder are split one after another, so that the outputs
/// of the later one stand where both have one of the same name, and told of once all are done.
class SplitBatch : public QObject
{
    Q_OBJECT

public:
    /// @param files absolute paths
    /// @param jobs how many tools may run at the same time, at least one
    SplitBatch(QStringList files, SplitSettings settings, int jobs, QObject *parent = nullptr);
    ~SplitBatch() override;

    void start();
    /// Ends the tools. The files that are not done fail; all signals still come.
    void cancel();
    /// Whether the run ended itself because tools hang again and again.
    bool isGivenUp() const { return givenUp; }

    /// The file whose turn it is to be told of, as far as it is known; nothing where it has not
    /// been started.
    const SplitResult *current() const;
    /// Its position in the list.
    qsizetype currentIndex() const { return nextToTell; }

signals:
    // Of one file after another, in the order of the list.
    void fileBegins(qsizetype index);
    void pageRead(qsizetype index, int page);
    void outputReported(qsizetype index, const quorlin::OutputResult &output);
    void fileEnds(qsizetype index, const quorlin::SplitResult &result);
    /// A tool wrote whole lines to its error stream, at any time.
    void toolSaid(qsizetype index, const QByteArray &text);
    void finished();

private:
    void findChains();
    void startMore();
    bool mayStartMore() const;
    void startFile(qsizetype index);
    void endFile(qsizetype index);
    void nameOutputs();
    void noteTakenOutputs(qsizetype index, SplitResult &result);
    qsizetype nextInChain(qsizetype index) const;
    bool isReady(qsizetype index) const;
    void tell();
    void beginTelling(const SplitResult &known);
    void endTelling();
    void failUnstarted();

    QStringList files;
    SplitSettings settings;
    ToolBudget budget;

    QList<QList<qsizetype>> chains;      ///< files that have to be split one after another
    QHash<qsizetype, qsizetype> chainOf; ///< position of each such file's chain
    QHash<qsizetype, QSet<QString>> writtenInChains; ///< paths, where later files may skip them
    UniqueNames names;                               ///< given away in the one folder for all
    qsizetype nextToName = 0;                        ///< next file whose outputs get names there
    qsizetype nextToStart = 0;
    std::map<qsizetype, SplitJob *> running;
    std::map<qsizetype, SplitResult> done; ///< and not told of yet
    qsizetype heldOutputs = 0;             ///< outputs of those
    qsizetype nextToTell = 0;
    bool isTelling = false; ///< whether the file that is next to tell has begun
    int stalls = 0;
    bool givenUp = false;
    bool cancelled = false;
    bool isFinished = false;
};

} // namespace quorlin
