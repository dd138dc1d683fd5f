#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace tools {

/// A new file while it is written. It is published at the end, whole, or nothing of it is ever
/// seen.
class Output
{
public:
    explicit Output(std::string path) : m_path(std::move(path)) {}
    virtual ~Output() = default;
    Output(const Output &) = delete;
    Output &operator=(const Output &) = delete;

    /// @throws ToolError when the disk is full or the file grows over its limit
    void write(const char *data, std::size_t size)
    {
        m_size += size;
        store(data, size);
    }

    /// Forgets what was written, to begin again.
    void restart()
    {
        m_size = 0;
        clear();
    }

    /// The last byte is written; all that can fail slowly fails here. @throws ToolError
    virtual void complete() = 0;
    /// Puts the output where it belongs, after complete(). @throws ToolError, and nothing is left
    virtual void publish() = 0;

    const std::string &path() const noexcept { return m_path; }
    /// Bytes written.
    std::uint64_t size() const noexcept { return m_size; }

private:
    virtual void store(const char *data, std::size_t size) = 0;
    virtual void clear() = 0;

    std::string m_path;
    std::uint64_t m_size = 0;
};

/// Stands for standard output where the name of an output is asked for.
constexpr const char *standardOutputName = "-";

struct OutputPlace;

/// Opens the output at @p place, which must outlive it. @throws ToolError when that cannot be
std::unique_ptr<Output> openOutput(const OutputPlace &place);

} // namespace tools
