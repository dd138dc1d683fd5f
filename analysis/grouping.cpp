#include "analysis/grouping.h"

#include <QHash>

#include <utility>

namespace quorlin {

namespace {

/// Gathers the groups while the pages go by.
class GroupBuilder
{
public:
    bool isEmpty() const { return groups.texts.isEmpty(); }
    /// Text of the group that is open.
    const QString &openText() const { return groups.texts.constLast(); }

    void startGroup(const QString &text)
    {
        endPiece();
        groups.texts.append(text);
        groups.ranges.append(QString());
    }

    void addPage(qsizetype page)
    {
        if (firstPage == 0 || page != lastPage + 1) {
            endPiece();
            firstPage = page;
        }
        lastPage = page;
    }

    PageGroups take()
    {
        endPiece();
        return std::move(groups);
    }

private:
    /// Writes the pages gathered last into the range of the open group.
    void endPiece()
    {
        if (firstPage == 0) {
            return;
        }
        QString &range = groups.ranges.last();
        if (!range.isEmpty()) {
            range += u' ';
        }
        range += QString::number(firstPage);
        if (lastPage != firstPage) {
            range += u'-' + QString::number(lastPage);
        }
        firstPage = 0;
    }

    PageGroups groups;
    qsizetype firstPage = 0; ///< 0 where no piece is open
    qsizetype lastPage = 0;
};

PageGroups groupConsecutive(const QStringList &pageTexts, bool anyTextStartsGroup,
                            BlankPages blankPages)
{
    GroupBuilder groups;
    for (qsizetype i = 0; i < pageTexts.size(); ++i) {
        const QString &text = pageTexts.at(i);
        const bool isBlank = text == noTextMarker();
        if (isBlank && blankPages == BlankPages::Drop) {
            continue;
        }
        const bool isOther = groups.isEmpty() || text != groups.openText();
        const bool starts =
            groups.isEmpty() || (isBlank ? isOther && blankPages == BlankPages::Separate
                                         : isOther || anyTextStartsGroup);
        if (starts) {
            groups.startGroup(text);
        }
        groups.addPage(i + 1);
    }
    return groups.take();
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

PageGroups groupPages(const QStringList &pageTexts, int method, BlankPages blankPages)
{
    switch (method) {
    case 0:
        return groupConsecutive(pageTexts, false, blankPages);
    case 1:
        return groupConsecutive(pageTexts, true, blankPages);
    case 2:
        return mergeEqualTexts(groupConsecutive(pageTexts, false, blankPages));
    default:
        return {};
    }
}

} // namespace quorlin
