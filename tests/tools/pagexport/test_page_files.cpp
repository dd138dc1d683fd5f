#include "tests/support/room.h"
#include "tests/tools/pagexport/export_run.h"

#include <QFileInfo>
#include <QScopeGuard>
#include <QTest>
#include <QXmlStreamReader>

#ifdef Q_OS_LINUX
#include <sys/mount.h>
#endif
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <functional>

using namespace quorlin::test;

namespace {

PdfBuilder pagesOf(int count)
{
    PdfBuilder pdf;
    for (int page = 1; page <= count; ++page) {
        pdf.addPage("BT /F1 12 Tf 72 700 Td (Page no. " + std::to_string(page) + ") Tj ET");
    }
    return pdf;
}

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

} // namespace

/// What pagexport does with files, names and its command line.
class TestPageFiles : public QObject
{
    Q_OBJECT

private slots:
    void wholeDocumentGivesAPageFileEachAndNoPicture();
    void boundsNumberFromOneAndGivePictures_data();
    void boundsNumberFromOneAndGivePictures();
    void numbersAreTheSameWithAndWithoutBounds();
    void tenThousandthPageHasFiveDigits();
    void pagesComeInOrderFromSeveralThreads();
    void boundsOutsideTheDocumentAreInputErrors_data();
    void boundsOutsideTheDocumentAreInputErrors();
    void wrongUsageIsStatusTwo_data();
    void wrongUsageIsStatusTwo();
    void helpAndVersionAreOnStandardOutput();
    void inputMayBeginWithADash();
    void earlierExportIsRemovedAndNothingElse();
    void aPageOfAnEarlierExportThatCannotBeRemovedIsAnError();
    void unreadableInputLeavesNothing_data();
    void unreadableInputLeavesNothing();
    void inputIsNeverRemovedWhateverItsName_data();
    void inputIsNeverRemovedWhateverItsName();
    void plantedLinksAreNotFollowed();
    void unremovableLeftoverIsAnError();
    void missingFolderIsAnError();
    void fullDiskLeavesNothing();
    void refusedThreadCostsNoPage();
    void filesAreReadableByTheirOwnerOnly();
    void awkwardNamesWork_data();
    void awkwardNamesWork();
    void worksWithClosedStandardStreams();
    void indexIsWellFormedAndNamesTheFiles();
    void otherLinesHoldNoneOfTheWords();
};

void TestPageFiles::wholeDocumentGivesAPageFileEachAndNoPicture()
{
    ExportRun run;
    QCOMPARE(run.run(pagesOf(3)), 0);
    QCOMPARE(run.written(),
             QStringList({"page.xml", "page_pg_0001.htm", "page_pg_0002.htm", "page_pg_0003.htm"}));
    QCOMPARE(run.texts(3), QStringList{"Page no. 3"});
    QCOMPARE(run.errors(), QByteArray());
}

void TestPageFiles::boundsNumberFromOneAndGivePictures_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("count");
    QTest::newRow("one page") << QStringList{"-f", "3", "-l", "3"} << 3 << 1;
    QTest::newRow("several") << QStringList{"-f", "2", "-l", "8"} << 2 << 7;
    QTest::newRow("first alone") << QStringList{"-f", "19"} << 19 << 2;
    QTest::newRow("last alone") << QStringList{"-l", "2"} << 1 << 2;
}

void TestPageFiles::boundsNumberFromOneAndGivePictures()
{
    QFETCH(QStringList, options);
    QFETCH(int, first);
    QFETCH(int, count);
    ExportRun run;
    QCOMPARE(run.run(pagesOf(20), options), 0);
    QCOMPARE(run.written().size(), 2 * count + 1);
    for (int page = 1; page <= count; ++page) {
        QCOMPARE(run.texts(page), QStringList{"Page no. " + QString::number(first + page - 1)});
        QVERIFY(run.written().contains(
            QStringLiteral("page_pg_%1.png").arg(page, 4, 10, QLatin1Char('0'))));
    }
}

void TestPageFiles::numbersAreTheSameWithAndWithoutBounds()
{
    ExportRun whole;
    ExportRun single;
    QCOMPARE(whole.run(pagesOf(9)), 0);
    QCOMPARE(single.run(pagesOf(9), {"-f", "5", "-l", "5"}), 0);
    QCOMPARE(single.content("page_pg_0001.htm"), whole.content("page_pg_0005.htm"));
}

