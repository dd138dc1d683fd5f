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
