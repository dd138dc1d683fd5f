#include "drawn_page.h"
#include "tests/support/room.h"
#include "tools/pagexport/output/page_html.h"
#include "tools/pagexport/text/geometry.h"
#include "tools/pagexport/text/text_codes.h"

#include <QTest>

using namespace tools;

using quorlin::test::DrawnPage;
using quorlin::test::em;

class TestItemBuilder : public QObject
{
    Q_OBJECT

private slots:
    void unitsAreRoundedTheSameWhateverTheNoise_data();
    void unitsAreRoundedTheSameWhateverTheNoise();
    void placeDependsOnOriginAndSizeAlone();
    void frameCoversTheRun();
    void positionsAreNeverZero();
    void gapsMakeBlanksAndItems_data();
    void gapsMakeBlanksAndItems();
    void whiteSpaceOfAnyKindIsOneBlank_data();
    void whiteSpaceOfAnyKindIsOneBlank();
    void severalBlanksInAFixedWidthLineAreAColumn();
    void invisibleCharactersNeverAppear();
    void invalidCodesBecomeReplacementCharacters();
    void ligaturesAreSpeltOut();
    void lettersSetApartAreNoWords();
    void wordsOfLettersSetApartStayApart();
    void superscriptStaysInTheItem();
    void nextLineIsAnotherItem();
    void textDrawnTwiceCountsOnce_data();
    void textDrawnTwiceCountsOnce();
    void doubleLettersAreKept();
    void equalTextsElsewhereAreKept();
    void kerningIsNoBlankInTheFontAtHand_data();
    void kerningIsNoBlankInTheFontAtHand();
    void signsSetApartKeepTheirBlanks();
    void wordSetApartAmongOthersIsOne();
    void formsBecomeTheirLetters_data();
    void formsBecomeTheirLetters();
    void rightToLeftTextStaysTogetherAndApartFromItsLabel();
    void rightToLeftTextIsInReadingOrder_data();
    void rightToLeftTextIsInReadingOrder();
    void numberInsideRightToLeftTextBelongsToIt();
    void numberFarFromRightToLeftTextIsAnItem();
    void marksStayWithTheirLetters();
    void longRightToLeftRunIsRead();
    void textOutsideThePageIsLeftOut();
    void turnedTextKeepsItsPlace_data();
    void turnedTextKeepsItsPlace();
    void referencesAreEscapedOnlyWhereTheyWouldBeRead_data();
    void referencesAreEscapedOnlyWhereTheyWouldBeRead();
};

void TestItemBuilder::unitsAreRoundedTheSameWhateverTheNoise_data()
{
    QTest::addColumn<double>("points");
    QTest::addColumn<int>("units");
    QTest::newRow("whole unit") << 72.0 << 108;
    QTest::newRow("half unit goes up") << 201.0 << 302;
    QTest::newRow("half unit with noise below") << 200.9999 << 302;
    QTest::newRow("half unit with noise above") << 201.0001 << 302;
    QTest::newRow("zero") << 0.0 << 0;
    QTest::newRow("negative half goes up") << -1.0 << -1;
    QTest::newRow("negative") << -2.0 << -3;
    QTest::newRow("no number") << std::nan("") << 0;
    QTest::newRow("beyond all pages") << 1e30 << 15000000;
}

void TestItemBuilder::unitsAreRoundedTheSameWhateverTheNoise()
{
    QFETCH(double, points);
    QTEST(toUnits(points), "units");
}

void TestItemBuilder::placeDependsOnOriginAndSizeAlone()
{
    const TextItem capitals = DrawnPage().draw("ACE").item();
    const TextItem descenders = DrawnPage().draw("gjpqy and more").item();
    QCOMPARE(capitals.left, 150);
    QCOMPARE(capitals.top, 137); // (100 - 0.9 * 10) * 1.5, rounded up
    QCOMPARE(descenders.left, capitals.left);
    QCOMPARE(descenders.top, capitals.top);
    QCOMPARE(descenders.height, capitals.height);
}

