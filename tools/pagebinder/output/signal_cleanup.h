#pragma once

#include <string>

namespace tools {

/// From now on SIGTERM, SIGINT, SIGHUP and SIGXCPU end the program only after the hidden file of an
/// unfinished output is removed, and so does every crash. SIGXFSZ becomes an ordinary write error.
/// A stack that overflows, because a file nests its objects without end, ends the program with exit
/// status 1 and one line on stderr that names @p input.
void removeHiddenFileOnSignals(const std::string &input);

/// The file to remove. @returns false when the path is too long to be kept for a signal
bool watchHiddenFile(const std::string &path);

void forgetHiddenFile();

} // namespace tools
