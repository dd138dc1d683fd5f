// The structure tags of a merged file: those of its pages, and nothing of other pages.

#include "merge_bench.h"
#include "tests/support/room.h"

#include <QTest>

class TestStructure : public QObject
{
    Q_OBJECT

private slots:
    void aPageKeepsItsElementsAndThoseAbove();
    void nothingOfOtherElementsTravels();
    void aParagraphOverTheCutIsInBothParts();
    void aPageThatComesTwiceHasElementsTwice();
    void cellsNameTheirHeadersThatAreKept();
    void annotationsAndFormsAreLinkedAnew();
    void brokenTreesGiveWhatCanBeKept_data();
    void brokenTreesGiveWhatCanBeKept();
    void treesWithoutSenseGiveNoTags_data();
    void treesWithoutSenseGiveNoTags();
    void namespacesAndFilesOfKeptElementsStay();
    void marksThatStandElsewhereAreOnTheElementsPage();
    void claimsStayWhereTheTagsAreWhole();

private:
    /// Three pages with a paragraph each (51 to 53), and one over the last two (54).
    static TestPdf tagged(const QByteArray &catalog = {})
    {
        TestPdf pdf =
            TestPdf::pages(3, "/StructTreeRoot 40 0 R/MarkInfo<</Marked true>>/Lang(en)" + catalog);
        pdf.object(40, "<</Type/StructTreeRoot/K 41 0 R/ParentTree 42 0 R/RoleMap<</Para/P/Own2/P"
                       ">>>>");
        pdf.object(41, "<</Type/StructElem/S/Document/P 40 0 R/K[51 0 R 52 0 R 54 0 R 53 0 R]>>");
        pdf.object(42, "<</Nums[0[51 0 R]1[52 0 R 54 0 R]2[54 0 R 53 0 R]]>>");
        pdf.object(51, "<</Type/StructElem/S/Para/P 41 0 R/Pg 10 0 R/K 0/Alt(alt-one)"
                       "/A<</O/Layout/SpaceBefore 4>>>>");
        pdf.object(52, "<</Type/StructElem/S/Own2/P 41 0 R/Pg 20 0 R/K 0/ActualText(alt-two)>>");
        pdf.object(53, "<</Type/StructElem/S/P/P 41 0 R/Pg 30 0 R/K[1]/T(alt-three)>>");
        pdf.object(54, "<</Type/StructElem/S/P/P 41 0 R/Pg 20 0 R/ActualText(both)/Alt(over)"
                       "/K[1<</Type/MCR/Pg 30 0 R/MCID 0>>]>>");
        for (int page = 1; page <= 3; ++page) {
            pdf.object(10 * page, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/StructParents " +
                                      QByteArray::number(page - 1) + "/Contents " +
                                      QByteArray::number(10 * page + 1) + " 0 R>>");
            pdf.stream(10 * page + 1, "", "/P <</MCID 0>> BDC EMC /P <</MCID 1>> BDC EMC");
        }
        return pdf;
    }

    MergeBench m_bench;
};

void TestStructure::aPageKeepsItsElementsAndThoseAbove()
{
    const auto output = m_bench.merged(tagged(), "1");
    QVERIFY(output);
    QCOMPARE(output->value("Root/MarkInfo/Marked"), QByteArray("true"));
    QCOMPARE(output->value("Root/StructTreeRoot/K/S"), QByteArray("/Document"));
    const QByteArray element = "Root/StructTreeRoot/K/K/";
    QCOMPARE(output->value(element + "S"), QByteArray("/Para"));
    QCOMPARE(output->value(element + "K"), QByteArray("0"));
    QCOMPARE(output->value(element + "Alt"), QByteArray("(alt-one)"));
    QCOMPARE(output->value(element + "A/SpaceBefore"), QByteArray("4"));
    QCOMPARE(output->value(element + "Pg"), output->value("Root/Pages/Kids/0"));
    QCOMPARE(output->value(element + "P/P/Type"), QByteArray("/StructTreeRoot"));
    QCOMPARE(output->value("Root/Pages/Kids/0/StructParents"), QByteArray("0"));
    QCOMPARE(output->value("Root/StructTreeRoot/ParentTree/Nums/1/0/S"), QByteArray("/Para"));
    QCOMPARE(output->value("Root/StructTreeRoot/RoleMap/Para"), QByteArray("/P"));
    QCOMPARE(output->value("Root/StructTreeRoot/RoleMap/Own2"), QByteArray("null"));
}

