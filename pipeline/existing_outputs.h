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

/// Marks the planned outputs that are skipped under @p policy.
/// @param exists whether something lies at a path
/// @returns why the file is not split; empty when it is
QString applyExistingPolicy(QList<OutputResult> &outputs, ExistingOutputs policy,
                            const std::function<bool(const QString &path)> &exists);

/// Whether something lies at @p path, be it a link that leads nowhere.
bool isOutputThere(const QString &path);

/// How many PDF files lie in @p folder that are none of @p outputs: those of earlier runs.
qsizetype countOtherOutputs(const QString &folder, const QList<OutputResult> &outputs);

} // namespace quorlin
