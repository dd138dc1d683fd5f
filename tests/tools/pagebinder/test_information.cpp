// What -getinfo writes about a document.

#include "merge_bench.h"
#include "tests/support/room.h"

#include <QTest>

class TestInformation : public QObject
{
    Q_OBJECT

private slots:
    void pageSizes_data();
    void pageSizes();
    void textsComeInAFixedOrder();
    void textsOfAnyKindBecomeUtf8_data();
    void textsOfAnyKindBecomeUtf8();
    void valuesOfOtherKindsAreLeftOut();
    void formsAndTagsAreNamed();
    void theVersionIsThatOfTheDocument();

private:
    MergeBench m_bench;
};

void TestInformation::pageSizes_data()
{
    QTest::addColumn<QByteArray>("root");
    QTest::addColumn<QByteArray>("page");
    QTest::addColumn<QByteArray>("size");
    const auto row = [](const char *name, const char *root, const char *page, const char *size) {
        QTest::newRow(name) << QByteArray(root) << QByteArray(page) << QByteArray(size);
    };
    row("as it stands", "", "/MediaBox[0 0 200 300]", "200.00 x 300.00 pt");
    row("turned once", "", "/MediaBox[0 0 200 300]/Rotate 90", "300.00 x 200.00 pt");
    row("upside down", "", "/MediaBox[0 0 200 300]/Rotate 180", "200.00 x 300.00 pt");
    row("turned back", "", "/MediaBox[0 0 200 300]/Rotate -90", "300.00 x 200.00 pt");
    row("turned by the root", "/Rotate 270", "/MediaBox[0 0 200 300]", "300.00 x 200.00 pt");
    row("box of the root", "/MediaBox[0 0 50 60]", "", "50.00 x 60.00 pt");
    row("cropped", "", "/MediaBox[0 0 200 300]/CropBox[10 20 110 70]", "100.00 x 50.00 pt");
    row("corners the other way", "", "/MediaBox[200 300 0 0]", "200.00 x 300.00 pt");
    row("not at the origin", "", "/MediaBox[-50 -60 50.5 60]", "100.50 x 120.00 pt");
}

void TestInformation::pageSizes()
{
    QFETCH(QByteArray, root);
    QFETCH(QByteArray, page);
    QFETCH(QByteArray, size);
    TestPdf pdf;
    pdf.object(1, "<</Type/Catalog/Pages 2 0 R>>");
    pdf.object(2, "<</Type/Pages/Count 1/Kids[3 0 R]" + root + ">>");
    pdf.object(3, "<</Type/Page/Parent 2 0 R" + page + ">>");
    QVERIFY(m_bench.information(pdf).contains("PageSize: " + size));
}

void TestInformation::textsComeInAFixedOrder()
{
    TestPdf pdf = TestPdf::pages(1);
    pdf.object(40, "<</ModDate(D:2)/CreationDate(D:1)/Producer(p)/Creator(c)/Keywords(k)/Subject(s)"
                   "/Author(a)/Title(t)/Custom(x)>>");
    pdf.trailer("/Info 40 0 R");
    const QList<QByteArray> lines = m_bench.information(pdf);
    QCOMPARE(lines.mid(0, 10),
             (QList<QByteArray>{"NumberOfPages: 1", "Title: t", "Author: a", "Subject: s",
                                "Keywords: k", "Creator: c", "Producer: p", "CreationDate: D:1",
                                "ModDate: D:2", "PageSize: 595.00 x 842.00 pt"}));
}

void TestInformation::textsOfAnyKindBecomeUtf8_data()
{
    QTest::addColumn<QByteArray>("title");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("plain") << QByteArray("(a)") << QByteArray("Title: a");
    QTest::newRow("UTF-16") << QByteArray("<feff00e4>") << QByteArray("Title: \xc3\xa4");
    QTest::newRow("document encoding") << QByteArray("(\xe4)") << QByteArray("Title: \xc3\xa4");
}

void TestInformation::textsOfAnyKindBecomeUtf8()
{
    QFETCH(QByteArray, title);
    QFETCH(QByteArray, line);
    TestPdf pdf = TestPdf::pages(1);
    pdf.object(40, "<</Title" + title + ">>").trailer("/Info 40 0 R");
    QVERIFY(m_bench.information(pdf).contains(line));
}

void TestInformation::valuesOfOtherKindsAreLeftOut()
{
    TestPdf pdf = TestPdf::pages(1);
    pdf.object(40, "<</Title()/Author 5/Subject[(s)]/Keywords null>>").trailer("/Info 40 0 R");
    const QList<QByteArray> lines = m_bench.information(pdf);
    QCOMPARE(lines.value(1), QByteArray("PageSize: 595.00 x 842.00 pt"));
}

void TestInformation::formsAndTagsAreNamed()
{
    const QList<QByteArray> plain =
        m_bench.information(TestPdf::pages(1, "/AcroForm<</Fields[]>>"));
    QVERIFY(plain.contains("Form: no"));
    QVERIFY(plain.contains("Tagged: no"));
    QVERIFY(plain.contains("CopyingAllowed: yes"));
    TestPdf pdf = TestPdf::pages(1, "/AcroForm<</Fields[40 0 R]>>/StructTreeRoot<</Type/X>>");
    pdf.object(40, "<</FT/Tx/T(a)>>");
    const QList<QByteArray> rich = m_bench.information(pdf);
    QVERIFY(rich.contains("Form: yes"));
    QVERIFY(rich.contains("Tagged: yes"));
}

void TestInformation::theVersionIsThatOfTheDocument()
{
    QVERIFY(m_bench.information(TestPdf::pages(1)).contains("PDFVersion: 1.7"));
    QVERIFY(m_bench.information(TestPdf::pages(1, "/Version/2.0")).contains("PDFVersion: 2.0"));
}

QUORLIN_TEST(TestInformation)
#include "test_information.moc"
