#include "tests/support/room.h"
#include "tests/support/window_bench.h"

#include <QHeaderView>
#include <QPushButton>
#include <QTest>

#include <numeric>

using quorlin::test::WindowBench;

/// Rows keep their file, page count, size and result together, however the table is handled.
class TestRowOrder : public QObject
{
    Q_OBJECT

private slots:
    void oneRowMovesWithAllItsCells();
    void edgesStay();
    void blocksMoveByOne_data();
    void blocksMoveByOne();
    void aBlockAtTheEdgeStays_data();
    void aBlockAtTheEdgeStays();
    void pagesAndSizesSortByValue();
    void numbersStandBelowEachOther();
    void aRowWithoutSizeDoesNotMove();
    void movingClearsTheSortIndicator();
    void addingToASortedListMixesNothing_data();
    void addingToASortedListMixesNothing();
    void droppingOnASortedListMixesNothing_data();
    void droppingOnASortedListMixesNothing();
    void aHeaderClickedWhileCountingMixesNothing_data();
    void aHeaderClickedWhileCountingMixesNothing();
    void splittingASortedListMixesNothing_data();
    void splittingASortedListMixesNothing();
    void aHeaderClickedDuringARunMixesNothing();
    void sortingStaysOffUntilTheRunEnds();
    void sortingStaysOffUntilThePagesAreCounted();
    void sortingWorksAfterwards();
};

namespace {

/// Files of 1, 2, ... pages under names in the reverse order of the alphabet.
QStringList addFamily(const WindowBench &bench, int count, char last = 'z')
{
    QStringList files;
    for (int i = 0; i < count; ++i) {
        quorlin::test::PageTexts texts;
        for (int page = 0; page <= i; ++page) {
            texts.emplace_back(QStringLiteral("T%1").arg(i));
        }
        files.append(
            bench.addBatch(QStringLiteral("%1.pdf").arg(QLatin1Char(char(last - i))), texts));
    }
    return files;
}

/// Whether every row shows the page count and the size of its own file.
bool rowsAreWhole(WindowBench &bench, const QStringList &files)
{
    QStringList seen = bench.column(0);
    for (int row = 0; row < bench.table()->rowCount(); ++row) {
        const qsizetype index = files.indexOf(bench.cell(row, 0));
        const QString size =
            QString::asprintf("%14.3f KB", double(QFile(bench.cell(row, 0)).size()) / 1000.0);
        if (index < 0 || bench.cell(row, 1) != QString::number(index + 1) ||
            bench.cell(row, 2) != size) {
            return false;
        }
    }
    seen.sort();
    QStringList expected = files;
    expected.sort();
    return seen == expected;
}

/// Bounds of what differs from the upper left pixel.
QRect inkOf(const QImage &picture)
{
    QRect ink;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) != picture.pixel(0, 0)) {
                ink |= QRect(x, y, 1, 1);
            }
        }
    }
    return ink;
}

void clickHeader(WindowBench &bench, int column, int times)
{
    QHeaderView *header = bench.table()->horizontalHeader();
    for (int i = 0; i < times; ++i) {
        const QPoint place(header->sectionViewportPosition(column) + 20, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    }
}

} // namespace

void TestRowOrder::oneRowMovesWithAllItsCells()
{
    WindowBench bench;
    const QStringList files = addFamily(bench, 4);
    bench.addFiles(files);
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    bench.selectRows({2});
    bench.click("pushButton_up");
    QCOMPARE(bench.column(0), QStringList({files[0], files[2], files[1], files[3]}));
    QVERIFY(rowsAreWhole(bench, files));
    QCOMPARE(bench.column(3), QStringList(4, QStringLiteral("Succeed")));
    QCOMPARE(bench.selectedRows(), QList<int>({1}));
    QCOMPARE(bench.table()->currentRow(), 1);
    bench.click("pushButton_down");
    bench.click("pushButton_down");
    QCOMPARE(bench.column(0), QStringList({files[0], files[1], files[3], files[2]}));
    QCOMPARE(bench.table()->currentRow(), 3);
}

