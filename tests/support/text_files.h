#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace quorlin::test {

/// The file @p path as it stands; empty when it cannot be read.
QByteArray readFile(const QString &path);

/// Lines of the text file @p path without line feeds; empty when it cannot be read.
QStringList linesOf(const QString &path);

/// Writes @p text into the file @p path, replacing what it held.
void writeFile(const QString &path, const QByteArray &text);

} // namespace quorlin::test
