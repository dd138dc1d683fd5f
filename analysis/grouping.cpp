#include "analysis/grouping.h"

#include <QHash>

namespace quorlin {

namespace {

QString rangeText(qsizetype firstPage, qsizetype lastPage)
{
    QString range = QString::number(firstPage);
    if (lastPage != firstPage) {
        range += QLatin1Char('-') + QString::number(lastPage);
    }
    return range;
}

PageGroups groupConsecutive(const QStringList &pageTexts, bool anyTextStartsGroup)
{
    PageGroups groups;
    const qsizetype count = pageTexts.size();
    qsizetype first = 0;
    while (first < count) {
        const QString &key = pageTexts.at(first);
        qsizetype next = first + 1;
        while (next < count && (pageTexts.at(next) == noTextMarker() ||
                                (!anyTextStartsGroup && pageTexts.at(next) == key))) {
            ++next;
        }
        groups.ranges.append(rangeText(first + 1, next));
        groups.texts.append(key);
        first = next;
    }
    return groups;
}

PageGroups mergeEqualTexts(const PageGroups &groups)
{
    PageGroups merged;
    QHash<QString, qsizetype> positions;
    for (qsizetype i = 0; i < groups.texts.size(); ++i) {
        const QString &key = groups.texts.at(i);
        const auto known = positions.constFind(key);
        if (known != positions.constEnd()) {
            merged.ranges[known.value()] += QLatin1Char(' ') + groups.ranges.at(i);
            continue;
        }
        positions.insert(key, merged.texts.size());
        merged.ranges.append(groups.ranges.at(i));
        merged.texts.append(key);
    }
    return merged;
}

} // namespace

PageGroups groupPages(const QStringList &pageTexts, int method)
{
    switch (method) {
    case 0:
        return groupConsecutive(pageTexts, false);
    case 1:
        return groupConsecutive(pageTexts, true);
    case 2:
        return mergeEqualTexts(groupConsecutive(pageTexts, false));
    default:
        return {};
    }
}

} // namespace quorlin
