#include "pipeline/text_place.h"
#include "tests/support/room.h"

#include <QTest>

using namespace quorlin;

namespace {

/// An item line's fields: "left top width height text" with the numbers separated by blanks.
QByteArray fields(const QByteArray &item)
{
    QByteArray bytes = item;
    for (qsizetype blank = 0, count = 0; count < 4; ++count) {
        blank = bytes.indexOf(' ', blank);
        bytes[blank] = '\t';
    }
    return bytes;
}

/// The text that @p place finds on a page with @p items, "(none)" where there is none.
QString textOf(const TextPlace &place, const QByteArrayList &items)
{
    const std::unique_ptr<TextRule> rule = makeTextRule(place);
    // What a page leaves behind must not be seen on the next one.
    rule->takeItem(QByteArrayView("1\t1\t1\t1\tearlier page"));
    static_cast<void>(rule->endPage());
    QByteArrayList kept;
    for (const QByteArray &item : items) {
        kept.append(fields(item));
    }
    for (const QByteArray &item : kept) {
        rule->takeItem(item);
    }
    return rule->endPage().value_or("(none)");
}

} // namespace

class TestTextPlace : public QObject
{
    Q_OBJECT

private slots:
    void theNearestItemWithinTheToleranceCounts_data();
    void theNearestItemWithinTheToleranceCounts();
    void aRegionJoinsItsItemsInReadingOrder_data();
    void aRegionJoinsItsItemsInReadingOrder();
    void theItemBehindTheLabelCounts_data();
    void theItemBehindTheLabelCounts();
    void onlyWhatThePatternMatchesCounts_data();
    void onlyWhatThePatternMatchesCounts();
    void numbersAtTheirLimitsAreHarmless();
    void placesAreDescribed();
};

void TestTextPlace::theNearestItemWithinTheToleranceCounts_data()
{
    QTest::addColumn<int>("tolerance");
    QTest::addColumn<QByteArrayList>("items");
    QTest::addColumn<QString>("text");
    QTest::newRow("without tolerance only the position counts")
        << 0 << QByteArrayList{"101 50 9 9 off", "100 50 9 9 exact"} << "exact";
    QTest::newRow("the edge belongs to it") << 3 << QByteArrayList{"103 47 9 9 edge"} << "edge";
    QTest::newRow("beyond the edge")
        << 3 << QByteArrayList{"104 50 9 9 far", "100 54 9 9 low"} << "(none)";
    QTest::newRow("the nearest of several")
        << 5 << QByteArrayList{"104 50 9 9 four off", "99 51 9 9 near", "100 53 9 9 three off"}
        << "near";
    QTest::newRow("the first of the equally near")
        << 5 << QByteArrayList{"102 50 9 9 first", "98 50 9 9 second"} << "first";
}

void TestTextPlace::theNearestItemWithinTheToleranceCounts()
{
    QFETCH(int, tolerance);
    QFETCH(QByteArrayList, items);
    TextPlace place;
    place.position = QPoint(100, 50);
    place.tolerance = tolerance;
    QTEST(textOf(place, items), "text");
}

void TestTextPlace::aRegionJoinsItsItemsInReadingOrder_data()
{
    QTest::addColumn<QByteArrayList>("items");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing in it") << QByteArrayList{"10 10 9 9 outside"} << "(none)";
    QTest::newRow("left and upper edge belong to it")
        << QByteArrayList{"100 50 300 20 wider than the region"} << "wider than the region";
    QTest::newRow("right and lower edge do not")
        << QByteArrayList{"200 50 9 9 right", "100 90 9 9 below"} << "(none)";
    QTest::newRow("a line from the left")
        << QByteArrayList{"150 50 20 20 Lovelace", "101 50 20 20 Ada"} << "Ada Lovelace";
    QTest::newRow("line by line") << QByteArrayList{"101 75 20 12 lower", "160 52 20 12 right",
                                                    "101 52 20 12 left"}
                                  << "left right lower";
    QTest::newRow("letters of two sizes on one baseline")
        << QByteArrayList{"150 60 20 12 small", "101 53 40 23 BIG"} << "BIG small";
    QTest::newRow("a line that is read from the right")
        << QByteArrayList{"101 50 20 20 \xd7\x91", "150 50 20 20 \xd7\x90"}
        << QString::fromUtf8("\xd7\x90 \xd7\x91");
}

void TestTextPlace::aRegionJoinsItsItemsInReadingOrder()
{
    QFETCH(QByteArrayList, items);
    TextPlace place;
    place.kind = TextPlace::Kind::Region;
    place.region = QRect(100, 50, 100, 40);
    QTEST(textOf(place, items), "text");
}

