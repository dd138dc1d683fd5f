// A small file takes little time and memory, whatever is in it: what would take more is given up
// and named, and the other pages come.

#include "tests/support/room.h"
#include "tests/tools/pagexport/export_run.h"
#include "tests/tools/pagexport/hostile_glyph.h"
#include "tools/pagexport/output/export_names.h"
#include "tools/pagexport/pages/time_budget.h"
#include "tools/pdf/memory_budget.h"

#include <QTest>

#include <sys/resource.h>
#include <zlib.h>

#include <functional>

using namespace quorlin::test;
using namespace std::chrono_literals;
using tools::TimeBudget;

namespace {

constexpr double mostSeconds = 5;
constexpr long mostKilobytes = 300 * 1024;

/// Zlib's form of @p head, @p count times @p piece and @p tail. It is made piece by piece: what
/// this program holds when it starts a tool would count as the tool's.
std::string packed(const std::string &head, const std::string &piece, int count,
                   const std::string &tail)
{
    z_stream stream{};
    deflateInit(&stream, 9);
    std::string result;
    std::string room(65536, '\0');
    const auto add = [&](const std::string &data, int flush) {
        stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(data.data()));
        stream.avail_in = static_cast<uInt>(data.size());
        do {
            stream.next_out = reinterpret_cast<Bytef *>(room.data());
            stream.avail_out = static_cast<uInt>(room.size());
            deflate(&stream, flush);
            result.append(room, 0, room.size() - stream.avail_out);
        } while (stream.avail_out == 0);
    };
    add(head, Z_NO_FLUSH);
    for (int i = 0; i < count; ++i) {
        add(piece, Z_NO_FLUSH);
    }
    add(tail, Z_FINISH);
    deflateEnd(&stream);
    return result;
}

std::string repeated(const std::string &piece, std::size_t count)
{
    std::string text;
    text.reserve(piece.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        text += piece;
    }
    return text;
}

/// What a bomb unpacks to: @p piece a thousand times @p thousands, between @p head and @p tail.
struct Bomb
{
    std::string piece;
    int thousands = 0;
    std::string head = {};
    std::string tail = {};
};

/// Adds a stream packed twice, which makes a few kilobytes of hundreds of megabytes.
int addBomb(PdfBuilder &pdf, const Bomb &bomb, const std::string &entries = {})
{
    const std::string once =
        packed(bomb.head, repeated(bomb.piece, 1000), bomb.thousands, bomb.tail);
    return pdf.addStream(entries + "/Filter[/FlateDecode/FlateDecode]", packed({}, once, 1, {}));
}

void addText(PdfBuilder &pdf, const std::string &text)
{
    pdf.addPage("BT /F1 12 Tf 72 700 Td (" + text + ") Tj ET");
}

void addBombPage(PdfBuilder &pdf, const Bomb &bomb)
{
    pdf.addPageWithContents(addBomb(pdf, bomb));
}

void addNestedForms(PdfBuilder &pdf, int pages)
{
    int form = pdf.addStream("/Type/XObject/Subtype/Form/BBox[0 0 600 900]", "0 0 1 1 re f");
    for (int depth = 0; depth < 20; ++depth) {
        form =
            pdf.addStream("/Type/XObject/Subtype/Form/BBox[0 0 600 900]/Resources<</XObject<</X " +
                              std::to_string(form) + " 0 R>>>>",
                          repeated("/X Do ", 10));
    }
    PdfPage page;
    page.resources = "/XObject<</X " + std::to_string(form) + " 0 R>>";
    for (int i = 0; i < pages; ++i) {
        pdf.addPage("/X Do", page);
    }
}

