#pragma once

#include <QString>
#include <QtGlobal>

class QMessageLogContext;

namespace quorlin {

/// @p message as it stands in the log: "Debug: ", "Warning: ", "Critical: " or "Fatal: " in front
/// of it. Information messages count as debug messages.
QString formattedMessage(QtMsgType type, const QString &message);

} // namespace quorlin

/// Receives every message of the process, Qt's own included, and appends it to the log as one line.
/// The file is opened for each message, so it can be read or taken away at any time; a message
/// that cannot be written is dropped. A fatal message ends the process and leaves no line.
void customMessageHandler(QtMsgType type, const QMessageLogContext &context,
                          const QString &message);