void TestItemBuilder::frameCoversTheRun()
{
    const TextItem item = DrawnPage().draw("Total").item();
    QCOMPARE(item.width, 38); // five glyphs of 5 points
    QCOMPARE(item.top + item.height, 154);
}

void TestItemBuilder::positionsAreNeverZero()
{
    const TextItem item = DrawnPage().at(0, 0).draw("x").item();
    QCOMPARE(item.left, 1);
    QCOMPARE(item.top, 1);
    QVERIFY(item.width >= 1 && item.height >= 1);
}

void TestItemBuilder::gapsMakeBlanksAndItems_data()
{
    QTest::addColumn<double>("gap");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("none") << 0.0 << QStringList{"NameSmith"};
    QTest::newRow("kerning") << 1.0 << QStringList{"NameSmith"};
    QTest::newRow("a blank") << 2.5 << QStringList{"Name Smith"};
    QTest::newRow("a wide blank") << 7.5 << QStringList{"Name Smith"};
    QTest::newRow("clearly wider") << 9.0 << QStringList{"Name", "Smith"};
    QTest::newRow("far away") << 200.0 << QStringList{"Name", "Smith"};
    QTest::newRow("a little back") << -1.0 << QStringList{"NameSmith"};
    QTest::newRow("far back") << -60.0 << QStringList{"Name", "Smith"};
}

void TestItemBuilder::gapsMakeBlanksAndItems()
{
    QFETCH(double, gap);
    QTEST(DrawnPage().at(100, 100).draw("Name").at(120 + gap, 100).draw("Smith").texts(), "texts");
}

void TestItemBuilder::whiteSpaceOfAnyKindIsOneBlank_data()
{
    QTest::addColumn<QString>("drawn");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("blank") << "a b" << QStringList{"a b"};
    QTest::newRow("tab") << "a\tb" << QStringList{"a b"};
    QTest::newRow("no-break space") << QString("a\u00a0b") << QStringList{"a b"};
    QTest::newRow("ideographic space") << QString("a\u3000b") << QStringList{"a b"};
    QTest::newRow("line separator") << QString("a\u2028b") << QStringList{"a b"};
    QTest::newRow("line feed") << "a\nb" << QStringList{"a b"};
    QTest::newRow("two blanks") << "a  b" << QStringList{"a b"};
    QTest::newRow("at the ends") << "  ab " << QStringList{"ab"};
    QTest::newRow("nothing else") << "   " << QStringList();
}

void TestItemBuilder::whiteSpaceOfAnyKindIsOneBlank()
{
    QFETCH(QString, drawn);
    QTEST(DrawnPage().draw(drawn).texts(), "texts");
}

void TestItemBuilder::severalBlanksInAFixedWidthLineAreAColumn()
{
    QCOMPARE(DrawnPage().draw("Account:     4711   Balance").texts(),
             QStringList({"Account:", "4711", "Balance"}));
}

void TestItemBuilder::invisibleCharactersNeverAppear()
{
    QCOMPARE(DrawnPage().draw(QString("a\u00ad\u200b\u200f\u202e\ufeff\u0007") + "b").texts(),
             QStringList{"ab"});
}

void TestItemBuilder::invalidCodesBecomeReplacementCharacters()
{
    std::string text;
    for (const int code : {0xd800, 0x110000, -1}) {
        QCOMPARE(codeKind(code), CodeKind::visible);
        appendCode(text, code);
    }
    QCOMPARE(QString::fromStdString(text), QString("\ufffd\ufffd\ufffd"));
}

void TestItemBuilder::ligaturesAreSpeltOut()
{
    QCOMPARE(DrawnPage().draw(QString("Gri\ufb03n \ufb01t \ufb06op")).texts(),
             QStringList{"Griffin fit stop"});
}

void TestItemBuilder::lettersSetApartAreNoWords()
{
    QCOMPARE(DrawnPage().draw("11806728", 3.5).texts(), QStringList{"11806728"});
}

