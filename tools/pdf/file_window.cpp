#include "tools/pdf/file_window.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace tools {

namespace {

constexpr std::size_t smallestStep = 4096;

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
    wanted = std::min(wanted, largest);
    if (offset < m_offset || offset + static_cast<std::int64_t>(wanted) > heldEnd()) {
        read(offset, largest);
    }
    const Bytes held = heldFrom(offset);
    return {held.begin,
            held.begin + std::min(wanted, static_cast<std::size_t>(held.end - held.begin))};
}

FileWindow::Bytes FileWindow::onwards(std::int64_t offset)
{
    if (offset < 0 || offset >= size()) {
        return {};
    }
    if (offset < m_offset || offset >= heldEnd()) {
        const bool isNear =
            offset >= heldEnd() && offset - heldEnd() < static_cast<std::int64_t>(m_step);
        m_step = isNear ? std::min(largest, 2 * m_step) : smallestStep;
        read(offset, m_step);
    }
    return heldFrom(offset);
}

void FileWindow::read(std::int64_t offset, std::size_t length)
{
    if (!m_buffer) {
        m_buffer.reset(new char[largest]); // not filled with zeros first
    }
    m_offset = offset;
    m_held = readAt(descriptor(), m_buffer.get(), length, offset);
}

FileWindow::Bytes FileWindow::heldFrom(std::int64_t offset) const noexcept
{
    return {m_buffer.get() + (offset - m_offset), m_buffer.get() + m_held};
}

} // namespace tools
