// The tool's decisions that need no file: ranges, command lines, names, content streams, metadata.

#include "tests/support/room.h"
#include "tools/common/printable.h"
#include "tools/common/tool_error.h"
#include "tools/pagebinder/arguments.h"
#include "tools/pagebinder/copying/content_scanner.h"
#include "tools/pagebinder/document/conformance_claims.h"
#include "tools/pagebinder/document/information.h"
#include "tools/pagebinder/output/output_name.h"
#include "tools/pagebinder/page_ranges.h"

#include <QtTest>

using namespace tools;

class PageBinderUnitsTest : public QObject
{
    Q_OBJECT

private slots:
    void readsPageRanges_data();
    void readsPageRanges();
    void expandsRangesInTheOrderGiven();
    void readsCommandLines_data();
    void readsCommandLines();
    void namesWhatIsWrongWithACommandLine();
    void keepsShortNames();
    void shortensTheTextBeforeTheLastPart();
    void keepsTheBaseNameWhereNoPagesFollow();
    void shortensBetweenCharacters();
    void shortensTheBaseNameWhenItIsTooLongItself();
    void namesThatDifferOnlyWhereTheyAreCutStayApart();
    void numberSignsInNamesStandForCharacters();
    void findsNamesByKind_data();
    void findsNamesByKind();
    void findsNamesWhereverTheBytesAreCut();
    void findsANameCutByTheEndOfAStream();
    void namesInStringsAndCommentsAreNotUsed();
    void namesBehindAnInlineImageAreFound();
    void lowersTheLevelOfUntaggedArchives();
    void blanksOutTheClaimOfAccessibility();
    void leavesOtherMetadataAlone();
    void blanksOutTheClaimOfAnInvoice();
    void valuesHoldNoLineBreaks();
    void messagesShowNoCharacterThatMisleads_data();
    void messagesShowNoCharacterThatMisleads();
};

namespace {

using Names = QStringList;

Names scan(const std::string &content, std::size_t piece = 1000000)
{
    const char *kinds[] = {"font", "xObject", "state", "colour", "pattern", "shading", "property"};
    Names names;
    ContentScanner scanner([&](ResourceKind kind, std::string_view name) {
        names << QString("%1 %2").arg(kinds[static_cast<int>(kind)],
                                      QString::fromLatin1(name.data(), qsizetype(name.size())));
    });
    for (std::size_t place = 0; place < content.size(); place += piece) {
        scanner.feed(std::string_view(content).substr(place, piece));
    }
    scanner.endStream();
    return names;
}

std::string repeated(const char *text, int times)
{
    std::string all;
    for (int i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

} // namespace

void PageBinderUnitsTest::readsPageRanges_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("understood");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::newRow("one page") << "7" << true << 7 << 7;
    QTest::newRow("several pages") << "3-6" << true << 3 << 6;
    QTest::newRow("one page as a range") << "5-5" << true << 5 << 5;
    QTest::newRow("zeros in front") << "007" << true << 7 << 7;
    QTest::newRow("nothing") << "" << false << 0 << 0;
    QTest::newRow("page 0") << "0" << false << 0 << 0;
    QTest::newRow("backwards") << "6-3" << false << 0 << 0;
    QTest::newRow("no first page") << "-3" << false << 0 << 0;
    QTest::newRow("no last page") << "3-" << false << 0 << 0;
    QTest::newRow("three numbers") << "1-2-3" << false << 0 << 0;
    QTest::newRow("a sign") << "+3" << false << 0 << 0;
    QTest::newRow("a blank") << "3 " << false << 0 << 0;
    QTest::newRow("letters") << "all" << false << 0 << 0;
    QTest::newRow("over the range of numbers") << "99999999999" << false << 0 << 0;
    QTest::newRow("the largest number") << "2147483647" << true << 2147483647 << 2147483647;
}

void PageBinderUnitsTest::readsPageRanges()
{
    QFETCH(QString, text);
    QFETCH(bool, understood);
    QFETCH(int, first);
    QFETCH(int, last);
    PageRange range;
    QCOMPARE(parsePageRange(text.toStdString(), range), understood);
    QCOMPARE(range.first, first);
    QCOMPARE(range.last, last);
}

void PageBinderUnitsTest::expandsRangesInTheOrderGiven()
{
    const std::vector<PageRange> ranges = {{4, 5}, {1, 1}, {4, 4}};
    QCOMPARE(expandPageRanges(ranges), (std::vector<int>{4, 5, 1, 4}));
    QCOMPARE(countPages(ranges), 4LL);
    QCOMPARE(countPages({{1, 2147483647}, {1, 2147483647}}), 4294967294LL);
}

void PageBinderUnitsTest::namesWhatIsWrongWithACommandLine()
{
    const auto fault = [](const std::vector<std::string_view> &words) {
        try {
            parseBinderArguments(words);
        } catch (const ToolError &error) {
            return QByteArray(error.what());
        }
        return QByteArray("nothing");
    };
    QVERIFY(fault({}).startsWith("no input file"));
    QVERIFY(fault({"in.pdf"}).startsWith("one of -getinfo, -merge and -split is needed"));
    QVERIFY(fault({"in.pdf", "-getinfo", "-outfile", ""}).startsWith("-outfile needs a file"));
    QVERIFY(fault({"in.pdf", "-getinfo"}).startsWith("-outfile is needed"));
}

void PageBinderUnitsTest::readsCommandLines_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("understood");
    const auto row = [](const char *name, const char *text, bool understood) {
        QTest::newRow(name) << QString(text).split(' ', Qt::SkipEmptyParts) << understood;
    };
    row("information", "in.pdf -getinfo -outfile out", true);
    row("merge", "in.pdf -merge 1-2 4 -outfile out", true);
    row("output first", "in.pdf -outfile out -merge 1", true);
    row("input like an option", "-merge -merge 1 -outfile out", true);
    row("help", "--help", true);
    row("short help", "-h", true);
    row("version", "--version", true);
    row("nothing", "", false);
    row("input alone", "in.pdf", false);
    row("no output", "in.pdf -getinfo", false);
    row("output without a name", "in.pdf -getinfo -outfile", false);
    row("merge without pages", "in.pdf -merge -outfile out", false);
    row("no page", "in.pdf -merge 1 x -outfile out", false);
    row("both actions", "in.pdf -getinfo -merge 1 -outfile out", false);
    row("two outputs", "in.pdf -getinfo -outfile a -outfile b", false);
    row("split", "in.pdf -split list", true);
    row("split by standard input", "in.pdf -split -", true);
    row("output to standard output", "in.pdf -merge 1 -outfile -", true);
    row("split without a list", "in.pdf -split", false);
    row("split with an output", "in.pdf -split list -outfile out", false);
    row("split and merge", "in.pdf -split list -merge 1 -outfile out", false);
    row("unknown option", "in.pdf -slit -outfile out", false);
}

