#include "tests/support/room.h"
#include "tests/tools/pagexport/export_run.h"
#include "tools/pdf/library_internals.h"

#include <QTest>

#include <cmath>

using namespace quorlin::test;

namespace {

/// Runs a document of one page and gives its texts.
QStringList textsOf(const std::string &content, const PdfBuilder::Page &page = {})
{
    PdfBuilder pdf;
    pdf.addPage(content, page);
    ExportRun run;
    return run.run(pdf) == 0 ? run.texts() : QStringList{QString::fromUtf8(run.errors())};
}

QList<ItemLine> itemsOf(const std::string &content, const PdfBuilder::Page &page = {})
{
    PdfBuilder pdf;
    pdf.addPage(content, page);
    ExportRun run;
    return run.run(pdf) == 0 ? run.items() : QList<ItemLine>();
}

constexpr const char *account = "BT /F1 10 Tf 200 700 Td (Account 4711) Tj ET";

} // namespace

/// What becomes an item, and where it stands, on pages of our own making.
class TestPageText : public QObject
{
    Q_OBJECT

private slots:
    void everyWayOfShowingTextCounts_data();
    void everyWayOfShowingTextCounts();
    void characterSpacingMakesNoWords();
    void spacingTakenBackIsNoSpacing_data();
    void spacingTakenBackIsNoSpacing();
    void sameDistanceMakesTheSameItems_data();
    void sameDistanceMakesTheSameItems();
    void lettersFarApartAreNoWord();
    void wordSpacingBelongsToTheBlank();
    void justifiedLineStaysOneItem();
    void itemsComeInTheOrderOfTheContent();
    void everyRenderingModeCounts_data();
    void everyRenderingModeCounts();
    void formsAreRunWhereTheyArePlaced();
    void fontsOfOddSyntaxAreReadOnPagesAndInForms();
    void hiddenLayersAreLeftOut();
    void hiddenTextMovesThePenAllTheSame();
    void fieldsAndAnnotationsArePageText();
    void hiddenAnnotationsAreLeftOut();
    void codesFollowTheFontsTable();
    void fontWithoutATableIsReadByItsOwnProgram();
    void unreadableCodeOfAFontNotEmbeddedStaysMarked();
    void turnedTextIsOneItem_data();
    void turnedTextIsOneItem();
    void placeIsCountedOnThePageAsShown_data();
    void placeIsCountedOnThePageAsShown();
    void placeIsTheSameInAnotherFont();
    void textOutsideTheCropBoxIsLeftOut();
    void verticalTextIsOneItem();
    void markupInTextsIsEscaped();
    void unbalancedStatesDoNoHarm();
};

void TestPageText::everyWayOfShowingTextCounts_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("string") << QByteArray("BT /F1 10 Tf 50 700 Td (Account 4711) Tj ET");
    QTest::newRow("array") << QByteArray(
        "BT /F1 10 Tf 50 700 Td [(Acc) 20 (ount) -300 (47) 10 (11)] TJ ET");
    QTest::newRow("next line") << QByteArray("BT /F1 10 Tf 12 TL 50 712 Td (Account 4711) ' ET");
    QTest::newRow("spaced next line")
        << QByteArray("BT /F1 10 Tf 12 TL 50 712 Td 0 0 (Account 4711) \" ET");
    QTest::newRow("matrix") << QByteArray("BT /F1 1 Tf 10 0 0 10 50 700 Tm (Account 4711) Tj ET");
    QTest::newRow("scaled page") << QByteArray(
        "q .5 0 0 .5 0 0 cm BT /F1 20 Tf 100 1400 Td (Account 4711) Tj ET Q");
    QTest::newRow("mirrored twice")
        << QByteArray("q 1 0 0 -1 0 842 cm BT /F1 10 Tf 1 0 0 -1 50 142 Tm (Account 4711) Tj ET Q");
    QTest::newRow("leading by TD")
        << QByteArray("BT /F1 10 Tf 50 724 Td 0 -12 TD T* (Account 4711) Tj ET");
    QTest::newRow("rise and back")
        << QByteArray("BT /F1 10 Tf 50 697 Td 3 Ts (Account 4711) Tj ET");
    QTest::newRow("pieces placed one by one") << QByteArray(
        "BT /F1 10 Tf 50 700 Td (Account) Tj ET BT /F1 10 Tf 88.9 700 Td (4711) Tj ET");
}

