#include "tests/support/process_state.h"
#include "tests/support/quiet.h"
#include "tests/support/room.h"
#include "tests/support/window_bench.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

using quorlin::test::WindowBench;

namespace {

QStringList messages;

void collect(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtDebugMsg) {
        messages.append(message);
    }
}

/// Gathers debug messages while it lives.
class Messages
{
public:
    Messages()
    {
        messages.clear();
        earlier = qInstallMessageHandler(collect);
    }
    ~Messages() { qInstallMessageHandler(earlier); }

private:
    QtMessageHandler earlier = nullptr;
};

} // namespace

class TestPageCount : public QObject
{
    Q_OBJECT

private slots:
    void oneQueryAfterAnother();
    void messagesOfAQuery();
    void answers_data();
    void answers();
    void aQueueGoesOnWithoutAnswer_data();
    void aQueueGoesOnWithoutAnswer();
    void aMissingToolLeavesTheControlsOn();
    void anUnreadableAnswerStopsTheQueue();
    void aStaleAnswerIsTaken();
    void anEmptyQueueEndsAtOnce();
    void aTalkativeToolEnds();
    void removedRowsAreNotWritten();
};

void TestPageCount::oneQueryAfterAnother()
{
    WindowBench bench;
    QStringList files;
    QStringList calls;
    for (const char *name : {"b.pdf", "a.pdf", "c d.pdf"}) {
        files.append(bench.addBatch(QLatin1String(name), {QStringLiteral("A")}));
        calls.append(QStringLiteral("pagebinder [%1] [-getinfo] [-outfile] [%2/fileinfo.txt]")
                         .arg(files.last(), bench.folders.application()));
    }
    bench.addFiles(files);
    QCOMPARE(quorlin::test::toolCalls(bench.folders.application()), calls);
    QVERIFY(quorlin::test::toolsRanOneAtATime(bench.folders.application()));
    QVERIFY(!QFile::exists(bench.folders.application() + QStringLiteral("/fileinfo.txt")));
}

void TestPageCount::messagesOfAQuery()
{
    WindowBench bench;
    const QString file = bench.addBatch(QStringLiteral("a b.pdf"), {QStringLiteral("A"), {}});
    const QString app = bench.folders.application();
    bench.window();
    const Messages guard;
    bench.addFiles({file});
    QCOMPARE(messages,
             QStringList({QLatin1Char('"') +
                              QStringLiteral("\"%1/pagebinder\" \"%2\" -getinfo "
                                             "-outfile \"%1/fileinfo.txt\"")
                                  .arg(app, file) +
                              QStringLiteral("\" "),
                          QStringLiteral("Information file is: \"%1/fileinfo.txt\" ").arg(app),
                          QStringLiteral("Page number is:2.\n")}));
}

void TestPageCount::answers_data()
{
    QTest::addColumn<QByteArray>("orders");
    QTest::addColumn<QString>("cell");
    QTest::addColumn<int>("number");
    QTest::newRow("plain") << QByteArray("info NumberOfPages: 12\n") << "12" << 12;
    QTest::newRow("leading zeros") << QByteArray("info NumberOfPages: 0012\n") << "0012" << 12;
    QTest::newRow("behind other lines")
        << QByteArray("info Title: 9\ninfo NumberOfPages: 3\n") << "3" << 3;
    QTest::newRow("first occurrence")
        << QByteArray("info NumberOfPages: 3\ninfo NumberOfPages: 4\n") << "3" << 3;
    QTest::newRow("no blank") << QByteArray("info NumberOfPages:7x\n") << "7" << 7;
    QTest::newRow("short text") << QByteArray("info nothing\n") << "" << 0;
    QTest::newRow("too large a number")
        << QByteArray("info NumberOfPages: 99999999999\n") << "99999999999" << 0;
}

void TestPageCount::answers()
{
    QFETCH(QByteArray, orders);
    QFETCH(QString, cell);
    QFETCH(int, number);
    WindowBench bench;
    bench.addFiles({bench.folders.addInput(QStringLiteral("a.pdf"), orders)});
    QVERIFY(bench.table()->item(0, 1) != nullptr);
    QCOMPARE(bench.cell(0, 1), cell);
    QCOMPARE(ProcessState::pageCount(bench.window()), number);
}

