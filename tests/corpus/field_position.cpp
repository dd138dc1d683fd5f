#include "field_position.h"

#include <QStringList>

#include <cmath>

namespace {

constexpr double unitsPerPoint = 1.5;
/// How far the field's edge may lie from where it was measured.
constexpr double tolerance = 4.0;

struct ListedItem
{
    int left = 0;
    int top = 0;
    int height = 0;
};

} // namespace

QString positionAt(const QString &listing, QPointF field)
{
    const QPointF place = field * unitsPerPoint;
    for (const QString &line : listing.split('\n', Qt::SkipEmptyParts).mid(1)) {
        const QStringList numbers = line.left(28).split(' ', Qt::SkipEmptyParts);
        const ListedItem item{numbers.value(0).toInt(), numbers.value(1).toInt(),
                              numbers.value(3).toInt()};
        if (std::abs(item.left - place.x()) <= tolerance && item.top < place.y() &&
            item.top + item.height + tolerance > place.y()) {
            return QString::number(item.left) + u',' + QString::number(item.top);
        }
    }
    return {};
}