void TestPageText::everyWayOfShowingTextCounts()
{
    QFETCH(QByteArray, content);
    const QList<ItemLine> items = itemsOf(content.toStdString());
    QCOMPARE(items.size(), 1);
    QCOMPARE(items[0].text, "Account 4711");
    QCOMPARE(items[0].left, 75);
    QCOMPARE(items[0].top, 200); // (142 - 9) * 1.5, rounded up
}

void TestPageText::characterSpacingMakesNoWords()
{
    QCOMPARE(textsOf("BT /F1 10 Tf 4 Tc 50 700 Td (Account 4711) Tj ET"),
             QStringList{"Account 4711"});
    QCOMPARE(textsOf("BT /F1 10 Tf 12 Tc 50 700 Td (4711) Tj ET"), QStringList{"4711"});
    QCOMPARE(textsOf("BT /F1 10 Tf 50 700 Td [(A)-400(C)-400(-)-400(4)-400(7)] TJ ET"),
             QStringList{"AC-47"});
}

void TestPageText::spacingTakenBackIsNoSpacing_data()
{
    QTest::addColumn<QString>("spacing"); // in ems of 10 points
    for (const char *spacing : {".05", ".5", ".9", "1.5", "4.1", "9"}) {
        QTest::newRow(spacing) << spacing;
    }
}

// Some producers reach each cell of a table by character spacing and take it back between digits.
void TestPageText::spacingTakenBackIsNoSpacing()
{
    QFETCH(QString, spacing);
    const double ems = spacing.toDouble();
    const std::string back = " " + std::to_string(1000 * ems) + " ";
    const std::string on = " " + std::to_string(1000 * (ems - 6)) + " ";
    const auto cell = [&back](const std::string &digits) {
        std::string pieces;
        for (const char digit : digits) {
            pieces += (pieces.empty() ? "(" : back + "(") + digit + ')';
        }
        return pieces;
    };
    const QList<ItemLine> items =
        itemsOf("BT /F1 10 Tf " + std::to_string(10 * ems) + " Tc 50 700 Td [" + cell("2,248") +
                on + cell("1,135") + "] TJ ET");
    QCOMPARE(items.size(), 2);
    QCOMPARE(items[0].text, "2,248");
    QCOMPARE(items[0].left, 75);
    QCOMPARE(items[1].text, "1,135");
}

void TestPageText::sameDistanceMakesTheSameItems_data()
{
    QTest::addColumn<double>("gap"); // in points, at 10 points
    for (const double gap : {0.0, 0.5, 1.2, 1.8, 3.0, 5.0, 7.5, 9.0, 15.0, 50.0}) {
        QTest::addRow("%.1f points", gap) << gap;
    }
}

// However the pen gets from one letter to the next, the eye sees the same page.
void TestPageText::sameDistanceMakesTheSameItems()
{
    QFETCH(double, gap);
    const std::string distance = std::to_string(gap);
    const std::string step = std::to_string(gap + 5.56); // a digit's width
    const std::string move = std::to_string(-100 * gap);
    const QList<ItemLine> expected = itemsOf("BT /F1 10 Tf 50 700 Td (1) Tj " + step +
                                             " 0 Td (2) Tj " + step + " 0 Td (3) Tj ET");
    const std::string start = "BT /F1 10 Tf 50 700 Td ";
    for (const std::string &content :
         {start + distance + " Tc (123) Tj ET",
          start + "[(1) " + move + "(2) " + move + "(3)] TJ ET",
          start + distance + " Tc [(1) 0 (2) 0 (3)] TJ ET",
          "BT /F1 20 Tf 50 Tz 1 0 0 .5 50 700 Tm " + std::to_string(2 * gap) + " Tc (123) Tj ET"}) {
        const QList<ItemLine> items = itemsOf(content);
        QVERIFY2(items.size() == expected.size(), content.c_str());
        for (qsizetype i = 0; i < items.size(); ++i) {
            QCOMPARE(items[i].text, expected[i].text);
            QCOMPARE(items[i].left, expected[i].left);
        }
    }
}

void TestPageText::lettersFarApartAreNoWord()
{
    QCOMPARE(textsOf("BT /F1 10 Tf 15 Tc 50 700 Td (4711) Tj ET"),
             QStringList({"4", "7", "1", "1"}));
    QCOMPARE(textsOf("BT /F1 10 Tf 50 Tc 50 700 Td (4711) Tj ET"),
             QStringList({"4", "7", "1", "1"}));
}

