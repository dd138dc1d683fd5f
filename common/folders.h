#pragma once

#include <QString>

namespace quorlin {

/// Folder that holds the two tools and the information file: the executable's own folder, unless
/// setApplicationFolder() named another. Never ends with a slash.
QString applicationFolder();

/// Makes @p folder the application folder of this process, so that runs side by side can each have
/// one of their own. An empty text goes back to the executable's folder.
void setApplicationFolder(const QString &folder);

/// Folder of the exported pages, asked afresh on every use because the environment may change it;
/// "/tmp" when the system names none. Never ends with a slash.
QString temporaryFolder();

/// Per-user data folder of the log. It is never created by the program.
QString dataFolder();

/// The log file in dataFolder().
QString logFilePath();

} // namespace quorlin
