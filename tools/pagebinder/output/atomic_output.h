#pragma once

#include "tools/pagebinder/output/output.h"

#include <string>

namespace tools {

/// A file that appears under its name whole or not at all: it is written under a hidden name of its
/// own in the same folder and takes its name when it is complete. Until then a file of that name
/// stays what it was. The hidden file goes when anything fails, and on the signals that
/// removeHiddenFileOnSignals() watches.
class AtomicOutput : public Output
{
public:
    /// @throws ToolError when the folder does not take the file or something that is no file has
    ///     the name already
    explicit AtomicOutput(std::string path);
    ~AtomicOutput() override;

    void complete() override;
    void publish() override;

private:
    void store(const char *data, std::size_t size) override;
    void clear() override;
    void open(const std::string &folder);
    void discard() noexcept;
    void fail(int reason);

    std::string m_hidden; ///< empty once there is no hidden file any longer
    int m_descriptor = -1;
};

/// Refuses a path whose file must never be replaced: folders, devices, pipes, and links that lead
/// to one or to an open file of a process, as /dev/stdout does.
/// @throws ToolError
void refuseSpecialFile(const std::string &path);

/// Whether both paths name the same existing file, through links or not.
bool isSameFile(const std::string &first, const std::string &second);

/// Removes @p path when it is a regular file or a link; whatever else has the name stays.
void removeFile(const std::string &path);

/// The folder in front of @p path's last part, "." when there is none.
std::string folderOf(const std::string &path);

/// The last part of @p path.
std::string nameOf(const std::string &path);

} // namespace tools
