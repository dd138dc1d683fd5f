#pragma once

#include <QString>

namespace quorlin::batch {

/// The reason why a file failed with, in brackets behind it, what a person can do about it, where
/// that is known and the reason does not say so already.
QString advisedReason(const QString &reason);

} // namespace quorlin::batch
