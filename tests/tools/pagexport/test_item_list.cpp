#include "tests/support/input_changes.h"
#include "tests/support/room.h"
#include "tests/tools/pagexport/export_run.h"
#include "tools/pagexport/export_job.h"
#include "tools/pagexport/output/item_stream.h"

#include <QTest>

#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <csignal>

using namespace quorlin::test;

namespace {

std::string textAt(int y, const std::string &text)
{
    return "BT /F1 12 Tf 72 " + std::to_string(y) + " Td (" + text + ") Tj ET ";
}

PdfBuilder pagesOf(int count, int lines = 1)
{
    PdfBuilder pdf;
    for (int page = 1; page <= count; ++page) {
        std::string content;
        for (int line = 0; line < lines; ++line) {
            content += textAt(800 - 14 * line, "Page no. " + std::to_string(page));
        }
        pdf.addPage(content);
    }
    return pdf;
}

/// Lines of the item list, each taken apart at its tabs.
QList<QByteArrayList> linesOf(const QByteArray &output)
{
    QList<QByteArrayList> lines;
    for (const QByteArray &line : output.split('\n')) {
        lines.append(line.split('\t'));
    }
    lines.removeLast(); // behind the last line feed
    return lines;
}

QProcessEnvironment environmentWith(const QString &identity)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QUORLIN_INPUT_IDENTITY", identity);
    return environment;
}

/// Takes pages in silence, and changes the input when the first one comes.
class ChangingSink : public tools::PageSink
{
public:
    ChangingSink(QString input, Change change) : m_input(std::move(input)), m_change(change) {}

    void begin(int /*first*/, int /*count*/) override {}
    void take(const tools::ExportedPage & /*page*/) override
    {
        if (!m_isChanged.exchange(true)) {
            changeFile(m_input, m_change);
        }
    }

private:
    const QString m_input;
    const Change m_change;
    std::atomic<bool> m_isChanged{false};
};

} // namespace

/// The list of items on standard output, and inputs that change during an export.
class TestItemList : public QObject
{
    Q_OBJECT

private slots:
    void everyPageHasALineAndItsItemsFollow();
    void itemsAreThoseOfThePageFiles();
    void textsComeDecoded();
    void theStateOfAPageIsNamed();
    void oneFormatIsChosen();
    void boundsChooseThePages();
    void stateTellsHowMuchCouldBeRead();
    void pagesComeInOrderFromSeveralThreads();
    void anyNumberOfThreadsGivesTheSameItems();
    void threadsRunAheadOfTheirTurnByABoundedStretch_data();
    void threadsRunAheadOfTheirTurnByABoundedStretch();
    void whoWaitsIsLetGoWhenThePagesWillNotCome();
    void nothingButItemsIsWritten();
    void unreadableInputGivesNoLine_data();
    void unreadableInputGivesNoLine();
    void wrongUsageIsStatusTwo_data();
    void wrongUsageIsStatusTwo();
    void aClosedReaderEndsItQuietly();
    void aFullDiskIsNamed();
    void closedStandardOutputIsAnError();
    void anInputThatChangedBeforeIsRefused_data() { addChanges(); }
    void anInputThatChangedBeforeIsRefused();
    void anInputThatChangesMeanwhileIsNoticed_data() { addChanges(); }
    void anInputThatChangesMeanwhileIsNoticed();
    void aListOfAnInputThatChangesHasNoEnd_data() { addChanges(); }
    void aListOfAnInputThatChangesHasNoEnd();
    void anExportOfAnInputThatChangesLeavesNothing();
    void theNotedInputIsTaken();
    void anUnreadableIdentityIsWrongUsage();

private:
    static void addChanges();
};

void TestItemList::addChanges()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("replaced") << Change::replaced;
    QTest::newRow("rewritten in place") << Change::rewritten;
    QTest::newRow("appended to") << Change::appended;
    QTest::newRow("truncated") << Change::truncated;
    QTest::newRow("removed") << Change::removed;
}

