#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <optional>

namespace quorlin {

/// What tells one state of a file from another. A file that was replaced, rewritten or cut differs
/// in at least one member; one that was left alone does not.
struct FileIdentity
{
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = 0;
    /// Time of the last change of the file's data or attributes since 1970. Unlike the time of
    /// modification, no program can set it.
    qint64 changedSeconds = 0;
    qint32 changedNanoseconds = 0;

    friend bool operator==(const FileIdentity &, const FileIdentity &) = default;
};

/// The identity of the regular file @p path, links followed; nothing when there is none.
std::optional<FileIdentity> identifyFile(const QString &path);

/// Environment variable in which the tools are told the identity of their input. They refuse an
/// input that is another one, before or after their work.
inline constexpr char inputIdentityVariable[] = "QUORLIN_INPUT_IDENTITY";

/// The variable's value: "DEVICE:INODE:SIZE:SECONDS.NANOSECONDS", decimal, the nanoseconds in nine
/// digits.
QByteArray inputIdentityText(const FileIdentity &identity);

} // namespace quorlin
