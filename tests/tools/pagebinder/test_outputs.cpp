// Command line, exit status, messages and the files that appear or do not.

#include "pdf_inspector.h"
#include "test_pdf.h"
#include "tests/support/room.h"
#include "tests/support/signals.h"
#include "tool_run.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

class PageBinderOutputsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void showsHelpAndVersion();
    void wrongCommandLinesEndWithStatusTwo();
    void theVersionIsTheInputsWhereThereIsOne();
    void moreThanAMillionPagesAreRefused();
    void aPageWithoutASheetGetsOne();
    void writesTheNumberOfPagesFirst();
    void aTitleCannotForgeTheNumberOfPages();
    void leavesNoInformationFileOfAnUnreadableInput_data();
    void leavesNoInformationFileOfAnUnreadableInput();
    void warningsComeWithWhatCouldBeRead();
    void everyComplaintIsOneLine_data();
    void everyComplaintIsOneLine();
    void mergesPagesInTheOrderGiven();
    void aPageMayComeTwice();
    void aMissingPageIsAnError();
    void aFailedMergeLeavesAnOlderOutputAlone();
    void replacesAnOlderOutput();
    void refusesTheInputAsOutput_data();
    void refusesTheInputAsOutput();
    void refusesAFolderAsOutput();
    void refusesADeviceAsOutput();
    void refusesLinksThatLeadToAStream_data();
    void refusesLinksThatLeadToAStream();
    void writesToStandardOutputForAHyphen();
    void standardOutputGetsNothingOfAFailure();
    void aClosedReaderEndsItQuietly();
    void doesNotWriteThroughALink();
    void namesTheFolderThatIsMissing();
    void aFullDiskLeavesNothing();
    void outputsFollowTheUmask();
    void shortensNamesThatAreTooLong();
    void aStoppedMergeLeavesNothing_data();
    void aStoppedMergeLeavesNothing();
    void controlCharactersInNamesCannotBreakTheMessage();
    void theSameMergeGivesTheSameFile();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QStringList files() const
    {
        return QDir(m_folder->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_input;
    QString m_output;
};

void PageBinderOutputsTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_input = TestPdf::pages(5).save(m_folder->path());
    m_output = path("out.pdf");
}

void PageBinderOutputsTest::showsHelpAndVersion()
{
    const ToolRun help = runBinder({"--help"});
    QCOMPARE(help.status, 0);
    QVERIFY(help.output.contains("-merge RANGE... -outfile OUTPUT"));
    QVERIFY(help.output.contains("-getinfo -outfile FILE"));
    const ToolRun version = runBinder({"--version"});
    QCOMPARE(version.status, 0);
    const QList<QByteArray> lines = version.output.split('\n');
    QCOMPARE(lines.at(0), QByteArray("pagebinder " QUORLIN_VERSION));
    QCOMPARE(lines.at(1), QByteArray("MuPDF " FZ_VERSION));
    QVERIFY(lines.at(2).startsWith("sandbox: "));
}

void PageBinderOutputsTest::wrongCommandLinesEndWithStatusTwo()
{
    const QList<QStringList> lines = {{},
                                      {m_input},
                                      {m_input, "-merge", "x", "-outfile", m_output},
                                      {m_input, "-merge", "-outfile", m_output},
                                      {m_input, "-getinfo"}};
    for (const QStringList &line : lines) {
        const ToolRun run = runBinder(line);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.errors.count('\n'), 1);
        QVERIFY(run.errors.startsWith("pagebinder: "));
    }
    QCOMPARE(files(), QStringList{"input.pdf"});
}

