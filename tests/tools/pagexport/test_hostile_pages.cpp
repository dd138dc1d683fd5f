#include "tests/support/room.h"
#include "tests/tools/pagexport/export_run.h"
#include "tests/tools/pagexport/hostile_glyph.h"
#include "tools/pdf/library_internals.h"

#include <QTest>

using namespace quorlin::test;

/// Pages made to stop the export: none may cost another page its text, hang or crash the tool.
class TestHostilePages : public QObject
{
    Q_OBJECT

private slots:
    void formsNestedOverAndOverAreCutOff();
    void formsThatDrawThemselvesEnd();
    void formsNestedVeryDeepEnd();
    void endlessContentIsCutOff();
    void endlessGlyphIsGivenUp();
    void pageWithoutSenseGivesAnEmptyFile_data();
    void pageWithoutSenseGivesAnEmptyFile();
    void missingFontStillGivesText();
    void fontsThatBreakTheSyntaxKeepTheirWidths_data();
    void fontsThatBreakTheSyntaxKeepTheirWidths();
    void hugePageHasTextAndASmallerPicture();
    void aNodeThatComesTwiceGivesItsPagesTwice();
    void absurdCountIsNotBelieved();
    void treeThatStatesNoPagesIsRefused();
    void treeThatSharesPagesWithoutEndIsRefused();
    void treeThatLoopsEnds();
    void treeThatFansOutWithoutPagesEnds();
    void hugeSizesAndPlacesDoNoHarm();
    void pageOfManyLinesIsWhole();
};

void TestHostilePages::formsNestedOverAndOverAreCutOff()
{
    PdfBuilder pdf;
    PdfBuilder::Page page;
    const std::string content = "BT /F1 9 Tf (x) Tj ET 0 0 1 1 re f";
    const int innermost = pdf.addStream(form("/Font<</F1 3 0 R>>"), content);
    page.resources = "/XObject<</X " + reference(addEndlessForms(pdf, innermost)) + ">>";
    addThreePages(pdf, "/X Do", page);
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QCOMPARE(run.texts(1), good);
    QCOMPARE(run.texts(2), QStringList());
    QCOMPARE(run.texts(3), good);
    QVERIFY(run.errors().contains("page 2: takes too long"));
    QVERIFY(run.content("page.xml").contains("complete=\"no\""));
}

void TestHostilePages::formsThatDrawThemselvesEnd()
{
    PdfBuilder pdf;
    const int first = pdf.add({});
    const int second = pdf.addStream(form("/XObject<</X " + reference(first) + ">>"), "/X Do");
    const std::string content = "/X Do BT /F1 9 Tf 9 99 Td (once) Tj ET";
    pdf.set(first, "<<" + form("/Font<</F1 3 0 R>>/XObject<</X " + reference(second) + ">>") +
                       "/Length " + std::to_string(content.size()) + ">>stream\n" + content +
                       "\nendstream");
    PdfBuilder::Page page;
    page.resources = "/XObject<</X " + reference(first) + ">>";
    addThreePages(pdf, "/X Do", page);
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QCOMPARE(run.texts(2), QStringList{"once"});
    QCOMPARE(run.texts(3), good);
}

void TestHostilePages::formsNestedVeryDeepEnd()
{
    PdfBuilder pdf;
    int inner = pdf.addStream(form("/Font<</F1 3 0 R>>"), "BT /F1 9 Tf (x) Tj ET");
    for (int level = 0; level < 20000; ++level) {
        inner = pdf.addStream(form("/XObject<</X " + reference(inner) + ">>"), "/X Do");
    }
    PdfBuilder::Page page;
    page.resources = "/XObject<</X " + reference(inner) + ">>";
    addThreePages(pdf, std::string(goodText) + " /X Do", page);
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QCOMPARE(run.texts(2), good);
    QCOMPARE(run.texts(3), good);
}

void TestHostilePages::endlessContentIsCutOff()
{
    PdfBuilder pdf;
    pdf.addPage(goodText);
    std::string block = "BT /F1 8 Tf 10 10 Td\n";
    while (block.size() < 1000000) {
        block += "0 -.0001 Td(abc)Tj\n";
    }
    const int stream = pdf.addStream({}, block);
    std::string contents;
    for (int i = 0; i < 5000; ++i) {
        contents += reference(stream) + ' ';
    }
    pdf.addPageWithContents(pdf.add('[' + contents + ']'));
    pdf.addPage(goodText);
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QCOMPARE(run.texts(1), good);
    QCOMPARE(run.texts(2), QStringList());
    QCOMPARE(run.texts(3), good);
}