/// A page with a font of two bytes a character, whose descendant has @p entries.
void addWideFontPage(PdfBuilder &pdf, const std::string &entries,
                     const std::string &fontEntries = {})
{
    const int descendant =
        pdf.add("<</Type/Font/Subtype/CIDFontType2/BaseFont/A/CIDSystemInfo<</Registry(Adobe)"
                "/Ordering(Identity)/Supplement 0>>/FontDescriptor<</Type/FontDescriptor/FontName/A"
                "/Flags 4>>" +
                entries + ">>");
    const int font =
        pdf.add("<</Type/Font/Subtype/Type0/BaseFont/A/Encoding/Identity-H" + fontEntries +
                "/DescendantFonts[" + std::to_string(descendant) + " 0 R]>>");
    PdfPage page;
    page.fonts = "/F9 " + std::to_string(font) + " 0 R";
    pdf.addPage("BT /F9 12 Tf 72 700 Td <00410042> Tj ET", page);
}

struct Use
{
    double seconds = 0;
    long kilobytes = 0; ///< the most of any program this test has started so far
};

Use use()
{
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    const auto seconds = [](const timeval &time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return {seconds(usage.ru_utime) + seconds(usage.ru_stime), usage.ru_maxrss};
}

} // namespace

class BoundsTest : public QObject
{
    Q_OBJECT

private slots:
    void smallFilesTakeLittle_data();
    void smallFilesTakeLittle();
    void theBinderTakesLittle_data();
    void theBinderTakesLittle();
    void moreOutputsMeetTheBoundsOnce();
    void aPageThatIsRepeatedManyTimesIsRefused();
    void longDocumentsAreNeverCutShort();
    void slowPagesDrawOnACommonStore();
    void largerFilesHaveMoreTimeAndMemory();
    void namesSufficeForTheSmallestPages();
    void glyphThatFillsTheMemoryGoesAlone();
};