void TestRowOrder::edgesStay()
{
    WindowBench bench;
    const QStringList files = addFamily(bench, 3);
    bench.addFiles(files);
    bench.selectRows({0});
    bench.click("pushButton_up");
    QCOMPARE(bench.column(0), files);
    QCOMPARE(bench.selectedRows(), QList<int>({0}));
    bench.selectRows({2});
    bench.click("pushButton_down");
    QCOMPARE(bench.column(0), files);
    QCOMPARE(bench.selectedRows(), QList<int>({2}));
}

void TestRowOrder::blocksMoveByOne_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("results");
    for (const int size : {2, 3, 4, 5}) {
        QTest::addRow("%d rows", size) << size << false;
        QTest::addRow("%d rows with results", size) << size << true;
    }
}

void TestRowOrder::blocksMoveByOne()
{
    QFETCH(int, size);
    QFETCH(bool, results);
    WindowBench bench;
    const QStringList files = addFamily(bench, size + 1);
    bench.addFiles(files);
    if (results) {
        bench.setOutputFolder(bench.folders.outputs());
        bench.split();
    }
    QList<int> rows(size);
    std::iota(rows.begin(), rows.end(), 1);
    bench.selectRows(rows);
    bench.click("pushButton_up");
    QStringList order = files.sliced(1);
    order.append(files.first());
    QCOMPARE(bench.column(0), order);
    QList<int> moved(size);
    std::iota(moved.begin(), moved.end(), 0);
    QCOMPARE(bench.selectedRows(), moved);
    bench.click("pushButton_down");
    QCOMPARE(bench.column(0), files);
    QCOMPARE(bench.selectedRows(), rows);
    QVERIFY(rowsAreWhole(bench, files));
}

void TestRowOrder::aBlockAtTheEdgeStays_data()
{
    QTest::addColumn<QList<int>>("rows");
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("results");
    for (const bool results : {false, true}) {
        const char *state = results ? "with results" : "without results";
        QTest::addRow("all rows up, %s", state)
            << QList<int>{0, 1, 2} << QStringLiteral("pushButton_up") << results;
        QTest::addRow("all rows down, %s", state)
            << QList<int>{0, 1, 2} << QStringLiteral("pushButton_down") << results;
        QTest::addRow("the first two up, %s", state)
            << QList<int>{0, 1} << QStringLiteral("pushButton_up") << results;
        QTest::addRow("the last two down, %s", state)
            << QList<int>{1, 2} << QStringLiteral("pushButton_down") << results;
        QTest::addRow("first and last up, %s", state)
            << QList<int>{0, 2} << QStringLiteral("pushButton_up") << results;
    }
}

void TestRowOrder::aBlockAtTheEdgeStays()
{
    QFETCH(QList<int>, rows);
    QFETCH(QString, button);
    QFETCH(bool, results);
    WindowBench bench;
    const QStringList files = addFamily(bench, 3);
    bench.addFiles(files);
    if (results) {
        bench.setOutputFolder(bench.folders.outputs());
        bench.split();
    }
    bench.selectRows(rows);
    // Clicked again and again, and with the space bar held down.
    auto *pressed = bench.widget<QPushButton>(qPrintable(button));
    for (int i = 0; i < 3; ++i) {
        QTest::mouseClick(pressed, Qt::LeftButton);
    }
    QTest::mouseDClick(pressed, Qt::LeftButton);
    pressed->setFocus();
    QTest::keyPress(pressed, Qt::Key_Space);
    for (int i = 0; i < 5; ++i) {
        QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "),
                         true);
        QCoreApplication::sendEvent(pressed, &repeat);
    }
    QTest::keyRelease(pressed, Qt::Key_Space);
    QCOMPARE(bench.column(0), files);
    QVERIFY(rowsAreWhole(bench, files));
    QCOMPARE(bench.selectedRows(), rows);
    QVERIFY(bench.table()->isSortingEnabled());
}