void PageBinderUnitsTest::readsCommandLines()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, understood);
    std::vector<std::string> texts;
    for (const QString &argument : arguments) {
        texts.push_back(argument.toStdString());
    }
    const std::vector<std::string_view> list(texts.begin(), texts.end());
    int status = exitSuccess;
    try {
        parseBinderArguments(list);
    } catch (const ToolError &error) {
        status = error.status();
    }
    QCOMPARE(status, understood ? int(exitSuccess) : int(exitUsageError));
}

void PageBinderUnitsTest::keepsShortNames()
{
    const std::string name = "1 ACME report 1-3.pdf";
    QCOMPARE(shortenOutputName(name, "report", 255), name);
    QCOMPARE(shortenOutputName(name, "report", name.size()), name);
    QVERIFY(shortenOutputName(name, "report", name.size() - 1) != name);
}

void PageBinderUnitsTest::shortensTheTextBeforeTheLastPart()
{
    const std::string name = "12 " + repeated("text ", 60) + "report 1-3.pdf";
    const std::string shortened = shortenOutputName(name, "report", 255);
    QVERIFY(shortened.size() <= 255);
    QVERIFY(shortened.size() > 245);
    QVERIFY(QByteArray::fromStdString(shortened).startsWith("12 text text "));
    QVERIFY(QByteArray::fromStdString(shortened).endsWith(" report 1-3.pdf"));
}

void PageBinderUnitsTest::keepsTheBaseNameWhereNoPagesFollow()
{
    const std::string shortened =
        shortenOutputName("4 " + repeated("text ", 60) + "big report.pdf", "big report", 255);
    QVERIFY(shortened.size() <= 255);
    QVERIFY(QByteArray::fromStdString(shortened).startsWith("4 text text "));
    QVERIFY(QByteArray::fromStdString(shortened).endsWith(" big report.pdf"));
}

void PageBinderUnitsTest::shortensBetweenCharacters()
{
    for (int blanks = 0; blanks < 3; ++blanks) {
        const std::string name =
            "1 " + std::string(std::size_t(blanks), '.') + repeated("名", 100) + " b 7.pdf";
        const std::string shortened = shortenOutputName(name, "b", 255);
        QVERIFY(shortened.size() <= 255);
        QVERIFY(!QString::fromStdString(shortened).contains(QChar::ReplacementCharacter));
    }
}