// The library draws the glyphs of such fonts while it loads them, and looks up from that for
// nobody. This glyph takes time alone: it leaves no mark that would fill the memory.
void TestHostilePages::endlessGlyphIsGivenUp()
{
    PdfBuilder pdf;
    addPagesWithGlyph(pdf, addEndlessForms(pdf, pdf.addStream(form({}), "q Q")));
    // The thread that is given up cannot let go of what it holds; that ends with the process. Only
    // this run goes without the leak check.
    const QByteArray options = qgetenv("ASAN_OPTIONS");
    qputenv("ASAN_OPTIONS", options + ":detect_leaks=0");
    ExportRun run;
    const int status = run.run(pdf);
    qputenv("ASAN_OPTIONS", options);
    QCOMPARE(status, 0);
    QCOMPARE(run.texts(1), good);
    QCOMPARE(run.texts(2), QStringList());
    QVERIFY(run.errors().contains("page 2: takes too long; its text is left out"));
    QCOMPARE(run.texts(3), good);
}

// All that a glyph is made of is kept with it.
void TestHostilePages::pageWithoutSenseGivesAnEmptyFile_data()
{
    QTest::addColumn<QByteArray>("object");
    QTest::newRow("null") << QByteArray("null");
    QTest::newRow("a number") << QByteArray("42");
    QTest::newRow("an array") << QByteArray("[1 2 3]");
    QTest::newRow("no box") << QByteArray("<</Type/Page/Parent 2 0 R/MediaBox[1 2]>>");
    QTest::newRow("empty") << QByteArray("<</Type/Page>>");
    QTest::newRow("contents are a name") << QByteArray("<</Type/Page/Contents/Name>>");
    QTest::newRow("resources are a number") << QByteArray("<</Type/Page/Resources 5>>");
    QTest::newRow("annotations are odd")
        << QByteArray("<</Type/Page/Annots[null 99 0 R (x) 5 <<>> <</Subtype/Widget>>]>>");
}

void TestHostilePages::pageWithoutSenseGivesAnEmptyFile()
{
    QFETCH(QByteArray, object);
    PdfBuilder pdf;
    const int first = pdf.addPage(goodText);
    const int bad = pdf.add(object.toStdString());
    const int last = pdf.addPage(goodText);
    pdf.setPageTree("<</Type/Pages/Count 3/Kids[" + reference(first) + ' ' + reference(bad) + ' ' +
                    reference(last) + "]>>");
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QCOMPARE(run.texts(1), good);
    QCOMPARE(run.texts(2), QStringList());
    QVERIFY(run.written().contains("page_pg_0002.htm"));
    QCOMPARE(run.texts(3), good);
    QCOMPARE(run.run(pdf, {"-f", "2", "-l", "2"}), 0);
    QCOMPARE(run.texts(1), QStringList());
}

void TestHostilePages::missingFontStillGivesText()
{
    PdfBuilder pdf;
    addThreePages(pdf, "BT /None 12 Tf 72 700 Td (text) Tj ET", {});
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QCOMPARE(run.texts(2), QStringList{"text"});
    QCOMPARE(run.texts(3), good);
}

void TestHostilePages::fontsThatBreakTheSyntaxKeepTheirWidths_data()
{
    QTest::addColumn<bool>("isInForm");
    QTest::newRow("of the page") << false;
    QTest::newRow("of a form on the page") << true;
}

void TestHostilePages::fontsThatBreakTheSyntaxKeepTheirWidths()
{
    if (!tools::knowsLibrary) {
        QSKIP("objects are mended in versions of the library that are known");
    }
    QFETCH(bool, isInForm);
    PdfBuilder pdf;
    const int font = pdf.add("<</Type/Font/Subtype/Type1/Name/Any Name/BaseFont/Courier>>");
    const std::string text = "BT /F9 10 Tf 72 400 Td (Ten wide i) Tj ET";
    const std::string fonts = "/F9 " + reference(font);
    PdfBuilder::Page page;
    if (isInForm) {
        const int inner = pdf.addStream(form("/Font<<" + fonts + ">>"), text);
        page.resources = "/XObject<</X " + reference(inner) + ">>";
        pdf.addPage("/X Do", page);
    } else {
        page.fonts = fonts;
        pdf.addPage(text, page);
    }
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QCOMPARE(run.texts(), QStringList("Ten wide i"));
    QCOMPARE(run.items().constFirst().width, 90); // ten letters of 6 points
}

void TestHostilePages::hugePageHasTextAndASmallerPicture()
{
    PdfBuilder pdf;
    PdfBuilder::Page page;
    page.mediaBox = "[0 0 2000000 2000000]";
    pdf.addPage(goodText, page);
    ExportRun run;
    QCOMPARE(run.run(pdf, {"-f", "1", "-l", "1"}), 0);
    QCOMPARE(run.texts(), good);
    QCOMPARE(run.written(), QStringList({"page.xml", "page_pg_0001.htm", "page_pg_0001.png"}));
    QCOMPARE(run.errors(), QByteArray());
}

void TestHostilePages::aNodeThatComesTwiceGivesItsPagesTwice()
{
    PdfBuilder pdf;
    const int page = pdf.addPage(goodText);
    const int node = pdf.add("<</Type/Pages/Parent 2 0 R/Count 7/Kids[" + reference(page) + "]>>");
    pdf.setPageTree("<</Type/Pages/Count 40/Kids[" + reference(node) + ' ' + reference(node) +
                    "]>>");
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QCOMPARE(run.written().size(), 3);
    QCOMPARE(run.texts(1), good);
    QCOMPARE(run.texts(2), good);
}