void TestTextPlace::theItemBehindTheLabelCounts_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QByteArrayList>("items");
    QTest::addColumn<QString>("text");
    const QByteArray label = "100 50 80 12 Account no.";
    QTest::newRow("no label") << "Account no." << QByteArrayList{"100 50 80 12 Balance"}
                              << "(none)";
    QTest::newRow("nothing behind it") << "Account no." << QByteArrayList{label} << "(none)";
    QTest::newRow("the next item on its line")
        << "Account no." << QByteArrayList{"400 50 30 12 far", label, "200 50 30 12 10-1"}
        << "10-1";
    QTest::newRow("wherever it stands on the line")
        << "Account no." << QByteArrayList{label, "700 50 30 12 10-2"} << "10-2";
    QTest::newRow("not what stands before it")
        << "Account no." << QByteArrayList{"20 50 30 12 before", label} << "(none)";
    QTest::newRow("a larger text on the same baseline")
        << "Account no." << QByteArrayList{label, "200 43 60 21 10-3"} << "10-3";
    QTest::newRow("the line below where nothing follows")
        << "Account no." << QByteArrayList{label, "100 66 30 12 10-4", "100 82 30 12 next"}
        << "10-4";
    QTest::newRow("below, but beside it")
        << "Account no." << QByteArrayList{label, "300 66 30 12 other column"} << "(none)";
    QTest::newRow("far below") << "Account no."
                               << QByteArrayList{label, "100 150 30 12 another part"} << "(none)";
    QTest::newRow("the rest of its own item")
        << "Account no." << QByteArrayList{"100 50 80 12 Account no.: 10-5", "300 50 9 12 x"}
        << "10-5";
    QTest::newRow("a dotted leader")
        << "Account no." << QByteArrayList{"100 50 80 12 Account no. ..... 10-6"} << "10-6";
    QTest::newRow("a colon of its own")
        << "Account" << QByteArrayList{"100 50 80 12 Account", "185 50 3 12 :", "200 50 9 12 10-7"}
        << "10-7";
    QTest::newRow("a sign is kept")
        << "Balance" << QByteArrayList{"1 50 80 12 Balance: -12.50"} << "-12.50";
    QTest::newRow("whole words only") << "count"
                                      << QByteArrayList{"1 50 80 12 Account", "100 50 9 12 no",
                                                        "1 70 80 12 counter", "100 70 9 12 no"}
                                      << "(none)";
    QTest::newRow("upper and lower case differ")
        << "account" << QByteArrayList{"1 50 80 12 Account", "100 50 9 12 no"} << "(none)";
    QTest::newRow("the nearest where it comes twice")
        << "Account"
        << QByteArrayList{"1 50 80 12 Account", "300 50 9 12 far off", "1 90 80 12 Account",
                          "90 90 9 12 near"}
        << "near";
    QTest::newRow("a label of its own before words of a sentence")
        << "Account"
        << QByteArrayList{"1 10 300 12 Your Account in this month", "1 30 300 12 Account summary",
                          "1 90 80 12 Account", "90 90 9 12 10-8"}
        << "10-8";
    QTest::newRow("blanks in the label count once")
        << "  Account   no. " << QByteArrayList{label, "200 50 30 12 10-9"} << "10-9";
    QTest::newRow("a label that is read from the right")
        << QString::fromUtf8("\xd7\x97\xd7\xa9")
        << QByteArrayList{"300 50 40 12 \xd7\x97\xd7\xa9", "350 50 9 12 before",
                          "200 50 60 12 10-10"}
        << "10-10";
}

void TestTextPlace::theItemBehindTheLabelCounts()
{
    QFETCH(QString, label);
    QFETCH(QByteArrayList, items);
    TextPlace place;
    place.kind = TextPlace::Kind::Label;
    place.label = label;
    QTEST(textOf(place, items), "text");
}

void TestTextPlace::onlyWhatThePatternMatchesCounts_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("text");
    QTest::newRow("the whole match") << "\\d{2}-\\d+"
                                     << "10-447";
    QTest::newRow("the first group") << "(\\d{2})-(\\d+)"
                                     << "10";
    QTest::newRow("no match") << "^\\d"
                              << "(none)";
    QTest::newRow("an empty match") << "x*"
                                    << "(none)";
    QTest::newRow("a group that took no part") << "(x)?No"
                                               << "(none)";
    QTest::newRow("blanks at the ends are no text") << "(:\\s*)\\d"
                                                    << ":";
    QTest::newRow("letters of all scripts are letters") << "\\w+$" << QString::fromUtf8("é");
}

void TestTextPlace::onlyWhatThePatternMatchesCounts()
{
    QFETCH(QString, pattern);
    TextPlace place;
    place.position = QPoint(1, 2);
    place.match = QRegularExpression(pattern, QRegularExpression::UseUnicodePropertiesOption);
    QTEST(textOf(place, {"1 2 9 9 No: 10-447 \xc3\xa9"}), "text");
    QCOMPARE(textOf(place, {"9 9 9 9 10-447"}), "(none)");
}

void TestTextPlace::numbersAtTheirLimitsAreHarmless()
{
    const QByteArrayList items = {"2147483647 2147483647 2147483647 2147483647 A",
                                  "0 2147483647 2147483647 1 A", "0 0 0 0 A"};
    TextPlace place;
    place.kind = TextPlace::Kind::Label;
    place.label = "A";
    QCOMPARE(textOf(place, items), "A");
    place.kind = TextPlace::Kind::Region;
    place.region = QRect(0, 0, 2147483647, 2147483647);
    QCOMPARE(textOf(place, items), "A");
    place.kind = TextPlace::Kind::Position;
    place.position = QPoint(2147483647, 0);
    place.tolerance = 100000;
    QCOMPARE(textOf(place, items), "(none)");
}

void TestTextPlace::placesAreDescribed()
{
    TextPlace place;
    place.position = QPoint(600, 152);
    QCOMPARE(describePlace(place), "at 600,152");
    place.tolerance = 4;
    QCOMPARE(describePlace(place), "within 4 units of 600,152");
    place.match = QRegularExpression("\\d+");
    QCOMPARE(describePlace(place), "within 4 units of 600,152 that matches \\d+");
    place.match = {};
    place.kind = TextPlace::Kind::Region;
    place.region = QRect(1, 2, 30, 40);
    QCOMPARE(describePlace(place), "in 1,2,30,40");
    place.kind = TextPlace::Kind::Label;
    place.label = "Account";
    QCOMPARE(describePlace(place), "after \"Account\"");
}

QUORLIN_TEST(TestTextPlace)
#include "test_text_place.moc"
