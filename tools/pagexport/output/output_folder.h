#pragma once

#include "tools/common/input_file.h"
#include "tools/pagexport/output/export_names.h"

#include <sys/types.h>

#include <optional>
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
    /// Fixes the names of all files to come, for the sandbox, and has them removed should a signal
    /// end the program before publishIndex(). To be called before any file is written.
    /// @param pages how many there can be at most
    void fixNames(int pages, bool hasPictures, InputFile &input);
    /// Removes what was written since; what cannot be removed is left.
    void removeThisExport() noexcept;

    /// The names, once they are fixed.
    const ExportNames &names() const { return *m_names; }
    int descriptor() const noexcept { return m_descriptor; }

    /// Writes the file of the @p number-th exported page at once. May be called from several
    /// threads.
    void writePage(int number, std::string_view content) const;
    void writePicture(int number, std::string_view content) const;
    /// Writes the index under a name of its own.
    void prepareIndex(std::string_view content) const;
    /// Gives the index its name: the export is complete.
    void publishIndex() const;

private:
    enum class Kind { other, page, index };

    void write(int number, const char *name, std::string_view content) const;
    std::string pathOf(const std::string &name) const;
    Kind kindOf(std::string_view name) const;
    void removeMatching(dev_t device, ino_t inode);

    std::string m_folder;
    std::string m_indexName;
    std::string m_partName;
    std::string m_base;
    int m_descriptor = -1;
    std::optional<ExportNames> m_names;
};

} // namespace tools
