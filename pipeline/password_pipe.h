#pragma once

#include <QByteArray>

namespace quorlin {

/// Most bytes of passwords that a tool can be given: less than any pipe holds unread.
inline constexpr qsizetype mostPasswordBytes = 4096;

/// A pipe that holds passwords for one child process. Only a child that is told to keep the
/// descriptor can read it.
class PasswordPipe
{
public:
    PasswordPipe() = default;
    ~PasswordPipe() { close(); }
    PasswordPipe(const PasswordPipe &) = delete;
    PasswordPipe &operator=(const PasswordPipe &) = delete;

    /// Opens the pipe with @p passwords in it; false when there is none to be had, or they are
    /// longer than mostPasswordBytes.
    bool open(const QByteArray &passwords);
    /// Forgets the pipe; a child that was started keeps its own end.
    void close();

    /// The end to read from, -1 where the pipe is not open.
    int descriptor() const { return readEnd; }
    /// To be called in the child before its program begins: the program keeps the descriptor.
    static void keepInChild(int descriptor);

private:
    int readEnd = -1;
};

} // namespace quorlin