void TestPageText::wordSpacingBelongsToTheBlank()
{
    QCOMPARE(textsOf("BT /F1 10 Tf 5 Tw 50 700 Td (a line of words) Tj ET"),
             QStringList{"a line of words"});
}

void TestPageText::justifiedLineStaysOneItem()
{
    QCOMPARE(textsOf("BT /F1 10 Tf 50 700 Td [(set)-700(to)-700(the)-700(margin)] TJ ET"),
             QStringList{"set to the margin"});
}

void TestPageText::itemsComeInTheOrderOfTheContent()
{
    QCOMPARE(textsOf("BT /F1 10 Tf 50 100 Td (low) Tj 0 500 Td (high) Tj 300 0 Td (right) Tj ET"),
             QStringList({"low", "high", "right"}));
}

void TestPageText::everyRenderingModeCounts_data()
{
    QTest::addColumn<int>("mode");
    for (int mode = 0; mode < 8; ++mode) {
        QTest::addRow("mode %d", mode) << mode;
    }
}

void TestPageText::everyRenderingModeCounts()
{
    QFETCH(int, mode);
    QCOMPARE(textsOf(std::to_string(mode) + " Tr " + account), QStringList{"Account 4711"});
}

void TestPageText::formsAreRunWhereTheyArePlaced()
{
    PdfBuilder pdf;
    const int inner = pdf.addStream("/Type/XObject/Subtype/Form/BBox[0 0 500 500]"
                                    "/Matrix[2 0 0 2 0 0]/Resources<</Font<</F1 3 0 R>>>>",
                                    "BT /F1 5 Tf 10 20 Td (inside) Tj ET");
    const int outer = pdf.addStream("/Type/XObject/Subtype/Form/BBox[0 0 500 500]/Resources"
                                    "<</XObject<</I " +
                                        std::to_string(inner) + " 0 R>>>>",
                                    "q 1 0 0 1 30 0 cm /I Do Q");
    PdfBuilder::Page page;
    page.resources = "/XObject<</O " + std::to_string(outer) + " 0 R>>";
    pdf.addPage("q 1 0 0 1 0 600 cm /O Do Q BT /F1 10 Tf 50 100 Td (after) Tj ET", page);
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QCOMPARE(run.texts(), QStringList({"inside", "after"}));
    QCOMPARE(run.items()[0].left, 75);
    QCOMPARE(run.items()[0].top, 290); // baseline 640 from below, so (202 - 9) * 1.5
}

void TestPageText::fontsOfOddSyntaxAreReadOnPagesAndInForms()
{
    if (!tools::knowsLibrary) {
        QSKIP("objects are mended in versions of the library that are known");
    }
    PdfBuilder pdf;
    const auto oddFont = [&pdf] {
        return "/F9 " +
               std::to_string(pdf.add("<</Type/Font/Subtype/Type1/Encoding/WinAnsiEncoding"
                                      "/Name/Any Name/BaseFont/Helvetica>>")) +
               " 0 R";
    };
    const int form = pdf.addStream(
        "/Type/XObject/Subtype/Form/BBox[0 0 500 500]/Resources<</Font<<" + oddFont() + ">>>>",
        "BT /F9 10 Tf 50 300 Td (inside) Tj ET");
    pdf.addPage(
        "BT /F9 10 Tf 50 700 Td (outside) Tj ET /X Do",
        {.resources = "/XObject<</X " + std::to_string(form) + " 0 R>>", .fonts = oddFont()});
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QCOMPARE(run.texts(), QStringList({"outside", "inside"}));
}

void TestPageText::hiddenLayersAreLeftOut()
{
    PdfBuilder pdf;
    const int shown = pdf.add("<</Type/OCG/Name(shown)>>");
    const int hidden = pdf.add("<</Type/OCG/Name(hidden)>>");
    const std::string on = std::to_string(shown) + " 0 R";
    const std::string off = std::to_string(hidden) + " 0 R";
    pdf.setCatalogEntries("/OCProperties<</OCGs[" + on + ' ' + off + "]/D<</ON[" + on + "]/OFF[" +
                          off + "]>>>>");
    const int form = pdf.addStream("/Type/XObject/Subtype/Form/BBox[0 0 500 500]/OC " + off +
                                       "/Resources<</Font<</F1 3 0 R>>>>",
                                   "BT /F1 10 Tf 50 50 Td (form off) Tj ET");
    PdfBuilder::Page page;
    page.resources = "/Properties<</On " + on + "/Off " + off + ">>/XObject<</X " +
                     std::to_string(form) + " 0 R>>";
    pdf.addPage("/OC /On BDC BT /F1 10 Tf 50 700 Td (on) Tj ET EMC "
                "/OC /Off BDC BT /F1 10 Tf 50 600 Td (off) Tj ET EMC /X Do "
                "/OC /Off BDC BT 3 Tr /F1 10 Tf 50 500 Td (off and invisible) Tj ET EMC",
                page);
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QCOMPARE(run.texts(), QStringList{"on"});
}