void TestItemBuilder::wordsOfLettersSetApartStayApart()
{
    DrawnPage page;
    page.draw("BANK", 2.5).at(130 + 2.5, 100).draw("OFF", 2.5);
    QCOMPARE(page.texts(), QStringList{"BANK OFF"});
}

void TestItemBuilder::kerningIsNoBlankInTheFontAtHand_data()
{
    QTest::addColumn<double>("blank");
    QTest::addColumn<double>("gap"); // in ems
    QTest::addColumn<QStringList>("texts");
    const QStringList one{"NameSmith"};
    const QStringList two{"Name Smith"};
    QTest::newRow("usual font, kerning") << 0.25 << 0.12 << one;
    QTest::newRow("usual font, narrow blank") << 0.25 << 0.145 << two;
    QTest::newRow("wide font, kerning") << 0.35 << 0.16 << one;
    QTest::newRow("wide font, blank") << 0.35 << 0.2 << two;
    QTest::newRow("condensed font, kerning") << 0.15 << 0.09 << one;
    QTest::newRow("condensed font, blank") << 0.15 << 0.115 << two;
    QTest::newRow("fixed width, kerning") << 0.6 << 0.17 << one;
    QTest::newRow("fixed width, blank") << 0.6 << 0.2 << two;
    QTest::newRow("font without a blank, kerning") << 0.0 << 0.1 << one;
    QTest::newRow("font without a blank, blank") << 0.0 << 0.13 << two;
}

void TestItemBuilder::kerningIsNoBlankInTheFontAtHand()
{
    QFETCH(double, blank);
    QFETCH(double, gap);
    DrawnPage page;
    page.blank(blank).at(100, 100).draw("Name").at(120 + gap * em, 100).draw("Smith");
    QTEST(page.texts(), "texts");
}

void TestItemBuilder::signsSetApartKeepTheirBlanks()
{
    QCOMPARE(DrawnPage().draw("5>3&2<4", 2.78).texts(), QStringList{"5 > 3 & 2 < 4"});
    QCOMPARE(DrawnPage().draw("......", 3).texts(), QStringList{". . . . . ."});
    DrawnPage formula; // "if g = G with": single letters among words
    double x = 100;
    for (const char *word : {"if", "g", "=", "G", "with"}) {
        formula.at(x, 100).draw(word);
        x += em / 2 * static_cast<double>(qstrlen(word)) + 2.78;
    }
    QCOMPARE(formula.texts(), QStringList{"if g = G with"});
}

void TestItemBuilder::wordSetApartAmongOthersIsOne()
{
    DrawnPage page; // "the BANK of", the second word set apart
    page.draw("the").at(120, 100).draw("BANK", 2).at(154, 100).draw("of");
    QCOMPARE(page.texts(), QStringList{"the BANK of"});
}

void TestItemBuilder::formsBecomeTheirLetters_data()
{
    QTest::addColumn<QString>("drawn");
    QTest::addColumn<QString>("written");
    QTest::newRow("radicals") << QString("\u2F26\u2FBC\u2FD5") << QString("\u5B50\u9AD8\u9FA0");
    QTest::newRow("radical supplement") << QString("\u2E9F\u2EF3") << QString("\u6BCD\u9F9F");
    QTest::newRow("ideographs") << QString("\u5B50\u9AD8") << QString("\u5B50\u9AD8");
    QTest::newRow("Latin ligatures") << QString("\uFB00\uFB04\uFB05")
                                     << QString("ffffl"
                                                "st");
    QTest::newRow("Armenian ligature") << QString("\uFB13") << QString("\u0574\u0576");
    QTest::newRow("Arabic letter") << QString("\uFE8F") << QString("\u0628");
    QTest::newRow("Arabic ligature") << QString("\uFEFB") << QString("\u0644\u0627");
    QTest::newRow("Arabic letter with its sign stays one")
        << QString("\uFE83") << QString("\u0623");
    QTest::newRow("Arabic word in one") << QString("\uFDF2") << QString("\u0627\u0644\u0644\u0647");
    QTest::newRow("Hebrew with a dot") << QString("\uFB2A") << QString("\u05E9\u05C1");
    QTest::newRow("Hebrew with two") << QString("\uFB2C") << QString("\u05E9\u05BC\u05C1");
    QTest::newRow("Hebrew wide letter") << QString("\uFB21") << QString("\u05D0");
    QTest::newRow("Hebrew ligature") << QString("\uFB4F") << QString("\u05D0\u05DC");
    // The second and third are read from right to left.
    QTest::newRow("letters at the borders of their lengths")
        << QString("a\u07FF\u0800\uFFED") + QString::fromUcs4(U"\U00010000", 1)
        << QString("a\u0800\u07FF\uFFED") + QString::fromUcs4(U"\U00010000", 1);
    QTest::newRow("codes that are no letters")
        << "a" + QString::fromUcs4(U"\U0001FFFE", 1) + "b" << QString("ab");
    QTest::newRow("other letters stay")
        << QString("\u00B5\uFF21\u2460\u00E9") << QString("\u00B5\uFF21\u2460\u00E9");
}