void TestItemList::everyPageHasALineAndItsItemsFollow()
{
    PdfBuilder pdf;
    pdf.addPage(textAt(700, "First") + textAt(600, "Second"));
    pdf.addPage("", {"[0 0 200 100]"});
    ExportRun run;
    QCOMPARE(run.call({"-items", run.save(pdf)}), 0);
    QCOMPARE(run.errors(), QByteArray());
    const QList<QByteArrayList> lines = linesOf(run.output());
    QCOMPARE(lines.size(), 5);
    QCOMPARE(lines[0], (QByteArrayList{"page", "1", "893", "1263", "whole"}));
    QCOMPARE(lines[1].mid(0, 3), (QByteArrayList{"item", "1", "108"}));
    QCOMPARE(lines[1].mid(6), QByteArrayList{"First"});
    QCOMPARE(lines[2].mid(6), QByteArrayList{"Second"});
    QCOMPARE(lines[3], (QByteArrayList{"page", "2", "300", "150", "whole"}));
    QCOMPARE(lines[4], (QByteArrayList{"end", "2"}));
}

void TestItemList::itemsAreThoseOfThePageFiles()
{
    PdfBuilder pdf;
    pdf.addPage(textAt(700, "Left") + "BT /F2 9 Tf 300 700 Td (Right) Tj ET");
    pdf.addPage(textAt(650, "AT&T") + textAt(600, "wide   gap"), {"[0 0 595 842]", "/Rotate 90"});
    ExportRun run;
    const QString input = run.save(pdf);
    QCOMPARE(run.run(input), 0);
    QList<QByteArrayList> expected;
    for (int page = 1; page <= 2; ++page) {
        for (const ItemLine &item : run.items(page)) {
            expected.append({"item", QByteArray::number(page), QByteArray::number(item.left),
                             QByteArray::number(item.top), QByteArray::number(item.width),
                             QByteArray::number(item.height), item.text.toUtf8()});
        }
    }
    QVERIFY(expected.size() >= 4);
    QCOMPARE(run.call({"-items", input}), 0);
    QList<QByteArrayList> items = linesOf(run.output());
    items.removeIf([](const QByteArrayList &line) { return line.first() != "item"; });
    QCOMPARE(items, expected);
}

void TestItemList::textsComeDecoded()
{
    PdfBuilder pdf;
    pdf.addPage(textAt(700, "a < b & \\\"c\\\" > d &amp; \\344") +
                textAt(600, "tab\\tline\\nfeed"));
    ExportRun run;
    QCOMPARE(run.call({"-items", run.save(pdf)}), 0);
    const QList<QByteArrayList> lines = linesOf(run.output());
    QCOMPARE(lines.size(), 4);
    QCOMPARE(lines[1].value(6), QByteArray("a < b & \"c\" > d &amp; \u00e4"));
    // No text of a document can break a line or a field.
    QCOMPARE(lines[2].size(), 7);
    QCOMPARE(lines[2].value(6).left(3), QByteArray("tab"));
}

void TestItemList::theStateOfAPageIsNamed()
{
    for (const auto &[state, name] : {std::pair{tools::PageState::whole, "whole"},
                                      std::pair{tools::PageState::partial, "partial"},
                                      std::pair{tools::PageState::unreadable, "unreadable"}}) {
        tools::ExportedPage page;
        page.state = state;
        std::string lines;
        tools::appendItemLines(lines, page, 7);
        QCOMPARE(QByteArray::fromStdString(lines), "page\t7\t0\t0\t" + QByteArray(name) + "\n");
    }
}

void TestItemList::oneFormatIsChosen()
{
    ExportRun run;
    QCOMPARE(run.call({"-items", "-htmlformat", run.path("in.pdf")}), 2);
    QVERIFY(run.errors().contains("only one of -htmlformat and -items"));
    // A dash alone is a file.
    QCOMPARE(run.call({"-items", "-"}), 1);
}

void TestItemList::boundsChooseThePages()
{
    ExportRun run;
    const QString input = run.save(pagesOf(5));
    QCOMPARE(run.call({"-items", input, "-f", "2", "-l", "3"}), 0);
    const QList<QByteArrayList> lines = linesOf(run.output());
    QCOMPARE(lines.size(), 5);
    QCOMPARE(lines[0].mid(0, 2), (QByteArrayList{"page", "2"}));
    QCOMPARE(lines[3].last(), QByteArray("Page no. 3"));
    QCOMPARE(lines[4], (QByteArrayList{"end", "2"}));
    QCOMPARE(run.call({"-items", "-f", "5", "--", input}), 0);
    QCOMPARE(linesOf(run.output()).size(), 3);
    QCOMPARE(run.call({"-items", input, "-l", "6"}), 1);
    QCOMPARE(run.output(), QByteArray());
}