void TestRowOrder::pagesAndSizesSortByValue()
{
    WindowBench bench;
    // 9, 10 and 100 pages; a file without pages; sizes on both sides of the megabyte.
    QStringList files;
    for (const int pages : {100, 9, 0, 10}) {
        QByteArray orders =
            pages == 0 ? "page\n" : "info NumberOfPages: " + QByteArray::number(pages) + "\n";
        orders += QByteArray(pages == 9 ? 1'200'000 : 950'000 - pages * 1000, '\n');
        files.append(bench.folders.addInput(QStringLiteral("%1.pdf").arg(pages), orders));
    }
    files.append(bench.folders.addInput(QStringLiteral("empty.pdf"), ""));
    bench.addFiles(files);
    const QString none;
    clickHeader(bench, 1, 1);
    QCOMPARE(bench.column(1), QStringList({"9", "10", "100", none, none}));
    clickHeader(bench, 1, 1);
    QCOMPARE(bench.column(1), QStringList({"100", "10", "9", none, none}));
    clickHeader(bench, 2, 1);
    QCOMPARE(bench.column(0),
             QStringList({files.at(0), files.at(3), files.at(2), files.at(1), files.at(4)}));
    clickHeader(bench, 2, 1);
    QCOMPARE(bench.column(0),
             QStringList({files.at(1), files.at(2), files.at(3), files.at(0), files.at(4)}));
}

void TestRowOrder::numbersStandBelowEachOther()
{
    WindowBench bench;
    // "1.049 MB" and "1.049 KB"; 7 and 17 pages.
    QByteArray large = "info NumberOfPages: 7\n";
    large += QByteArray(1'048'577 - large.size(), '\n');
    QByteArray small = "info NumberOfPages: 17\n";
    small += QByteArray(1'049 - small.size(), '\n');
    bench.addFiles({bench.folders.addInput(QStringLiteral("a.pdf"), large),
                    bench.folders.addInput(QStringLiteral("b.pdf"), small)});
    QCOMPARE(bench.column(2), QStringList({QStringLiteral("         1.049 MB"),
                                           QStringLiteral("         1.049 KB")}));
    bench.table()->clearSelection();
    bench.table()->setCurrentCell(-1, -1);
    const auto end = [&](int row, int column, int left, int right) {
        const QRect cell = bench.table()->visualItemRect(bench.table()->item(row, column));
        const QRect part(cell.right() - left, cell.top(), left - right, cell.height());
        return bench.table()->viewport()->grab(part).toImage();
    };
    const QFontMetrics metrics = bench.table()->fontMetrics();
    const int margin = 3;
    const int unit = margin + metrics.horizontalAdvance(QStringLiteral(" MB"));
    const int digits = unit + metrics.horizontalAdvance(QStringLiteral("1.049"));
    QCOMPARE(end(0, 2, digits, unit), end(1, 2, digits, unit));
    QVERIFY(end(0, 2, unit, 0) != end(1, 2, unit, 0));
    // The last digit begins at a fraction of a pixel: its ink may differ by one.
    const int lastDigit = margin + metrics.horizontalAdvance(QStringLiteral("7"));
    const QRect seven = inkOf(end(0, 1, lastDigit + 1, 0));
    const QRect seventeen = inkOf(end(1, 1, lastDigit + 1, 0));
    QVERIFY(!seven.isEmpty());
    QVERIFY(std::abs(seven.right() - seventeen.right()) <= 1);
}

void TestRowOrder::aRowWithoutSizeDoesNotMove()
{
    WindowBench bench;
    const QString first = bench.addBatch(QStringLiteral("a.pdf"), {QStringLiteral("A")});
    const QString empty = bench.folders.addInput(QStringLiteral("empty.pdf"), "");
    bench.addFiles({first, empty});
    bench.selectRows({1});
    bench.click("pushButton_up");
    QCOMPARE(bench.column(0), QStringList({first, empty}));
}

void TestRowOrder::movingClearsTheSortIndicator()
{
    WindowBench bench;
    const QStringList files = addFamily(bench, 3); // z, y, x
    bench.addFiles(files);
    clickHeader(bench, 0, 1);
    QCOMPARE(bench.column(0), QStringList({files[2], files[1], files[0]}));
    bench.selectRows({2});
    bench.click("pushButton_up");
    QCOMPARE(bench.table()->horizontalHeader()->sortIndicatorSection(), -1);
    QCOMPARE(bench.table()->horizontalHeader()->sortIndicatorOrder(), Qt::AscendingOrder);
    QVERIFY(bench.table()->isSortingEnabled());
    QCOMPARE(bench.column(0), QStringList({files[2], files[0], files[1]}));
}

void TestRowOrder::addingToASortedListMixesNothing_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("clicks");
    for (int column = 0; column < 4; ++column) {
        for (const int clicks : {1, 2}) {
            QTest::addRow("column %d, %d clicks", column, clicks) << column << clicks;
        }
    }
}

void TestRowOrder::addingToASortedListMixesNothing()
{
    QFETCH(int, column);
    QFETCH(int, clicks);
    WindowBench bench;
    const QStringList files = addFamily(bench, 6);
    bench.addFiles(files.sliced(0, 3));
    clickHeader(bench, column, clicks);
    const QStringList shown = bench.column(0);
    bench.addFiles(files.sliced(3));
    QVERIFY(rowsAreWhole(bench, files));
    QCOMPARE(bench.column(0).sliced(0, 3), shown);
    QCOMPARE(bench.column(0).sliced(3), files.sliced(3));
}

void TestRowOrder::droppingOnASortedListMixesNothing_data()
{
    addingToASortedListMixesNothing_data();
}

void TestRowOrder::droppingOnASortedListMixesNothing()
{
    QFETCH(int, column);
    QFETCH(int, clicks);
    WindowBench bench;
    const QStringList files = addFamily(bench, 6);
    bench.addFiles(files.sliced(0, 3));
    clickHeader(bench, column, clicks);
    const QStringList shown = bench.column(0);
    bench.dropFiles(files.sliced(3));
    QTRY_VERIFY(bench.controlsEnabled());
    QVERIFY(rowsAreWhole(bench, files));
    QCOMPARE(bench.column(0), shown + files.sliced(3));
}

void TestRowOrder::aHeaderClickedWhileCountingMixesNothing_data()
{
    addingToASortedListMixesNothing_data();
}

void TestRowOrder::aHeaderClickedWhileCountingMixesNothing()
{
    QFETCH(int, column);
    QFETCH(int, clicks);
    WindowBench bench;
    const QStringList files = addFamily(bench, 5);
    int counted = 0;
    bench.window().progressObserver = [&](const QString &line) {
        if (line.startsWith(QLatin1String("Loading "))) {
            ++counted;
            clickHeader(bench, column, clicks);
        }
    };
    bench.addFiles(files);
    QCOMPARE(counted, 5);
    QVERIFY(rowsAreWhole(bench, files));
    QCOMPARE(bench.column(0), files);
    QCOMPARE(bench.table()->horizontalHeader()->sortIndicatorSection(), -1);
    QVERIFY(bench.table()->isSortingEnabled());
}

void TestRowOrder::splittingASortedListMixesNothing_data()
{
    addingToASortedListMixesNothing_data();
}

void TestRowOrder::splittingASortedListMixesNothing()
{
    QFETCH(int, column);
    QFETCH(int, clicks);
    WindowBench bench;
    QStringList files = addFamily(bench, 4);
    const QString broken = bench.folders.addInput(QStringLiteral("m.pdf"), "line no orders\n");
    bench.addFiles(files + QStringList(broken));
    bench.setOutputFolder(bench.folders.outputs());
    bench.split(); // gives the column of results something to sort
    clickHeader(bench, column, clicks);
    const QStringList shown = bench.column(0);
    bench.split();
    QCOMPARE(bench.column(0), shown);
    QStringList exported;
    const QStringList calls = quorlin::test::toolCalls(bench.folders.application());
    for (const QString &call : calls) {
        if (call.startsWith(QLatin1String("pagexport"))) {
            exported.append(call.section(QLatin1Char('['), 2, 2).section(QLatin1Char(']'), 0, 0));
        }
    }
    QCOMPARE(exported.sliced(5), shown); // every file once, in the order shown
    for (int row = 0; row < 5; ++row) {
        const bool isBroken = bench.cell(row, 0) == broken;
        QCOMPARE(bench.cell(row, 3),
                 isBroken ? QStringLiteral("Failed") : QStringLiteral("Succeed"));
    }
}

void TestRowOrder::aHeaderClickedDuringARunMixesNothing()
{
    WindowBench bench;
    const QStringList files = addFamily(bench, 5);
    bench.addFiles(files);
    bench.setOutputFolder(bench.folders.outputs());
    bench.window().progressObserver = [&](const QString &line) {
        if (line.startsWith(QLatin1String("Generating "))) {
            clickHeader(bench, 3, 1);
            clickHeader(bench, 1, 2);
        }
    };
    bench.split();
    QCOMPARE(bench.column(0), files);
    QVERIFY(rowsAreWhole(bench, files));
    QCOMPARE(bench.column(3), QStringList(5, QStringLiteral("Succeed")));
    QCOMPARE(bench.table()->horizontalHeader()->sortIndicatorSection(), -1);
}

void TestRowOrder::sortingStaysOffUntilTheRunEnds()
{
    WindowBench bench;
    const QStringList files = addFamily(bench, 4);
    bench.addFiles(files.sliced(0, 3));
    bench.setOutputFolder(bench.folders.outputs());
    // The run waits at its first file.
    QFile first(files.first());
    const qint64 size = first.size();
    const QString gate = bench.folders.temporary() + QStringLiteral("/gate");
    QVERIFY(first.open(QIODevice::Append));
    first.write("wait " + gate.toUtf8() + "\n");
    first.close();
    bench.click("runButton");
    QTRY_COMPARE(quorlin::test::toolCalls(bench.folders.application()).size(), 4);
    // The end of another count and a move would both let the user sort again.
    bench.dropFiles({files.last()});
    QTRY_VERIFY(bench.controlsEnabled());
    QVERIFY(!bench.table()->isSortingEnabled());
    bench.selectRows({3});
    bench.click("pushButton_up");
    QVERIFY(!bench.table()->isSortingEnabled());
    clickHeader(bench, 0, 1);
    const QStringList order = {files[0], files[1], files[3], files[2]};
    QCOMPARE(bench.column(0), order);
    quorlin::test::writeFile(gate, {});
    QTRY_COMPARE(bench.paneLines().last(), QStringLiteral("Conversion Finished."));
    QCOMPARE(bench.column(0), order);
    QCOMPARE(bench.column(3), QStringList(4, QStringLiteral("Succeed")));
    QVERIFY(bench.table()->isSortingEnabled());
    QVERIFY(first.resize(size));
    QVERIFY(rowsAreWhole(bench, files));
}

void TestRowOrder::sortingStaysOffUntilThePagesAreCounted()
{
    WindowBench bench;
    const QStringList files = addFamily(bench, 3);
    const QString gate = bench.folders.temporary() + QStringLiteral("/gate");
    QFile first(files.first());
    const qint64 size = first.size();
    QVERIFY(first.open(QIODevice::Append));
    first.write("wait " + gate.toUtf8() + "\n");
    first.close();
    bench.dropFiles(files);
    QVERIFY(bench.controlsDisabled());
    // The buttons are off, their slots are not.
    bench.window().setrowdown();
    bench.window().setrowup();
    QVERIFY(!bench.table()->isSortingEnabled());
    clickHeader(bench, 0, 1);
    QCOMPARE(bench.column(0), files);
    QVERIFY(first.resize(size));
    bench.table()->item(0, 2)->setText(
        QString::asprintf("%14.3f KB", double(first.size()) / 1000.0));
    quorlin::test::writeFile(gate, {});
    QTRY_VERIFY(bench.controlsEnabled());
    QCOMPARE(bench.column(0), files);
    QVERIFY(rowsAreWhole(bench, files));
    QVERIFY(bench.table()->isSortingEnabled());
}

void TestRowOrder::sortingWorksAfterwards()
{
    WindowBench bench;
    const QStringList files = addFamily(bench, 3);
    bench.addFiles(files);
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    clickHeader(bench, 0, 1);
    QCOMPARE(bench.column(0), QStringList({files[2], files[1], files[0]}));
    QVERIFY(rowsAreWhole(bench, files));
}

QUORLIN_TEST(TestRowOrder)
#include "test_row_order.moc"
