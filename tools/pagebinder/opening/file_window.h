#pragma once

#include "tools/common/input_file.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace tools {

/// Reads a file at any place through one buffer. Bytes are read when they are asked for, never
/// mapped, so a file that shrinks meanwhile only ends early.
class FileWindow
{
public:
    /// @param input must outlive the window
    explicit FileWindow(const InputFile &input) : m_input(input) {}

    int descriptor() const noexcept { return m_input.descriptor(); }
    /// Bytes in the file when it was opened.
    std::int64_t size() const noexcept { return m_input.size(); }

    /// The bytes of the file from @p offset on: @p wanted of them (at most 65,536), fewer at the
    /// end of the file, none on an error. Valid until the next call.
    struct Bytes
    {
        const char *begin = nullptr;
        const char *end = nullptr;
    };
    Bytes at(std::int64_t offset, std::size_t wanted);

private:
    const InputFile &m_input;
    std::int64_t m_offset = 0; ///< of the buffer's first byte
    std::size_t m_held = 0;    ///< bytes in the buffer
    std::unique_ptr<char[]> m_buffer;
};

} // namespace tools
