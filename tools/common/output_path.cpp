#include "tools/common/output_path.h"

#include "tools/common/tool_error.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstdlib>
#include <string_view>

namespace tools {

namespace {

constexpr int longestLinkChain = 40;

/// Whether the link @p path, or one that it leads to, points to an open file of a process. Such a
/// link stands for a stream, even where that happens to be a file just now.
bool leadsToOpenFile(std::string path)
{
    for (int link = 0; link < longestLinkChain; ++link) {
        std::array<char, PATH_MAX> target{};
        const ssize_t length = readlink(path.c_str(), target.data(), target.size());
        if (length <= 0) {
            return false;
        }
        const std::string_view next(target.data(), static_cast<std::size_t>(length));
        path = next.front() == '/' ? std::string() : folderOf(path) + '/';
        path += next;
        std::array<char, PATH_MAX> folder{};
        if (realpath(folderOf(path).c_str(), folder.data()) != nullptr &&
            std::string_view(folder.data()).starts_with("/proc/")) {
            return true;
        }
    }
    return true;
}

} // namespace

void refuseSpecialFile(const std::string &path)
{
    struct stat status
    {
    };
    if (lstat(path.c_str(), &status) != 0) {
        return;
    }
    if (S_ISLNK(status.st_mode)) {
        if (leadsToOpenFile(path)) {
            throw ToolError(path, "leads to an open file; \"-\" names standard output");
        }
        // A link that leads nowhere, or to a file, is replaced.
        if (stat(path.c_str(), &status) != 0) {
            return;
        }
    }
    if (S_ISDIR(status.st_mode)) {
        throw ToolError(path, "is a folder");
    }
    if (!S_ISREG(status.st_mode)) {
        throw ToolError(path, "is not a regular file");
    }
}

bool isSameFile(const std::string &first, const std::string &second)
{
    struct stat one
    {
    };
    struct stat two
    {
    };
    return stat(first.c_str(), &one) == 0 && stat(second.c_str(), &two) == 0 &&
           one.st_dev == two.st_dev && one.st_ino == two.st_ino;
}

std::string folderOf(const std::string &path)
{
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) {
        return ".";
    }
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string nameOf(const std::string &path)
{
    return path.substr(path.rfind('/') + 1);
}

} // namespace tools
