#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

namespace tools {

/// The folder that an export writes into, and the names of its files. Files are always
/// created new and readable by their owner only, and no symbolic link is ever followed: others may
/// write to the folder.
/// All failures throw ToolError.
class OutputFolder
{
public:
    /// @param indexPath path of the index file; its name without the last ending names all files
    explicit OutputFolder(const std::string &indexPath);
    ~OutputFolder();
    OutputFolder(const OutputFolder &) = delete;
    OutputFolder &operator=(const OutputFolder &) = delete;

    /// Removes index, page files and pictures of an earlier export of this name, and nothing else.
    /// @param protectedPath a file that must not be removed whatever its name (the input)
    void removeEarlierExport(const std::string &protectedPath);
    /// The same, for the export that is being given up: what cannot be removed is left.
    void removeThisExport() noexcept;

    /// Name of the page file of the @p number-th exported page: "NAME_pg_0001.htm".
    std::string pageName(int number) const { return numberedName(number, ".htm"); }
    std::string pictureName(int number) const { return numberedName(number, ".png"); }

    /// Writes one file at once. May be called from several threads.
    void write(const std::string &name, std::string_view content) const;
    /// Writes the index under a name of its own.
    void prepareIndex(std::string_view content) const;
    /// Gives the index its name: the export is complete.
    void publishIndex() const;

private:
    enum class Kind { other, page, index };

    std::string numberedName(int number, const char *ending) const;
    std::string pathOf(const std::string &name) const;
    Kind kindOf(std::string_view name) const;
    void removeMatching(dev_t device, ino_t inode, bool throws);

    std::string m_folder;
    std::string m_indexName;
    std::string m_partName;
    std::string m_base;
    int m_descriptor = -1;
};

} // namespace tools