void PageBinderOutputsTest::writesTheNumberOfPagesFirst()
{
    QCOMPARE(runBinder({m_input, "-getinfo", "-outfile", path("info.txt")}).status, 0);
    QFile file(path("info.txt"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    QVERIFY(text.startsWith("NumberOfPages: 5\n"));
    QVERIFY(text.contains("\nPageSize: 595.00 x 842.00 pt\n"));
    QVERIFY(text.contains("\nPDFVersion: 1.7\n"));
    QVERIFY(text.contains("\nEncrypted: no\n"));
    QVERIFY(text.contains("\nRepaired: no\n"));
}

void PageBinderOutputsTest::aTitleCannotForgeTheNumberOfPages()
{
    TestPdf pdf = TestPdf::pages(2);
    pdf.object(5, "<</Title(x\nNumberOfPages: 99\n)/Author(NumberOfPages: 77)>>");
    const QString input = pdf.trailer("/Info 5 0 R").save(m_folder->path(), "title.pdf");
    QCOMPARE(runBinder({input, "-getinfo", "-outfile", path("info.txt")}).status, 0);
    QFile file(path("info.txt"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().split('\n');
    QCOMPARE(lines.at(0), QByteArray("NumberOfPages: 2"));
    QCOMPARE(lines.at(1), QByteArray("Title: x NumberOfPages: 99 "));
}

void PageBinderOutputsTest::leavesNoInformationFileOfAnUnreadableInput_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("reason"); // its beginning; the rest is the library's
    QTest::newRow("empty file") << QByteArray() << QByteArray("cannot be read as PDF: ");
    QTest::newRow("text") << QByteArray("this is no PDF file\n")
                          << QByteArray("cannot be read as PDF: ");
    QTest::newRow("no pages") << TestPdf::pages(0).bytes() << QByteArray("has no pages\n");
    QTest::newRow("nothing but a header")
        << QByteArray("%PDF-1.7\n%%EOF\n") << QByteArray("cannot be read as PDF: ");
}

void PageBinderOutputsTest::leavesNoInformationFileOfAnUnreadableInput()
{
    QFETCH(QByteArray, content);
    QFile bad(path("bad.pdf"));
    QVERIFY(bad.open(QIODevice::WriteOnly));
    bad.write(content);
    bad.close();
    QFile older(path("info.txt"));
    QVERIFY(older.open(QIODevice::WriteOnly));
    older.write("NumberOfPages: 3\n");
    older.close();
    const ToolRun run = runBinder({path("bad.pdf"), "-getinfo", "-outfile", path("info.txt")});
    QCOMPARE(run.status, 1);
    QFETCH(QByteArray, reason);
    QVERIFY2(run.errors.startsWith("pagebinder: " + path("bad.pdf").toUtf8() + ": " + reason),
             run.errors.constData());
    QCOMPARE(run.errors.count('\n'), 1);
    QCOMPARE(files(), (QStringList{"bad.pdf", "input.pdf"}));
    const ToolRun merged = merge(path("bad.pdf"), "1", m_output);
    QCOMPARE(merged.status, 1);
    QCOMPARE(merged.errors.count('\n'), 1);
    const ToolRun missing =
        runBinder({path("missing.pdf"), "-getinfo", "-outfile", path("info.txt")});
    QCOMPARE(missing.status, 1);
    QCOMPARE(missing.errors,
             "pagebinder: " + path("missing.pdf").toUtf8() + ": No such file or directory\n");
}

void PageBinderOutputsTest::warningsComeWithWhatCouldBeRead()
{
    // A table that cannot be found is rebuilt, with warnings.
    QFile cut(path("cut.pdf"));
    QVERIFY(cut.open(QIODevice::WriteOnly));
    cut.write(TestPdf::pages(2).bytes().replace("startxref", "startxfer"));
    cut.close();
    for (const QStringList &action : {QStringList{"-getinfo"}, QStringList{"-merge", "2"}}) {
        const ToolRun run =
            runBinder(QStringList{path("cut.pdf")} + action + QStringList{"-outfile", m_output});
        QCOMPARE(run.status, 0);
        QVERIFY2(run.errors.startsWith("pagebinder: warning: "), run.errors.constData());
    }
    const ToolRun refused = merge(path("cut.pdf"), "3", m_output);
    QCOMPARE(refused.status, 1);
    QCOMPARE(refused.errors, "pagebinder: " + path("cut.pdf").toUtf8() + ": has no page 3\n");
}

void PageBinderOutputsTest::everyComplaintIsOneLine_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("line");
    const auto row = [](const char *arguments, int status, const char *line) {
        QTest::newRow(arguments) << arguments << status << line;
    };
    row("", 2, "no input file (--help shows the usage)");
    row("IN", 2, "one of -getinfo, -merge and -split is needed (--help shows the usage)");
    row("IN -merge x -outfile OUT", 2,
        "\"x\" is not a page or range of pages (--help shows the usage)");
    row("IN -merge -outfile OUT", 2, "-merge needs the pages (--help shows the usage)");
    row("IN -getinfo", 2, "-outfile is needed (--help shows the usage)");
    row("IN -getinfo -outfile", 2, "-outfile needs a file (--help shows the usage)");
    row("IN -getinfo -merge 1 -outfile OUT", 2,
        "only one of -getinfo, -merge and -split can be used at once (--help shows the usage)");
    row("IN -getinfo -outfile OUT -outfile OUT", 2,
        "-outfile is given twice (--help shows the usage)");
    row("IN -split LIST -outfile OUT", 2,
        "the list of -split names the outputs, -outfile does not (--help shows the usage)");
    row("IN -split", 2, "-split needs a file (--help shows the usage)");
    row("IN -frob", 2, "\"-frob\" is not understood (--help shows the usage)");
    row("IN -getinfo -outfile OUT -passwords x", 2,
        "-passwords needs the number of a descriptor, not \"x\" (--help shows the usage)");
    row("IN -getinfo -outfile OUT -passwords 0 -passwords 0", 2,
        "-passwords is given twice (--help shows the usage)");
    row("IN -getinfo -outfile OUT -passwords 999", 2,
        "the passwords cannot be read: Bad file descriptor");
    row("IN -merge 4-9 -outfile OUT", 1, "IN: has no page 6");
    row("IN -merge 1-2000000 -outfile OUT", 1,
        "IN: more than 1,000,000 pages in one output are refused");
    row("IN -merge 1 -outfile IN", 1, "IN: is the input itself, which is never written");
    row("IN -getinfo -outfile IN", 1, "IN: is the input itself, which is never written");
    row("IN -merge 1 -outfile FOLDER", 1, "FOLDER: is a folder");
    row("IN -merge 1 -outfile FOLDER/none/o.pdf", 1,
        "FOLDER/none/o.pdf: cannot be written: No such file or directory");
    row("IN -merge 1 -outfile PIPE", 1, "PIPE: is not a regular file");
    row("FOLDER -merge 1 -outfile OUT", 1, "FOLDER: not a regular file");
    row("PIPE -merge 1 -outfile OUT", 1, "PIPE: not a regular file");
}

void PageBinderOutputsTest::everyComplaintIsOneLine()
{
    QFETCH(QString, arguments);
    QFETCH(QString, line);
    QVERIFY(QDir(m_folder->path()).mkdir("folder"));
    QCOMPARE(mkfifo(path("pipe").toLocal8Bit().constData(), 0600), 0);
    for (QString *text : {&arguments, &line}) {
        text->replace("IN", m_input).replace("OUT", m_output).replace("LIST", path("list"));
        text->replace("FOLDER", path("folder")).replace("PIPE", path("pipe"));
    }
    const QStringList before = files();
    const ToolRun run = runBinder(arguments.split(' ', Qt::SkipEmptyParts));
    QTEST(run.status, "status");
    QCOMPARE(QString::fromUtf8(run.errors), "pagebinder: " + line + "\n");
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(files(), before);
}

void PageBinderOutputsTest::mergesPagesInTheOrderGiven()
{
    QCOMPARE(merge(m_input, "4-5 1", m_output).status, 0);
    PdfInspector output(m_output);
    QCOMPARE(output.pageCount(), 3);
    QCOMPARE(output.text(1), QByteArray("page-4-text"));
    QCOMPARE(output.text(2), QByteArray("page-5-text"));
    QCOMPARE(output.text(3), QByteArray("page-1-text"));
    QCOMPARE(files(), (QStringList{"input.pdf", "out.pdf"}));
}

void PageBinderOutputsTest::aPageMayComeTwice()
{
    QCOMPARE(merge(m_input, "2 2", m_output).status, 0);
    PdfInspector output(m_output);
    QCOMPARE(output.pageCount(), 2);
    QCOMPARE(output.text(1), output.text(2));
}

void PageBinderOutputsTest::aMissingPageIsAnError()
{
    for (const char *range : {"6", "4-6", "1 2147483647"}) {
        const ToolRun run = merge(m_input, range, m_output);
        QCOMPARE(run.status, 1);
        QCOMPARE(run.errors.count('\n'), 1);
        QVERIFY(run.errors.contains("input.pdf: has no page "));
    }
    const ToolRun many = merge(m_input, "1-2147483647", m_output);
    QCOMPARE(many.status, 1);
    QCOMPARE(files(), QStringList{"input.pdf"});
}

void PageBinderOutputsTest::aFailedMergeLeavesAnOlderOutputAlone()
{
    QVERIFY(QFile::copy(m_input, m_output));
    QCOMPARE(merge(m_input, "9", m_output).status, 1);
    QCOMPARE(PdfInspector(m_output).pageCount(), 5);
}

void PageBinderOutputsTest::replacesAnOlderOutput()
{
    QVERIFY(QFile::copy(m_input, m_output));
    QCOMPARE(merge(m_input, "1", m_output).status, 0);
    QCOMPARE(PdfInspector(m_output).pageCount(), 1);
}

void PageBinderOutputsTest::refusesTheInputAsOutput_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("the same path") << "same";
    QTest::newRow("a symbolic link to it") << "symbolic";
    QTest::newRow("another name of the same file") << "hard";
    QTest::newRow("a path with a detour") << "detour";
}

void PageBinderOutputsTest::refusesTheInputAsOutput()
{
    QFETCH(QString, kind);
    const QByteArray before = TestPdf::pages(5).bytes();
    QString output = m_input;
    if (kind == "symbolic") {
        output = path("link.pdf");
        QVERIFY(QFile::link(m_input, output));
    } else if (kind == "hard") {
        output = path("hard.pdf");
        QCOMPARE(::link(m_input.toLocal8Bit().constData(), output.toLocal8Bit().constData()), 0);
    } else if (kind == "detour") {
        output = m_folder->path() + "/./input.pdf";
    }
    QCOMPARE(merge(m_input, "1", output).status, 1);
    QCOMPARE(runBinder({m_input, "-getinfo", "-outfile", output}).status, 1);
    QFile file(m_input);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), before);
}

