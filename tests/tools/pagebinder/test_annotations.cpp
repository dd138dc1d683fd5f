// The annotations of a merged file: which come along, and where links and actions lead.

#include "merge_bench.h"
#include "tests/support/room.h"

#include <QTest>

class TestAnnotations : public QObject
{
    Q_OBJECT

private slots:
    void anAnnotationListedTwiceComesOnce();
    void anAnnotationWithoutAKindStaysBehind();
    void aDestinationWithoutAViewShowsThePage();
    void aLinkLeadsToTheFirstOfTwoCopies();
    void scriptsStayBehind();
    void namesAtTheLimitsOfANodeAreFound();

private:
    /// The first annotation of the first page.
    static QByteArray first(const QByteArray &key) { return "Root/Pages/Kids/0/Annots/0/" + key; }
    /// Two pages, on each of which stand the annotations @p references.
    static TestPdf pages(const QByteArray &references, const QByteArray &catalog = {})
    {
        return TestPdf::pages(2, catalog, "/Annots[" + references + "]");
    }

    MergeBench m_bench;
};

void TestAnnotations::anAnnotationListedTwiceComesOnce()
{
    TestPdf pdf = pages("41 0 R 41 0 R");
    pdf.object(41, "<</Subtype/Text/Rect[0 0 9 9]/Contents(note)>>");
    const auto output = m_bench.merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->value(first("Contents")), QByteArray("(note)"));
    QCOMPARE(output->value("Root/Pages/Kids/0/Annots/1"), QByteArray("null"));
}

void TestAnnotations::anAnnotationWithoutAKindStaysBehind()
{
    TestPdf pdf = pages("41 0 R 42 0 R");
    pdf.object(41, "<</Rect[0 0 9 9]/Contents(of no kind)>>");
    pdf.object(42, "<</Subtype/Text/Rect[0 0 9 9]/Contents(note)>>");
    const auto output = m_bench.merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->value(first("Contents")), QByteArray("(note)"));
    QVERIFY(!output->everything().contains("of no kind"));
}

void TestAnnotations::aDestinationWithoutAViewShowsThePage()
{
    TestPdf pdf = pages("41 0 R");
    pdf.object(41, "<</Subtype/Link/Rect[0 0 9 9]/Dest[20 0 R]>>");
    const auto output = m_bench.merged(pdf, "1-2");
    QVERIFY(output);
    QCOMPARE(output->value(first("Dest/0/Type")), QByteArray("/Page"));
    QCOMPARE(output->value(first("Dest/1")), QByteArray("/Fit"));
}

void TestAnnotations::aLinkLeadsToTheFirstOfTwoCopies()
{
    TestPdf pdf = TestPdf::pages(2, {}, "/Annots[41 0 R]");
    pdf.object(41, "<</Subtype/Link/Rect[0 0 9 9]/Dest[20 0 R/Fit]>>");
    const auto output = m_bench.merged(pdf, "2 1 2");
    QVERIFY(output);
    const QByteArray pages = output->value("Root/Pages/Kids"); // "[4 0 R 7 0 R 9 0 R]"
    const QByteArray firstPage = pages.mid(1, pages.indexOf('R') - 1);
    QCOMPARE(output->value("Root/Pages/Kids/1/Annots/0/Dest"), "[" + firstPage + "R/Fit]");
}

void TestAnnotations::scriptsStayBehind()
{
    TestPdf pdf = pages("41 0 R");
    pdf.object(41, "<</Subtype/Link/Rect[0 0 9 9]/A<</S/JavaScript/JS(run)>>>>");
    const auto output = m_bench.merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->value(first("Subtype")), QByteArray("/Link"));
    QCOMPARE(output->value(first("A")), QByteArray("null"));
}

void TestAnnotations::namesAtTheLimitsOfANodeAreFound()
{
    TestPdf pdf = pages("41 0 R 42 0 R", "/Names<</Dests 50 0 R>>");
    pdf.object(41, "<</Subtype/Link/Rect[0 0 9 9]/Dest(a)>>");
    pdf.object(42, "<</Subtype/Link/Rect[0 0 9 9]/Dest(c)>>");
    pdf.object(50, "<</Kids[51 0 R]>>");
    pdf.object(51,
               "<</Limits[(a)(c)]/Names[(a)[20 0 R/FitH 1](b)[10 0 R/Fit](c)[20 0 R/FitH 3]]>>");
    const auto output = m_bench.merged(pdf, "1-2");
    QVERIFY(output);
    QCOMPARE(output->value(first("Dest/2")), QByteArray("1"));
    QCOMPARE(output->value("Root/Pages/Kids/0/Annots/1/Dest/2"), QByteArray("3"));
}

QUORLIN_TEST(TestAnnotations)
#include "test_annotations.moc"