void TestPageText::hiddenTextMovesThePenAllTheSame()
{
    PdfBuilder pdf;
    const std::string layer = std::to_string(pdf.add("<</Type/OCG/Name(hidden)>>")) + " 0 R";
    pdf.setCatalogEntries("/OCProperties<</OCGs[" + layer + "]/D<</OFF[" + layer + "]>>>>");
    PdfBuilder::Page page;
    page.resources = "/Properties<</Off " + layer + ">>";
    pdf.addPage("BT /F3 10 Tf 50 700 Td /OC /Off BDC (12345) Tj EMC (shown) Tj ET", page);
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QCOMPARE(run.texts(), QStringList{"shown"});
    QCOMPARE(run.items()[0].left, 120); // 50 points and five letters of 6
}

void TestPageText::fieldsAndAnnotationsArePageText()
{
    PdfBuilder pdf;
    const auto appearance = [&pdf](const std::string &text) {
        return std::to_string(pdf.addStream("/Type/XObject/Subtype/Form/BBox[0 0 100 20]"
                                            "/Resources<</Font<</F1 3 0 R>>>>",
                                            "BT /F1 10 Tf 2 5 Td (" + text + ") Tj ET")) +
               " 0 R";
    };
    const int field = pdf.add("<</Type/Annot/Subtype/Widget/FT/Tx/T(account)/V(4711)/F 4"
                              "/Rect[200 700 300 720]/AP<</N " +
                              appearance("4711") + ">>>>");
    const int note = pdf.add("<</Type/Annot/Subtype/FreeText/Contents(seen)/F 4"
                             "/Rect[200 600 300 620]/AP<</N " +
                             appearance("seen") + ">>>>");
    pdf.setCatalogEntries("/AcroForm<</Fields[" + std::to_string(field) + " 0 R]>>");
    PdfBuilder::Page page;
    page.entries = "/Annots[" + std::to_string(field) + " 0 R " + std::to_string(note) + " 0 R]";
    pdf.addPage("BT /F1 10 Tf 50 700 Td (Account:) Tj ET", page);
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QCOMPARE(run.texts(), QStringList({"Account:", "seen", "4711"}));
    QCOMPARE(run.items()[2].left, 303);
    QCOMPARE(run.items()[2].top, 192); // baseline 705 from below, so (137 - 9) * 1.5
}

void TestPageText::hiddenAnnotationsAreLeftOut()
{
    PdfBuilder pdf;
    const int form = pdf.addStream("/Type/XObject/Subtype/Form/BBox[0 0 100 20]"
                                   "/Resources<</Font<</F1 3 0 R>>>>",
                                   "BT /F1 10 Tf 2 5 Td (secret) Tj ET");
    const int note = pdf.add("<</Type/Annot/Subtype/FreeText/Contents(secret)/F 2"
                             "/Rect[200 600 300 620]/AP<</N " +
                             std::to_string(form) + " 0 R>>>>");
    PdfBuilder::Page page;
    page.entries = "/Annots[" + std::to_string(note) + " 0 R]";
    pdf.addPage(account, page);
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QCOMPARE(run.texts(), QStringList{"Account 4711"});
}

void TestPageText::codesFollowTheFontsTable()
{
    PdfBuilder pdf;
    const int table = pdf.addStream(
        {},
        "/CIDInit /ProcSet findresource begin begincmap /CMapName /X def\n"
        "1 begincodespacerange <00> <ff> endcodespacerange\n"
        "5 beginbfchar <41> <00660066006C> <42> <FB03> <43> <D83DDCB6> <44> <0009> <45> <00AD>\n"
        "endbfchar endcmap end\n");
    const int font = pdf.add("<</Type/Font/Subtype/Type1/BaseFont/Helvetica/ToUnicode " +
                             std::to_string(table) + " 0 R>>");
    PdfBuilder::Page page;
    page.fonts = "/F9 " + std::to_string(font) + " 0 R";
    pdf.addPage("BT /F9 10 Tf 50 700 Td (AxB) Tj 0 -50 Td (C) Tj 0 -50 Td (xDyEz) Tj ET", page);
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QCOMPARE(run.texts(), QStringList({"fflxffi", QString::fromUtf8("💶"), "x yz"}));
}