void TestPageFiles::tenThousandthPageHasFiveDigits()
{
    PdfBuilder pdf;
    const int page = pdf.addPage("BT /F1 12 Tf 72 700 Td (same) Tj ET");
    std::string kids;
    for (int i = 0; i < 10001; ++i) {
        kids += std::to_string(page) + " 0 R ";
    }
    pdf.setPageTree("<</Type/Pages/Count 10001/Kids[" + kids + "]>>");
    ExportRun run;
    QCOMPARE(run.run(pdf), 0);
    QCOMPARE(run.written().size(), 10002);
    QCOMPARE(ExportRun::itemsOf(run.content("page_pg_9999.htm")).size(), 1);
    QCOMPARE(ExportRun::itemsOf(run.content("page_pg_10001.htm")).size(), 1);
}

void TestPageFiles::pagesComeInOrderFromSeveralThreads()
{
    ExportRun run;
    QCOMPARE(run.run(pagesOf(203)), 0);
    for (int page = 1; page <= 203; ++page) {
        QCOMPARE(run.texts(page), QStringList{"Page no. " + QString::number(page)});
    }
}

void TestPageFiles::boundsOutsideTheDocumentAreInputErrors_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char *name, const char *options, const char *reason) {
        QTest::newRow(name) << QString(options).split(' ') << reason;
    };
    row("last before first", "-f 3 -l 2", "has no pages 3 to 2; its pages are 1 to 3");
    row("behind the end", "-f 4 -l 4", "has no page 4; its pages are 1 to 3");
    row("first behind the end", "-f 4", "has no page 4; its pages are 1 to 3");
    row("last behind the end", "-l 4", "has no pages 1 to 4; its pages are 1 to 3");
    row("page 0", "-f 0 -l 1", "has no pages 0 to 1; its pages are 1 to 3");
    row("negative", "-f -1", "has no pages -1 to 3; its pages are 1 to 3");
    row("beyond every integer", "-f 99999999999999999999999",
        "has no page 9223372036854775807; its pages are 1 to 3");
}

void TestPageFiles::boundsOutsideTheDocumentAreInputErrors()
{
    QFETCH(QStringList, options);
    QFETCH(QString, reason);
    ExportRun run;
    QCOMPARE(run.run(pagesOf(3), options), 1);
    QCOMPARE(run.written(), QStringList());
    QCOMPARE(QString::fromUtf8(run.errors()),
             "pagexport: " + run.path("in.pdf") + ": " + reason + "\n");
}

void TestPageFiles::wrongUsageIsStatusTwo_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("complaint");
    const auto row = [](const char *name, const QStringList &arguments, const char *complaint) {
        QTest::newRow(name) << arguments << complaint + QStringLiteral(" (see pagexport --help)");
    };
    row("nothing", {}, "-htmlformat is missing");
    row("no format", {"in.pdf", "page.xml"}, "-htmlformat is missing");
    row("two formats", {"-items", "-htmlformat", "in.pdf"},
        "only one of -htmlformat and -items can be used at once");
    row("no output", {"-htmlformat", "in.pdf"}, "the input or the output file is missing");
    row("no input", {"-items"}, "the input file is missing");
    row("two inputs", {"-items", "a", "b"}, "more than one file is given");
    row("three files", {"-htmlformat", "a", "b", "c"}, "more than two files are given");
    row("unknown option", {"-htmlformat", "-x", "a", "b"}, "unknown option \"-x\"");
    row("page is a word", {"-htmlformat", "-f", "one", "a", "b"},
        "-f needs a page number, not \"one\"");
    row("page with a tail", {"-htmlformat", "-f", "1x", "a", "b"},
        "-f needs a page number, not \"1x\"");
    row("page is empty", {"-htmlformat", "-f", "", "a", "b"}, "-f needs a page number, not \"\"");
    row("page is missing", {"-htmlformat", "a", "b", "-l"}, "-l needs a page number");
    row("no thread", {"-items", "-threads", "0", "a"}, "-threads needs at least one thread");
    row("threads are a word", {"-items", "-threads", "a", "b"},
        "-threads needs a number of threads, not \"a\"");
    row("passwords by name", {"-items", "-passwords", "file", "a"},
        "-passwords needs the number of a descriptor, not \"file\"");
    row("empty output", {"-htmlformat", "a", ""}, "a file name is empty");
    QTest::newRow("output is a folder")
        << QStringList{"-htmlformat", "a", "/tmp/"} << "/tmp/: names no file";
}

