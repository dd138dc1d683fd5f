// The labels of a merged file's pages: each page keeps the one it had.

#include "merge_bench.h"
#include "tests/support/room.h"

#include <QTest>

class TestPageLabels : public QObject
{
    Q_OBJECT

private slots:
    void labels_data();
    void labels();
    void documentsWithoutLabelsGetNone();
    void treesAreReadToTheirLeaves();

private:
    MergeBench m_bench;
};

void TestPageLabels::labels_data()
{
    QTest::addColumn<QByteArray>("numbers");
    QTest::addColumn<QString>("ranges");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const char *numbers, const char *ranges,
                        const char *expected) {
        QTest::newRow(name) << QByteArray(numbers) << QString(ranges) << QByteArray(expected);
    };
    row("the first page", "0<</S/D>>", "1", "[0<</S/D>>]");
    row("pages that follow each other", "0<</S/D>>", "2-4", "[0<</S/D/St 2>>]");
    row("a gap inside one numbering", "0<</S/D>>", "1 3", "[0<</S/D>>1<</S/D/St 3>>]");
    row("backwards", "0<</S/D>>", "3 2", "[0<</S/D/St 3>>1<</S/D/St 2>>]");
    row("twice the same", "0<</S/D>>", "2 2", "[0<</S/D/St 2>>1<</S/D/St 2>>]");
    row("over the end of a numbering", "0<</S/r>>2<</S/D>>", "2-3", "[0<</S/r/St 2>>1<</S/D>>]");
    row("back over the beginning of a numbering", "0<</S/r>>2<</S/D>>", "3 1",
        "[0<</S/D>>1<</S/r>>]");
    row("a start of its own", "0<</S/D/St 10>>", "2", "[0<</S/D/St 11>>]");
    row("back at number one", "0<</S/D/St 0>>", "2", "[0<</S/D>>]");
    row("a prefix alone", "0<</P(Cover)>>", "1", "[0<</P(Cover)>>]");
    row("style and prefix", "0<</S/A/P(x-)/Type/PageLabel/Odd 1>>", "1", "[0<</S/A/P(x-)>>]");
    row("before the first numbering", "2<</S/r>>", "2-3", "[0<</S/D/St 2>>1<</S/r>>]");
    row("no dictionary", "0 null 2<</S/r>>", "1-3", "[0<</S/D>>2<</S/r>>]");
    row("two numberings at one page", "0<</S/r>>0<</S/A>>", "1", "[0<</S/r>>]");
    row("numberings out of order", "2<</S/A>>0<</S/r>>", "2-3", "[0<</S/r/St 2>>1<</S/A>>]");
    row("a negative page", "-1<</S/r>>0<</S/D>>", "1", "[0<</S/D>>]");
    row("a number without a value", "0<</S/r>>3", "4", "[0<</S/r/St 4>>]");
}

void TestPageLabels::labels()
{
    QFETCH(QByteArray, numbers);
    QFETCH(QString, ranges);
    const auto output =
        m_bench.merged(TestPdf::pages(5, "/PageLabels<</Nums[" + numbers + "]>>"), ranges);
    QVERIFY(output);
    QTEST(output->value("Root/PageLabels/Nums"), "expected");
}

void TestPageLabels::documentsWithoutLabelsGetNone()
{
    const auto none = m_bench.merged(TestPdf::pages(2), "2");
    QVERIFY(none);
    QCOMPARE(none->value("Root/PageLabels"), QByteArray("null"));
    const auto odd = m_bench.merged(TestPdf::pages(2, "/PageLabels[0<</S/r>>]"), "2");
    QVERIFY(odd);
    QCOMPARE(odd->value("Root/PageLabels"), QByteArray("null"));
}

void TestPageLabels::treesAreReadToTheirLeaves()
{
    TestPdf pdf = TestPdf::pages(5, "/PageLabels 50 0 R");
    pdf.object(50, "<</Kids[51 0 R 52 0 R]>>");
    pdf.object(51, "<</Limits[0 0]/Nums[0<</S/r>>]>>");
    pdf.object(52, "<</Limits[3 4]/Kids[53 0 R 54 0 R]>>");
    pdf.object(53, "<</Limits[3 3]/Nums[3<</S/A>>]>>");
    pdf.object(54, "<</Limits[4 4]/Nums[4<</S/D>>]/Kids[50 0 R]>>");
    const auto output = m_bench.merged(pdf, "3-5");
    QVERIFY(output);
    QCOMPARE(output->value("Root/PageLabels/Nums"),
             QByteArray("[0<</S/r/St 3>>1<</S/A>>2<</S/D>>]"));
}

QUORLIN_TEST(TestPageLabels)
#include "test_page_labels.moc"
