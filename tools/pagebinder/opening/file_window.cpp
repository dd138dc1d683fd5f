#include "tools/pagebinder/opening/file_window.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace tools {

namespace {

constexpr std::size_t windowSize = 65536;

/// Reads until @p length bytes are there or the file ends. @returns their number
std::size_t readAt(int descriptor, char *target, std::size_t length, std::int64_t offset)
{
    std::size_t done = 0;
    while (done < length) {
        const ssize_t count = pread(descriptor, target + done, length - done,
                                    static_cast<off_t>(offset + static_cast<std::int64_t>(done)));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            break;
        }
        done += static_cast<std::size_t>(count);
    }
    return done;
}

} // namespace

FileWindow::Bytes FileWindow::at(std::int64_t offset, std::size_t wanted)
{
    if (offset < 0 || offset >= size()) {
        return {};
    }
    wanted = std::min(wanted, windowSize);
    const auto end = m_offset + static_cast<std::int64_t>(m_held);
    if (offset < m_offset || offset + static_cast<std::int64_t>(wanted) > end) {
        if (!m_buffer) {
            m_buffer.reset(new char[windowSize]); // not filled with zeros first
        }
        m_offset = offset;
        m_held = readAt(descriptor(), m_buffer.get(), windowSize, offset);
    }
    const auto skipped = static_cast<std::size_t>(offset - m_offset);
    const char *begin = m_buffer.get() + skipped;
    return {begin, begin + std::min(wanted, m_held - skipped)};
}

} // namespace tools
