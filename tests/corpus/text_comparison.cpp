#include "text_comparison.h"

#include <algorithm>
#include <utility>

namespace {

bool isLeftOut(QChar character)
{
    return character.category() == QChar::Other_Format ||
           (character.category() == QChar::Other_Control && !character.isSpace());
}

bool isRightToLeft(QChar character)
{
    return character.direction() == QChar::DirR || character.direction() == QChar::DirAL;
}

} // namespace

QString withoutReferences(const QString &text)
{
    QString plain = text;
    plain.replace(QLatin1String("&lt;"), QLatin1String("<"));
    plain.replace(QLatin1String("&gt;"), QLatin1String(">"));
    plain.replace(QLatin1String("&quot;"), QLatin1String("\""));
    plain.replace(QLatin1String("&amp;"), QLatin1String("&"));
    return plain;
}

QString comparableText(const QString &text)
{
    QString plain = text.normalized(QString::NormalizationForm_KC);
    plain.removeIf(isLeftOut);
    return plain.simplified();
}

bool sameText(const QString &text, const QString &expected)
{
    const QString left = comparableText(text);
    const QString right = comparableText(expected);
    if (left == right) {
        return true;
    }
    if (!std::any_of(right.begin(), right.end(), isRightToLeft)) {
        return false;
    }
    QString reversed = right;
    std::reverse(reversed.begin(), reversed.end());
    return left == reversed;
}

QString keyOfOutput(const QString &fileName, int number, const QString &base, const QString &pages)
{
    const QString head = QString::number(number) + u' ';
    const QString tail =
        u' ' + base + (pages.isEmpty() ? QString() : u' ' + pages) + QStringLiteral(".pdf");
    if (!fileName.startsWith(head) || !fileName.endsWith(tail) ||
        fileName.size() < head.size() + tail.size()) {
        return {};
    }
    return fileName.mid(head.size(), fileName.size() - head.size() - tail.size());
}
