#pragma once

#include <string>

namespace tools {

/// Refuses a path whose file must never be replaced: folders, devices, pipes, and links that lead
/// to one or to an open file of a process, as /dev/stdout does.
/// @throws ToolError
void refuseSpecialFile(const std::string &path);

/// Whether both paths name the same existing file, through links or not.
bool isSameFile(const std::string &first, const std::string &second);

/// The folder in front of @p path's last part, "." when there is none.
std::string folderOf(const std::string &path);

/// The last part of @p path.
std::string nameOf(const std::string &path);

} // namespace tools
