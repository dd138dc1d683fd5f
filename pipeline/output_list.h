#pragma once

#include "analysis/grouping.h"
#include "pipeline/split_result.h"
#include "pipeline/split_settings.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>

#include <optional>

namespace quorlin {

/// The outputs for @p groups of the file @p inputPath under the names that the window gives them.
/// @param outputFolder folder chosen by the user
/// @param method index of the split method, 0 to 2
QList<OutputResult> planOutputs(const PageGroups &groups, const QString &inputPath,
                                const QString &outputFolder, int method);

/// Gives the planned @p outputs other names than the window's: those of the pattern, and all in the
/// output folder, as @p settings say. Without either, nothing happens.
/// @param names that the folder of the outputs has given away so far
/// @returns how many outputs got a number because others had the same name
qsizetype nameOutputs(QList<OutputResult> &outputs, const QString &inputPath,
                      const SplitSettings &settings, UniqueNames &names);

// "pagebinder -split -" takes an entry for each output, "RANGES<tab>PATH<NUL>", and answers each
// with a line as it is done, tabs between the fields:
//   done <index> <bytes> <path>
//   standin <index> <bytes> <pages> <path>
//   failed <index> <reason>
// with the entry's position counted from 1 and the path that was written, "\xHH" and "\\" standing
// for control characters and backslashes in it. A line "changed" says that the input changed.

/// The entry for @p output.
QByteArray listEntry(const OutputResult &output);

/// An answer of the tool.
struct OutputReport
{
    bool inputChanged = false;
    /// Position of the entry, counted from 0.
    qsizetype index = -1;
    OutputResult::State state = OutputResult::State::Planned;
    qint64 bytes = 0;
    QString standInPages;
    QString path;
    QString reason;
};

/// Reads an answer; nothing when it is not built as it should be.
std::optional<OutputReport> readOutputReport(QByteArrayView line);

/// Notes the answer in the output it is about.
void applyReport(const OutputReport &report, OutputResult &output);

} // namespace quorlin
