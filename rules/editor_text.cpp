#include "rules/editor_text.h"

namespace quorlin {

QString positionTip(const Subtext &item)
{
    return QStringLiteral("Position\n X- ") + QString::number(item.left) + QStringLiteral(" Y- ") +
           QString::number(item.top);
}

QString ruleContent(const Subtext &item)
{
    // The text is filled in last: it may itself hold "%1".
    return QStringLiteral("(%1 %2 %3 %4)=%5")
        .arg(item.left)
        .arg(item.top)
        .arg(item.width)
        .arg(item.height)
        .arg(item.text);
}

QString pageCountLabel(int pageCount)
{
    return QLatin1Char('/') + QString::number(pageCount);
}

int pageCountFromLabel(const QString &label)
{
    QString digits = label;
    return digits.remove(QLatin1Char('/')).toInt();
}

PageButtons pageButtons(int page, int pageCount)
{
    if (pageCount == 0) {
        return {};
    }
    return {page > 1, page < pageCount};
}

std::optional<int> previousPage(int page, int pageCount)
{
    if (pageCount == 0 || page < 2) {
        return std::nullopt;
    }
    return page - 1;
}

std::optional<int> nextPage(int page, int pageCount)
{
    if (pageCount == 0 || page >= pageCount) {
        return std::nullopt;
    }
    return page + 1;
}

} // namespace quorlin
