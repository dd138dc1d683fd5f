#pragma once

#include "tools/pagebinder/output/output.h"
#include "tools/pagebinder/output/output_places.h"

#include <string>

namespace tools {

/// A file that appears under its name whole or not at all: it is written under a hidden name of its
/// own in the same folder and takes its name when it is complete. Until then a file of that name
/// stays what it was. The hidden file goes when anything fails, and on the signals that
/// removeHiddenFileOnSignals() watches.
class AtomicOutput : public Output
{
public:
    /// @param place must outlive the output
    /// @throws ToolError when the folder does not take the file
    explicit AtomicOutput(const OutputPlace &place);
    ~AtomicOutput() override;

    void complete() override;
    void publish() override;

private:
    void store(const char *data, std::size_t size) override;
    void clear() override;
    void discard() noexcept;
    void fail(int reason);

    const OutputPlace &m_place;
    const char *m_hidden = nullptr; ///< null when there is no hidden file
    int m_descriptor = -1;
    int m_lock = -1; ///< keeps the complete file locked
};

/// Removes @p path when it is a regular file or a link; whatever else has the name stays.
void removeFile(const std::string &path);

} // namespace tools