void TestPageFiles::wrongUsageIsStatusTwo()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, complaint);
    ExportRun run;
    QCOMPARE(run.call(arguments), 2);
    QCOMPARE(QString::fromUtf8(run.errors()), "pagexport: " + complaint + "\n");
    QCOMPARE(run.output(), QByteArray());
}

void TestPageFiles::helpAndVersionAreOnStandardOutput()
{
    ExportRun run;
    QCOMPARE(run.call({"--help"}), 0);
    for (const char *word : {"-htmlformat", "-f ", "-l ", "--", "--version", "Exit status"}) {
        QVERIFY2(run.output().contains(word), word);
    }
    QCOMPARE(run.call({"--version"}), 0);
    QVERIFY(QRegularExpression(
                "^pagexport \\d+\\.\\d+\\.\\d+\nMuPDF \\d+\\.\\d+\\.\\d+\nsandbox: [^\n]+\n$")
                .match(QString::fromUtf8(run.output()))
                .hasMatch());
    QCOMPARE(run.errors(), QByteArray());
}

void TestPageFiles::inputMayBeginWithADash()
{
    ExportRun run;
    const QString input = run.save(pagesOf(1), "-f.pdf");
    QProcess process;
    process.setWorkingDirectory(QFileInfo(input).path());
    process.start(QUORLIN_BIN_DIR "/pagexport", {"-htmlformat", "--", "-f.pdf", "page.xml"});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(run.texts(), QStringList{"Page no. 1"});
}

void TestPageFiles::earlierExportIsRemovedAndNothingElse()
{
    ExportRun run;
    const QStringList old{"page.xml",         "page.xml.part",    "page_pg_0001.htm",
                          "page_pg_0002.htm", "page_pg_0007.png", "page_pg_12345.htm"};
    const QStringList foreign{"page_pg_.htm",       "page_pg_001.htm",   "page_pg_00x1.htm",
                              "page_pg_0001.html",  "page_pg_0001.txt",  "page_pg_0001_pg_0001.htm",
                              "page_pg_0001.htm.x", "pages_pg_0001.htm", "xpage_pg_0001.htm",
                              "pass_pg_0001.htm"};
    for (const QString &name : old + foreign) {
        writeFile(run.path(name), "old");
    }
    QCOMPARE(run.run(pagesOf(1)), 0);
    QCOMPARE(run.texts(), QStringList{"Page no. 1"});
    for (const QString name :
         {"page.xml.part", "page_pg_0002.htm", "page_pg_0007.png", "page_pg_12345.htm"}) {
        QVERIFY2(!QFileInfo::exists(run.path(name)), qPrintable(name));
    }
    for (const QString &name : foreign) {
        QCOMPARE(run.content(name), QByteArray("old"));
    }
}

void TestPageFiles::aPageOfAnEarlierExportThatCannotBeRemovedIsAnError()
{
#ifdef Q_OS_LINUX
    ExportRun run;
    const QString folder = run.path("disk");
    const QByteArray disk = QFile::encodeName(folder);
    QVERIFY(QDir().mkdir(folder));
    if (::mount("tmpfs", disk.constData(), "tmpfs", 0, "size=100k") != 0) {
        QSKIP("no disk may be mounted here");
    }
    const auto unmount = qScopeGuard([&disk] { ::umount2(disk.constData(), MNT_DETACH); });
    writeFile(folder + "/page_pg_0007.htm", "old");
    QCOMPARE(::mount("tmpfs", disk.constData(), "tmpfs", MS_REMOUNT | MS_RDONLY, nullptr), 0);
    const QString input = run.save(pagesOf(1));
    QCOMPARE(run.call({"-htmlformat", "--", input, folder + "/page.xml"}), 1);
    QVERIFY2(run.errors().contains(
                 "page_pg_0007.htm: is left from an earlier export and cannot be removed"),
             run.errors().constData());
#else
    QSKIP("a disk is mounted in the way of Linux");
#endif
}

