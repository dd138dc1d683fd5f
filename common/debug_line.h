#pragma once

#include <QString>

namespace quorlin {

/// @p text in plain double quotes, nothing escaped, as log lines show paths and commands.
QString quoted(const QString &text);

/// Sends one debug message made of @p pieces, each followed by one blank. Unlike QDebug it escapes
/// nothing, so that a command in the log can be read and repeated as it was run.
void debugLine(std::initializer_list<QString> pieces);

} // namespace quorlin