void PageBinderOutputsTest::refusesAFolderAsOutput()
{
    QVERIFY(QDir(m_folder->path()).mkdir("out.pdf"));
    const ToolRun run = merge(m_input, "1", m_output);
    QCOMPARE(run.status, 1);
    QVERIFY(run.errors.contains("out.pdf: is a folder"));
    QCOMPARE(merge(m_input, "1", m_folder->path() + "/").status, 1);
    QCOMPARE(files(), (QStringList{"input.pdf", "out.pdf"}));
}

void PageBinderOutputsTest::refusesADeviceAsOutput()
{
    QCOMPARE(mkfifo(path("pipe").toLocal8Bit().constData(), 0600), 0);
    QCOMPARE(merge(m_input, "1", path("pipe")).status, 1);
    QCOMPARE(runBinder({m_input, "-getinfo", "-outfile", path("pipe")}).status, 1);
    QVERIFY(QFileInfo::exists(path("pipe")));
}

void PageBinderOutputsTest::refusesLinksThatLeadToAStream_data()
{
    QTest::addColumn<QString>("target");
    QTest::newRow("a pipe") << "pipe";
    QTest::newRow("a device") << "/dev/null";
    QTest::newRow("standard output") << "/dev/stdout";
    QTest::newRow("an open file") << "/proc/self/fd/1";
    QTest::newRow("a link to a link") << "second";
    QTest::newRow("a folder") << "folder";
    QTest::newRow("itself") << "link.pdf";
}

