#pragma once

#include <cstddef>
#include <string>

namespace tools {

/// A file that appears under its name whole or not at all: it is written under a hidden name of its
/// own in the same folder and takes its name when it is complete. Until then a file of that name
/// stays what it was. The hidden file goes when anything fails, and on the signals that
/// removeHiddenFileOnSignals() watches.
class AtomicOutput
{
public:
    /// @throws ToolError when the folder does not take the file or something that is no file has
    ///     the name already
    explicit AtomicOutput(std::string path);
    ~AtomicOutput();
    AtomicOutput(const AtomicOutput &) = delete;
    AtomicOutput &operator=(const AtomicOutput &) = delete;

    /// @throws ToolError when the disk is full or the file grows over its limit
    void write(const char *data, std::size_t size);

    /// Empties the hidden file, to begin again.
    void restart();

    /// Gives the file its name. @throws ToolError, and nothing is left
    void commit();

    const std::string &path() const noexcept { return m_path; }

private:
    void open(const std::string &folder);
    void discard() noexcept;

    std::string m_path;
    std::string m_hidden;
    int m_descriptor = -1;
};

/// Whether both paths name the same existing file, through links or not.
bool isSameFile(const std::string &first, const std::string &second);

/// Removes @p path when it is a regular file or a link; whatever else has the name stays.
void removeFile(const std::string &path);

/// The folder in front of @p path's last part, "." when there is none.
std::string folderOf(const std::string &path);

/// The last part of @p path.
std::string nameOf(const std::string &path);

} // namespace tools
