#include "tools/pagexport/output/output_folder.h"

#include "tools/common/output_path.h"
#include "tools/common/tool_error.h"
#include "tools/pagexport/output/export_cleanup.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <vector>

namespace tools {

namespace {

constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;

struct CloseFolder
{
    void operator()(DIR *folder) const { closedir(folder); }
};

bool writeAll(int descriptor, std::string_view content)
{
    while (!content.empty()) {
        const ssize_t written = ::write(descriptor, content.data(), content.size());
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            return false;
        }
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

} // namespace

OutputFolder::OutputFolder(const std::string &indexPath)
{
    const std::size_t slash = indexPath.rfind('/');
    m_folder = slash == std::string::npos ? "." : indexPath.substr(0, slash + 1);
    m_indexName = slash == std::string::npos ? indexPath : indexPath.substr(slash + 1);
    m_partName = m_indexName + ".part";
    m_base = baseOfExport(m_indexName);
    if (m_indexName.empty() || m_indexName == "." || m_indexName == "..") {
        throw ToolError(indexPath, "names no file", exitUsageError);
    }
    m_descriptor = open(m_folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (m_descriptor < 0) {
        throw ToolError(m_folder, std::string("cannot be opened: ") + std::strerror(errno));
    }
}

OutputFolder::~OutputFolder()
{
    close(m_descriptor);
}

std::string OutputFolder::pathOf(const std::string &name) const
{
    return m_folder.back() == '/' ? m_folder + name : m_folder + '/' + name;
}

OutputFolder::Kind OutputFolder::kindOf(std::string_view name) const
{
    if (name == m_indexName || name == m_partName) {
        return Kind::index;
    }
    const std::size_t prefix = m_base.size() + numberMark.size();
    if (name.size() < prefix + fewestDigits + 4 || !name.starts_with(m_base) ||
        name.substr(m_base.size(), numberMark.size()) != numberMark) {
        return Kind::other;
    }
    const std::string_view ending = name.substr(name.size() - 4);
    const std::string_view digits = name.substr(prefix, name.size() - prefix - 4);
    const bool isNumber =
        std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; });
    return isNumber && (ending == ".htm" || ending == ".png") ? Kind::page : Kind::other;
}

void OutputFolder::removeEarlierExport(const std::string &protectedPath)
{
    refuseSpecialFile(pathOf(m_indexName));
    struct stat status
    {
    };
    if (stat(protectedPath.c_str(), &status) != 0) {
        status.st_ino = 0;
        status.st_dev = 0;
    }
    removeMatching(status.st_dev, status.st_ino);
}

void OutputFolder::fixNames(int pages, bool hasPictures, InputFile &input)
{
    m_names.emplace(ExportNames::Wanted{m_indexName, pages, hasPictures, input.path()});
    input.setFixedPath(m_names->inputPath());
    removeExportOnSignals(m_descriptor, *m_names);
}

void OutputFolder::removeThisExport() noexcept
{
    if (m_names) {
        removeExport(m_descriptor, *m_names);
        forgetExport();
    }
}

void OutputFolder::removeMatching(dev_t device, ino_t inode)
{
    const int copy = openat(m_descriptor, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const std::unique_ptr<DIR, CloseFolder> folder(copy < 0 ? nullptr : fdopendir(copy));
    if (!folder) {
        if (copy >= 0) {
            close(copy);
        }
        throw ToolError(m_folder, std::string("cannot be read: ") + std::strerror(errno));
    }
    std::vector<std::string> names;
    while (const dirent *entry = readdir(folder.get())) {
        if (kindOf(entry->d_name) != Kind::other) {
            names.emplace_back(entry->d_name);
        }
    }
    for (const std::string &name : names) {
        struct stat status
        {
        };
        if (inode != 0 && fstatat(m_descriptor, name.c_str(), &status, 0) == 0 &&
            status.st_ino == inode && status.st_dev == device) {
            throw ToolError(pathOf(name), "is the input and would be overwritten");
        }
        refuseSpecialFile(pathOf(name));
        if (unlinkat(m_descriptor, name.c_str(), 0) != 0 && errno != ENOENT) {
            throw ToolError(pathOf(name),
                            std::string("is left from an earlier export and cannot be removed: ") +
                                std::strerror(errno));
        }
    }
}

void OutputFolder::writePage(int number, std::string_view content) const
{
    write(number, m_names->page(number), content);
}

void OutputFolder::writePicture(int number, std::string_view content) const
{
    write(number, m_names->picture(number), content);
}

void OutputFolder::write(int number, const char *name, std::string_view content) const
{
    const CreatingFile creating(number);
    const int file =
        openat(m_descriptor, name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, ownerOnly);
    if (file < 0) {
        throw ToolError(pathOf(name), std::string("cannot be created: ") + std::strerror(errno));
    }
    const bool written = writeAll(file, content);
    const int writeError = errno;
    const bool closed = close(file) == 0;
    if (!written || !closed) {
        throw ToolError(pathOf(name), std::string("cannot be written: ") +
                                          std::strerror(written ? errno : writeError));
    }
}

void OutputFolder::prepareIndex(std::string_view content) const
{
    write(0, m_names->unfinishedIndex(), content);
}

void OutputFolder::publishIndex() const
{
    if (renameat(m_descriptor, m_names->unfinishedIndex(), m_descriptor, m_names->index()) != 0) {
        throw ToolError(pathOf(m_indexName),
                        std::string("cannot be created: ") + std::strerror(errno));
    }
    forgetExport();
}

} // namespace tools
