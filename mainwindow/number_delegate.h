#pragma once

#include <QStyledItemDelegate>

/// Draws a column of numbers so that digits stand below digits: aligned to the right, and a unit
/// behind the number in a column of its own, because "KB" and "MB" are not equally wide. The texts
/// of the cells stay as they are.
class NumberDelegate : public QStyledItemDelegate
{
public:
    /// @param units every unit that a number may have, each with the blank before it; none for
    ///     bare numbers
    NumberDelegate(QStringList units, QObject *parent);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

private:
    QStringList units;
};
