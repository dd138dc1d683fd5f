#pragma once

#include <QString>

namespace quorlin {

/// A tool tip that shows @p text as it stands: Qt would take a path with "<" in it for rich text.
QString plainTip(const QString &text);

} // namespace quorlin