void TestItemBuilder::formsBecomeTheirLetters()
{
    QFETCH(QString, drawn);
    QFETCH(QString, written);
    QCOMPARE(DrawnPage().draw(drawn).texts(), QStringList{written});
}

void TestItemBuilder::superscriptStaysInTheItem()
{
    DrawnPage page;
    page.draw("100 m").style(6, 0, 0, -6).at(125, 96.5).draw("2");
    QCOMPARE(page.texts(), QStringList{"100 m2"});
}

void TestItemBuilder::nextLineIsAnotherItem()
{
    QCOMPARE(DrawnPage().draw("first").at(125, 109).draw("second").texts(),
             QStringList({"first", "second"}));
}

void TestItemBuilder::textDrawnTwiceCountsOnce_data()
{
    QTest::addColumn<double>("shift");
    QTest::addColumn<int>("count");
    QTest::newRow("same place") << 0.0 << 1;
    QTest::newRow("false bold") << 0.3 << 1;
    QTest::newRow("shadow") << 1.0 << 1;
    QTest::newRow("another place") << 5.0 << 2;
}

void TestItemBuilder::textDrawnTwiceCountsOnce()
{
    QFETCH(double, shift);
    QFETCH(int, count);
    for (const QString text : {"96499188", "A", "ll", "12"}) {
        DrawnPage page;
        page.draw(text).at(300, 300).draw("between").at(100 + shift, 100 + shift).draw(text);
        QCOMPARE(page.texts().count(text), count);
    }
    DrawnPage page;
    for (int i = 0; i < 4; ++i) { // letter by letter
        const QString letter(QChar('a' + i));
        page.at(100 + 5 * i, 100).draw(letter).at(100 + 5 * i + 0.3, 100).draw(letter);
    }
    QCOMPARE(page.texts(), QStringList{"abcd"});
}

void TestItemBuilder::doubleLettersAreKept()
{
    QCOMPARE(DrawnPage().draw("Hill 1100 www").texts(), QStringList{"Hill 1100 www"});
}

void TestItemBuilder::equalTextsElsewhereAreKept()
{
    QCOMPARE(
        DrawnPage().draw("0.00").at(100, 112).draw("0.00").at(200, 112).draw("0.00").texts().size(),
        3);
}

void TestItemBuilder::rightToLeftTextStaysTogetherAndApartFromItsLabel()
{
    DrawnPage logical; // in reading order, each letter before the one drawn last
    double x = 120;
    for (const QChar letter : QString("שלום")) {
        logical.at(x, 100).draw(letter);
        x -= em / 2;
    }
    logical.at(300, 100).draw(QString("חשבון"));
    const QStringList texts = logical.texts();
    QCOMPARE(texts, QStringList({"שלום", "ןובשח"})); // the second one is drawn from the left
    QCOMPARE(logical.item().left, toUnits(105));
}

