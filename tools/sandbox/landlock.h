#pragma once

#include <string>
#include <vector>

namespace tools {

/// Lets this process use files that are open already and, in @p folders, create, write and remove
/// regular files; nothing else in any file system, and, where the kernel knows how, no network and
/// no signal to other processes. Needs "no new privileges".
/// @param version receives the version of Landlock that the kernel has, 0 for none
/// @returns empty when it is in force, otherwise why not
std::string confineToFolders(const std::vector<int> &folders, int &version);

} // namespace tools
