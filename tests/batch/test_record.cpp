#include "batch/item_listing.h"
#include "batch/run_record.h"
#include "tests/support/room.h"

#include <QHash>
#include <QTest>

using namespace quorlin::batch;

namespace {

/// A disk in memory: a test says what lies where.
struct FakeDisk
{
    QHash<QString, FileIdentity> files;
    bool exportIsWhole = true;
    quint64 nextInode = 1;

    void write(const QString &path, qint64 size = 100)
    {
        files.insert(path, {true, 1, nextInode++, size, 0});
    }

    DiskView view()
    {
        return {[this](const QString &path) { return files.value(path); },
                [this] { return exportIsWhole; }};
    }
};

/// A file that was split as it should be.
FileRecord goodRecord()
{
    FileRecord record;
    record.path = QStringLiteral("/in/a.pdf");
    record.pageCount = QStringLiteral("3");
    record.exported = true;
    record.outputs = 2;
    record.finished = true;
    record.windowResult = QStringLiteral("Succeed");
    return record;
}

void countFiles(RunRecord &record, const QStringList &counts)
{
    for (qsizetype index = 0; index < counts.size(); ++index) {
        record.take(QStringLiteral("Loading ") + record.files().at(index).path);
    }
    record.take(QStringLiteral("Finished."));
    record.setPageCounts(counts);
}

} // namespace

class TestRecord : public QObject
{
    Q_OBJECT

private slots:
    void linesAreRead_data();
    void linesAreRead();
    void onlyTheNextFileStartsAFile();
    void theLiveLineFitsTheTerminal();
    void controlCharactersNeverReachATerminal();
    void verdictsNameTheReason_data();
    void verdictsNameTheReason();
    void toolMessagesLoseTheirHead();
    void warningsAboutPagesAreCounted();
    void aWholeRunSucceeds();
    void anOutputThatWasNotWrittenIsMissing();
    void aLeftoverOfAnEarlierRunIsNoOutput();
    void anEmptyOutputIsMissing();
    void anOutputOfAnotherFileMayNotBeReplaced();
    void aFailedExportMakesNoOutputs();
    void uncountedFilesAreNotSplit();
    void toolMessagesBelongToTheFileWorkedOn();
    void filesBehindTheEndWereNotReached();
    void itemsAreListedInColumns();
};

void TestRecord::linesAreRead_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<LineKind>("kind");
    QTest::newRow("counted file") << "Loading /in/a.pdf" << LineKind::Loaded;
    QTest::newRow("end of counting") << "Finished." << LineKind::CountingDone;
    QTest::newRow("start") << "Conversion Start:" << LineKind::RunStarts;
    QTest::newRow("file") << "/in/b.pdf" << LineKind::FileStarts;
    QTest::newRow("page") << "Analyzing page 12" << LineKind::PageRead;
    QTest::newRow("output") << "Generating /out/b/1 A b 1.pdf" << LineKind::Output;
    QTest::newRow("end of the run") << "Conversion Finished." << LineKind::RunDone;
    QTest::newRow("anything else") << "Hello" << LineKind::Other;
    QTest::newRow("another file's path") << "/in/c.pdf" << LineKind::Other;
    QTest::newRow("nothing") << "" << LineKind::Other;
}

void TestRecord::linesAreRead()
{
    QFETCH(QString, line);
    QFETCH(LineKind, kind);
    QCOMPARE(readProgressLine(line, QStringLiteral("/in/b.pdf")).kind, kind);
}

void TestRecord::onlyTheNextFileStartsAFile()
{
    QCOMPARE(readProgressLine(QString(), QString()).kind, LineKind::Other);
    QCOMPARE(readProgressLine(QStringLiteral("Generating /out/x.pdf"), QString()).path,
             "/out/x.pdf");
    QCOMPARE(readProgressLine(QStringLiteral("Analyzing page 12"), QString()).page, 12);
}

void TestRecord::theLiveLineFitsTheTerminal()
{
    QCOMPARE(liveText(2, 3, "a.pdf", "counting pages", 80), "[2/3] a.pdf: counting pages");
    const QString cut = liveText(2, 3, QString(200, u'n'), "counting pages", 40);
    QCOMPARE(cut.size(), 40);
    QVERIFY(cut.endsWith(QLatin1String("~: counting pages")));
    QVERIFY(liveText(2, 3, "a.pdf", "counting pages", 5).size() <= 5);
}

void TestRecord::controlCharactersNeverReachATerminal()
{
    QCOMPARE(printable(QStringLiteral("a\033[2Jb\n\u009b")), "a?[2Jb??");
}

