#include "tests/support/text_files.h"

#include <QFile>

namespace quorlin::test {

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList linesOf(const QString &path)
{
    QStringList lines = QString::fromUtf8(readFile(path)).split(QLatin1Char('\n'));
    if (lines.last().isEmpty()) {
        lines.removeLast();
    }
    return lines;
}

void writeFile(const QString &path, const QByteArray &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(text) != text.size()) {
        qFatal("%s cannot be written", qPrintable(path));
    }
}

} // namespace quorlin::test
