#pragma once

#include <QList>

namespace quorlin {

enum class RowMove { Up, Down };

/// Rows to exchange with their neighbour above or below, in this order. Each number is the row at
/// the time of its own exchange, and the moved row then stands at the neighbour's place. Nothing
/// moves when the selection reaches the edge towards which it would go.
/// @param itemRows row of every selected cell that holds an item, in the order of the selection; -1
///     for an item that is in no table
/// @param columnCount columns of the table, @param rowCount rows of the table
QList<int> rowExchanges(RowMove direction, const QList<int> &itemRows, int columnCount,
                        int rowCount);

} // namespace quorlin