void TestPageCount::aQueueGoesOnWithoutAnswer_data()
{
    QTest::addColumn<QByteArray>("orders");
    QTest::newRow("the tool refuses the file") << QByteArray("line x\n");
    QTest::newRow("the tool crashes") << QByteArray("info NumberOfPages: 5\ncrash\n");
    QTest::newRow("empty file") << QByteArray();
}

void TestPageCount::aQueueGoesOnWithoutAnswer()
{
    QFETCH(QByteArray, orders);
    WindowBench bench;
    const QString bad = bench.folders.addInput(QStringLiteral("bad.pdf"), orders);
    const QString good = bench.addBatch(QStringLiteral("good.pdf"), {{}, {}});
    bench.addFiles({bad, good});
    QCOMPARE(bench.column(1), QStringList({QString(), QStringLiteral("2")}));
    QVERIFY(bench.table()->item(0, 1) != nullptr);
    QCOMPARE(bench.paneLines(),
             QStringList({QStringLiteral("Loading ") + bad, QStringLiteral("Loading ") + good,
                          QStringLiteral("Finished.")}));
}

void TestPageCount::aMissingToolLeavesTheControlsOn()
{
    WindowBench bench;
    const QString tool = bench.folders.application() + QStringLiteral("/pagebinder");
    QVERIFY(QFile::remove(tool));
    QStringList failures;
    bench.window().toolFailureObserver = [&](const QString &command) { failures.append(command); };
    bench.addFiles({bench.addBatch(QStringLiteral("a.pdf"), {{}}),
                    bench.addBatch(QStringLiteral("b.pdf"), {{}})});
    QCOMPARE(bench.column(1), QStringList(2, QString()));
    QCOMPARE(bench.paneLines().last(), QStringLiteral("Finished."));
    QVERIFY(bench.controlsEnabled());
    QCOMPARE(failures.size(), 2);
    QVERIFY(failures.first().startsWith(QLatin1Char('"') + tool + QLatin1Char('"')));
}

void TestPageCount::anUnreadableAnswerStopsTheQueue()
{
    WindowBench bench;
    // A folder under the file's name exists and cannot be opened, whoever runs the test.
    QVERIFY(QDir().mkpath(bench.folders.application() + QStringLiteral("/fileinfo.txt")));
    bench.window();
    const Messages guard;
    bench.dropFiles({bench.addBatch(QStringLiteral("a.pdf"), {{}})});
    QTRY_VERIFY(messages.contains(QStringLiteral("No information file. ")));
    QVERIFY(settled());
    QVERIFY(bench.paneLines().isEmpty());
    QVERIFY(bench.controlsDisabled());
    QVERIFY(bench.table()->item(0, 1) == nullptr);
}

void TestPageCount::aStaleAnswerIsTaken()
{
    WindowBench bench;
    quorlin::test::writeFile(bench.folders.application() + QStringLiteral("/fileinfo.txt"),
                             "NumberOfPages: 42\n");
    bench.addFiles({bench.folders.addInput(QStringLiteral("a.pdf"), "line x\n"),
                    bench.folders.addInput(QStringLiteral("b.pdf"), "line x\n")});
    QCOMPARE(bench.column(1), QStringList({QStringLiteral("42"), QString()}));
}

void TestPageCount::anEmptyQueueEndsAtOnce()
{
    WindowBench bench;
    bench.window().getpdfpage();
    QCOMPARE(bench.paneLines(), QStringList({QStringLiteral("Finished.")}));
    QVERIFY(bench.controlsEnabled());
}

void TestPageCount::aTalkativeToolEnds()
{
    WindowBench bench;
    bench.addFiles(
        {bench.folders.addInput(QStringLiteral("a.pdf"), "info NumberOfPages: 2\ntalk 1000\n")});
    QCOMPARE(bench.cell(0, 1), QStringLiteral("2"));
}

void TestPageCount::removedRowsAreNotWritten()
{
    WindowBench bench;
    const QString gate = bench.folders.temporary() + QStringLiteral("/gate");
    bench.dropFiles({bench.folders.addInput(
        QStringLiteral("a.pdf"), "info NumberOfPages: 1\nwait " + gate.toUtf8() + "\n")});
    bench.window().setremoveall();
    quorlin::test::writeFile(gate, "");
    QTRY_VERIFY(bench.controlsEnabled());
    QCOMPARE(bench.table()->rowCount(), 0);
}

QUORLIN_TEST(TestPageCount)
#include "test_page_count.moc"