void TestItemList::stateTellsHowMuchCouldBeRead()
{
    PdfBuilder pdf;
    pdf.addPage(textAt(700, "Good"));
    pdf.addPage(textAt(700, "Text") + "/Missing Do " + textAt(600, "More"));
    const int lost = pdf.addPage(textAt(700, "Lost"));
    pdf.set(lost, "null");
    ExportRun run;
    QCOMPARE(run.call({"-items", run.save(pdf)}), 0);
    QList<QByteArrayList> pages = linesOf(run.output());
    QCOMPARE(pages.takeLast(), (QByteArrayList{"end", "3"}));
    pages.removeIf([](const QByteArrayList &line) { return line.first() != "page"; });
    QCOMPARE(pages.size(), 3);
    QCOMPARE(pages[0].last(), QByteArray("whole"));
    QCOMPARE(pages[2], (QByteArrayList{"page", "3", "0", "0", "unreadable"}));
}

void TestItemList::pagesComeInOrderFromSeveralThreads()
{
    // Pages of very different length: threads overtake one another by far.
    PdfBuilder pdf;
    const int count = 300;
    for (int page = 1; page <= count; ++page) {
        std::string content;
        for (int line = 0; line < (page % 16 == 0 ? 2000 : 1); ++line) {
            content += textAt(1 + line % 800, "Page no. " + std::to_string(page));
        }
        pdf.addPage(content);
    }
    ExportRun run;
    QCOMPARE(run.call({"-items", run.save(pdf)}), 0);
    int page = 0;
    for (const QByteArrayList &line : linesOf(run.output())) {
        if (line.first() == "page") {
            QCOMPARE(line[1].toInt(), ++page);
        } else if (line.first() == "item") {
            QCOMPARE(line[1].toInt(), page);
            QCOMPARE(line[6], "Page no. " + QByteArray::number(page));
        } else {
            QCOMPARE(line, (QByteArrayList{"end", QByteArray::number(count)}));
        }
    }
    QCOMPARE(page, count);
}

void TestItemList::anyNumberOfThreadsGivesTheSameItems()
{
    ExportRun run;
    const QString input = run.save(pagesOf(60, 4));
    QCOMPARE(run.call({"-items", "-threads", "1", input}), 0);
    const QByteArray items = run.output();
    for (const char *threads : {"2", "7", "1000", "99999999999999999999"}) {
        QCOMPARE(run.call({"-items", "-threads", threads, input}), 0);
        QCOMPARE(run.output(), items);
    }
}

void TestItemList::threadsRunAheadOfTheirTurnByABoundedStretch_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<qulonglong>("waiting");
    QTest::addColumn<bool>("may");
    QTest::newRow("the page that is due") << 100 << 0ULL << true;
    QTest::newRow("the page that is due, whatever waits") << 100 << (1ULL << 40U) << true;
    QTest::newRow("the next page") << 101 << 0ULL << true;
    QTest::newRow("the last page in reach") << 163 << 0ULL << true;
    QTest::newRow("a page out of reach") << 164 << 0ULL << false;
    QTest::newRow("the next page while little waits") << 101 << (16ULL << 20U) - 1 << true;
    QTest::newRow("the next page while much waits") << 101 << (16ULL << 20U) << false;
}

void TestItemList::threadsRunAheadOfTheirTurnByABoundedStretch()
{
    QFETCH(int, position);
    QFETCH(qulonglong, waiting);
    QFETCH(bool, may);
    QCOMPARE(tools::mayRunAhead(position, 100, std::size_t(waiting)), may);
}

void TestItemList::whoWaitsIsLetGoWhenThePagesWillNotCome()
{
    tools::ItemStream stream;
    stream.begin(1, 1000);
    stream.await(0);
    std::thread ahead([&stream] { stream.await(64); });
    stream.abandon();
    ahead.join();
}

