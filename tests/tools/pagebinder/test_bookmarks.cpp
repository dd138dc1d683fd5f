// The bookmarks of a merged file: which stay, how they hang together, and which are open.

#include "merge_bench.h"
#include "tests/support/room.h"

#include <QTest>

class TestBookmarks : public QObject
{
    Q_OBJECT

private slots:
    void aClosedBookmarkStaysClosed();
    void anOpenBookmarkCountsWhatItShows();
    void whatLiesInAClosedBookmarkKeepsItsState();
    void neighboursAreLinkedBothWays();
    void everyBookmarkNamesItsParent();
    void actionsThatLeadToAPageAreDestinations();
    void pagesMayBeNamedByTheirNumbers();
    void bookmarksThatLeadToNoPageGo_data();
    void bookmarksThatLeadToNoPageGo();
    void theModeGoesWithTheBookmarks();
    void aBookmarkThatIsMetAgainEndsTheList();

private:
    MergeBench m_bench;
};

namespace {

/// Three pages and bookmarks: object 40 is their root, @p items are objects from 41 on.
TestPdf withBookmarks(const QList<QByteArray> &items)
{
    TestPdf pdf = TestPdf::pages(3, "/Outlines 40 0 R");
    pdf.object(40, "<</Type/Outlines/First 41 0 R/Last 41 0 R/Count 1>>");
    for (int i = 0; i < items.size(); ++i) {
        pdf.object(41 + i, "<<" + items.at(i) + ">>");
    }
    return pdf;
}

/// Two bookmarks beside each other, the second with @p count; each has one below it.
TestPdf twoBranches(const QByteArray &count)
{
    return withBookmarks({"/Title(Open)/Next 43 0 R/First 42 0 R/Last 42 0 R/Count 1",
                          "/Title(One)/Dest[10 0 R/Fit]",
                          "/Title(Other)/First 44 0 R/Last 44 0 R/Count " + count,
                          "/Title(Two)/Dest[20 0 R/Fit]"});
}

} // namespace

void TestBookmarks::aClosedBookmarkStaysClosed()
{
    const auto output = m_bench.merged(twoBranches("-1"), "1-2");
    QVERIFY(output);
    QCOMPARE(output->value("Root/Outlines/First/Count"), QByteArray("1"));
    QCOMPARE(output->value("Root/Outlines/Last/Title"), QByteArray("(Other)"));
    QCOMPARE(output->value("Root/Outlines/Last/Count"), QByteArray("-1"));
    // Open, One and Other are seen; Two is not.
    QCOMPARE(output->value("Root/Outlines/Count"), QByteArray("3"));
}

void TestBookmarks::anOpenBookmarkCountsWhatItShows()
{
    const auto output = m_bench.merged(twoBranches("1"), "1-2");
    QVERIFY(output);
    QCOMPARE(output->value("Root/Outlines/Last/Count"), QByteArray("1"));
    QCOMPARE(output->value("Root/Outlines/Count"), QByteArray("4"));
}

void TestBookmarks::whatLiesInAClosedBookmarkKeepsItsState()
{
    const auto output = m_bench.merged(
        withBookmarks({"/Title(Closed)/First 42 0 R/Last 43 0 R/Count -2",
                       "/Title(Open)/Next 43 0 R/First 44 0 R/Last 44 0 R/Count 1",
                       "/Title(Shut)/First 45 0 R/Last 45 0 R/Count -1",
                       "/Title(Leaf)/Dest[10 0 R/Fit]", "/Title(Leaf)/Dest[20 0 R/Fit]"}),
        "1-2");
    QVERIFY(output);
    QCOMPARE(output->value("Root/Outlines/Count"), QByteArray("1"));
    // Opened, it would show Open with its leaf, and Shut.
    QCOMPARE(output->value("Root/Outlines/First/Count"), QByteArray("-3"));
    QCOMPARE(output->value("Root/Outlines/First/First/Count"), QByteArray("1"));
    QCOMPARE(output->value("Root/Outlines/First/Last/Count"), QByteArray("-1"));
    QCOMPARE(output->value("Root/Outlines/First/First/First/Count"), QByteArray("null"));
}

void TestBookmarks::neighboursAreLinkedBothWays()
{
    const auto output = m_bench.merged(withBookmarks({"/Title(One)/Next 42 0 R/Dest[10 0 R/Fit]",
                                                      "/Title(Two)/Next 43 0 R/Dest[20 0 R/Fit]",
                                                      "/Title(Three)/Next 44 0 R/Dest[30 0 R/Fit]",
                                                      "/Title(Four)/Dest[10 0 R/Fit]"}),
                                       "1 3");
    QVERIFY(output);
    const QByteArray first = "Root/Outlines/First/";
    QCOMPARE(output->value(first + "Title"), QByteArray("(One)"));
    QCOMPARE(output->value(first + "Prev"), QByteArray("null"));
    QCOMPARE(output->value(first + "Next/Title"), QByteArray("(Three)"));
    QCOMPARE(output->value(first + "Next/Prev/Title"), QByteArray("(One)"));
    QCOMPARE(output->value(first + "Next/Next/Title"), QByteArray("(Four)"));
    QCOMPARE(output->value(first + "Next/Next/Prev/Title"), QByteArray("(Three)"));
    QCOMPARE(output->value(first + "Next/Next/Next"), QByteArray("null"));
    QCOMPARE(output->value("Root/Outlines/Last/Title"), QByteArray("(Four)"));
    QCOMPARE(output->value("Root/Outlines/Count"), QByteArray("3"));
}