void PageBinderOutputsTest::refusesLinksThatLeadToAStream()
{
    QFETCH(QString, target);
    QCOMPARE(mkfifo(path("pipe").toLocal8Bit().constData(), 0600), 0);
    QVERIFY(QDir(m_folder->path()).mkdir("folder"));
    QVERIFY(QFile::link("/dev/stdout", path("second")));
    QCOMPARE(
        ::symlink(target.toLocal8Bit().constData(), path("link.pdf").toLocal8Bit().constData()), 0);
    for (const QStringList &action : {QStringList{"-merge", "1"}, QStringList{"-getinfo"}}) {
        QProcess process;
        // A file for standard output: what the link leads to is then a regular file.
        process.setStandardOutputFile(path("stream"));
        process.start(binderPath(),
                      QStringList{m_input} + action + QStringList{"-outfile", path("link.pdf")});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 1);
        QCOMPARE(process.readAllStandardError().count('\n'), 1);
        QVERIFY(QFileInfo(path("link.pdf")).isSymLink());
        QCOMPARE(QFileInfo(path("stream")).size(), 0);
    }
}

void PageBinderOutputsTest::writesToStandardOutputForAHyphen()
{
    const ToolRun information = runBinder({m_input, "-getinfo", "-outfile", "-"});
    QCOMPARE(information.status, 0);
    QVERIFY(information.output.startsWith("NumberOfPages: 5\n"));
    const ToolRun merged = runBinder({m_input, "-merge", "2-3", "-outfile", "-"});
    QCOMPARE(merged.status, 0);
    QCOMPARE(merge(m_input, "2-3", m_output).status, 0);
    QFile file(m_output);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(merged.output, file.readAll());
    QCOMPARE(files(), (QStringList{"input.pdf", "out.pdf"}));
}