// A composite font whose codes are glyph numbers, without a table that tells what they mean.
static int addGlyphFont(PdfBuilder &pdf, const std::string &descriptor)
{
    const int description =
        pdf.add("<</Type/FontDescriptor/FontName/Some/Flags 4/ItalicAngle 0/Ascent 900/Descent -200"
                "/CapHeight 700/StemV 80/FontBBox[0 -200 1000 900]" +
                descriptor + ">>");
    return pdf.add("<</Type/Font/Subtype/Type0/BaseFont/Some/Encoding/Identity-H/DescendantFonts"
                   "[<</Type/Font/Subtype/CIDFontType2/BaseFont/Some/DW 600/CIDToGIDMap/Identity"
                   "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>"
                   "/FontDescriptor " +
                   std::to_string(description) + " 0 R>>]>>");
}

// "Hi 47" by glyph number: in this font a glyph's number is its code less 29.
constexpr const char *glyphNumbers = "BT /F9 10 Tf 50 700 Td <002B004C00030017001A> Tj ET";

void TestPageText::fontWithoutATableIsReadByItsOwnProgram()
{
    QFile file(QStringLiteral("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"));
    if (!file.open(QIODevice::ReadOnly)) {
        QSKIP("the font is not installed");
    }
    PdfBuilder pdf;
    const int program = pdf.addStream({}, file.readAll().toStdString());
    PdfBuilder::Page page;
    page.fonts =
        "/F9 " +
        std::to_string(addGlyphFont(pdf, "/FontFile2 " + std::to_string(program) + " 0 R")) +
        " 0 R";
    pdf.addPage(glyphNumbers, page);
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QCOMPARE(run.texts(), QStringList{"Hi 47"});
}

void TestPageText::unreadableCodeOfAFontNotEmbeddedStaysMarked()
{
    PdfBuilder pdf;
    PdfBuilder::Page page;
    page.fonts = "/F9 " + std::to_string(addGlyphFont(pdf, {})) + " 0 R";
    pdf.addPage(glyphNumbers, page);
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QCOMPARE(run.texts(), QStringList{QString(5, QChar(0xfffd))});
}

void TestPageText::turnedTextIsOneItem_data()
{
    QTest::addColumn<int>("degrees");
    for (const int degrees : {30, 45, 90, 135, 180, 270, 315}) {
        QTest::addRow("%d degrees", degrees) << degrees;
    }
}

void TestPageText::turnedTextIsOneItem()
{
    QFETCH(int, degrees);
    const double angle = degrees * M_PI / 180;
    const std::string cosine = std::to_string(std::cos(angle));
    const std::string sine = std::to_string(std::sin(angle));
    const std::string minus = std::to_string(-std::sin(angle));
    QCOMPARE(textsOf("BT /F1 10 Tf " + cosine + ' ' + sine + ' ' + minus + ' ' + cosine +
                     " 300 400 Tm [(Acc) 20 (ount) -300 (4711)] TJ ET"),
             QStringList{"Account 4711"});
}

void TestPageText::placeIsCountedOnThePageAsShown_data()
{
    QTest::addColumn<QByteArray>("box");
    QTest::addColumn<QByteArray>("entries");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("left");
    QTest::addColumn<int>("top");
    const QByteArray upright = account;
    const QByteArray a4 = "[0 0 595 842]";
    QTest::newRow("plain") << a4 << QByteArray() << upright << 300 << 200;
    QTest::newRow("media box off zero")
        << QByteArray("[100 50 695 892]") << QByteArray() << upright << 150 << 275;
    QTest::newRow("crop box") << a4 << QByteArray("/CropBox[100 100 500 800]") << upright << 150
                              << 137;
    QTest::newRow("user unit") << a4 << QByteArray("/UserUnit 2") << upright << 600 << 399;
    QTest::newRow("reversed media box")
        << QByteArray("[595 842 0 0]") << QByteArray() << upright << 300 << 200;
    QTest::newRow("turned right") << a4 << QByteArray("/Rotate 90")
                                  << QByteArray("BT /F1 10 Tf 0 1 -1 0 142 200 Tm (Account 4711) "
                                                "Tj ET")
                                  << 300 << 200;
    QTest::newRow("upside down") << a4 << QByteArray("/Rotate 180")
                                 << QByteArray("BT /F1 10 Tf -1 0 0 -1 395 142 Tm (Account 4711) "
                                               "Tj ET")
                                 << 300 << 200;
    QTest::newRow("turned left") << a4 << QByteArray("/Rotate 270")
                                 << QByteArray("BT /F1 10 Tf 0 -1 1 0 453 642 Tm (Account 4711) "
                                               "Tj ET")
                                 << 300 << 200;
}

