#pragma once

#include <QString>
#include <QStringList>

namespace quorlin {

/// Names of the outputs in @p folder that a pagebinder has not finished. It writes every output
/// under a hidden name first; only a signal that cannot be caught keeps it from taking that away.
QStringList unfinishedOutputs(const QString &folder);

/// Removes the unfinished outputs in @p folder but for those in @p others.
void removeUnfinishedOutputs(const QString &folder, const QStringList &others);

} // namespace quorlin
