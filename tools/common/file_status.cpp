#include "tools/common/file_status.h"

#include <fcntl.h>
#include <sys/stat.h>

#if defined(__linux__) && (defined(__x86_64__) || defined(__aarch64__))
#include <sys/syscall.h>
#include <unistd.h>
#endif

namespace tools {

int lookAtOpen(int descriptor, struct stat &status)
{
#if defined(__linux__) && (defined(__x86_64__) || defined(__aarch64__))
    return static_cast<int>(syscall(SYS_fstat, descriptor, &status));
#else
    return fstat(descriptor, &status);
#endif
}

int lookAt(const char *path, struct stat &status)
{
#if defined(__linux__) && (defined(__x86_64__) || defined(__aarch64__))
    return static_cast<int>(syscall(SYS_newfstatat, AT_FDCWD, path, &status, 0));
#else
    return stat(path, &status);
#endif
}

} // namespace tools
