#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace quorlin::batch {

/// The file names in @p list: one a line, or each ended by a NUL. Empty names are left out, and so
/// is the carriage return at the end of a line.
QStringList namesIn(const QByteArray &list, bool hasNul);

/// What stands in a file that is given on the command line, or what is wrong with it.
struct FileContent
{
    QByteArray bytes;
    QString fault;
};

/// Reads @p path to its end, standard input for "-".
FileContent readWhole(const QString &path);

/// The passwords in @p file, a line each, ended by line feeds; a fault where they cannot be read or
/// are too many for a tool.
FileContent readPasswordFile(const QString &file);

} // namespace quorlin::batch