void PageBinderUnitsTest::shortensTheBaseNameWhenItIsTooLongItself()
{
    const std::string base = repeated("b", 250);
    const std::string shortened = shortenOutputName("3 text " + base + " 4-5.pdf", base, 255);
    QVERIFY(shortened.size() <= 255);
    QVERIFY(QByteArray::fromStdString(shortened).startsWith("3 text bbb"));
    QVERIFY(QByteArray::fromStdString(shortened).endsWith(" 4-5.pdf"));
}

void PageBinderUnitsTest::namesThatDifferOnlyWhereTheyAreCutStayApart()
{
    const std::string text = repeated("same", 70);
    const std::string first = shortenOutputName("1 " + text + "A b 1.pdf", "b", 255);
    const std::string second = shortenOutputName("1 " + text + "B b 1.pdf", "b", 255);
    QVERIFY(first != second);
}

void PageBinderUnitsTest::numberSignsInNamesStandForCharacters()
{
    QCOMPARE(decodeName("A#6a#4B"), std::string("AjK"));
    QCOMPARE(decodeName("A#00#6"), std::string("A#00#6"));
}

void PageBinderUnitsTest::findsNamesByKind_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("names");
    const auto row = [](const char *name, const char *content, const char *names) {
        QTest::newRow(name) << QByteArray(content)
                            << QString(names).split(", ", Qt::SkipEmptyParts);
    };
    row("font", "BT /F1 12 Tf ET", "font F1");
    row("object drawn", "q /Im1 Do Q", "xObject Im1");
    row("nothing between", "/Im1 Do/Im2 Do", "xObject Im1, xObject Im2");
    row("graphics state", "/GS0 gs", "state GS0");
    row("colour spaces", "/C0 cs /C1 CS", "colour C0, colour C1");
    row("pattern", "0.5 /P1 scn /P2 SCN", "pattern P1, pattern P2");
    row("shading", "/Sh1 sh", "shading Sh1");
    row("marked content", "/OC /MC0 BDC EMC", "property OC, property MC0");
    row("marked content without a name", "/Span <</MCID 0>> BDC", "property Span, property MCID");
    row("tag only", "/Artifact BMC EMC", "");
    row("rendering intent", "/Perceptual ri", "");
    row("escaped name", "/A#42 Do", "xObject AB");
    row("names of operators before", "/F1 12 Tf 0 g (x) Tj", "font F1");
    row("hexadecimal string", "</Im1> Tj <2f496d31> Tj", "");
    row("comment", "% /Im1 Do\n/Im2 Do", "xObject Im2");
    row("colour of an inline image", "BI /CS /C1 /W 1 ID x EI", "colour CS, colour C1, colour W");
}

void PageBinderUnitsTest::findsNamesByKind()
{
    QFETCH(QByteArray, content);
    QFETCH(QStringList, names);
    QCOMPARE(scan(content.toStdString()), names);
}

void PageBinderUnitsTest::findsNamesWhereverTheBytesAreCut()
{
    const std::string content = "q /Im1 Do Q BT /F#31 12 Tf (a\\)/No Do) Tj ET % c\n/P scn <ab> Tj";
    const Names whole = scan(content);
    QCOMPARE(whole, (Names{"xObject Im1", "font F1", "pattern P"}));
    for (std::size_t piece = 1; piece < content.size(); ++piece) {
        QCOMPARE(scan(content, piece), whole);
    }
}

void PageBinderUnitsTest::findsANameCutByTheEndOfAStream()
{
    Names names;
    ContentScanner scanner([&names](ResourceKind kind, std::string_view name) {
        if (kind == ResourceKind::xObject) {
            names << QString::fromLatin1(name.data(), qsizetype(name.size()));
        }
    });
    scanner.feed("q /Im");
    scanner.endStream();
    scanner.feed("age1 Do Q");
    scanner.endStream();
    QVERIFY(names.contains("Image1"));
}

void PageBinderUnitsTest::namesInStringsAndCommentsAreNotUsed()
{
    QCOMPARE(scan("(/Im1 Do (nested) \\( /Im2 Do) Tj % /Im3 Do\r/Im4 Do"), Names{"xObject Im4"});
}

void PageBinderUnitsTest::namesBehindAnInlineImageAreFound()
{
    // The data holds an unbalanced parenthesis, which must not swallow what follows.
    QVERIFY(scan("BI /W 4 /H 1 ID \x01(\xff% EI Q /Im9 Do /F2 9 Tf").contains("xObject Im9"));
    QVERIFY(scan("BI /W 4 /H 1 ID \x01(\xff% EI Q /Im9 Do /F2 9 Tf").contains("font F2"));
}