void TestItemList::nothingButItemsIsWritten()
{
    ExportRun run;
    const QString input = run.save(pagesOf(3), "page_pg_0001.htm");
    QCOMPARE(run.call({"-items", input}), 0);
    QCOMPARE(run.written(), QStringList{"page_pg_0001.htm"});
}

void TestItemList::unreadableInputGivesNoLine_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("missing") << QByteArray();
    QTest::newRow("no PDF") << QByteArray("some text");
    QTest::newRow("no pages") << QByteArray::fromStdString(PdfBuilder().build());
}

void TestItemList::unreadableInputGivesNoLine()
{
    QFETCH(QByteArray, content);
    ExportRun run;
    if (!content.isEmpty()) {
        QFile file(run.path("in.pdf"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), content.size());
    }
    QCOMPARE(run.call({"-items", run.path("in.pdf")}), 1);
    QCOMPARE(run.output(), QByteArray());
    QVERIFY(run.errors().contains("in.pdf: "));
}

void TestItemList::wrongUsageIsStatusTwo_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("no input") << QStringList{"-items"};
    QTest::newRow("two files") << QStringList{"-items", "a", "b"};
    QTest::newRow("no thread") << QStringList{"-items", "-threads", "0", "a"};
    QTest::newRow("threads that are no number") << QStringList{"-items", "-threads", "two", "a"};
    QTest::newRow("threads without a number") << QStringList{"-items", "a", "-threads"};
    QTest::newRow("both actions") << QStringList{"-items", "-htmlformat", "a", "b"};
    QTest::newRow("an empty name") << QStringList{"-items", ""};
}

void TestItemList::wrongUsageIsStatusTwo()
{
    QFETCH(QStringList, arguments);
    ExportRun run;
    QCOMPARE(run.call(arguments), 2);
    QCOMPARE(run.errors().count('\n'), 1);
    QCOMPARE(run.output(), QByteArray());
}

void TestItemList::aClosedReaderEndsItQuietly()
{
    ExportRun run;
    const QString input = run.save(pagesOf(200, 20));
    QProcess process;
    process.setChildProcessModifier([] {
        int ends[2];
        if (::pipe(ends) == 0) {
            ::close(ends[0]);
            ::dup2(ends[1], STDOUT_FILENO);
        }
    });
    process.start(QUORLIN_BIN_DIR "/pagexport", {"-items", input});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 1);
    QCOMPARE(process.readAllStandardError(), QByteArray());
    QCOMPARE(run.written(), QStringList());
}

void TestItemList::aFullDiskIsNamed()
{
    ExportRun run;
    const QString input = run.save(pagesOf(200, 20));
    QProcess process; // a limit on file sizes fails a write as a full disk does
    process.setStandardOutputFile(run.path("list"));
    process.setChildProcessModifier([] {
        const rlimit limit{2000, 2000};
        setrlimit(RLIMIT_FSIZE, &limit);
    });
    process.start(QUORLIN_BIN_DIR "/pagexport", {"-items", input});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 1);
    QCOMPARE(process.readAllStandardError(),
             QByteArray("pagexport: standard output: cannot be written: File too large\n"));
}

void TestItemList::closedStandardOutputIsAnError()
{
    ExportRun run;
    const QByteArray before = QByteArray::fromStdString(pagesOf(2).build());
    const QString input = run.save(pagesOf(2));
    QProcess process;
    process.setChildProcessModifier([] { ::close(STDOUT_FILENO); });
    process.start(QUORLIN_BIN_DIR "/pagexport", {"-items", input});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 1);
    QVERIFY(process.readAllStandardError().contains("standard output: cannot be written"));
    QCOMPARE(run.content("in.pdf"), before);
}

