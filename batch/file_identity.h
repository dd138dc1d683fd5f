#pragma once

#include <QString>
#include <QtGlobal>

namespace quorlin::batch {

/// What tells one state of a file from another. A file that was replaced or rewritten differs in
/// at least one member; one that was left alone does not.
struct FileIdentity
{
    bool exists = false;
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = 0;
    /// Time of the last change of the file's data, milliseconds since 1970.
    qint64 modified = 0;

    friend bool operator==(const FileIdentity &, const FileIdentity &) = default;
};

/// The identity of the regular file @p path; one that does not exist when there is none.
FileIdentity identifyFile(const QString &path);

} // namespace quorlin::batch