void TestItemBuilder::rightToLeftTextIsInReadingOrder_data()
{
    QTest::addColumn<QString>("seen"); // from the left to the right
    QTest::addColumn<QString>("read");
    QTest::newRow("word") << "םולש"
                          << "שלום";
    QTest::newRow("words") << "ןורחא ןובשח"
                           << "חשבון אחרון";
    QTest::newRow("number behind") << "4711 ןובשח"
                                   << "חשבון 4711";
    QTest::newRow("number between") << "םירפס 25 הנק"
                                    << "קנה 25 ספרים";
    QTest::newRow("amount") << "1,234.50 ךס"
                            << "סך 1,234.50";
    QTest::newRow("two numbers") << "200 100 ןובשח"
                                 << "חשבון 100 200";
    QTest::newRow("number with a hyphen") << "12-34 ןובשח"
                                          << "חשבון 12-34";
    QTest::newRow("per cent") << "25% החנה"
                              << "הנחה 25%";
    QTest::newRow("Latin words") << "AC 4711 ןורחא ןובשח"
                                 << "חשבון אחרון AC 4711";
    QTest::newRow("Latin label") << "Name: םולש"
                                 << "Name: שלום";
    QTest::newRow("inside Latin text") << "Hello םולש World"
                                       << "Hello שלום World";
    QTest::newRow("brackets named by their shape") << "(רבד) םולש"
                                                   << "שלום (דבר)";
    QTest::newRow("brackets named by their meaning") << ")רבד( םולש"
                                                     << "שלום (דבר)";
    QTest::newRow("full stop") << ".םולש"
                               << "שלום.";
    QTest::newRow("Arabic") << QString::fromUtf8("باسح") << QString::fromUtf8("حساب");
    QTest::newRow("Arabic digits")
        << QString::fromUtf8("١٢٣ باسح") << QString::fromUtf8("حساب ١٢٣");
    QTest::newRow("presentation forms") << QString("\uFEE1\uFEFC\uFEB3") << QString("سلام");
}

void TestItemBuilder::rightToLeftTextIsInReadingOrder()
{
    QFETCH(QString, seen);
    QFETCH(QString, read);
    QCOMPARE(DrawnPage().draw(seen).texts(), QStringList{read});
}

// The file draws in reading order: for the number the pen jumps to its left end.
void TestItemBuilder::numberInsideRightToLeftTextBelongsToIt()
{
    DrawnPage page;
    double x = 300;
    const auto drawLeftwards = [&page, &x](const QString &word) {
        for (const QChar letter : word) {
            page.at(x, 100).draw(letter);
            x -= em / 2;
        }
    };
    drawLeftwards(QString("קנה "));
    page.at(x - em / 2, 100).draw("25");
    x -= em;
    drawLeftwards(QString(" ספר"));
    QCOMPARE(page.texts(), QStringList{"קנה 25 ספר"});
    QCOMPARE(page.item().left, toUnits(x + em / 2));
}

void TestItemBuilder::numberFarFromRightToLeftTextIsAnItem()
{
    DrawnPage page;
    page.at(305, 100).draw(QString("ש")).at(300, 100).draw(QString("ם"));
    page.at(200, 100).draw("4711");
    QCOMPARE(page.texts(), QStringList({"שם", "4711"}));
}

void TestItemBuilder::marksStayWithTheirLetters()
{
    const QString pointed("\u05E9\u05C1\u05DC"); // shin with its dot, lamed
    DrawnPage reading;
    reading.at(105, 100).draw(pointed.mid(0, 1));
    reading.mark(106, pointed.mid(1, 1)).at(100, 100).draw(pointed.mid(2, 1));
    QCOMPARE(reading.texts(), QStringList{pointed});
    DrawnPage seen;
    seen.at(100, 100).draw(pointed.mid(2, 1)).at(105, 100);
    seen.mark(106, pointed.mid(1, 1)).draw(pointed.mid(0, 1));
    QCOMPARE(seen.texts(), QStringList{pointed});
}

