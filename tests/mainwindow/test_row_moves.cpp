#include "mainwindow/row_moves.h"
#include "tests/support/room.h"

#include <QTest>

#include <numeric>

using quorlin::RowMove;

namespace {

/// One entry per item, as the table lists the items of whole selected rows.
QList<int> itemsOf(const QList<int> &rows, int itemsPerRow)
{
    QList<int> items;
    for (const int row : rows) {
        items.append(QList<int>(itemsPerRow, row));
    }
    return items;
}

/// Order of the files 0, 1, 2, ... after the exchanges.
QList<int> orderAfter(RowMove direction, const QList<int> &exchanges, int rowCount)
{
    QList<int> order(rowCount);
    std::iota(order.begin(), order.end(), 0);
    for (const int row : exchanges) {
        order.swapItemsAt(row, row + (direction == RowMove::Up ? -1 : 1));
    }
    return order;
}

} // namespace

class TestRowMoves : public QObject
{
    Q_OBJECT

private slots:
    void orders_data();
    void orders();
    void blocksOfEverySizeMoveByOne_data();
    void blocksOfEverySizeMoveByOne();
    void everyExchangeStaysInTheTable();
    void aRowPickedTwiceMovesOnce();
};

void TestRowMoves::orders_data()
{
    QTest::addColumn<RowMove>("direction");
    QTest::addColumn<QList<int>>("itemRows");
    QTest::addColumn<QList<int>>("order"); // of five files

    const QList<int> unmoved{0, 1, 2, 3, 4};
    QTest::newRow("one row up") << RowMove::Up << itemsOf({2}, 3) << QList<int>{0, 2, 1, 3, 4};
    QTest::newRow("one row down") << RowMove::Down << itemsOf({2}, 3) << QList<int>{0, 1, 3, 2, 4};
    QTest::newRow("one row with a result up")
        << RowMove::Up << itemsOf({2}, 4) << QList<int>{0, 2, 1, 3, 4};
    QTest::newRow("top row up") << RowMove::Up << itemsOf({0}, 3) << unmoved;
    QTest::newRow("bottom row down") << RowMove::Down << itemsOf({4}, 3) << unmoved;
    QTest::newRow("nothing selected") << RowMove::Up << QList<int>() << unmoved;
    QTest::newRow("two items are no row, up") << RowMove::Up << itemsOf({2}, 2) << unmoved;
    QTest::newRow("two items are no row, down") << RowMove::Down << itemsOf({2}, 2) << unmoved;
    QTest::newRow("rows apart go up one each")
        << RowMove::Up << itemsOf({1, 4}, 3) << QList<int>{1, 0, 2, 4, 3};
    QTest::newRow("rows apart go down one each")
        << RowMove::Down << itemsOf({0, 3}, 3) << QList<int>{1, 0, 2, 4, 3};
    QTest::newRow("four of five rows, not adjacent, go up")
        << RowMove::Up << itemsOf({1, 2, 3, 4}, 3) << QList<int>{1, 2, 3, 4, 0};
    QTest::newRow("selected in reverse order, the lower row is not dragged back")
        << RowMove::Up << itemsOf({2, 1}, 3) << QList<int>{0, 2, 1, 3, 4};
    QTest::newRow("a block at the top stays, going up")
        << RowMove::Up << itemsOf({0, 1, 2}, 3) << unmoved;
    QTest::newRow("a block at the bottom stays, going down")
        << RowMove::Down << itemsOf({2, 3, 4}, 4) << unmoved;
    QTest::newRow("a row at the top holds rows elsewhere")
        << RowMove::Up << itemsOf({0, 3}, 3) << unmoved;
    QTest::newRow("four rows picked out of order keep theirs")
        << RowMove::Up << itemsOf({4, 2, 3, 1}, 3) << QList<int>{1, 2, 3, 4, 0};
    QTest::newRow("an item in no table is passed over")
        << RowMove::Down << QList<int>{-1, -1, -1} << unmoved;
}

void TestRowMoves::orders()
{
    QFETCH(RowMove, direction);
    QFETCH(QList<int>, itemRows);
    QTEST(orderAfter(direction, quorlin::rowExchanges(direction, itemRows, 4, 5), 5), "order");
}

void TestRowMoves::blocksOfEverySizeMoveByOne_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("itemsPerRow");
    for (int size = 1; size <= 8; ++size) {
        for (const int items : {3, 4}) {
            QTest::addRow("%d rows of %d items", size, items) << size << items;
        }
    }
}

void TestRowMoves::blocksOfEverySizeMoveByOne()
{
    QFETCH(int, size);
    QFETCH(int, itemsPerRow);
    const int rowCount = size + 2;
    QList<int> rows(size);
    std::iota(rows.begin(), rows.end(), 1);
    const QList<int> items = itemsOf(rows, itemsPerRow);

    QList<int> up = rows;
    up.append({0, rowCount - 1});
    QCOMPARE(
        orderAfter(RowMove::Up, quorlin::rowExchanges(RowMove::Up, items, 4, rowCount), rowCount),
        up);
    QList<int> down{0, rowCount - 1};
    down.append(rows);
    QCOMPARE(orderAfter(RowMove::Down, quorlin::rowExchanges(RowMove::Down, items, 4, rowCount),
                        rowCount),
             down);
}

/// In a table of three columns, six items of one row stand for two rows.
void TestRowMoves::aRowPickedTwiceMovesOnce()
{
    const QList<int> items(6, 1);
    QCOMPARE(quorlin::rowExchanges(RowMove::Up, items, 3, 3), QList<int>{1});
    QCOMPARE(quorlin::rowExchanges(RowMove::Down, items, 3, 3), QList<int>{1});
}

void TestRowMoves::everyExchangeStaysInTheTable()
{
    // Every selection of six rows, each with two, three or four items.
    for (int code = 0; code < 4096; ++code) {
        QList<int> items;
        for (int row = 0, rest = code; row < 6; ++row, rest /= 4) {
            const int count = rest % 4 == 0 ? 0 : rest % 4 + 1;
            items.append(QList<int>(count, row));
        }
        for (const RowMove direction : {RowMove::Up, RowMove::Down}) {
            const QList<int> exchanges = quorlin::rowExchanges(direction, items, 4, 6);
            for (const int row : exchanges) {
                const int other = row + (direction == RowMove::Up ? -1 : 1);
                QVERIFY(row >= 0 && row < 6 && other >= 0 && other < 6);
            }
        }
    }
}

QUORLIN_TEST(TestRowMoves)
#include "test_row_moves.moc"
