#include "analysis/grouping.h"
#include "pipeline/page_file_text.h"
#include "pipeline/page_items.h"
#include "tests/support/room.h"

#include <QTest>

using namespace quorlin;

namespace {

/// What the export writes of three pages: text at 100,50, none, and text there twice.
const QByteArray threePages = "page\t1\t893\t1263\twhole\n"
                              "item\t1\t20\t30\t90\t12\tStatement\n"
                              "item\t1\t100\t50\t40\t12\tA & \xc3\xa9\n"
                              "page\t2\t893\t1263\twhole\n"
                              "item\t2\t100\t51\t40\t12\tone unit too low\n"
                              "item\t2\t1100\t50\t40\t12\tfar right\n"
                              "page\t3\t893\t1263\twhole\n"
                              "item\t3\t100\t50\t40\t12\tfirst\n"
                              "item\t3\t100\t50\t40\t12\tsecond\n"
                              "end\t3\n";

/// The pages that @p lines give, fed in pieces of @p piece bytes.
PageTexts read(const QByteArray &lines, qsizetype piece, bool &isComplete, bool &isMalformed)
{
    PositionRule rule(QPoint(100, 50));
    PageItemsReader reader(rule);
    for (qsizetype i = 0; i < lines.size(); i += piece) {
        reader.take(lines.mid(i, piece));
    }
    isComplete = reader.isComplete();
    isMalformed = reader.isMalformed();
    return reader.pages();
}

} // namespace

class TestPageItems : public QObject
{
    Q_OBJECT

private slots:
    void theFirstItemAtThePositionGivesTheText_data();
    void theFirstItemAtThePositionGivesTheText();
    void aMarkAtTheBeginningIsPartOfTheText();
    void pagesThatCouldNotBeReadAreNoted();
    void anExportThatBreaksOffIsNotWhole_data();
    void anExportThatBreaksOffIsNotWhole();
    void itemsHaveFourNumbersAndAText_data();
    void itemsHaveFourNumbersAndAText();
    void pagesMayBeginAnywhere();
    void longFilesAreReadByAllThreads();
    void textsOfPageFilesHoldReferences_data();
    void textsOfPageFilesHoldReferences();
};

void TestPageItems::theFirstItemAtThePositionGivesTheText_data()
{
    QTest::addColumn<qsizetype>("piece");
    QTest::newRow("at once") << threePages.size();
    QTest::newRow("byte by byte") << qsizetype{1};
    QTest::newRow("in pieces that cut lines") << qsizetype{7};
}

void TestPageItems::theFirstItemAtThePositionGivesTheText()
{
    QFETCH(qsizetype, piece);
    bool isComplete = false;
    bool isMalformed = true;
    const PageTexts pages = read(threePages, piece, isComplete, isMalformed);
    QVERIFY(isComplete);
    QVERIFY(!isMalformed);
    QCOMPARE(pages.texts, QStringList({QStringLiteral("A & é"), noTextMarker(), "first"}));
    QCOMPARE(pages.withoutText, 1);
    QVERIFY(pages.unreadable.isEmpty());
    QVERIFY(pages.doubtful.isEmpty());
}

void TestPageItems::aMarkAtTheBeginningIsPartOfTheText()
{
    bool isComplete = false;
    bool isMalformed = true;
    const PageTexts pages =
        read("page\t1\t8\t9\twhole\nitem\t1\t100\t50\t4\t5\t\xef\xbb\xbfmarked\nend\t1\n", 1000,
             isComplete, isMalformed);
    QVERIFY(isComplete);
    QCOMPARE(pages.texts, QStringList(QStringLiteral("\ufeffmarked")));
}

void TestPageItems::pagesThatCouldNotBeReadAreNoted()
{
    bool isComplete = false;
    bool isMalformed = true;
    const PageTexts pages = read("page\t1\t8\t9\tpartial\nitem\t1\t100\t50\t4\t5\tA\n"
                                 "page\t2\t8\t9\tpartial\n"
                                 "page\t3\t8\t9\tunreadable\nend\t3\n",
                                 1000, isComplete, isMalformed);
    QVERIFY(isComplete);
    QCOMPARE(pages.partial, 2);
    QCOMPARE(pages.doubtful, QList<int>{2});
    QCOMPARE(pages.unreadable, QList<int>{3});
    QCOMPARE(pages.withoutText, 2);
}

