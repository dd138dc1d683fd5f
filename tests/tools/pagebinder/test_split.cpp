// Many outputs in one pass: the list, the reports, and outputs as single merges write them.

#include "pdf_inspector.h"
#include "test_pdf.h"
#include "tool_run.h"

#include "tests/support/room.h"
#include "tools/common/report.h"
#include "tools/pagebinder/split.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

using tools::parseSplitList;
using tools::SplitEntry;

namespace {

/// A document with all that is read once for many outputs: bookmarks in two levels, labels, names
/// of both kinds, links, fields with an order of calculation, and page nodes in two levels.
TestPdf richDocument(int pages)
{
    const auto number = [](int value) { return QByteArray::number(value); };
    TestPdf pdf = TestPdf::pages(pages);
    QByteArray names;
    QByteArray older;
    QByteArray fields;
    QByteArray nodes;
    QByteArray kids;
    for (int page = 1; page <= pages; ++page) {
        const int base = 10 * page;
        const QByteArray node = number(100000 + (page - 1) / 50);
        pdf.object(base, "<</Type/Page/Parent " + node + " 0 R/MediaBox[0 0 595 842]/Contents " +
                             number(base + 1) + " 0 R/Resources<</Font<</F 3 0 R>>>>/Annots[" +
                             number(base + 2) + " 0 R " + number(base + 3) + " 0 R " +
                             number(base + 4) + " 0 R]>>");
        pdf.object(base + 2, "<</Type/Annot/Subtype/Link/Rect[0 0 9 9]/Dest(n" +
                                 number(page % pages + 1).rightJustified(6, '0') + ")>>");
        pdf.object(base + 3,
                   "<</Type/Annot/Subtype/Link/Rect[9 0 18 9]/Dest/d" + number(page) + ">>");
        pdf.object(base + 4, "<</Type/Annot/Subtype/Widget/Rect[0 9 9 18]/FT/Tx/T(f" +
                                 number(page) + ")/V(v)/DA(/Helv 9 Tf)>>");
        pdf.object(base + 5, "<</Title(Page " + number(page) + ")/Parent 5 0 R/Dest[" +
                                 number(base) + " 0 R/Fit]/First " + number(base + 6) +
                                 " 0 R/Last " + number(base + 6) + " 0 R/Count 1" +
                                 (page == pages ? "" : "/Next " + number(base + 15) + " 0 R") +
                                 ">>");
        pdf.object(base + 6, "<</Title(Below)/Parent " + number(base + 5) + " 0 R/A<</S/GoTo/D(n" +
                                 number(page).rightJustified(6, '0') + ")>>>>");
        names += "(n" + number(page).rightJustified(6, '0') + ")[" + number(base) + " 0 R/Fit]";
        older += "/d" + number(page) + "[" + number(base) + " 0 R/Fit]";
        fields += number(base + 4) + " 0 R ";
        kids += number(base) + " 0 R ";
        if (page % 50 == 0 || page == pages) {
            pdf.object(node.toInt(), "<</Type/Pages/Parent 2 0 R/Count " +
                                         number((page - 1) % 50 + 1) + "/Kids[" + kids + "]>>");
            nodes += node + " 0 R ";
            kids.clear();
        }
    }
    pdf.object(2, "<</Type/Pages/Count " + number(pages) + "/Kids[" + nodes + "]>>");
    pdf.object(5, "<</Type/Outlines/First 15 0 R/Last " + number(10 * pages + 5) + " 0 R/Count " +
                      number(2 * pages) + ">>");
    pdf.object(1, "<</Type/Catalog/Pages 2 0 R/Outlines 5 0 R/Dests<<" + older +
                      ">>/Names<</Dests<</Names[" + names + "]>>>>/PageLabels<</Nums[0<</S/r>>3<<" +
                      "/S/D/P(A-)>>]>>/AcroForm<</Fields[" + fields + "]/CO[" + fields +
                      "]/DA(/Helv 9 Tf)/DR<</Font<</Helv 3 0 R>>>>>>>>");
    return pdf;
}

QByteArray entry(const QByteArray &ranges, const QByteArray &path, char end = '\0')
{
    return ranges + '\t' + path + end;
}

QByteArray contentOf(const QByteArray &path)
{
    QFile file(QFile::decodeName(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool exists(const QByteArray &path)
{
    struct stat status = {};
    return ::stat(path.constData(), &status) == 0;
}

} // namespace

class PageBinderSplitTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void readsLists_data();
    void readsLists();
    void refusesLists_data();
    void refusesLists();
    void aRefusedListWritesNothing();
    void showsPathsInOneLine();
    void reportsEachOutputWithItsSizeAndPath();
    void readsTheListFromAFile();
    void aListWithoutZerosHasALineAnEntry();
    void writesWhatSingleMergesWrite();
    void objectsAreReadAgainAfterTheyWereForgotten();
    void damagedPagesGetWhatSingleMergesGiveThem();
    void namesPagesThatStandInsTakeThePlaceOf();
    void aFailingOutputIsNamedAndTheOthersGoOn();
    void anyFileNameIsWritten();
    void aShortenedNameIsReported();
    void outputsAreReportedAsTheyAreDone();
    void aDamagedFileIsRepairedOnTheWay();
    void aClosedReaderEndsItQuietly();
    void closedStandardStreamsAreErrors();

private:
    QByteArray path(const QByteArray &name) const
    {
        return QFile::encodeName(m_folder->path()) + '/' + name;
    }
    QStringList files() const
    {
        return QDir(m_folder->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
    ToolRun split(const QByteArray &list) const
    {
        return runBinder({m_input, "-split", "-"}, list);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_input;
};

void PageBinderSplitTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_input = TestPdf::pages(5).save(m_folder->path());
}

void PageBinderSplitTest::readsLists_data()
{
    QTest::addColumn<QByteArray>("list");
    QTest::addColumn<QList<QByteArray>>("outputs");
    QTest::addColumn<int>("ranges");
    QTest::newRow("zeros") << QByteArray("1-2\ta\0003\tb\000", 10) << QList<QByteArray>{"a", "b"}
                           << 2;
    QTest::newRow("lines") << QByteArray("1-2\ta\n3\tb\n") << QList<QByteArray>{"a", "b"} << 2;
    QTest::newRow("several ranges") << QByteArray("1-2 4  5\ta\n") << QList<QByteArray>{"a"} << 3;
    QTest::newRow("a line feed in a name")
        << QByteArray("1\ta\nb\000", 6) << QList<QByteArray>{"a\nb"} << 1;
    QTest::newRow("tabs in a name")
        << QByteArray("1\t\ta\tb\n") << QList<QByteArray>{"\ta\tb"} << 1;
    QTest::newRow("blanks around a name")
        << QByteArray("1\t a \n") << QList<QByteArray>{" a "} << 1;
}

void PageBinderSplitTest::readsLists()
{
    QFETCH(QByteArray, list);
    QFETCH(QList<QByteArray>, outputs);
    QFETCH(int, ranges);
    const std::vector<SplitEntry> entries = parseSplitList(list.toStdString(), "list");
    QList<QByteArray> names;
    std::size_t count = 0;
    for (const SplitEntry &read : entries) {
        names << QByteArray::fromStdString(read.output);
        count += read.ranges.size();
    }
    QCOMPARE(names, outputs);
    QCOMPARE(count, std::size_t(ranges));
}

void PageBinderSplitTest::refusesLists_data()
{
    QTest::addColumn<QByteArray>("list");
    QTest::addColumn<QString>("reason");
    QTest::newRow("nothing") << QByteArray() << "the list is empty";
    QTest::newRow("no tab") << QByteArray("1\ta\n2 b\n") << "entry 2 has no tab after the pages";
    QTest::newRow("an empty line")
        << QByteArray("1\ta\n\n") << "entry 2 has no tab after the pages";
    QTest::newRow("no pages") << QByteArray("\ta\n") << "entry 1 begins with no pages";
    QTest::newRow("blanks for pages") << QByteArray("  \ta\n") << "entry 1 begins with no pages";
    QTest::newRow("no numbers") << QByteArray("1 x\ta\n") << "entry 1 begins with no pages";
    QTest::newRow("backwards") << QByteArray("3-1\ta\n") << "entry 1 begins with no pages";
    QTest::newRow("no name") << QByteArray("1\t\n") << "entry 1 names no output";
    QTest::newRow("standard output") << QByteArray("1\t-\n") << "entry 1 names standard output";
    QTest::newRow("a last line without its end") << QByteArray("1\ta\n2\tb") << "is cut off";
    QTest::newRow("a last entry without its zero") << QByteArray("1\ta\0002\tb", 7) << "is cut off";
    QTest::newRow("a list that was cut in its first entry") << QByteArray("1\t/a") << "is cut off";
}

void PageBinderSplitTest::refusesLists()
{
    QFETCH(QByteArray, list);
    QFETCH(QString, reason);
    try {
        parseSplitList(list.toStdString(), "list");
        QFAIL("the list was taken");
    } catch (const tools::ToolError &error) {
        QCOMPARE(int(error.status()), int(tools::exitUsageError));
        QCOMPARE(error.file(), std::string("list"));
        QVERIFY2(QString(error.what()).contains(reason), error.what());
    }
}

void PageBinderSplitTest::aRefusedListWritesNothing()
{
    const ToolRun run = split(entry("1", path("a.pdf")) + entry("x", path("b.pdf")));
    QCOMPARE(run.status, 2);
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.errors,
             QByteArray("pagebinder: standard input: entry 2 begins with no pages or ranges of "
                        "pages\n"));
    QCOMPARE(files(), QStringList{"input.pdf"});
    QCOMPARE(runBinder({m_input, "-split", path("missing")}).status, 1);
}

void PageBinderSplitTest::showsPathsInOneLine()
{
    QCOMPARE(tools::escapedPath("/plain/Ünïcode \"x\".pdf"),
             std::string("/plain/Ünïcode \"x\".pdf"));
    QCOMPARE(tools::escapedPath("a\nb\tc\\d\x7f\x1b"), std::string("a\\x0ab\\x09c\\\\d\\x7f\\x1b"));
    QCOMPARE(tools::escapedPath("\xff\x80"), std::string("\\xff\\x80"));
    QCOMPARE(tools::escapedPath("a\u202eb"), std::string("a\\xe2\\x80\\xaeb"));
    QCOMPARE(tools::failedLine(3, "no\ngood"), std::string("failed\t3\tno?good\n"));
    QCOMPARE(tools::doneLine(1, {42, {}}, "a"), std::string("done\t1\t42\ta\n"));
    QCOMPARE(tools::doneLine(12, {42, {3, 7}}, "a b"), std::string("standin\t12\t42\t3 7\ta b\n"));
}

void PageBinderSplitTest::reportsEachOutputWithItsSizeAndPath()
{
    const ToolRun run = split(entry("1-2", path("a.pdf")) + entry("5 4", path("b.pdf")));
    QCOMPARE(run.status, 0);
    QCOMPARE(run.errors, QByteArray());
    const auto size = [this](const char *name) {
        return QByteArray::number(contentOf(path(name)).size());
    };
    QCOMPARE(run.output, "done\t1\t" + size("a.pdf") + '\t' + path("a.pdf") + "\ndone\t2\t" +
                             size("b.pdf") + '\t' + path("b.pdf") + '\n');
    QCOMPARE(PdfInspector(path("a.pdf")).pageCount(), 2);
    QCOMPARE(files(), (QStringList{"a.pdf", "b.pdf", "input.pdf"}));
}

void PageBinderSplitTest::readsTheListFromAFile()
{
    QFile list(path("list"));
    QVERIFY(list.open(QIODevice::WriteOnly));
    list.write(entry("3", path("a.pdf")));
    list.close();
    QCOMPARE(runBinder({m_input, "-split", path("list")}).status, 0);
    QCOMPARE(PdfInspector(path("a.pdf")).pageCount(), 1);
}

void PageBinderSplitTest::aListWithoutZerosHasALineAnEntry()
{
    const ToolRun run = split(entry("1", path("a.pdf"), '\n') + entry("2-3", path("b.pdf"), '\n'));
    QCOMPARE(run.status, 0);
    QCOMPARE(PdfInspector(path("a.pdf")).pageCount(), 1);
    QCOMPARE(PdfInspector(path("b.pdf")).pageCount(), 2);
}

void PageBinderSplitTest::writesWhatSingleMergesWrite()
{
    const QString input = richDocument(60).save(m_folder->path(), "rich.pdf");
    const QList<QByteArray> parts = {"1-3", "4", "60 1", "10-20 2-5", "7 7", "1-60", "30-31"};
    QByteArray list;
    for (int i = 0; i < parts.size(); ++i) {
        list += entry(parts[i], path("many-" + QByteArray::number(i)));
    }
    QCOMPARE(runBinder({input, "-split", "-"}, list).status, 0);
    for (int i = 0; i < parts.size(); ++i) {
        QCOMPARE(merge(input, parts[i], path("one")).status, 0);
        QCOMPARE(contentOf(path("many-" + QByteArray::number(i))), contentOf(path("one")));
    }
    // What was compared holds all the parts that are read once for many outputs.
    const QByteArray whole = contentOf(path("many-5"));
    QCOMPARE(whole.count("(Below)"), 60);
    QCOMPARE(whole.count("/Subtype/Link"), 120);
    QVERIFY(whole.contains("/CO["));
    QVERIFY(whole.contains("(A-)"));
}

void PageBinderSplitTest::objectsAreReadAgainAfterTheyWereForgotten()
{
    // Enough objects for the document to let go of some between two outputs.
    constexpr int pages = 900;
    const QString input = richDocument(pages).save(m_folder->path(), "rich.pdf");
    QByteArray list;
    for (int page = 1; page <= pages; ++page) {
        list += entry(QByteArray::number(page), path("p.pdf"));
    }
    list += entry("1-3 450 900", path("last.pdf"));
    QCOMPARE(runBinder({input, "-split", "-"}, list).status, 0);
    QCOMPARE(merge(input, "900", path("one.pdf")).status, 0);
    QCOMPARE(contentOf(path("p.pdf")), contentOf(path("one.pdf")));
    QCOMPARE(merge(input, "1-3 450 900", path("one.pdf")).status, 0);
    QCOMPARE(contentOf(path("last.pdf")), contentOf(path("one.pdf")));
}

void PageBinderSplitTest::damagedPagesGetWhatSingleMergesGiveThem()
{
    // All pages share their resources. Every tenth cannot be read to its end, the others draw the
    // form of their own number, and every third draws a form that holds the picture /P, too.
    constexpr int pages = 300;
    TestPdf pdf = TestPdf::pages(pages);
    QByteArray forms;
    for (int page = 1; page <= pages; ++page) {
        const QByteArray number = QByteArray::number(page);
        const QByteArray form = QByteArray::number(20000 + page);
        forms += "/N" + number + ' ' + form + " 0 R";
        pdf.object(10 * page, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Resources 4 0 R" +
                                  ("/Contents " + QByteArray::number(10 * page + 1)) + " 0 R>>");
        pdf.stream(10 * page + 1, "",
                   page % 10 == 0 ? QByteArray("/F 9 Tf (")
                                  : "/N" + number + " Do" + (page % 3 == 0 ? "/Holder Do" : ""));
        pdf.stream(20000 + page, "/Subtype/Form/BBox[0 0 9 9]", "% form " + number);
    }
    pdf.stream(30001, "/Subtype/Form/BBox[0 0 9 9]/Resources<</XObject<</P 30002 0 R>>>>", "/P Do");
    pdf.stream(30002, "/Subtype/Form/BBox[0 0 9 9]", "% inner form");
    pdf.object(4, "<</XObject<</Holder 30001 0 R/P 30002 0 R" + forms + ">>>>");
    const QString input = pdf.save(m_folder->path(), "damaged.pdf");
    QByteArray list;
    for (int page = 1; page <= pages; ++page) {
        list += entry(QByteArray::number(page), path("p" + QByteArray::number(page)));
    }
    // With these, no page is left that draws the inner form, or the forms 5 and 6.
    QByteArray drawing = "10 5";
    for (int page = 3; page <= pages; page += 3) {
        drawing += ' ' + QByteArray::number(page);
    }
    list += entry(drawing, path("all.pdf"));
    QCOMPARE(runBinder({input, "-split", "-"}, list).status, 0);
    for (const QByteArray page : {"10", "150", "300"}) {
        QCOMPARE(merge(input, page, path("one.pdf")).status, 0);
        QCOMPARE(contentOf(path("p" + page)), contentOf(path("one.pdf")));
        QVERIFY(contentOf(path("one.pdf")).contains("% form " + page + '\n'));
        QVERIFY(!contentOf(path("one.pdf")).contains("% form 6\n"));
        QVERIFY(!contentOf(path("one.pdf")).contains("% inner form"));
    }
    QCOMPARE(merge(input, drawing, path("one.pdf")).status, 0);
    QCOMPARE(contentOf(path("all.pdf")), contentOf(path("one.pdf")));
    QVERIFY(contentOf(path("one.pdf")).contains("% inner form"));
}

void PageBinderSplitTest::namesPagesThatStandInsTakeThePlaceOf()
{
    TestPdf pdf = TestPdf::pages(4);
    pdf.object(20, "null").object(40, "(no page)");
    const QString input = pdf.save(m_folder->path(), "gaps.pdf");
    const ToolRun run = runBinder({input, "-split", "-"},
                                  entry("1", path("a.pdf")) + entry("4 1-3", path("b.pdf")));
    QCOMPARE(run.status, 3);
    const QList<QByteArray> lines = run.output.split('\n');
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines[0].startsWith("done\t1\t"));
    QVERIFY(lines[1].startsWith("standin\t2\t"));
    QCOMPARE(lines[1].split('\t').mid(3), (QList<QByteArray>{"4 2", path("b.pdf")}));
    QCOMPARE(PdfInspector(path("b.pdf")).pageCount(), 4);
    const ToolRun mixed =
        runBinder({input, "-split", "-"}, entry("9", path("c.pdf")) + entry("2", path("d.pdf")));
    QCOMPARE(mixed.status, 1);
    QVERIFY(mixed.output.contains("standin\t2\t"));
    QCOMPARE(merge(input, "1-2", path("one.pdf")).status, 3);
    QCOMPARE(merge(input, "1", path("one.pdf")).status, 0);
}

void PageBinderSplitTest::aFailingOutputIsNamedAndTheOthersGoOn()
{
    QVERIFY(QDir(m_folder->path()).mkdir("folder"));
    const ToolRun run = split(entry("9", path("a.pdf")) + entry("1", path("missing/b.pdf")) +
                              entry("1", path("folder")) + entry("1", QFile::encodeName(m_input)) +
                              entry("2", path("c.pdf")));
    QCOMPARE(run.status, 1);
    const QList<QByteArray> lines = run.output.split('\n');
    QCOMPARE(lines.value(0), QByteArray("failed\t1\thas no page 9"));
    QCOMPARE(lines.value(1), QByteArray("failed\t2\tcannot be written: No such file or directory"));
    QCOMPARE(lines.value(2), QByteArray("failed\t3\tis a folder"));
    QCOMPARE(lines.value(3), QByteArray("failed\t4\tis the input itself, which is never written"));
    QVERIFY(lines.value(4).startsWith("done\t5\t"));
    const QByteArray input = QFile::encodeName(m_input);
    QCOMPARE(run.errors,
             "pagebinder: " + input + ": has no page 9\npagebinder: " + path("missing/b.pdf") +
                 ": cannot be written: No such file or directory\npagebinder: " + path("folder") +
                 ": is a folder\npagebinder: " + input +
                 ": is the input itself, which is never written\n");
    QCOMPARE(files(), (QStringList{"c.pdf", "folder", "input.pdf"}));
    QCOMPARE(contentOf(input), TestPdf::pages(5).bytes());
}

void PageBinderSplitTest::anyFileNameIsWritten()
{
    const QList<QByteArray> names = {"line\nfeed", "ta\tb", "back\\slash", "\xff\xfe not UTF-8",
                                     " blanks ",   "-",     "\x1b[31mred", "Ünïcode"};
    QByteArray list;
    for (const QByteArray &name : names) {
        list += entry("2", path(name));
    }
    const ToolRun run = split(list);
    QCOMPARE(run.status, 0);
    QCOMPARE(run.output.count('\n'), names.size());
    for (const QByteArray &name : names) {
        QVERIFY2(exists(path(name)), name.constData());
        QCOMPARE(::unlink(path(name).constData()), 0); // Qt's folders cannot remove every name
    }
    QCOMPARE(run.output.split('\n').at(0).split('\t').at(3), path("line\\x0afeed"));
    QCOMPARE(run.output.split('\n').at(1).split('\t').at(3), path("ta\\x09b"));
    QCOMPARE(run.output.split('\n').at(2).split('\t').at(3), path("back\\\\slash"));
}

void PageBinderSplitTest::aShortenedNameIsReported()
{
    const QByteArray name = "7 " + QByteArray("text ").repeated(60) + "input 2-3.pdf";
    const ToolRun run = split(entry("2-3", path(name)));
    QCOMPARE(run.status, 0);
    QVERIFY(run.errors.contains("the name is too long, shortened to"));
    const QByteArray written = run.output.trimmed().split('\t').value(3);
    QVERIFY(written.endsWith(" input 2-3.pdf"));
    QVERIFY(exists(written));
    QCOMPARE(files().size(), 2);
}

void PageBinderSplitTest::outputsAreReportedAsTheyAreDone()
{
    // More reports than a pipe holds: the tool cannot go on until some are read.
    QByteArray deep = path("");
    for (int i = 0; i < 10; ++i) {
        deep += QByteArray(200, char('a' + i)) + '/';
    }
    QVERIFY(QDir().mkpath(QFile::decodeName(deep)));
    constexpr int outputs = 400;
    QByteArray list;
    for (int i = 1; i <= outputs; ++i) {
        list += entry("1", deep + QByteArray::number(i));
    }
    QProcess process;
    process.start(binderPath(), {m_input, "-split", "-"});
    process.write(list);
    process.closeWriteChannel();
    QVERIFY(process.waitForReadyRead());
    const QByteArray first = process.readLine();
    QVERIFY(first.startsWith("done\t1\t"));
    QVERIFY(exists(deep + "1"));
    QVERIFY(!exists(deep + QByteArray::number(outputs)));
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(process.readAllStandardOutput().count('\n'), outputs - 1);
}

void PageBinderSplitTest::aDamagedFileIsRepairedOnTheWay()
{
    // The table says wrong where page 4 stands, which shows when it is that page's turn.
    QByteArray bytes = TestPdf::pages(5).bytes();
    const auto offset = QByteArray::number(bytes.indexOf("\n40 0 obj") + 1).rightJustified(10, '0');
    const auto place = bytes.indexOf(offset + " 00000 n");
    QVERIFY(place > 0);
    bytes.replace(place, 10, "0000000009");
    QFile file(path("damaged.pdf"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    file.close();
    QByteArray list;
    for (const char *page : {"1", "4", "5"}) {
        list += entry(page, path(page));
    }
    QCOMPARE(runBinder({path("damaged.pdf"), "-split", "-"}, list).status, 0);
    for (const char *page : {"1", "4", "5"}) {
        QVERIFY(contentOf(path(page)).contains("page-" + QByteArray(page) + "-text"));
    }
    QCOMPARE(merge(path("damaged.pdf"), "4", path("one")).status, 0);
    QCOMPARE(contentOf(path("4")), contentOf(path("one")));
}

void PageBinderSplitTest::aClosedReaderEndsItQuietly()
{
    QFile list(path("list"));
    QVERIFY(list.open(QIODevice::WriteOnly));
    list.write(entry("1", path("a.pdf")) + entry("2", path("b.pdf")));
    list.close();
    QProcess process;
    process.setChildProcessModifier([] {
        int ends[2];
        if (::pipe(ends) == 0) {
            ::close(ends[0]);
            ::dup2(ends[1], STDOUT_FILENO);
        }
    });
    process.start(binderPath(), {m_input, "-split", path("list")});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 1);
    QCOMPARE(process.readAllStandardError(), QByteArray());
    QCOMPARE(files(), (QStringList{"a.pdf", "input.pdf", "list"}));
}

void PageBinderSplitTest::closedStandardStreamsAreErrors()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO}) {
        QFile list(path("list"));
        QVERIFY(list.open(QIODevice::WriteOnly));
        list.write(entry("1", path("a.pdf")));
        list.close();
        QProcess process;
        process.setChildProcessModifier([stream] { ::close(stream); });
        const QString name = stream == STDIN_FILENO ? QString("-") : QString(path("list"));
        process.start(binderPath(), {m_input, "-split", name});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 1);
        QVERIFY(process.readAllStandardError().contains(
            stream == STDIN_FILENO ? "standard input: cannot be read"
                                   : "standard output: cannot be written"));
    }
    QCOMPARE(contentOf(QFile::encodeName(m_input)), TestPdf::pages(5).bytes());
}

QUORLIN_TEST(PageBinderSplitTest)
#include "test_split.moc"