void PageBinderOutputsTest::standardOutputGetsNothingOfAFailure()
{
    const ToolRun run = runBinder({m_input, "-merge", "1-9", "-outfile", "-"});
    QCOMPARE(run.status, 1);
    QCOMPARE(run.output, QByteArray());
}

void PageBinderOutputsTest::aClosedReaderEndsItQuietly()
{
    QProcess process;
    process.setChildProcessModifier([] {
        int ends[2];
        if (::pipe(ends) == 0) {
            ::close(ends[0]);
            ::dup2(ends[1], STDOUT_FILENO);
        }
    });
    process.start(binderPath(), {m_input, "-getinfo", "-outfile", "-"});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 1);
    QCOMPARE(process.readAllStandardError(), QByteArray());
}

void PageBinderOutputsTest::doesNotWriteThroughALink()
{
    QFile other(path("other.txt"));
    QVERIFY(other.open(QIODevice::WriteOnly));
    other.write("mine");
    other.close();
    QVERIFY(QFile::link(path("other.txt"), m_output));
    QCOMPARE(merge(m_input, "1", m_output).status, 0);
    QVERIFY(other.open(QIODevice::ReadOnly));
    QCOMPARE(other.readAll(), QByteArray("mine"));
    QVERIFY(!QFileInfo(m_output).isSymLink());
}

void PageBinderOutputsTest::namesTheFolderThatIsMissing()
{
    const ToolRun run = merge(m_input, "1", path("missing/out.pdf"));
    QCOMPARE(run.status, 1);
    QCOMPARE(run.errors.count('\n'), 1);
    QVERIFY(run.errors.contains("missing/out.pdf: cannot be written: No such file"));
}

void PageBinderOutputsTest::aFullDiskLeavesNothing()
{
    QProcess process;
    process.setChildProcessModifier([] {
        const rlimit limit = {100, 100};
        setrlimit(RLIMIT_FSIZE, &limit);
    });
    process.start(binderPath(), {m_input, "-merge", "1-5", "-outfile", m_output});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 1);
    QVERIFY(process.readAllStandardError().contains("out.pdf: cannot be written: File too large"));
    QCOMPARE(files(), QStringList{"input.pdf"});
}

void PageBinderOutputsTest::outputsFollowTheUmask()
{
    for (const mode_t mask : {mode_t(022), mode_t(077), mode_t(002)}) {
        QProcess process;
        process.setChildProcessModifier([mask] { umask(mask); });
        process.start(binderPath(), {m_input, "-merge", "1", "-outfile", m_output});
        QVERIFY(process.waitForFinished());
        struct stat status = {};
        QCOMPARE(stat(m_output.toLocal8Bit().constData(), &status), 0);
        QCOMPARE(status.st_mode & 0777, 0666 & ~mask);
    }
}

void PageBinderOutputsTest::shortensNamesThatAreTooLong()
{
    const QString name = "7 " + QString("Überschrift ").repeated(30) + "input 2-3.pdf";
    const ToolRun run = merge(m_input, "2-3", path(name));
    QCOMPARE(run.status, 0);
    QVERIFY(run.errors.contains("too long, shortened to"));
    const QStringList found = files();
    QCOMPARE(found.size(), 2);
    const QString shortened = found.at(0) == "input.pdf" ? found.at(1) : found.at(0);
    QVERIFY(shortened.startsWith("7 Überschrift "));
    QVERIFY(shortened.endsWith(" input 2-3.pdf"));
    QVERIFY(shortened.toUtf8().size() <= 255);
    QCOMPARE(PdfInspector(path(shortened)).pageCount(), 2);
}