void TestPageItems::anExportThatBreaksOffIsNotWhole_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<bool>("isMalformed");
    QTest::newRow("nothing") << QByteArray() << false;
    QTest::newRow("no last line") << threePages.left(threePages.indexOf("end")) << false;
    QTest::newRow("no line feed behind the last line") << threePages.chopped(1) << false;
    QTest::newRow("fewer pages than stated")
        << QByteArray("page\t1\t8\t9\twhole\nend\t2\n") << true;
    QTest::newRow("a page left out")
        << QByteArray("page\t1\t8\t9\twhole\npage\t3\t8\t9\twhole\nend\t2\n") << true;
    QTest::newRow("an item without a page")
        << QByteArray("item\t1\t1\t1\t1\t1\tA\nend\t0\n") << true;
    QTest::newRow("an unknown state") << QByteArray("page\t1\t8\t9\tfine\nend\t1\n") << true;
    QTest::newRow("an unknown line") << QByteArray("hello\nend\t0\n") << true;
    QTest::newRow("a line behind the last") << threePages + "page\t4\t8\t9\twhole\n" << true;
}

void TestPageItems::anExportThatBreaksOffIsNotWhole()
{
    QFETCH(QByteArray, lines);
    bool isComplete = true;
    bool isMalformed = false;
    read(lines, 11, isComplete, isMalformed);
    QVERIFY(!isComplete);
    QTEST(isMalformed, "isMalformed");
}

void TestPageItems::itemsHaveFourNumbersAndAText_data()
{
    QTest::addColumn<QByteArray>("fields");
    QTest::addColumn<bool>("isItem");
    QTest::newRow("as it should be") << QByteArray("1\t2\t3\t4\ttext") << true;
    QTest::newRow("a tab in the text") << QByteArray("1\t2\t3\t4\tte\txt") << true;
    QTest::newRow("a fraction") << QByteArray("1.5\t2\t3\t4\ttext") << false;
    QTest::newRow("a number too large") << QByteArray("99999999999\t2\t3\t4\ttext") << false;
    QTest::newRow("a number missing") << QByteArray("1\t2\t3\ttext") << false;
    QTest::newRow("nothing") << QByteArray() << false;
}

void TestPageItems::itemsHaveFourNumbersAndAText()
{
    QFETCH(QByteArray, fields);
    const std::optional<Subtext> item = readItem(fields);
    QTEST(item.has_value(), "isItem");
    if (item) {
        QCOMPARE(item->height, 4);
        QVERIFY(item->text.startsWith("te"));
    }
}

void TestPageItems::pagesMayBeginAnywhere()
{
    PositionRule rule(QPoint(100, 50));
    PageItemsReader reader(rule, 7);
    reader.take("page\t7\t8\t9\tunreadable\nend\t1\n");
    QVERIFY(reader.isComplete());
    QCOMPARE(reader.pages().unreadable, QList<int>{7});
}

void TestPageItems::longFilesAreReadByAllThreads()
{
    QCOMPARE(threadsForPages(1, 8), 1);
    QCOMPARE(threadsForPages(20, 8), 1);
    QCOMPARE(threadsForPages(200, 2), 2);
    QCOMPARE(threadsForPages(10000, 4), 4);
    QCOMPARE(threadsForPages(10000, 1), 1);
}

void TestPageItems::textsOfPageFilesHoldReferences_data()
{
    QTest::addColumn<QString>("plain");
    QTest::addColumn<QString>("inPageFile");
    QTest::newRow("no markup") << "A-1 é 漢"
                               << "A-1 é 漢";
    QTest::newRow("angle brackets and quotes") << "<a> \"b\""
                                               << "&lt;a&gt; &quot;b&quot;";
    QTest::newRow("a company name") << "Smith & Sons; AT&T"
                                    << "Smith & Sons; AT&T";
    QTest::newRow("what reads as a reference") << "&amp; &#38; &#x26;"
                                               << "&amp;amp; &amp;#38; &amp;#x26;";
    QTest::newRow("no name in the reference") << "&; &#;"
                                              << "&; &#;";
    QTest::newRow("at the end") << "A &"
                                << "A &";
    QTest::newRow("an ampersand before markup") << "&<"
                                                << "&&lt;";
    QTest::newRow("letters that are not ASCII") << "&é;"
                                                << "&é;";
    QTest::newRow("a reference to a bracket") << "&lt;"
                                              << "&amp;lt;";
}

void TestPageItems::textsOfPageFilesHoldReferences()
{
    QFETCH(QString, plain);
    QFETCH(QString, inPageFile);
    QCOMPARE(pageFileText(plain), inPageFile);
    QCOMPARE(plainText(inPageFile), plain);
}

QUORLIN_TEST(TestPageItems)
#include "test_page_items.moc"
