#include "batch/shown_text.h"

#include "tools/common/shown_character.h"

#include <algorithm>

namespace quorlin::batch {

QString printable(const QString &text)
{
    QString shown;
    for (const char32_t character : text.toStdU32String()) {
        shown +=
            tools::canBeShown(character) ? QString::fromUcs4(&character, 1) : QStringLiteral("?");
    }
    return shown;
}

QString countedText(qsizetype count, const char *one, const char *many)
{
    return QString::number(count) + u' ' + QLatin1String(count == 1 ? one : many);
}

QString timeLeftText(double elapsedSeconds, double doneShare)
{
    constexpr double leastElapsed = 10;
    constexpr double leastShare = 0.02;
    if (elapsedSeconds < leastElapsed || doneShare < leastShare || doneShare >= 1) {
        return {};
    }
    const double left = elapsedSeconds / doneShare * (1 - doneShare);
    if (left < leastElapsed) {
        return {};
    }
    constexpr double minute = 60;
    if (left < 2 * minute) {
        return QStringLiteral("about ") + QString::number(qRound(left / 10) * 10) +
               QStringLiteral(" s left");
    }
    constexpr double longestInMinutes = 120 * minute;
    return left < longestInMinutes
               ? QStringLiteral("about ") + QString::number(qRound(left / minute)) +
                     QStringLiteral(" min left")
               : QStringLiteral("about ") + QString::number(qRound(left / minute / 60)) +
                     QStringLiteral(" h left");
}

QString liveText(qsizetype number, qsizetype count, const QString &name, const QString &what,
                 int columns)
{
    const QString head =
        u'[' + QString::number(number) + u'/' + QString::number(count) + QStringLiteral("] ");
    const QString tail = QStringLiteral(": ") + what;
    QString shown = printable(name);
    const qsizetype room = std::max<qsizetype>(columns - head.size() - tail.size(), 1);
    if (shown.size() > room) {
        shown = shown.left(room - 1) + u'~';
    }
    return (head + shown + tail).left(columns);
}

} // namespace quorlin::batch