void TestStructure::nothingOfOtherElementsTravels()
{
    const auto output = m_bench.merged(tagged(), "1");
    QVERIFY(output);
    const QByteArray everything = output->everything();
    for (const char *other : {"alt-two", "alt-three", "both", "over", "Own2"}) {
        QVERIFY2(!everything.contains(other), other);
    }
}

void TestStructure::aParagraphOverTheCutIsInBothParts()
{
    const auto first = m_bench.merged(tagged(), "2");
    QVERIFY(first);
    const QByteArray over = "Root/StructTreeRoot/K/K/1/";
    QCOMPARE(first->value(over + "K"), QByteArray("1"));
    QCOMPARE(first->value(over + "Alt"), QByteArray("(over)"));
    QCOMPARE(first->value(over + "ActualText"), QByteArray("null"));
    const auto second = m_bench.merged(tagged(), "3");
    QVERIFY(second);
    QCOMPARE(second->value("Root/StructTreeRoot/K/K/0/K"), QByteArray("0"));
    QCOMPARE(second->value("Root/StructTreeRoot/K/K/1/T"), QByteArray("(alt-three)"));
    const auto both = m_bench.merged(tagged(), "2-3");
    QVERIFY(both);
    QCOMPARE(both->value(over + "ActualText"), QByteArray("(both)"));
    QCOMPARE(both->value(over + "K/1/MCID"), QByteArray("0"));
}

void TestStructure::aPageThatComesTwiceHasElementsTwice()
{
    const auto output = m_bench.merged(tagged(), "1 1");
    QVERIFY(output);
    const QByteArray elements = "Root/StructTreeRoot/K/K/";
    QCOMPARE(output->value(elements + "0/Alt"), QByteArray("(alt-one)"));
    QCOMPARE(output->value(elements + "1/Alt"), QByteArray("(alt-one)"));
    QCOMPARE(output->value("Root/Pages/Kids/0/StructParents"), QByteArray("0"));
    QCOMPARE(output->value("Root/Pages/Kids/1/StructParents"), QByteArray("1"));
    QCOMPARE(output->value(elements + "2"), QByteArray("null"));
}

void TestStructure::cellsNameTheirHeadersThatAreKept()
{
    TestPdf pdf = tagged();
    pdf.object(51, "<</Type/StructElem/S/TD/P 41 0 R/Pg 10 0 R/K 0/ID(own)"
                   "/A[<</O/Table/Headers[(own)(elsewhere)]/ColSpan 2>>]>>");
    pdf.object(52, "<</Type/StructElem/S/TH/P 41 0 R/Pg 20 0 R/K 0/ID(elsewhere)>>");
    const auto part = m_bench.merged(pdf, "1");
    QVERIFY(part);
    QCOMPARE(part->value("Root/StructTreeRoot/K/K/A/0/Headers"), QByteArray("[(own)]"));
    QCOMPARE(part->value("Root/StructTreeRoot/K/K/A/0/ColSpan"), QByteArray("2"));
    QCOMPARE(part->value("Root/StructTreeRoot/IDTree/Names/0"), QByteArray("(own)"));
    QVERIFY(!part->everything().contains("elsewhere"));
    const auto whole = m_bench.merged(pdf, "1-3");
    QVERIFY(whole);
    QCOMPARE(whole->value("Root/StructTreeRoot/IDTree/Names/0"), QByteArray("(elsewhere)"));
    QCOMPARE(whole->value("Root/StructTreeRoot/IDTree/Names/1/S"), QByteArray("/TH"));
}

