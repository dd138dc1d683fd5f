// What joins the letters of a page into items, and the frames that the items get.

#include "drawn_page.h"
#include "tests/support/room.h"
#include "tools/pagexport/text/geometry.h"
#include "tools/pagexport/text/text_codes.h"

#include <QTest>

using quorlin::test::DrawnPage;
using quorlin::test::em;
using tools::TextItem;
using tools::toUnits;

class TestItemJoining : public QObject
{
    Q_OBJECT

private slots:
    void condensedTextIsAsTallAsItsLetters();
    void verticalTextHasItsFrameInTheMiddle();
    void theFrameReachesAsDeepAsTheLargestLetter();
    void aLargeNumberDeepensTheFrameOfRightToLeftText();
    void textAlmostUprightHasAnUprightFrame();
    void twoEqualGapsAreBlanks();
    void lettersSetApartBehindAWordAreNoWordOfTheirOwn();
    void aFewLettersSetApartFollowThoseBefore();
    void twoBlanksAndAGapAreAColumn();
    void differentLettersAtOnePlaceAreKept();
    void theSameLetterRaisedIsKept();
    void textOfAnotherDirectionIsAnotherItem();
    void aWideBlankJoinsRightToLeftWords();
    void rightToLeftLettersMayOverlapAndRise();
    void aMarkFollowsTheLetterUnderIt();
    void textBesideOrAboveThePageIsLeftOut();
    void fourLettersSetFarApartAreOneItem();
    void aLetterFurtherApartEndsTheItem();
    void twoBytesBeginBehindTheLettersOfOne();
};

void TestItemJoining::condensedTextIsAsTallAsItsLetters()
{
    const TextItem item = DrawnPage().style(5, 0, 0, -em).draw("4711").item();
    QCOMPARE(item.top, 137); // as of letters of full width
    QCOMPARE(item.top + item.height, 154);
}

void TestItemJoining::verticalTextHasItsFrameInTheMiddle()
{
    const TextItem item = DrawnPage().style(em, 0, 0, -em, true).at(100, 100).draw("A").item();
    QCOMPARE(item.left, 143); // half an em to the left
    QCOMPARE(item.left + item.width, 158);
    QCOMPARE(item.top, 150);
}

void TestItemJoining::theFrameReachesAsDeepAsTheLargestLetter()
{
    DrawnPage page;
    page.style(6, 0, 0, -6).draw("No").style(20, 0, 0, -20).at(110, 100).draw("7");
    QCOMPARE(page.texts(), QStringList{"No7"});
    QCOMPARE(page.item().top, 142); // of its first letter
    QCOMPARE(page.item().top + page.item().height, 158);
}

// The word is drawn in reading order, each letter before the one drawn last; the number, which is
// larger, from its own left end.
void TestItemJoining::aLargeNumberDeepensTheFrameOfRightToLeftText()
{
    DrawnPage page;
    page.at(205, 100).draw(QString("ש")).at(200, 100).draw(QString("ם"));
    page.style(20, 0, 0, -20).at(186, 100).draw("25");
    QCOMPARE(page.texts(), QStringList{"שם 25"});
    QCOMPARE(page.item().top + page.item().height, 158);
}

void TestItemJoining::textAlmostUprightHasAnUprightFrame()
{
    const QString line = QString("x").repeated(96);
    const TextItem upright = DrawnPage().at(50, 100.4).draw(line).item();
    DrawnPage turned;
    turned.style(em, 0.005, 0.005, -em).at(50, 100.4).draw(line);
    QCOMPARE(upright.top + upright.height, 154);
    QCOMPARE(turned.item().top + turned.item().height, 154);
    QCOMPARE(turned.item().top, upright.top);
}

void TestItemJoining::twoEqualGapsAreBlanks()
{
    QCOMPARE(DrawnPage().draw("ABC", 2.5).texts(), QStringList{"A B C"});
    QCOMPARE(DrawnPage().draw("ABCD", 2.5).texts(), QStringList{"ABCD"});
}

void TestItemJoining::lettersSetApartBehindAWordAreNoWordOfTheirOwn()
{
    DrawnPage page;
    page.draw("Nos").at(115, 100).draw("ABCD", 2.5);
    QCOMPARE(page.texts(), QStringList{"NosA B C D"});
}

