#include "pipeline/password_pipe.h"

#include <array>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace quorlin {

bool PasswordPipe::open(const QByteArray &passwords)
{
    close();
    std::array<int, 2> ends{};
    if (passwords.size() > mostPasswordBytes || pipe(ends.data()) != 0) {
        return false;
    }
    for (const int end : ends) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
    }
    // So little fits in, however busy the machine is: nobody has to read meanwhile.
    const bool isWritten = ::write(ends[1], passwords.constData(),
                                   static_cast<size_t>(passwords.size())) == passwords.size();
    ::close(ends[1]);
    readEnd = ends[0];
    if (!isWritten) {
        close();
    }
    return isWritten;
}

void PasswordPipe::close()
{
    if (readEnd >= 0) {
        ::close(std::exchange(readEnd, -1));
    }
}

void PasswordPipe::keepInChild(int descriptor)
{
    fcntl(descriptor, F_SETFD, 0);
}

} // namespace quorlin