void TestStructure::annotationsAndFormsAreLinkedAnew()
{
    TestPdf pdf = tagged();
    pdf.object(10, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/StructParents 0/Contents 11 0 R"
                   "/Annots[60 0 R]/Resources<</XObject<</X 61 0 R>>>>>>");
    pdf.stream(11, "", "/P <</MCID 0>> BDC EMC /X Do");
    pdf.object(60, "<</Type/Annot/Subtype/Link/Rect[0 0 9 9]/StructParent 7"
                   "/A<</S/URI/URI(http://example.org)>>>>");
    pdf.stream(61, "/Subtype/Form/BBox[0 0 9 9]/StructParents 8", "/P <</MCID 0>> BDC EMC");
    pdf.object(42, "<</Nums[0[51 0 R]1[52 0 R 54 0 R]2[54 0 R 53 0 R]7 51 0 R 8[51 0 R]]>>");
    pdf.object(51, "<</Type/StructElem/S/P/P 41 0 R/Pg 10 0 R/K[0<</Type/OBJR/Obj 60 0 R>>"
                   "<</Type/MCR/Stm 61 0 R/MCID 0>>]>>");
    const auto output = m_bench.merged(pdf, "1");
    QVERIFY(output);
    const QByteArray kids = "Root/StructTreeRoot/K/K/K/";
    QCOMPARE(output->value(kids + "1/Obj/Subtype"), QByteArray("/Link"));
    QCOMPARE(output->value(kids + "2/Stm/Subtype"), QByteArray("/Form"));
    QCOMPARE(output->value("Root/Pages/Kids/0/Annots/0/StructParent"), QByteArray("1"));
    QCOMPARE(output->value("Root/Pages/Kids/0/Resources/XObject/X/StructParents"), QByteArray("2"));
    QCOMPARE(output->value("Root/StructTreeRoot/ParentTree/Nums/3/S"), QByteArray("/P"));
    QCOMPARE(output->value("Root/StructTreeRoot/ParentTree/Nums/5/0/S"), QByteArray("/P"));
}

void TestStructure::brokenTreesGiveWhatCanBeKept_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QByteArray>("object");
    QTest::newRow("no parent tree") << 42 << QByteArray("null");
    QTest::newRow("numbers of other pages")
        << 42 << QByteArray("<</Nums[0[52 0 R]1[51 0 R]2[53 0 R]]>>");
    QTest::newRow("a parent tree that leads back to itself")
        << 42 << QByteArray("<</Kids[42 0 R]>>");
    QTest::newRow("elements listed twice, and one above")
        << 41
        << QByteArray(
               "<</Type/StructElem/S/Document/P 40 0 R/K[51 0 R 51 0 R 41 0 R 40 0 R null]>>");
    QTest::newRow("an element that names no parent")
        << 51 << QByteArray("<</S/Para/Pg 10 0 R/K 0/Alt(alt-one)>>");
    QTest::newRow("a mark that stands elsewhere")
        << 51 << QByteArray("<</S/Para/P 41 0 R/Pg 10 0 R/K 70 0 R/Alt(alt-one)>>");
}

void TestStructure::brokenTreesGiveWhatCanBeKept()
{
    QFETCH(int, number);
    QFETCH(QByteArray, object);
    TestPdf pdf = tagged();
    pdf.object(70, "[0]");
    pdf.object(number, object);
    const auto output = m_bench.merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->value("Root/StructTreeRoot/K/K/Alt"), QByteArray("(alt-one)"));
    QCOMPARE(output->value("Root/StructTreeRoot/ParentTree/Nums/1/0/Alt"), QByteArray("(alt-one)"));
    QVERIFY(!output->everything().contains("alt-two"));
}

void TestStructure::treesWithoutSenseGiveNoTags_data()
{
    QTest::addColumn<QByteArray>("root");
    QTest::newRow("nothing below the root") << QByteArray("<</Type/StructTreeRoot>>");
    QTest::newRow("kids that are none")
        << QByteArray("<</K[null 7 0 R 99 0 R (x) /N 1.5 40 0 R]>>");
    QTest::newRow("a stream in place of the list") << QByteArray("<</K 11 0 R>>");
}

void TestStructure::treesWithoutSenseGiveNoTags()
{
    QFETCH(QByteArray, root);
    TestPdf pdf = tagged();
    pdf.object(40, root);
    const auto output = m_bench.merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->value("Root/StructTreeRoot"), QByteArray("null"));
    QCOMPARE(output->value("Root/MarkInfo"), QByteArray("null"));
    QCOMPARE(output->value("Root/Pages/Kids/0/StructParents"), QByteArray("null"));
}