void PageBinderOutputsTest::aStoppedMergeLeavesNothing_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void PageBinderOutputsTest::aStoppedMergeLeavesNothing()
{
    QFETCH(int, signal);
    // The pages together are far larger than what passes to the disk at once, so the hidden file is
    // there when the signal comes.
    TestPdf pdf = TestPdf::pages(1);
    QByteArray kids;
    for (int number = 1; number <= 40; ++number) {
        pdf.stream(1000 + number, "", QByteArray(1 << 20, char(' ' + number)));
        pdf.object(10 * number, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Contents " +
                                    QByteArray::number(1000 + number) + " 0 R>>");
        kids += QByteArray::number(10 * number) + " 0 R ";
    }
    pdf.object(2, "<</Type/Pages/Count 40/Kids[" + kids + "]>>");
    const QString input = pdf.save(m_folder->path(), "big.pdf");
    int stopped = 0;
    for (int attempt = 0; attempt < 20 && stopped == 0; ++attempt) {
        QProcess process;
        process.start(binderPath(), {input, "-merge", "1-40", "-outfile", m_output});
        QVERIFY(process.waitForStarted());
        if (reachedWhileRunning(process, [this] { return files().size() > 2; })) {
            sendSignal(process, signal);
        }
        QVERIFY(process.waitForFinished(60000));
        QStringList left = files();
        left.removeAll("out.pdf");
        QCOMPARE(left, (QStringList{"big.pdf", "input.pdf"}));
        if (QFileInfo::exists(m_output)) {
            // The tool was quicker: its output is whole.
            QCOMPARE(PdfInspector(m_output).pageCount(), 40);
            QVERIFY(QFile::remove(m_output));
        } else {
            QCOMPARE(process.exitStatus(), QProcess::CrashExit);
            ++stopped;
        }
    }
    QVERIFY2(stopped > 0, "the tool always ended before the signal came");
}

void PageBinderOutputsTest::controlCharactersInNamesCannotBreakTheMessage()
{
    const ToolRun run = merge(path("line\nbreak\x1b.pdf"), "1", m_output);
    QCOMPARE(run.status, 1);
    QCOMPARE(run.errors.count('\n'), 1);
    QVERIFY(!run.errors.contains('\x1b'));
}

void PageBinderOutputsTest::theSameMergeGivesTheSameFile()
{
    QCOMPARE(merge(m_input, "1-3", m_output).status, 0);
    QFile first(m_output);
    QVERIFY(first.open(QIODevice::ReadOnly));
    const QByteArray before = first.readAll();
    QCOMPARE(merge(m_input, "1-3", path("again.pdf")).status, 0);
    QFile second(path("again.pdf"));
    QVERIFY(second.open(QIODevice::ReadOnly));
    QCOMPARE(second.readAll(), before);
}

void PageBinderOutputsTest::theVersionIsTheInputsWhereThereIsOne()
{
    for (const auto &[version, written] :
         {std::pair{"2.0", "%PDF-2.0"}, std::pair{"9.9", "%PDF-1.7"}}) {
        const QString output = path("version.pdf");
        const QString input = TestPdf::pages(1, QByteArray("/Version/") + version)
                                  .save(m_folder->path(), "version-of-input.pdf");
        QCOMPARE(merge(input, "1", output).status, 0);
        QFile file(output);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.read(8), QByteArray(written));
    }
}

void PageBinderOutputsTest::moreThanAMillionPagesAreRefused()
{
    const ToolRun run = merge(m_input, "1-1000001", path("out.pdf"));
    QCOMPARE(run.status, 1);
    QVERIFY(run.errors.contains("more than 1,000,000 pages"));
}

void PageBinderOutputsTest::aPageWithoutASheetGetsOne()
{
    TestPdf pdf = TestPdf::pages(1);
    pdf.object(10, "<</Type/Page/Parent 2 0 R/Contents 11 0 R/Resources<</Font<</F 3 0 R>>>>>>");
    QCOMPARE(merge(pdf.save(m_folder->path(), "sheet.pdf"), "1", path("out.pdf")).status, 0);
    QCOMPARE(PdfInspector(path("out.pdf")).value("Root/Pages/Kids/0/MediaBox"),
             QByteArray("[0 0 612 792]"));
}

QUORLIN_TEST(PageBinderOutputsTest)
#include "test_outputs.moc"
