#pragma once

namespace quorlin {

/// Sends every message of the process to the log. Called before the application object is made, so
/// that not even its first warning goes elsewhere.
void installMessageLog();

/// Fixes what every relative name and plug-in depends on, once the application object stands and
/// before any window or settings object: Qt's plug-ins are searched only in the folder "Plugins"
/// beside the application folder, the application folder becomes the current one, and the log
/// starts empty, with the line that names that folder.
void prepareApplication();

} // namespace quorlin