void TestRecord::verdictsNameTheReason_data()
{
    QTest::addColumn<FileRecord>("record");
    QTest::addColumn<QString>("reason");
    QTest::newRow("all well") << goodRecord() << "";

    FileRecord record = goodRecord();
    record.refusal = "there is no such file";
    QTest::newRow("refused") << record << "there is no such file";

    record = goodRecord();
    record.pageCount.clear();
    QTest::newRow("no page count") << record << "could not be counted";
    record.toolMessages = QStringList{"pagebinder: /in/a.pdf: it is locked"};
    QTest::newRow("no page count, tool says why") << record << "it is locked";
    record.toolMessages.append("pagebinder: /in/a.pdf: warning: odd trailer");
    QTest::newRow("no page count, tool warns besides") << record << "it is locked";
    record.toolMessages.removeFirst();
    QTest::newRow("no page count, tool only warns") << record << "could not be counted";

    record = goodRecord();
    record.pageCount = "0";
    QTest::newRow("no pages") << record << "no pages";

    record = goodRecord();
    record.exported = false;
    QTest::newRow("no page text") << record << "could not be exported";

    record = goodRecord();
    record.missingOutputs = QStringList{"/out/a/2 B a 3.pdf"};
    QTest::newRow("an output missing") << record << "1 of 2 outputs were not written";
    record.toolMessages = QStringList{"pagebinder: /out/a/2 B a 3.pdf: no space left"};
    QTest::newRow("an output missing, tool says why") << record << "(no space left)";

    record = goodRecord();
    record.replacedOutputs = QStringList{"/out/a/1 A a 1.pdf"};
    QTest::newRow("an output replaced") << record << "replaced";

    record = goodRecord();
    record.outputs = 0;
    QTest::newRow("no outputs") << record << "no output";

    record = goodRecord();
    record.stalled = true;
    QTest::newRow("a hung tool") << record << "no progress";

    record = goodRecord();
    record.finished = false;
    QTest::newRow("the run ended inside the file") << record << "before it was done";
    record.exported = false;
    QTest::newRow("the run ended before the file") << record << "before its turn";

    record = goodRecord();
    record.windowResult = "Failed";
    QTest::newRow("the list says so") << record << "missing";
}

void TestRecord::verdictsNameTheReason()
{
    QFETCH(FileRecord, record);
    QFETCH(QString, reason);
    const Verdict verdict = judge(record);
    QCOMPARE(verdict.succeeded, reason.isEmpty());
    QVERIFY2(verdict.reason.contains(reason), qPrintable(verdict.reason));
}

void TestRecord::toolMessagesLoseTheirHead()
{
    QCOMPARE(messageReason("pagebinder: /in/a: b.pdf: it is locked", "/in/a: b.pdf"),
             "it is locked");
    QCOMPARE(messageReason("pagebinder: it is locked", "/in/a.pdf"), "it is locked");
    QCOMPARE(messageReason("Killed", "/in/a.pdf"), "Killed");
}

void TestRecord::warningsAboutPagesAreCounted()
{
    FileRecord record = goodRecord();
    QCOMPARE(pageWarnings(record), 0);
    record.toolMessages = QStringList{"pagexport: /in/a.pdf: warning: page 2: it took too long",
                                      "pagexport: warning: odd font"};
    QCOMPARE(pageWarnings(record), 1);
    QVERIFY(judge(record).succeeded);
}

void TestRecord::aWholeRunSucceeds()
{
    FakeDisk disk;
    RunRecord record({"/in/a.pdf", "/in/b.pdf"}, disk.view());
    countFiles(record, {"2", "1"});
    record.take("Conversion Start:");
    QCOMPARE(record.take("/in/a.pdf"), Step::FileBegins);
    QCOMPARE(record.take("Analyzing page 1"), Step::None);
    record.take("Analyzing page 2");
    record.take("Generating /out/a/1.pdf");
    disk.write("/out/a/1.pdf");
    record.take("Generating /out/a/2.pdf");
    disk.write("/out/a/2.pdf");
    QCOMPARE(record.take("/in/b.pdf"), Step::FileBegins);
    QCOMPARE(record.currentNumber(), 2);
    record.take("Analyzing page 1");
    record.take("Generating /out/b/1.pdf");
    disk.write("/out/b/1.pdf");
    QCOMPARE(record.take("Conversion Finished."), Step::RunDone);
    record.setResults({"Succeed", "Succeed"});
    QCOMPARE(record.files().at(0).outputs, 2);
    QCOMPARE(record.files().at(1).outputs, 1);
    for (const FileRecord &file : record.files()) {
        QCOMPARE(judge(file).reason, QString());
    }
}

void TestRecord::anOutputThatWasNotWrittenIsMissing()
{
    FakeDisk disk;
    RunRecord record({"/in/a.pdf"}, disk.view());
    countFiles(record, {"2"});
    record.take("/in/a.pdf");
    record.take("Analyzing page 1");
    record.take("Generating /out/a/1.pdf");
    record.take("Generating /out/a/2.pdf");
    disk.write("/out/a/2.pdf");
    record.take("Conversion Finished.");
    QCOMPARE(record.files().at(0).missingOutputs, QStringList{"/out/a/1.pdf"});
}

