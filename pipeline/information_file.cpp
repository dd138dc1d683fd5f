#include "pipeline/information_file.h"

namespace quorlin {

QString pageCountDigits(const QString &information)
{
    const QString key = QStringLiteral("NumberOfPages: ");
    QString digits;
    for (qsizetype i = information.indexOf(key) + key.size();
         i < information.size() && information.at(i).isDigit(); ++i) {
        digits += information.at(i);
    }
    return digits;
}

} // namespace quorlin
