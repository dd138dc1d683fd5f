#include "analysis/line_parser.h"

namespace quorlin {

qint32 styleValue(const QString &key, const QString &line)
{
    const qsizetype start = line.indexOf(key);
    if (start < 0) {
        return 0;
    }
    const qsizetype first = start + key.size() + 1;
    qsizetype end = first;
    while (end < line.size() && line.at(end) != QLatin1Char(';') &&
           line.at(end) != QLatin1Char('"')) {
        ++end;
    }
    if (first >= line.size()) {
        return 0;
    }
    const int value = QStringView(line).sliced(first, end - first).toInt();
    return value < 1 ? 0 : value;
}

QString itemText(const QString &line)
{
    const qsizetype end = line.indexOf(QLatin1String("</span>"));
    if (end < 0) {
        return {};
    }
    // The line's first character is never taken for the end of a tag.
    qsizetype begin = end;
    while (begin > 0 && line.at(begin) != QLatin1Char('>')) {
        --begin;
    }
    const qsizetype length = end - begin - 1;
    return length < 1 ? QString() : line.sliced(begin + 1, length);
}

Subtext parseItem(const QString &line)
{
    Subtext item;
    item.left = styleValue(QStringLiteral("left"), line);
    item.top = styleValue(QStringLiteral("top"), line);
    item.width = styleValue(QStringLiteral("width"), line);
    item.height = styleValue(QStringLiteral("height"), line);
    item.text = itemText(line);
    return item;
}

QStringList pageFileLines(const QString &html)
{
    return html.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QStringList pageFileLinesWithin(const QString &html)
{
    QStringList lines;
    qsizetype begin = 0;
    while (begin < html.size()) {
        const qsizetype found = html.indexOf(u'\n', begin);
        const qsizetype end = found < 0 ? html.size() : found;
        if (end > begin) {
            lines.append(QString::fromRawData(html.constData() + begin, end - begin));
        }
        begin = end + 1;
    }
    return lines;
}

} // namespace quorlin
