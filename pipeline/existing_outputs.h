#pragma once

#include "pipeline/split_result.h"

#include <QList>
#include <QString>

#include <functional>

namespace quorlin {

/// What becomes of outputs that are there before the file's turn.
enum class ExistingOutputs {
    Replace, ///< they are written anew
    Skip,    ///< they are left as they are
    Fail     ///< the file fails, nothing is written for it
};

/// Marks the planned outputs that are skipped under @p policy, and notes where they lie.
/// @param find gives the path under which an output is there; empty when it is not
/// @returns why the file is not split; empty when it is
QString applyExistingPolicy(QList<OutputResult> &outputs, ExistingOutputs policy,
                            const std::function<QString(const QString &path)> &find);

/// Where something lies, be it a link that leads nowhere, in place of the output @p path: at that
/// path, or, where its name is too long for the disk, under the name that pagebinder shortens it
/// to. Empty when nothing does.
/// @param inputPath the file that the output comes from
QString findOutput(const QString &path, const QString &inputPath);

/// How many PDF files lie in @p folder that are none of @p outputs: those of earlier runs.
qsizetype countOtherOutputs(const QString &folder, const QList<OutputResult> &outputs);

} // namespace quorlin