void TestPageFiles::unreadableInputLeavesNothing_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("exists");
    QTest::addColumn<QByteArray>("reason"); // its beginning; the rest is the library's
    const QByteArray noPdf = "cannot be read as PDF: ";
    QTest::newRow("missing") << QByteArray() << false << QByteArray("No such file or directory\n");
    QTest::newRow("empty") << QByteArray() << true << noPdf;
    QTest::newRow("text") << QByteArray("This is no PDF file.\n") << true << noPdf;
    QTest::newRow("header alone") << QByteArray("%PDF-1.7\n%%EOF\n") << true << noPdf;
    PdfBuilder noPages;
    QTest::newRow("no pages") << QByteArray::fromStdString(noPages.build()) << true
                              << QByteArray("has no pages\n");
    QTest::newRow("picture") << QByteArray("\x89PNG\r\n\x1a\n1234567890") << true << noPdf;
}

void TestPageFiles::unreadableInputLeavesNothing()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, exists);
    ExportRun run;
    if (exists) {
        writeFile(run.path("in.pdf"), content);
    }
    writeFile(run.path("page_pg_0001.htm"), "an earlier file's text");
    QCOMPARE(run.run(run.path("in.pdf")), 1);
    QCOMPARE(run.written(), QStringList());
    QFETCH(QByteArray, reason);
    QVERIFY2(run.errors().startsWith("pagexport: " + run.path("in.pdf").toUtf8() + ": " + reason),
             run.errors().constData());
    QCOMPARE(run.errors().count('\n'), 1);
    QCOMPARE(run.call({"-items", run.path("in.pdf")}), 1);
    QCOMPARE(run.output(), QByteArray());
    QCOMPARE(run.errors().count('\n'), 1);
}

void TestPageFiles::inputIsNeverRemovedWhateverItsName_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("as the index") << "page.xml";
    QTest::newRow("as a page") << "page_pg_0001.htm";
    QTest::newRow("as a picture") << "page_pg_0300.png";
}

void TestPageFiles::inputIsNeverRemovedWhateverItsName()
{
    QFETCH(QString, name);
    ExportRun run;
    const PdfBuilder pdf = pagesOf(2);
    QCOMPARE(run.run(run.save(pdf, name)), 1);
    QCOMPARE(run.content(name), QByteArray::fromStdString(pdf.build()));
    QCOMPARE(run.written(), QStringList{name});
}

void TestPageFiles::plantedLinksAreNotFollowed()
{
    ExportRun run;
    writeFile(run.path("precious"), "precious");
    for (const QString name : {"page.xml", "page.xml.part", "page_pg_0001.htm"}) {
        QVERIFY(QFile::link(run.path("precious"), run.path(name)));
    }
    QCOMPARE(run.run(pagesOf(1)), 0);
    QCOMPARE(run.content("precious"), QByteArray("precious"));
    QCOMPARE(run.texts(), QStringList{"Page no. 1"});
    QVERIFY(!QFileInfo(run.path("page_pg_0001.htm")).isSymLink());
}

void TestPageFiles::unremovableLeftoverIsAnError()
{
    ExportRun run;
    QVERIFY(QDir().mkdir(run.path("page_pg_0005.htm")));
    QCOMPARE(run.run(pagesOf(1)), 1);
    QVERIFY(run.errors().contains("page_pg_0005.htm"));
    QCOMPARE(run.written(), QStringList());
}

void TestPageFiles::missingFolderIsAnError()
{
    ExportRun run;
    const QString input = run.save(pagesOf(1));
    QCOMPARE(run.call({"-htmlformat", input, run.path("nowhere/page.xml")}), 1);
    QVERIFY(run.errors().contains("nowhere"));
}

void TestPageFiles::fullDiskLeavesNothing()
{
    PdfBuilder pdf = pagesOf(3);
    pdf.addPage("BT /F1 12 Tf 72 700 Td (" + std::string(5000, 'x') + ") Tj ET");
    ExportRun run;
    const QString input = run.save(pdf);
    QProcess process; // a limit on file sizes fails a write as a full disk does
    process.setChildProcessModifier([] {
        const rlimit limit{2000, 2000};
        setrlimit(RLIMIT_FSIZE, &limit);
    });
    process.start(QUORLIN_BIN_DIR "/pagexport", {"-htmlformat", input, run.indexPath()});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 1);
    QVERIFY(process.readAllStandardError().contains("page_pg_0004.htm"));
    QCOMPARE(run.written(), QStringList());
}

