#pragma once

#include "tools/common/input_file.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace tools {

/// Reads a file at any place through one buffer. Bytes are read when they are asked for, never
/// mapped, so a file that shrinks meanwhile only ends early.
class FileWindow
{
public:
    static constexpr std::size_t largest = 65536; ///< bytes that can be had at once

    /// @param input must outlive the window
    explicit FileWindow(const InputFile &input) : m_input(input) {}

    int descriptor() const noexcept { return m_input.descriptor(); }
    /// Bytes in the file when it was opened.
    std::int64_t size() const noexcept { return m_input.size(); }

    /// The bytes of the file from @p offset on: @p wanted of them (at most "largest"), fewer at the
    /// end of the file, none on an error. Valid until the next call.
    struct Bytes
    {
        const char *begin = nullptr;
        const char *end = nullptr;

        std::string_view text() const noexcept
        {
            return {begin, static_cast<std::size_t>(end - begin)};
        }
    };
    Bytes at(std::int64_t offset, std::size_t wanted);

    /// At least one byte from @p offset on, as many as are at hand; none at the end of the file and
    /// on an error. Who goes from place to place reads little, who reads on gets more and more.
    Bytes onwards(std::int64_t offset);

private:
    void read(std::int64_t offset, std::size_t length);
    std::int64_t heldEnd() const noexcept { return m_offset + static_cast<std::int64_t>(m_held); }
    Bytes heldFrom(std::int64_t offset) const noexcept;

    const InputFile &m_input;
    std::int64_t m_offset = 0; ///< of the buffer's first byte
    std::size_t m_held = 0;    ///< bytes in the buffer
    std::size_t m_step = 0;    ///< bytes that the last reading onwards has asked for
    std::unique_ptr<char[]> m_buffer;
};

} // namespace tools
