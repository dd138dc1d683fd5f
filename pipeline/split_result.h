#pragma once

#include "pipeline/input_identity.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace quorlin {

/// One output document of a file, first as it is planned and then as it was written.
struct OutputResult
{
    enum class State {
        Planned,
        Written,
        StandIns, ///< written, but pages that could not be read have stand-ins in it
        Failed,
        Skipped ///< left as it was there before
    };

    qsizetype number = 0; ///< counted from 1
    QString text;         ///< the text that names it, plain; noTextMarker() where it has none
    QString range;        ///< its pages: "7", "3-6", "1-2 5-6 9"
    QString path;         ///< as planned; as written once it is, which is shorter for a long name
    State state = State::Planned;
    qint64 bytes = 0;
    QString standInPages; ///< pages with a stand-in, separated by blanks
    QString reason;       ///< why it failed
    /// What lay at its path when the file's turn ended.
    std::optional<FileIdentity> identity;
};

/// What became of one file, gathered while it was worked on.
struct SplitFacts
{
    /// What stood in the way: a fault of the input, a tool or the output folder. Empty when all
    /// steps were gone through.
    QString fault;
    /// Whether the run was asked to end before the file was done.
    bool cancelled = false;
    /// Whether a tool was ended because it made no progress.
    bool stalled = false;
    /// Whether the input changed while it was split; its outputs have been removed.
    bool inputChanged = false;
    int pages = 0;
    /// Pages whose text was read, so far.
    int pagesRead = 0;
    qsizetype pagesWithoutText = 0;
    /// How many of them were left out because the run says so.
    qsizetype droppedPages = 0;
    /// Pages of which a part could not be read, but on which the text was found.
    qsizetype pageWarnings = 0;
    QList<int> unreadablePages;
    QList<int> doubtfulPages;
    QList<OutputResult> outputs;
    /// Outputs that a later file of the run replaced by its own.
    QStringList replacedOutputs;
    /// Outputs that were skipped for those that an earlier file of the run wrote.
    QStringList takenOutputs;
    /// Outputs that got a number because others had the same name.
    qsizetype numberedOutputs = 0;
    /// PDF files of earlier runs in the folder of this file's outputs.
    qsizetype otherOutputs = 0;
};

/// Whether a file was split, and why not.
struct Verdict
{
    bool succeeded = false;
    QString reason;
};

/// What became of one file of a run.
struct SplitResult
{
    QString path;
    SplitFacts facts;
    Verdict verdict;
};

} // namespace quorlin