// Without end on a hostile page: every step must take time in proportion to the letters.
void TestItemBuilder::longRightToLeftRunIsRead()
{
    constexpr int letters = 50000;
    DrawnPage page;
    page.style(0.01, 0, 0, -0.01);
    QString expected;
    for (int i = 0; i < letters; ++i) {
        const QString letter = i % 2 == 0 ? QString("א") : QString("7");
        page.at(0.01 * i, 100).drawSmall(letter, 0.01);
        expected.prepend(letter);
    }
    QCOMPARE(page.texts(), QStringList{expected});
}

void TestItemBuilder::textOutsideThePageIsLeftOut()
{
    QCOMPARE(DrawnPage().at(-50, 100).draw("gone").at(100, 900).draw("gone").texts(),
             QStringList());
    QCOMPARE(DrawnPage().at(590, 100).draw("kept").texts(), QStringList{"kept"});
}

void TestItemBuilder::turnedTextKeepsItsPlace_data()
{
    QTest::addColumn<double>("a");
    QTest::addColumn<double>("b");
    QTest::addColumn<double>("c");
    QTest::addColumn<double>("d");
    QTest::newRow("upwards") << 0.0 << -em << -em << 0.0;
    QTest::newRow("downwards") << 0.0 << em << em << 0.0;
    QTest::newRow("upside down") << -em << 0.0 << 0.0 << em;
    QTest::newRow("aslant") << 7.0 << 7.0 << 7.0 << -7.0;
    QTest::newRow("mirrored") << em << 0.0 << 0.0 << em;
}

void TestItemBuilder::turnedTextKeepsItsPlace()
{
    QFETCH(double, a);
    QFETCH(double, b);
    QFETCH(double, c);
    QFETCH(double, d);
    const auto drawn = [=](const QString &text) {
        TextItems items;
        ItemBuilder builder(items, 595, 842);
        builder.setStyle(TextStyle::fromMatrix(a, b, c, d, false));
        double along = 0;
        for (const QChar letter : text) {
            const int codes[] = {letter.unicode()};
            const Letters letters = Letters::of(codes, 1);
            builder.add({300 + along * a, 300 + along * b, em / 2, 0, &letters});
            along += 0.5;
        }
        builder.endItem();
        return items;
    };
    const TextItems shortText = drawn("4711");
    const TextItems longText = drawn("AC-0815-22 and more");
    QCOMPARE(shortText.items.size(), std::size_t{1});
    QCOMPARE(longText.items.size(), std::size_t{1});
    QCOMPARE(longText.items[0].left, shortText.items[0].left);
    QCOMPARE(longText.items[0].top, shortText.items[0].top);
}

void TestItemBuilder::referencesAreEscapedOnlyWhereTheyWouldBeRead_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("written");
    QTest::newRow("company") << QByteArray("Smith & Co") << QByteArray("Smith & Co");
    QTest::newRow("glued") << QByteArray("AT&T") << QByteArray("AT&T");
    QTest::newRow("reads as one") << QByteArray("a&amp;b") << QByteArray("a&amp;amp;b");
    QTest::newRow("number") << QByteArray("&#38;") << QByteArray("&amp;#38;");
    QTest::newRow("hexadecimal") << QByteArray("&#x26;") << QByteArray("&amp;#x26;");
    QTest::newRow("no name") << QByteArray("&; &#;") << QByteArray("&; &#;");
    QTest::newRow("at the end") << QByteArray("R&") << QByteArray("R&");
    QTest::newRow("markup") << QByteArray("<a \"b\">") << QByteArray("&lt;a &quot;b&quot;&gt;");
}

void TestItemBuilder::referencesAreEscapedOnlyWhereTheyWouldBeRead()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, written);
    TextItems page;
    page.texts = text.toStdString();
    page.items.push_back({72, 104, 210, 12, 0, static_cast<std::uint32_t>(text.size())});
    std::string html;
    writePageHtml(html, page, 1);
    const QByteArray line =
        "\n<span style=\"left:72;top:104;width:210;height:12\">" + written + "</span>\n";
    QVERIFY2(QByteArray::fromStdString(html).contains(line), html.c_str());
}

QUORLIN_TEST(TestItemBuilder)
#include "test_item_builder.moc"