void TestPageFiles::refusedThreadCostsNoPage()
{
    const int pages = 64;
    ExportRun run;
    const QString input = run.save(pagesOf(pages));
    QProcess process; // one stack of this size fits into the tool's address space, two do not
    process.setChildProcessModifier([] {
        rlimit limit{};
        getrlimit(RLIMIT_STACK, &limit);
        limit.rlim_cur = std::min<rlim_t>(limit.rlim_max, 3'500'000'000U);
        setrlimit(RLIMIT_STACK, &limit);
    });
    process.start(QUORLIN_BIN_DIR "/pagexport", {"-htmlformat", input, run.indexPath()});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(process.readAllStandardError(), QByteArray());
    QCOMPARE(run.written().size(), pages + 1);
}

void TestPageFiles::filesAreReadableByTheirOwnerOnly()
{
    ExportRun run;
    QCOMPARE(run.run(pagesOf(1), {"-f", "1"}), 0);
    QCOMPARE(run.written().size(), 3);
    for (const QString &name : run.written()) {
        struct stat status
        {
        };
        QCOMPARE(stat(qPrintable(run.path(name)), &status), 0);
        QCOMPARE(status.st_mode & 0777U, 0600U);
    }
}

void TestPageFiles::awkwardNamesWork_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks") << "a file of mine.pdf";
    QTest::newRow("quotes") << "it's \"quoted\".pdf";
    QTest::newRow("percent") << "100%s %1 #1?.pdf";
    QTest::newRow("line feed") << "two\nlines.pdf";
    QTest::newRow("not Latin") << QString("請求書 счёт 🧾.pdf");
    QTest::newRow("no ending") << "statement";
}

void TestPageFiles::awkwardNamesWork()
{
    QFETCH(QString, name);
    ExportRun run;
    const QString input = run.save(pagesOf(1), name);
    QCOMPARE(run.call({"-htmlformat", input, run.path("page " + name + ".xml")}), 0);
    const QByteArray html = run.content("page " + name + "_pg_0001.htm");
    QCOMPARE(ExportRun::itemsOf(html).size(), 1);
    QCOMPARE(run.call({"-htmlformat", input + "x", run.path("page " + name + ".xml")}), 1);
    QCOMPARE(run.errors().count('\n'), 1);
    QCOMPARE(run.written(), QStringList());
}

void TestPageFiles::worksWithClosedStandardStreams()
{
    ExportRun run;
    const QString input = run.save(pagesOf(2));
    QProcess process;
    process.setChildProcessModifier([] {
        for (const int stream : {0, 1, 2}) {
            close(stream);
        }
    });
    process.start(QUORLIN_BIN_DIR "/pagexport", {"-htmlformat", input, run.indexPath()});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(run.texts(2), QStringList{"Page no. 2"});
}

void TestPageFiles::indexIsWellFormedAndNamesTheFiles()
{
    ExportRun run;
    QCOMPARE(run.run(pagesOf(3), {"-f", "2"}), 0);
    QXmlStreamReader xml(run.content("page.xml"));
    QStringList files;
    QStringList numbers;
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement &&
            xml.name() == QLatin1String("page")) {
            QCOMPARE(xml.attributes().value("width"), QLatin1String("893"));
            QCOMPARE(xml.attributes().value("height"), QLatin1String("1263"));
            QCOMPARE(xml.attributes().value("items"), QLatin1String("1"));
            numbers.append(xml.attributes().value("number").toString());
            files.append(xml.attributes().value("file").toString());
            files.append(xml.attributes().value("picture").toString());
        }
    }
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    QCOMPARE(numbers, QStringList({"2", "3"}));
    files.sort();
    files.prepend("page.xml");
    QCOMPARE(files, run.written());
}

void TestPageFiles::otherLinesHoldNoneOfTheWords()
{
    ExportRun run;
    QCOMPARE(run.run(pagesOf(1)), 0);
    const QByteArrayList lines = run.content("page_pg_0001.htm").split('\n');
    QVERIFY(lines.size() > 3);
    for (const QByteArray &line : lines) {
        if (line.startsWith("<span ")) {
            continue;
        }
        for (const char *word : {"left", "top", "width", "height", "</span>"}) {
            QVERIFY2(!line.contains(word), line.constData());
        }
    }
}

QUORLIN_TEST(TestPageFiles)
#include "test_page_files.moc"
