#include "mainwindow/number_delegate.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <utility>

namespace {

QColor textColour(const QStyleOptionViewItem &option)
{
    QPalette::ColorGroup group = QPalette::Disabled;
    if ((option.state & QStyle::State_Enabled) != 0) {
        group = (option.state & QStyle::State_Active) != 0 ? QPalette::Active : QPalette::Inactive;
    }
    const bool selected = (option.state & QStyle::State_Selected) != 0;
    return option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text);
}

} // namespace

NumberDelegate::NumberDelegate(QStringList columnUnits, QObject *parent)
    : QStyledItemDelegate(parent), units(std::move(columnUnits))
{
}

void NumberDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                           const QModelIndex &index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    QString number = cell.text.trimmed();
    QString unit;
    int unitWidth = 0;
    for (const QString &candidate : units) {
        unitWidth = std::max(unitWidth, cell.fontMetrics.horizontalAdvance(candidate));
        if (number.endsWith(candidate)) {
            unit = candidate;
        }
    }
    number.chop(unit.size());
    const QStyle *style = cell.widget == nullptr ? QApplication::style() : cell.widget->style();
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &cell, cell.widget) + 1;
    const QRect inside = cell.rect.adjusted(margin, 0, -margin, 0);
    if (cell.fontMetrics.horizontalAdvance(number) + unitWidth > inside.width()) {
        cell.text = cell.text.trimmed(); // ends in an ellipsis
        style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
        return;
    }
    cell.text.clear();
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
    painter->save();
    painter->setFont(cell.font);
    painter->setPen(textColour(cell));
    painter->drawText(inside.adjusted(0, 0, -unitWidth, 0), Qt::AlignRight | Qt::AlignVCenter,
                      number);
    painter->drawText(inside.adjusted(inside.width() - unitWidth, 0, 0, 0),
                      Qt::AlignLeft | Qt::AlignVCenter, unit);
    painter->restore();
}
