#pragma once

#include "tools/pdf/file_window.h"

#include <cstdint>
#include <string_view>

namespace tools {

/// Goes over bytes one after another, those of a file read piece by piece or those of a text.
class ByteCursor
{
public:
    static constexpr int end = -1;

    /// @param text must outlive the cursor
    explicit ByteCursor(std::string_view text) : m_at(text.data()), m_end(m_at + text.size()) {}
    /// From @p offset of a file on; nobody else may use @p file meanwhile.
    ByteCursor(FileWindow &file, std::int64_t offset) : m_file(&file), m_position(offset) {}

    /// The byte that comes next, 0 to 255; "end" behind the last one.
    int peek() { return m_at != m_end || readOn() ? static_cast<unsigned char>(*m_at) : end; }
    /// Leaves the byte behind that peek() has shown.
    void skip() noexcept { ++m_at; }
    int take()
    {
        const int byte = peek();
        m_at += byte == end ? 0 : 1;
        return byte;
    }

    /// Offset of the next byte, in the file or, of a text, from a fixed place that is not its
    /// beginning: good for differences.
    std::int64_t position() const noexcept { return m_position - (m_end - m_at); }

private:
    bool readOn()
    {
        if (m_file == nullptr) {
            return false;
        }
        const FileWindow::Bytes bytes = m_file->onwards(m_position);
        m_at = bytes.begin;
        m_end = bytes.end;
        m_position += m_end - m_at;
        return m_at != m_end;
    }

    FileWindow *m_file = nullptr;
    std::int64_t m_position = 0; ///< of the byte at m_end
    const char *m_at = nullptr;
    const char *m_end = nullptr;
};

} // namespace tools
