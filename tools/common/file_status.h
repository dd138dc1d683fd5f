#pragma once

struct stat;

namespace tools {

/// What fstat() tells about an open file. The C library asks by a call that could look at any path
/// and is therefore refused in the sandbox. @returns 0, or -1 with errno set
int lookAtOpen(int descriptor, struct stat &status);

/// What stat() tells about @p path, following links; @p path must be sealed text once the sandbox
/// is entered. @returns 0, or -1 with errno set
int lookAt(const char *path, struct stat &status);

} // namespace tools