void TestItemList::anInputThatChangedBeforeIsRefused()
{
    QFETCH(Change, change);
    ExportRun run;
    const QString input = run.save(pagesOf(3));
    QCOMPARE(run.run(input), 0);
    const QString identity = identityText(input);
    changeFile(input, change);
    for (const QStringList &arguments :
         {QStringList{"-items", input}, QStringList{"-htmlformat", input, run.indexPath()}}) {
        QProcess process;
        process.setProcessEnvironment(environmentWith(identity));
        process.start(QUORLIN_BIN_DIR "/pagexport", arguments);
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 1);
        QCOMPARE(process.readAllStandardError(),
                 "pagexport: " + input.toUtf8() +
                     (change == Change::removed ? ": No such file or directory\n"
                                                : ": changed since its pages were counted\n"));
        QCOMPARE(process.readAllStandardOutput(), QByteArray());
    }
    // Page files of an earlier export must never pass for this one's.
    QCOMPARE(run.written(), QStringList());
}

void TestItemList::anInputThatChangesMeanwhileIsNoticed()
{
    QFETCH(Change, change);
    ExportRun run;
    const QString input = run.save(pagesOf(40));
    ChangingSink sink(input, change);
    tools::ExportArguments arguments;
    arguments.input = input.toStdString();
    tools::ExportJob job(arguments, tools::InputFile(arguments.input), sink);
    try {
        job.run();
    } catch (const tools::ToolError &) {
        QVERIFY(change == Change::truncated || change == Change::rewritten);
    }
    QVERIFY_EXCEPTION_THROWN(job.checkInput(), tools::InputChanged);
}

void TestItemList::aListOfAnInputThatChangesHasNoEnd()
{
    QFETCH(Change, change);
    ExportRun run;
    const QString input = run.save(pagesOf(400, 50)); // far more items than a pipe holds
    QProcess process;
    process.setProcessEnvironment(environmentWith(identityText(input)));
    process.start(QUORLIN_BIN_DIR "/pagexport", {"-items", input});
    QVERIFY(process.waitForReadyRead());
    changeFile(input, change);
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 1);
    QVERIFY(process.readAllStandardError().endsWith("pagexport: " + input.toUtf8() +
                                                    ": changed since its pages were counted\n"));
    const QByteArray output = process.readAllStandardOutput();
    QVERIFY(output.startsWith("page\t1\t"));
    QVERIFY(!output.contains("\nend\t"));
}

void TestItemList::anExportOfAnInputThatChangesLeavesNothing()
{
    ExportRun run;
    const QString input = run.save(pagesOf(3000, 10));
    QProcess process;
    process.setProcessEnvironment(environmentWith(identityText(input)));
    process.start(QUORLIN_BIN_DIR "/pagexport", {"-htmlformat", input, run.indexPath()});
    QVERIFY(process.waitForStarted());
    QTRY_VERIFY(process.state() == QProcess::NotRunning || !run.written().isEmpty());
    const auto tool = pid_t(process.processId());
    QVERIFY2(tool > 0, "the export was over before its input could change");
    ::kill(tool, SIGSTOP);
    changeFile(input, Change::replaced);
    ::kill(tool, SIGCONT);
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 1);
    QCOMPARE(process.readAllStandardError(),
             "pagexport: " + input.toUtf8() + ": changed since its pages were counted\n");
    QCOMPARE(run.written(), QStringList());
}

void TestItemList::theNotedInputIsTaken()
{
    ExportRun run;
    const QString input = run.save(pagesOf(3));
    for (const QString &identity : {identityText(input), QString("")}) {
        QProcess process;
        process.setProcessEnvironment(environmentWith(identity));
        process.start(QUORLIN_BIN_DIR "/pagexport", {"-items", input});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 0);
        QVERIFY(process.readAllStandardOutput().endsWith("\nend\t3\n"));
    }
}

void TestItemList::anUnreadableIdentityIsWrongUsage()
{
    ExportRun run;
    const QString input = run.save(pagesOf(3));
    QCOMPARE(run.run(input), 0);
    QProcess process;
    process.setProcessEnvironment(environmentWith("none"));
    process.start(QUORLIN_BIN_DIR "/pagexport", {"-htmlformat", input, run.indexPath()});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 2);
    QCOMPARE(process.readAllStandardError(),
             QByteArray("pagexport: QUORLIN_INPUT_IDENTITY is not a valid identity: none\n"));
    QCOMPARE(run.written().size(), 4); // nothing was touched
}

QUORLIN_TEST(TestItemList)
#include "test_item_list.moc"