void BoundsTest::smallFilesTakeLittle_data()
{
    using Make = std::function<void(PdfBuilder &)>;
    QTest::addColumn<Make>("make");
    const auto row = [](const char *name, Make make) { QTest::newRow(name) << std::move(make); };
    row("nested forms", [](PdfBuilder &pdf) { addNestedForms(pdf, 3); });
    row("nested forms on many pages", [](PdfBuilder &pdf) { addNestedForms(pdf, 60); });
    row("endless text", [](PdfBuilder &pdf) {
        addBombPage(pdf, {"BT /F1 12 Tf 1 0 0 1 72 700 Tm (abcdefgh) Tj ET\n", 3'000});
    });
    row("endless blanks", [](PdfBuilder &pdf) { addBombPage(pdf, {" ", 400'000}); });
    row("endless string", [](PdfBuilder &pdf) { addBombPage(pdf, {"a", 300'000, "(", ") Tj"}); });
    row("endless states", [](PdfBuilder &pdf) { addBombPage(pdf, {"q ", 100'000}); });
    row("endless widths", [](PdfBuilder &pdf) {
        addWideFontPage(pdf, "/W[" + repeated("7 65535 500 ", 20'000) + "]");
    });
    row("endless character map", [](PdfBuilder &pdf) {
        const int map = addBomb(pdf, {"<0000> <ffff> <0041>\n", 5'000,
                                      "1 begincodespacerange <0000> <ffff> endcodespacerange\n"
                                      "100 beginbfrange\n",
                                      "endbfrange endcmap"});
        addWideFontPage(pdf, "", "/ToUnicode " + std::to_string(map) + " 0 R");
    });
    row("endless picture", [](PdfBuilder &pdf) {
        const int picture =
            addBomb(pdf, {std::string(1, '\0'), 300'000},
                    "/Type/XObject/Subtype/Image/Width 10000/Height 10000/ColorSpace/DeviceRGB"
                    "/BitsPerComponent 8");
        PdfPage page;
        page.resources = "/XObject<</I " + std::to_string(picture) + " 0 R>>";
        pdf.addPage("600 0 0 800 0 0 cm /I Do", page);
    });
}

void BoundsTest::smallFilesTakeLittle()
{
    QFETCH(std::function<void(PdfBuilder &)>, make);
    PdfBuilder pdf;
    addText(pdf, "first");
    make(pdf);
    addText(pdf, "last");
    QVERIFY(pdf.build().size() < 1'000'000);
    ExportRun run;
    const QString input = run.save(pdf);
    for (const QStringList &options : {QStringList{"-f", "2", "-l", "2"}, QStringList{}}) {
        const double before = use().seconds;
        QCOMPARE(run.run(input, options), 0);
        const double taken = use().seconds - before;
        QVERIFY2(taken < mostSeconds, qPrintable(QString::number(taken) + " s"));
        QVERIFY2(use().kilobytes < mostKilobytes, qPrintable(QString::number(use().kilobytes)));
    }
    const qsizetype pages = run.written().size() - 1;
    QCOMPARE(run.texts(1), QStringList("first"));
    QCOMPARE(run.texts(static_cast<int>(pages)), QStringList("last"));
}

void BoundsTest::theBinderTakesLittle_data()
{
    smallFilesTakeLittle_data();
}

void BoundsTest::theBinderTakesLittle()
{
    QFETCH(std::function<void(PdfBuilder &)>, make);
    PdfBuilder pdf;
    addText(pdf, "first");
    make(pdf);
    ExportRun run;
    const QString input = run.save(pdf);
    const double before = use().seconds;
    for (const QStringList &order : {QStringList{"-getinfo", "-outfile", run.path("info")},
                                     QStringList{"-merge", "1-2", "-outfile", run.path("m.pdf")}}) {
        QCOMPARE(QProcess::execute(QStringLiteral(QUORLIN_BIN_DIR "/pagebinder"),
                                   QStringList{input} + order),
                 0);
    }
    QVERIFY(use().seconds - before < mostSeconds);
    QVERIFY(use().kilobytes < mostKilobytes);
}

void BoundsTest::moreOutputsMeetTheBoundsOnce()
{
    PdfBuilder pdf;
    addText(pdf, "first");
    PdfPage page;
    page.resources =
        "/XObject<</X " +
        std::to_string(addBomb(pdf, {"q ", 50'000}, "/Type/XObject/Subtype/Form/BBox[0 0 9 9]")) +
        " 0 R>>";
    for (int i = 0; i < 20; ++i) {
        pdf.addPage("/X Do", page);
    }
    ExportRun run;
    const QString input = run.save(pdf);
    QFile list(run.path("list"));
    QVERIFY(list.open(QIODevice::WriteOnly));
    for (int i = 1; i <= 21; ++i) {
        list.write(QByteArray::number(i) + '\t' + run.path("o").toUtf8() + QByteArray::number(i) +
                   '\n');
    }
    list.close();
    const double before = use().seconds;
    QProcess binder;
    binder.start(QStringLiteral(QUORLIN_BIN_DIR "/pagebinder"), {input, "-split", list.fileName()});
    QVERIFY(binder.waitForFinished(300000));
    // Two seconds more for as many outputs than for one.
    QVERIFY2(use().seconds - before < mostSeconds + 2,
             qPrintable(QString::number(use().seconds - before)));
    QVERIFY(use().kilobytes < mostKilobytes);
    QVERIFY(QFile::exists(run.path("o1")));
}

void BoundsTest::aPageThatIsRepeatedManyTimesIsRefused()
{
    // Every node names the one below it twice: a million pages in a kilobyte and a half.
    PdfBuilder pdf;
    addText(pdf, "first");
    int node = 2;
    const int page = pdf.add("<</Type/Page/MediaBox[0 0 9 9]>>");
    node = page;
    for (int depth = 1; depth <= 20; ++depth) {
        const std::string kid = std::to_string(node) + " 0 R ";
        node = pdf.add("<</Type/Pages/Count " + std::to_string(1 << depth) + "/Kids[" + kid + kid +
                       "]>>");
    }
    pdf.setPageTree("<</Type/Pages/Count 1048576/Kids[" + std::to_string(node) + " 0 R]>>");
    ExportRun run;
    const double before = use().seconds;
    QCOMPARE(run.run(pdf), 1);
    QVERIFY(use().seconds - before < mostSeconds);
    QVERIFY(run.errors().contains("pages"));
    QCOMPARE(run.written(), QStringList());
}

void BoundsTest::longDocumentsAreNeverCutShort()
{
    TimeBudget budget(100'000);
    for (int page = 0; page < 1'000'000; ++page) {
        budget.charge(15ms, false);
    }
    QVERIFY(budget.forText() > 1500ms);
    QVERIFY(budget.forPicture() > 1500ms);
}

void BoundsTest::slowPagesDrawOnACommonStore()
{
    TimeBudget budget(100'000);
    TimeBudget::Duration taken{};
    TimeBudget::Duration before = budget.forText();
    int pages = 0;
    for (; budget.forText() > TimeBudget::Duration::zero(); ++pages) {
        QVERIFY(budget.forText() <= before);
        QVERIFY(budget.tick() <= 50ms);
        before = budget.forText();
        taken += before;
        budget.charge(before, true);
    }
    QVERIFY(taken < std::chrono::seconds(5));
    QVERIFY(pages > 150); // so many can be slow before any other page is lost
    budget.charge(1ms, false);
    QCOMPARE(budget.forPicture(), TimeBudget::Duration::zero());

    TimeBudget shared(100'000);
    const TimeBudget::Duration alone = shared.forText();
    shared.shareAmong(4);
    QVERIFY(4 * shared.forText() <= alone);
}

void BoundsTest::largerFilesHaveMoreTimeAndMemory()
{
    constexpr std::uint64_t mebibyte = 1U << 20U;
    QVERIFY(tools::memoryBudgetFor(0) <= 256 * mebibyte);
    QVERIFY(tools::memoryBudgetFor(50 * mebibyte) > 500 * mebibyte);
    QVERIFY(tools::memoryBudgetFor(UINT64_MAX) <= 3072 * mebibyte);
    QVERIFY(TimeBudget(100 * mebibyte).forOpening() > 30s);
    QCOMPARE(TimeBudget(100 * mebibyte).forText(), TimeBudget::Duration(5s));
}

void BoundsTest::namesSufficeForTheSmallestPages()
{
    QVERIFY(tools::mostPagesOf(0) >= 1'000);
    QVERIFY(tools::mostPagesOf(100'000) >= 25'000);
    QVERIFY(tools::mostPagesOf(10'000'000) >= 100'000);
    QCOMPARE(tools::mostPagesOf(UINT64_MAX), 1'000'000);
    const tools::ExportNames names({"split.xml", 12'345, true, "/in.pdf"});
    QCOMPARE(QByteArray(names.index()), QByteArray("split.xml"));
    QCOMPARE(QByteArray(names.unfinishedIndex()), QByteArray("split.xml.part"));
    QCOMPARE(QByteArray(names.page(1)), QByteArray("split_pg_0001.htm"));
    QCOMPARE(QByteArray(names.page(9999)), QByteArray("split_pg_9999.htm"));
    QCOMPARE(QByteArray(names.page(10'000)), QByteArray("split_pg_10000.htm"));
    QCOMPARE(QByteArray(names.picture(12'345)), QByteArray("split_pg_12345.png"));
    QCOMPARE(QByteArray(names.inputPath()), QByteArray("/in.pdf"));
}

void BoundsTest::glyphThatFillsTheMemoryGoesAlone()
{
    PdfBuilder pdf;
    const std::string parts = "BT /F1 9 Tf (" + std::string(1000, 'x') +
                              ") Tj ET BI/W 1024/H 1024/IM true/BPC 1 ID " +
                              std::string(131072, 'x') + " EI";
    addPagesWithGlyph(pdf, addEndlessForms(pdf, pdf.addStream(form("/Font<</F1 3 0 R>>"), parts)));
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QCOMPARE(run.texts(1), good);
    QCOMPARE(run.texts(2), QStringList{"a"});
    QVERIFY2(run.errors().contains(" bytes) failed\n"), run.errors().constData());
    QVERIFY2(!run.errors().contains("takes too long"), run.errors().constData());
    QCOMPARE(run.texts(3), good);
}

QUORLIN_TEST(BoundsTest)
#include "test_bounds.moc"
