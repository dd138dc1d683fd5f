#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tools {

/// Names for unfinished outputs, the preferred one first: a few that every run of this user tries
/// in turn, so that it finds what a killed one has left, and some that nobody can guess, for
/// folders in which the others are taken.
std::vector<std::string> hiddenNames();

/// Removes from @p folder what killed runs of this user have left under hiddenNames(). Files that a
/// living run is writing are locked and stay, and so do those of other users.
/// @param folder descriptor of the open folder
void removeAbandonedFiles(int folder, const std::vector<std::string> &names);

/// Creates a file for an unfinished output under the first of @p names that is free, locked as long
/// as it is open.
/// @param name receives the one taken
/// @returns its descriptor, or -1 with errno set
int createHiddenFile(int folder, const std::vector<const char *> &names, const char *&name);

} // namespace tools
