#pragma once

#include <string>

namespace tools {

/// From now on every signal that ends the program does so only after the hidden file of an
/// unfinished output is removed, crashes included. SIGXFSZ becomes an ordinary write error.
/// A stack that overflows, because a file nests its objects without end, ends the program with exit
/// status 1 and one line on stderr that names @p input.
void removeHiddenFileOnSignals(const std::string &input);

/// The file to remove: @p name in the open folder @p folder. Both must stay as they are until the
/// file is forgotten.
void watchHiddenFile(int folder, const char *name);

void forgetHiddenFile();

} // namespace tools