void TestHostilePages::absurdCountIsNotBelieved()
{
    PdfBuilder pdf;
    const int page = pdf.addPage(goodText);
    for (const std::string count : {"2000000000", "40"}) {
        pdf.setPageTree("<</Type/Pages/Count " + count + "/Kids[" + reference(page) + "]>>");
        ExportRun run;
        QCOMPARE(run.run(pdf), 0);
        QCOMPARE(run.written().size(), 2);
        QCOMPARE(run.texts(1), good);
    }
}

void TestHostilePages::treeThatStatesNoPagesIsRefused()
{
    PdfBuilder pdf;
    const int page = pdf.addPage(goodText);
    for (const std::string count : {"-5", "0", "null"}) {
        pdf.setPageTree("<</Type/Pages/Count " + count + "/Kids[" + reference(page) + "]>>");
        ExportRun run;
        QCOMPARE(run.run(pdf), 1);
        QCOMPARE(run.written(), QStringList());
    }
}

// Sixty nodes, each listing the one before it twice: more pages than could ever be written.
void TestHostilePages::treeThatSharesPagesWithoutEndIsRefused()
{
    PdfBuilder pdf;
    int node = pdf.addPage(goodText);
    for (int level = 0; level < 60; ++level) {
        node = pdf.add("<</Type/Pages/Count 2/Kids[" + reference(node) + ' ' + reference(node) +
                       "]>>");
    }
    pdf.setPageTree("<</Type/Pages/Count 9/Kids[" + reference(node) + "]>>");
    ExportRun run;
    QCOMPARE(run.run(pdf), 1);
    QCOMPARE(run.written(), QStringList());
    QVERIFY(run.errors().contains("claims to have more pages than it can have"));
}

void TestHostilePages::treeThatLoopsEnds()
{
    PdfBuilder pdf;
    const int page = pdf.addPage(goodText);
    const int branch = pdf.add({});
    pdf.set(branch, "<</Type/Pages/Parent 2 0 R/Count 2/Kids[2 0 R " + reference(branch) + "]>>");
    pdf.setPageTree("<</Type/Pages/Count 3/Kids[" + reference(page) + ' ' + reference(branch) +
                    "]>>");
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QCOMPARE(run.written().size(), 4); // as many pages as the root counts, loops among them
    QCOMPARE(run.texts(1), good);
}

void TestHostilePages::treeThatFansOutWithoutPagesEnds()
{
    PdfBuilder pdf;
    const int page = pdf.addPage(goodText);
    int node = pdf.add("<</Type/Pages/Count 0/Kids[]>>");
    for (int level = 0; level < 60; ++level) {
        node = pdf.add("<</Type/Pages/Count 2/Kids[" + reference(node) + ' ' + reference(node) +
                       "]>>");
    }
    pdf.setPageTree("<</Type/Pages/Count 9/Kids[" + reference(page) + ' ' + reference(node) +
                    "]>>");
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QCOMPARE(run.texts(1), good);
    QCOMPARE(run.written().size(), 2);
}

void TestHostilePages::hugeSizesAndPlacesDoNoHarm()
{
    PdfBuilder pdf;
    addThreePages(pdf,
                  "q BT /F1 1000000000000000000000 Tf 10 10 Td (huge) Tj ET "
                  "BT /F1 0 Tf 10 10 Td (none) Tj ET "
                  "BT /F1 9 Tf 100000000000000000000000 0 Td (away) Tj ET "
                  "BT /F1 -12 Tf 400 400 Td (back) Tj ET "
                  "BT /F1 9 Tf 9 0 0 9999999999999999999 1 1 Tm (x) Tj ET "
                  "BT 99999999999999999 Tc /F1 9 Tf 9 9 Td (yz) Tj ET "
                  "BT /F1 9 Tf 0 0 0 0 0 0 Tm (flat) Tj ET Q " +
                      std::string(goodText),
                  {});
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QVERIFY(run.texts(2).contains("Good page"));
    QVERIFY(run.texts(2).contains("back"));
    QVERIFY(!run.texts(2).contains("away"));
    QCOMPARE(run.texts(3), good);
}

void TestHostilePages::pageOfManyLinesIsWhole()
{
    std::string content = "BT /F1 2 Tf 10 800 Td ";
    for (int line = 0; line < 300000; ++line) {
        content += "0 " + std::string(line % 2 == 0 ? "-7" : "6.995") + " Td (line " +
                   std::to_string(line) + ") Tj\n";
    }
    PdfBuilder pdf;
    pdf.addPage(content + "ET");
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QCOMPARE(run.items().size(), 300000);
    QCOMPARE(run.errors(), QByteArray());
}

QUORLIN_TEST(TestHostilePages)
#include "test_hostile_pages.moc"