void TestBookmarks::everyBookmarkNamesItsParent()
{
    const auto output = m_bench.merged(twoBranches("1"), "1-2");
    QVERIFY(output);
    QCOMPARE(output->value("Root/Outlines/First/Parent/Type"), QByteArray("/Outlines"));
    QCOMPARE(output->value("Root/Outlines/First/First/Parent/Title"), QByteArray("(Open)"));
    QCOMPARE(output->value("Root/Outlines/Last/Last/Parent/Title"), QByteArray("(Other)"));
    QCOMPARE(output->value("Root/Outlines/Last/Last/Title"), QByteArray("(Two)"));
}

void TestBookmarks::actionsThatLeadToAPageAreDestinations()
{
    TestPdf pdf =
        withBookmarks({"/Title(One)/A<</S/GoTo/D[20 0 R/FitH 7]>>/C[0 0 1]/F 3/SE 9 0 R"});
    pdf.object(9, "<</S/Span/T(element)>>");
    const auto output = m_bench.merged(pdf, "2");
    QVERIFY(output);
    QCOMPARE(output->value("Root/Outlines/First/Dest/1"), QByteArray("/FitH"));
    QCOMPARE(output->value("Root/Outlines/First/Dest/2"), QByteArray("7"));
    QCOMPARE(output->value("Root/Outlines/First/A"), QByteArray("null"));
    QCOMPARE(output->value("Root/Outlines/First/C"), QByteArray("[0 0 1]"));
    QCOMPARE(output->value("Root/Outlines/First/F"), QByteArray("3"));
    QCOMPARE(output->value("Root/Outlines/First/SE"), QByteArray("null"));
}

void TestBookmarks::pagesMayBeNamedByTheirNumbers()
{
    const auto output = m_bench.merged(
        withBookmarks({"/Title(One)/Dest[0/Fit]/Next 42 0 R", "/Title(Two)/Dest[1/FitH 7]"}), "2");
    QVERIFY(output);
    QCOMPARE(output->value("Root/Outlines/First/Title"), QByteArray("(Two)"));
    QCOMPARE(output->value("Root/Outlines/First/Dest/0/Type"), QByteArray("/Page"));
    QCOMPARE(output->value("Root/Outlines/First/Dest/1"), QByteArray("/FitH"));
    QCOMPARE(output->value("Root/Outlines/Count"), QByteArray("1"));
}

void TestBookmarks::bookmarksThatLeadToNoPageGo_data()
{
    QTest::addColumn<QByteArray>("item");
    QTest::newRow("to a page left out") << QByteArray("/Dest[30 0 R/Fit]");
    QTest::newRow("to another file") << QByteArray("/A<</S/GoToR/F(x.pdf)/D[0/Fit]>>");
    QTest::newRow("to an address") << QByteArray("/A<</S/URI/URI(https://example.org)>>");
    QTest::newRow("nowhere") << QByteArray();
}

void TestBookmarks::bookmarksThatLeadToNoPageGo()
{
    QFETCH(QByteArray, item);
    const auto output = m_bench.merged(withBookmarks({"/Title(Gone)" + item}), "1");
    QVERIFY(output);
    QCOMPARE(output->value("Root/Outlines"), QByteArray("null"));
}

void TestBookmarks::theModeGoesWithTheBookmarks()
{
    TestPdf pdf = TestPdf::pages(2, "/Outlines 40 0 R/PageMode/UseOutlines");
    pdf.object(40, "<</Type/Outlines/First 41 0 R/Last 41 0 R/Count 1>>");
    pdf.object(41, "<</Title(One)/Dest[10 0 R/Fit]>>");
    const auto with = m_bench.merged(pdf, "1");
    QVERIFY(with);
    QCOMPARE(with->value("Root/PageMode"), QByteArray("/UseOutlines"));
    const auto without = m_bench.merged(pdf, "2");
    QVERIFY(without);
    QCOMPARE(without->value("Root/PageMode"), QByteArray("null"));
}

void TestBookmarks::aBookmarkThatIsMetAgainEndsTheList()
{
    const auto output =
        m_bench.merged(withBookmarks({"/Title(One)/Dest[10 0 R/Fit]/Next 42 0 R",
                                      "/Title(Two)/Dest[10 0 R/Fit]/Next 41 0 R/First 41 0 R"}),
                       "1");
    QVERIFY(output);
    QCOMPARE(output->value("Root/Outlines/Count"), QByteArray("2"));
    QCOMPARE(output->value("Root/Outlines/Last/Title"), QByteArray("(Two)"));
    QCOMPARE(output->value("Root/Outlines/Last/First"), QByteArray("null"));
}

QUORLIN_TEST(TestBookmarks)
#include "test_bookmarks.moc"