void TestStructure::namespacesAndFilesOfKeptElementsStay()
{
    TestPdf pdf = tagged();
    pdf.object(40, "<</Type/StructTreeRoot/K 41 0 R/ParentTree 42 0 R/Namespaces[70 0 R 71 0 R]>>");
    pdf.object(51, "<</Type/StructElem/S/Para/P 41 0 R/Pg 10 0 R/K 0/NS 70 0 R/AF[72 0 R]>>");
    pdf.object(52, "<</Type/StructElem/S/Para/P 41 0 R/Pg 20 0 R/K 0/NS 71 0 R/AF 73 0 R>>");
    pdf.object(70, "<</Type/Namespace/NS(first-space)/RoleMapNS<</Para/P>>>>");
    pdf.object(71, "<</Type/Namespace/NS(second-space)>>");
    pdf.object(72, "<</Type/Filespec/F(first.xml)/AFRelationship/Data/EF<</F 74 0 R>>>>");
    pdf.object(73, "<</Type/Filespec/F(second.xml)/AFRelationship/Data/EF<</F 75 0 R>>>>");
    pdf.stream(74, "/Type/EmbeddedFile", "<first/>");
    pdf.stream(75, "/Type/EmbeddedFile", "<second/>");
    const auto output = m_bench.merged(pdf, "1");
    QVERIFY(output);
    const QByteArray element = "Root/StructTreeRoot/K/K/";
    QCOMPARE(output->value(element + "NS/NS"), QByteArray("(first-space)"));
    QCOMPARE(output->value(element + "NS/RoleMapNS/Para"), QByteArray("/P"));
    QCOMPARE(output->value(element + "AF/0/F"), QByteArray("(first.xml)"));
    QCOMPARE(output->value("Root/StructTreeRoot/Namespaces/0/NS"), QByteArray("(first-space)"));
    QCOMPARE(output->value("Root/StructTreeRoot/Namespaces/1"), QByteArray("null"));
    const QByteArray everything = output->everything();
    QVERIFY(everything.contains("<first/>"));
    for (const char *other : {"second-space", "second.xml", "<second/>"}) {
        QVERIFY2(!everything.contains(other), other);
    }
}

void TestStructure::marksThatStandElsewhereAreOnTheElementsPage()
{
    // The mark on page 2 names no page of its own and has the number of the one on page 3.
    TestPdf pdf = tagged();
    pdf.object(42, "<</Nums[0[51 0 R]1[54 0 R 52 0 R]2[54 0 R 53 0 R]]>>");
    pdf.object(52, "<</Type/StructElem/S/P/P 41 0 R/Pg 20 0 R/K 1>>");
    pdf.object(54, "<</Type/StructElem/S/P/P 41 0 R/Pg 20 0 R/Alt(over)/K[71 0 R 70 0 R]>>");
    pdf.object(70, "<</Type/MCR/Pg 30 0 R/MCID 0>>");
    pdf.object(71, "<</Type/MCR/MCID 0>>");
    for (const char *page : {"2", "3"}) {
        const auto output = m_bench.merged(pdf, page);
        QVERIFY(output);
        const QByteArray parents = "Root/StructTreeRoot/ParentTree/Nums/1/";
        QCOMPARE(output->value(parents + "0/Alt"), QByteArray("(over)"));
        QCOMPARE(output->value(parents + "0/K"), QByteArray("0"));
        QVERIFY(output->value(parents + "1/S") == "/P");
    }
}

void TestStructure::claimsStayWhereTheTagsAreWhole()
{
    const QByteArray catalog = "/Metadata 43 0 R/ViewerPreferences<</DisplayDocTitle true>>";
    TestPdf pdf = tagged(catalog);
    pdf.stream(43, "/Type/Metadata/Subtype/XML",
               "<pdfaid:conformance>A</pdfaid:conformance><pdfuaid:part>1</pdfuaid:part>");
    const auto whole = m_bench.merged(pdf, "1");
    QVERIFY(whole);
    QVERIFY(whole->everything().contains("<pdfaid:conformance>A<"));
    QVERIFY(whole->everything().contains("<pdfuaid:part>1<"));
    pdf.object(51, "<</Type/StructElem/S/H2/P 41 0 R/Pg 10 0 R/K 0>>");
    const auto deep = m_bench.merged(pdf, "1");
    QVERIFY(deep);
    QVERIFY(deep->everything().contains("<pdfaid:conformance>A<"));
    QVERIFY(!deep->everything().contains("pdfuaid"));
    pdf.object(42, "null");
    const auto broken = m_bench.merged(pdf, "1");
    QVERIFY(broken);
    QVERIFY(broken->everything().contains("<pdfaid:conformance>B<"));
}

QUORLIN_TEST(TestStructure)
#include "test_structure.moc"
