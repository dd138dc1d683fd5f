#include "batch/item_listing.h"

#include "batch/shown_text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace quorlin::batch {

namespace {

constexpr int columnWidth = 7;

QString column(const QString &text)
{
    return text.rightJustified(columnWidth);
}

} // namespace

void ItemGatherer::takeItem(ItemFields fields)
{
    if (const std::optional<Subtext> item = readItem(fields)) {
        gathered.append(*item);
    }
}

QString itemsAsJson(const QList<Subtext> &items, const QString &file, int page)
{
    QJsonArray entries;
    for (const Subtext &item : items) {
        entries.append(QJsonObject{{"left", item.left},
                                   {"top", item.top},
                                   {"width", item.width},
                                   {"height", item.height},
                                   {"text", item.text}});
    }
    const QJsonObject list{{"version", 1}, {"path", file}, {"page", page}, {"items", entries}};
    return QString::fromUtf8(QJsonDocument(list).toJson());
}

QString itemTable(const QList<Subtext> &items)
{
    QString table = column(QStringLiteral("left")) + column(QStringLiteral("top")) +
                    column(QStringLiteral("width")) + column(QStringLiteral("height")) +
                    QStringLiteral("  text\n");
    for (const Subtext &item : items) {
        for (const int number : {item.left, item.top, item.width, item.height}) {
            // Numbers too long for their column still stand apart.
            table += QString::number(number).rightJustified(columnWidth);
        }
        table += QStringLiteral("  ") + printable(item.text) + u'\n';
    }
    return table;
}

} // namespace quorlin::batch
