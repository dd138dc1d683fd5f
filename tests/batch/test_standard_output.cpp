#include "runner_bench.h"
#include "tests/support/room.h"

#include <QTest>

#include <cstdlib>
#include <memory>

#include <fcntl.h>
#include <unistd.h>

/// Where the runner's results go: to a terminal, or to a file that may be full.
class TestStandardOutput : public QObject
{
    Q_OBJECT

private slots:
    void init() { bench = std::make_unique<RunnerBench>(); }

    void aTerminalGetsOneLineThatIsRewritten();
    void theLineTellsTheStep_data();
    void theLineTellsTheStep();
    void aFullOutputIsAnError_data();
    void aFullOutputIsAnError();

private:
    /// A split of @p words whose process is not started yet.
    void prepare(QProcess &process, const QStringList &words) const;
    /// What a terminal gets of a split of @p words; nothing where no terminal can be had.
    QString shownOnATerminal(const QStringList &words) const;

    std::unique_ptr<RunnerBench> bench;
};

void TestStandardOutput::prepare(QProcess &process, const QStringList &words) const
{
    prepareRunner(
        process,
        QStringList{"--position", FakeTools::position(), "--output", "out", "--tools", "tools"} +
            words,
        bench->path(), bench->path("tmp"));
}

QString TestStandardOutput::shownOnATerminal(const QStringList &words) const
{
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    if (terminal < 0 || grantpt(terminal) != 0 || unlockpt(terminal) != 0) {
        return {};
    }
    QProcess process;
    prepare(process, words);
    process.setStandardOutputFile(QString::fromLocal8Bit(ptsname(terminal)), QIODevice::Append);
    process.start();
    const bool ended = process.waitForFinished();
    // What was written comes in pieces; behind the last one stands the end, or an error.
    QByteArray written;
    char buffer[4096];
    for (ssize_t size = 0; ended && (size = ::read(terminal, buffer, sizeof buffer)) > 0;) {
        written.append(buffer, size);
    }
    ::close(terminal);
    return QString::fromUtf8(written);
}

void TestStandardOutput::aTerminalGetsOneLineThatIsRewritten()
{
    const QString shown = shownOnATerminal({bench->input("a.pdf", "A\nB\n")});
    if (shown.isEmpty()) {
        QSKIP("no pseudo-terminal can be had here");
    }
    QVERIFY2(shown.startsWith("[1/1] a.pdf: counting pages\r\033[K"), qPrintable(shown));
    QVERIFY(!shown.contains("Analyzing"));
    QVERIFY2(shown.endsWith("\r\033[KSucceed  " + bench->path("in/a.pdf") +
                            " (2 pages, 2 outputs)\r\n1 of 1 files split.\r\n"),
             qPrintable(shown));
}

void TestStandardOutput::theLineTellsTheStep_data()
{
    QTest::addColumn<QString>("name"); // of an input at which a tool stands still
    QTest::addColumn<QString>("line");
    QTest::newRow("reading") << "hangexport.pdf"
                             << "[1/2] hangexport.pdf: analysing page 0 of 3";
    QTest::newRow("writing") << "hangsecond.pdf"
                             << "[1/2] hangsecond.pdf: writing output 1 of 3";
}

void TestStandardOutput::theLineTellsTheStep()
{
    QFETCH(QString, name);
    QFETCH(QString, line);
    const QString shown =
        shownOnATerminal({"--jobs", "1", "--timeout", "2", bench->input(name, "A\nB\nC\n"),
                          bench->input("z.pdf", "Z\n")});
    if (shown.isEmpty()) {
        QSKIP("no pseudo-terminal can be had here");
    }
    QVERIFY2(shown.contains(line + "\r\033[K"), qPrintable(shown));
}

void TestStandardOutput::aFullOutputIsAnError_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QString>("said");
    QTest::newRow("results") << QStringList{"in/a.pdf"} << "standard output could not be written";
    QTest::newRow("the report") << QStringList{"in/a.pdf", "--report", "-"}
                                << "-: the report could not be written: No space left on device";
    QTest::newRow("a plan") << QStringList{"in/a.pdf", "--dry-run"}
                            << "standard output could not be written";
    QTest::newRow("the help") << QStringList{"--help"} << "standard output could not be written";
}

void TestStandardOutput::aFullOutputIsAnError()
{
    QFETCH(QStringList, words);
    QFETCH(QString, said);
    bench->input("a.pdf", "A\nB\n");
    QProcess process;
    prepare(process, words);
    process.setStandardOutputFile("/dev/full");
    process.start();
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 1);
    QCOMPARE(QString::fromUtf8(process.readAllStandardError()), "quorlin-batch: " + said + "\n");
}

QUORLIN_TEST(TestStandardOutput)
#include "test_standard_output.moc"
