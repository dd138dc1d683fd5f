#pragma once

#include <QTableWidgetItem>

/// A cell that shows a number as text and sorts by the number: 9 before 10, kilobytes before
/// megabytes. Cells without text come last, whichever way the column is sorted.
class NumberItem : public QTableWidgetItem
{
public:
    NumberItem(const QString &text, qint64 value);

    bool operator<(const QTableWidgetItem &other) const override;

private:
    qint64 value;
};