void TestItemJoining::aFewLettersSetApartFollowThoseBefore()
{
    DrawnPage page;
    page.draw("11806728", 3.5).at(100, 200).draw("AB", 3.5).at(100, 300).draw("AB");
    QCOMPARE(page.at(100, 400).draw("CD", 3.5).texts(),
             QStringList({"11806728", "AB", "AB", "C D"}));
}

void TestItemJoining::twoBlanksAndAGapAreAColumn()
{
    QCOMPARE(DrawnPage().draw("ab  ").at(120.5, 100).draw("cd").texts(), QStringList{"ab cd"});
    QCOMPARE(DrawnPage().draw("ab  ").at(122, 100).draw("cd").texts(), QStringList({"ab", "cd"}));
}

void TestItemJoining::differentLettersAtOnePlaceAreKept()
{
    QCOMPARE(DrawnPage().draw("a").at(100.3, 100).draw("b").texts(), QStringList{"ab"});
}

void TestItemJoining::theSameLetterRaisedIsKept()
{
    QCOMPARE(DrawnPage().draw("a").at(100, 97).draw("a").texts(), QStringList{"aa"});
}

void TestItemJoining::textOfAnotherDirectionIsAnotherItem()
{
    DrawnPage page;
    page.draw("ab").style(0, -em, -em, 0).at(110, 100).draw("c");
    QCOMPARE(page.texts(), QStringList({"ab", "c"}));
}

// Drawn in reading order: each letter before the one drawn last.
void TestItemJoining::aWideBlankJoinsRightToLeftWords()
{
    DrawnPage page;
    page.at(120, 100).draw(QString("ש")).at(115, 100).draw(QString("ל"));
    page.at(110, 100).draw(" ").at(100, 100).draw(QString("ם"));
    QCOMPARE(page.texts(), QStringList{"של ם"});
}

void TestItemJoining::rightToLeftLettersMayOverlapAndRise()
{
    DrawnPage page;
    page.at(120, 100).draw(QString("ש")).at(116, 99).draw(QString("ל"));
    QCOMPARE(page.texts(), QStringList{"של"});
}

void TestItemJoining::aMarkFollowsTheLetterUnderIt()
{
    const QString pointed("\u05E9\u05C1\u05DC"); // shin with its dot, lamed
    for (const double place : {105.5, 107.5, 109.5}) {
        DrawnPage page;
        page.at(105, 100).draw(pointed.mid(0, 1)).mark(place, pointed.mid(1, 1));
        QCOMPARE(page.at(100, 100).draw(pointed.mid(2, 1)).texts(), QStringList{pointed});
    }
}

void TestItemJoining::textBesideOrAboveThePageIsLeftOut()
{
    QCOMPARE(DrawnPage().at(600, 100).draw("a").at(100, -10).draw("b").texts(), QStringList());
    QCOMPARE(DrawnPage().at(595, 842).draw("a").texts(), QStringList{"a"});
}

void TestItemJoining::fourLettersSetFarApartAreOneItem()
{
    QCOMPARE(DrawnPage().drawSpaced("ABC", 10).texts(), QStringList({"A", "B", "C"}));
    DrawnPage page;
    page.drawSpaced("ABCD", 10);
    QCOMPARE(page.texts(), QStringList{"ABCD"});
    QCOMPARE(page.item().width, toUnits(50)); // four letters and three gaps
    QCOMPARE(DrawnPage().draw("ABCD", 10).texts(), QStringList({"A", "B", "C", "D"}));
}

void TestItemJoining::aLetterFurtherApartEndsTheItem()
{
    QCOMPARE(DrawnPage().drawSpaced("ABCD", 10).at(162, 100).drawSpaced("E", 12).texts(),
             QStringList({"ABCD", "E"}));
}

void TestItemJoining::twoBytesBeginBehindTheLettersOfOne()
{
    std::string text;
    tools::appendCode(text, 0x7f);
    tools::appendCode(text, 0x80);
    QCOMPARE(QByteArray::fromStdString(text), QByteArray("\x7f\xc2\x80"));
}

QUORLIN_TEST(TestItemJoining)
#include "test_item_joining.moc"
