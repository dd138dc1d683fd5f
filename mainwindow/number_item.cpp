#include "mainwindow/number_item.h"

#include <QHeaderView>
#include <QTableWidget>

namespace {

constexpr int numberItemType = QTableWidgetItem::UserType + 1;

bool sortsDescending(const QTableWidgetItem &item)
{
    const QTableWidget *table = item.tableWidget();
    return table != nullptr &&
           table->horizontalHeader()->sortIndicatorOrder() == Qt::DescendingOrder;
}

} // namespace

NumberItem::NumberItem(const QString &text, qint64 number)
    : QTableWidgetItem(text, numberItemType), value(number)
{
}

bool NumberItem::operator<(const QTableWidgetItem &other) const
{
    if (other.type() != numberItemType) {
        return QTableWidgetItem::operator<(other);
    }
    if (text().isEmpty() != other.text().isEmpty()) {
        // The table turns the comparison round for a descending order.
        return other.text().isEmpty() != sortsDescending(*this);
    }
    return value < static_cast<const NumberItem &>(other).value;
}
