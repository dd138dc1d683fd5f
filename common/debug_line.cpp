#include "common/debug_line.h"

#include <QDebug>

namespace quorlin {

QString quoted(const QString &text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

void debugLine(std::initializer_list<QString> pieces)
{
    QString line;
    for (const QString &piece : pieces) {
        line += piece + QLatin1Char(' ');
    }
    qDebug().noquote().nospace() << line;
}

} // namespace quorlin