void TestPageText::placeIsCountedOnThePageAsShown()
{
    QFETCH(QByteArray, box);
    QFETCH(QByteArray, entries);
    QFETCH(QByteArray, content);
    PdfBuilder::Page page;
    page.mediaBox = box.toStdString();
    page.entries = entries.toStdString();
    const QList<ItemLine> items = itemsOf(content.toStdString(), page);
    QCOMPARE(items.size(), 1);
    QCOMPARE(items[0].text, "Account 4711");
    QTEST(items[0].left, "left");
    QTEST(items[0].top, "top");
}

void TestPageText::placeIsTheSameInAnotherFont()
{
    const QList<ItemLine> first = itemsOf("BT /F1 10 Tf 50 700 Td (gypsum) Tj ET");
    for (const std::string font : {"/F2", "/F3"}) {
        const QList<ItemLine> other = itemsOf("BT " + font + " 10 Tf 50 700 Td (ACE) Tj ET");
        QCOMPARE(other.size(), 1);
        QCOMPARE(other[0].left, first[0].left);
        QCOMPARE(other[0].top, first[0].top);
    }
}

void TestPageText::textOutsideTheCropBoxIsLeftOut()
{
    PdfBuilder::Page page;
    page.entries = "/CropBox[100 100 500 800]";
    QCOMPARE(
        textsOf("BT /F1 10 Tf 20 700 Td (gone) Tj 180 0 Td (kept) Tj 0 120 Td (gone) Tj ET", page),
        QStringList{"kept"});
}

void TestPageText::verticalTextIsOneItem()
{
    PdfBuilder pdf;
    const int font = pdf.add(
        "<</Type/Font/Subtype/Type0/BaseFont/HeiseiMin-W3/Encoding/UniJIS-UCS2-V/DescendantFonts"
        "[<</Type/Font/Subtype/CIDFontType0/BaseFont/HeiseiMin-W3/CIDSystemInfo"
        "<</Registry(Adobe)/Ordering(Japan1)/Supplement 2>>/FontDescriptor<</Type/FontDescriptor"
        "/FontName/HeiseiMin-W3/Flags 4/ItalicAngle 0/Ascent 880/Descent -120/CapHeight 700"
        "/StemV 80/FontBBox[0 -120 1000 880]>>>>]>>");
    PdfBuilder::Page page;
    page.fonts = "/F9 " + std::to_string(font) + " 0 R";
    pdf.addPage("BT /F9 20 Tf 300 700 Td <682A5F0F4F1A793E> Tj ET", page);
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QCOMPARE(run.texts(), QStringList{QString::fromUtf8("株式会社")});
    const ItemLine item = run.items()[0];
    QCOMPARE(item.left, 435); // half an em to either side of the pen
    QCOMPARE(item.top, 213);
    QCOMPARE(item.width, 30);
    QCOMPARE(item.height, 120);
}

void TestPageText::markupInTextsIsEscaped()
{
    QCOMPARE(textsOf("BT /F1 10 Tf 50 700 Td (</span> \"left:5;\" A&B &lt;) Tj ET"),
             QStringList{"&lt;/span&gt; &quot;left:5;&quot; A&B &amp;lt;"});
}

void TestPageText::unbalancedStatesDoNoHarm()
{
    QCOMPARE(textsOf("Q Q Q " + std::string(account) + " Q"), QStringList{"Account 4711"});
    std::string saves;
    for (int i = 0; i < 3000; ++i) {
        saves += "q ";
    }
    QCOMPARE(textsOf(saves + account), QStringList{"Account 4711"});
}

QUORLIN_TEST(TestPageText)
#include "test_page_text.moc"