void PageBinderUnitsTest::lowersTheLevelOfUntaggedArchives()
{
    std::string element = "<pdfaid:part>2</pdfaid:part><pdfaid:conformance>A</pdfaid:conformance>";
    QVERIFY(claimsPdfA(element));
    QVERIFY(claimsLevelA(element));
    QVERIFY(lowerLevel(element));
    QVERIFY(!claimsLevelA(element));
    QCOMPARE(element,
             std::string("<pdfaid:part>2</pdfaid:part><pdfaid:conformance>B</pdfaid:conformance>"));
    std::string attribute = "<x pdfaid:part=\"1\" pdfaid:conformance = 'A'/>";
    QVERIFY(lowerLevel(attribute));
    QCOMPARE(attribute, std::string("<x pdfaid:part=\"1\" pdfaid:conformance = 'B'/>"));
}

void PageBinderUnitsTest::blanksOutTheClaimOfAccessibility()
{
    std::string element = "<a><pdfuaid:part>1</pdfuaid:part></a>";
    const std::size_t length = element.size();
    QVERIFY(claimsUniversalAccess(element));
    QVERIFY(removeUniversalAccess(element));
    QVERIFY(!claimsUniversalAccess(element));
    QCOMPARE(element.size(), length);
    QCOMPARE(QByteArray::fromStdString(element).replace(' ', ""), QByteArray("<a></a>"));
    std::string attribute = "<a pdfuaid:part=\"1\" b=\"2\"/>";
    QVERIFY(removeUniversalAccess(attribute));
    QCOMPARE(QByteArray::fromStdString(attribute).simplified(), QByteArray("<a b=\"2\"/>"));
}

void PageBinderUnitsTest::leavesOtherMetadataAlone()
{
    const std::string original = "<pdfaid:part>2</pdfaid:part>"
                                 "<pdfaid:conformance>U</pdfaid:conformance><dc:title/>";
    std::string xmp = original;
    QVERIFY(!claimsLevelA(xmp));
    QVERIFY(!lowerLevel(xmp));
    QVERIFY(!removeUniversalAccess(xmp));
    QVERIFY(!removeInvoiceClaim(xmp));
    QCOMPARE(xmp, original);
    QVERIFY(!claimsPdfA("<dc:title/>"));
    std::string cut = "pdfaid:conformance";
    QVERIFY(!lowerLevel(cut));
}

void PageBinderUnitsTest::blanksOutTheClaimOfAnInvoice()
{
    std::string xmp =
        "<x fx:Version=\"1.0\"><fx:DocumentFileName>factur-x.xml</fx:DocumentFileName>"
        "<pdfaProperty:name>DocumentFileName</pdfaProperty:name></x>";
    const std::size_t length = xmp.size();
    QVERIFY(removeInvoiceClaim(xmp));
    QCOMPARE(xmp.size(), length);
    QVERIFY(xmp.find("fx:") == std::string::npos);
    QVERIFY(xmp.find("<pdfaProperty:name>DocumentFileName<") != std::string::npos);
}

void PageBinderUnitsTest::valuesHoldNoLineBreaks()
{
    QCOMPARE(cleanValue("a\nNumberOfPages: 9\r\n\tb"), std::string("a NumberOfPages: 9   b"));
    QCOMPARE(cleanValue(repeated("ü", 600)), repeated("ü", 500));
    // The limit of 1,000 bytes lies within the last letter that would go in.
    QCOMPARE(cleanValue("a" + repeated("ü", 600)), "a" + repeated("ü", 499));
}

void PageBinderUnitsTest::messagesShowNoCharacterThatMisleads_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("shown");
    const auto row = [](const char *name, const char *text, const char *shown) {
        QTest::newRow(name) << QByteArray(text) << QByteArray(shown);
    };
    row("plain", "/in/a b.pdf", "/in/a b.pdf");
    row("other scripts", "Müller 日本 שלום 😀", "Müller 日本 שלום 😀");
    row("controls", "a\n\r\t\033[31mb\x7f", "a????[31mb?");
    row("controls of the second set", "a\u009b31m\u0085", "a?31m?");
    row("turned direction", "in\u202efdp.exe", "in?fdp.exe");
    row("isolates and marks", "\u2066a\u2069\u200f\u061c", "?a???");
    row("line and paragraph ends", "a\u2028b\u2029c", "a?b?c");
    row("invisible", "a\u200bb\ufeffc\U000e0041", "a?b?c?");
    row("no UTF-8", "a\xff\x9b\xc3", "a???");
    row("longer than need be", "\xc0\x8a\xe0\x80\x8a\xf0\x80\x80\x8a", "?????????");
    row("half a pair", "\xed\xa0\x80", "?");
    row("cut character", "a\xe2\x80", "a??");
    row("beyond the last character", "\xf4\x90\x80\x80", "?");
}

void PageBinderUnitsTest::messagesShowNoCharacterThatMisleads()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, shown);
    QCOMPARE(QByteArray::fromStdString(printable(text.toStdString())), shown);
}

QUORLIN_TEST(PageBinderUnitsTest)
#include "test_units.moc"