void TestRecord::aLeftoverOfAnEarlierRunIsNoOutput()
{
    FakeDisk disk;
    disk.write("/out/a/1.pdf");
    disk.write("/out/a/2.pdf");
    RunRecord record({"/in/a.pdf"}, disk.view());
    countFiles(record, {"2"});
    record.take("/in/a.pdf");
    record.take("Analyzing page 1");
    record.take("Generating /out/a/1.pdf");
    disk.write("/out/a/1.pdf");
    record.take("Generating /out/a/2.pdf");
    record.take("Conversion Finished.");
    QCOMPARE(record.files().at(0).missingOutputs, QStringList{"/out/a/2.pdf"});
}

void TestRecord::anEmptyOutputIsMissing()
{
    FakeDisk disk;
    RunRecord record({"/in/a.pdf"}, disk.view());
    countFiles(record, {"1"});
    record.take("/in/a.pdf");
    record.take("Analyzing page 1");
    record.take("Generating /out/a/1.pdf");
    disk.write("/out/a/1.pdf", 0);
    record.take("Conversion Finished.");
    QCOMPARE(record.files().at(0).missingOutputs.size(), 1);
}

void TestRecord::anOutputOfAnotherFileMayNotBeReplaced()
{
    FakeDisk disk;
    RunRecord record({"/one/a.pdf", "/two/a.pdf"}, disk.view());
    countFiles(record, {"1", "1"});
    for (const char *path : {"/one/a.pdf", "/two/a.pdf"}) {
        record.take(QString::fromUtf8(path));
        record.take("Analyzing page 1");
        record.take("Generating /out/a/1 A a 1.pdf");
        disk.write("/out/a/1 A a 1.pdf");
    }
    record.take("Conversion Finished.");
    QCOMPARE(record.files().at(0).replacedOutputs, QStringList{"/out/a/1 A a 1.pdf"});
    QVERIFY(record.files().at(1).replacedOutputs.isEmpty());
}

void TestRecord::aFailedExportMakesNoOutputs()
{
    FakeDisk disk;
    disk.exportIsWhole = false;
    RunRecord record({"/in/a.pdf"}, disk.view());
    countFiles(record, {"2"});
    record.take("/in/a.pdf");
    QCOMPARE(record.take("Analyzing page 1"), Step::SkipFile);
    QCOMPARE(record.take("Analyzing page 2"), Step::None);
    record.take("Conversion Finished.");
    QVERIFY(!record.files().at(0).exported);
}

void TestRecord::uncountedFilesAreNotSplit()
{
    FakeDisk disk;
    RunRecord record({"/in/a.pdf", "/in/b.pdf", "/in/c.pdf"}, disk.view());
    countFiles(record, {"", "1", "1"});
    QCOMPARE(record.countedFiles(), QList<qsizetype>({1, 2}));
    QCOMPARE(record.turnCount(), 2);
    QCOMPARE(record.take("/in/b.pdf"), Step::FileBegins);
    QCOMPARE(record.currentFile()->path, "/in/b.pdf");
    record.setResults({"Succeed", "Failed"});
    QCOMPARE(record.files().at(0).windowResult, QString());
    QCOMPARE(record.files().at(1).windowResult, "Succeed");
    QCOMPARE(record.files().at(2).windowResult, "Failed");
}

void TestRecord::toolMessagesBelongToTheFileWorkedOn()
{
    FakeDisk disk;
    RunRecord record({"/in/a.pdf", "/in/b.pdf"}, disk.view());
    record.addToolMessages("first\n");
    record.take("Loading /in/a.pdf");
    record.addToolMessages("second\nthird\n");
    record.take("Loading /in/b.pdf");
    record.addToolMessages("nobody's");
    QCOMPARE(record.files().at(0).toolMessages, QStringList{"first"});
    QCOMPARE(record.files().at(1).toolMessages, QStringList({"second", "third"}));
}

void TestRecord::filesBehindTheEndWereNotReached()
{
    FakeDisk disk;
    RunRecord record({"/in/a.pdf", "/in/b.pdf"}, disk.view());
    countFiles(record, {"1", "1"});
    record.take("/in/a.pdf");
    record.take("Analyzing page 1");
    QVERIFY(judge(record.files().at(0)).reason.contains("before it was done"));
    QVERIFY(judge(record.files().at(1)).reason.contains("before its turn"));
}

void TestRecord::itemsAreListedInColumns()
{
    const QString html = "<html>\n"
                         "<span style=\"left:72;top:104;width:210;height:12\">INV 1</span>\n"
                         "<span style=\"left:600;top:1104;width:21;height:12\">two  words</span>\n"
                         "</html>\n";
    const QList<Subtext> items = itemsOfPage(html);
    QCOMPARE(items.size(), 2);
    QCOMPARE(items.at(0), (Subtext{72, 104, 210, 12, "INV 1"}));
    QCOMPARE(itemTable(items), "   left    top  width height  text\n"
                               "     72    104    210     12  INV 1\n"
                               "    600   1104     21     12  two  words\n");
}

QUORLIN_TEST(TestRecord)
#include "test_record.moc"
