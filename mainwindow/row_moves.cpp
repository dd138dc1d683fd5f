#include "mainwindow/row_moves.h"

#include <algorithm>
#include <numeric>

namespace quorlin {

namespace {

// A row is taken to carry a file, a page count and a size.
constexpr int itemsPerRow = 3;

QList<int> distinctRows(QList<int> itemRows)
{
    std::sort(itemRows.begin(), itemRows.end());
    itemRows.erase(std::unique(itemRows.begin(), itemRows.end()), itemRows.end());
    return itemRows;
}

/// Rows that the selection stands for. One item stands for each row, found by its position in the
/// selection; where that runs past the end (rows with a result carry a fourth item, and four rows
/// of three items are enough), every selected row is taken.
QList<int> selectedRows(const QList<int> &itemRows, int columnCount)
{
    const qsizetype count = itemRows.size() / itemsPerRow;
    if (count > 0 && (count - 1) * columnCount >= itemRows.size()) {
        return distinctRows(itemRows);
    }
    QList<int> rows;
    for (qsizetype k = 0; k < count; ++k) {
        rows.append(itemRows.at(k * columnCount));
    }
    return rows;
}

} // namespace

QList<int> rowExchanges(RowMove direction, const QList<int> &itemRows, int columnCount,
                        int rowCount)
{
    const bool up = direction == RowMove::Up;
    const int edge = up ? 0 : rowCount - 1;
    const int step = up ? -1 : 1;
    // A block at the edge stays as it is: moving the rest of it would change its order.
    if (itemRows.contains(edge)) {
        return {};
    }
    QList<int> rows = selectedRows(itemRows, columnCount);
    if (!up) {
        std::reverse(rows.begin(), rows.end());
    }

    // An earlier exchange may have moved a row that is still to come.
    QList<int> currentRow(rowCount);
    std::iota(currentRow.begin(), currentRow.end(), 0);
    QList<int> firstRow = currentRow; // the inverse
    QList<int> exchanges;
    int previous = -1;
    for (const int first : std::as_const(rows)) {
        const int row = first < 0 || first >= rowCount ? -1 : currentRow.at(first);
        if (row < 0 || row == edge || row == previous) {
            continue;
        }
        const int other = row + step;
        std::swap(firstRow[row], firstRow[other]);
        currentRow[firstRow.at(row)] = row;
        currentRow[firstRow.at(other)] = other;
        exchanges.append(row);
        previous = row;
    }
    return exchanges;
}

} // namespace quorlin
