// A stack that a file drives too deep is the file's fault and is said so; any other fault is a
// crash and must be seen as one. Neither leaves a hidden file.

#include "test_pdf.h"
#include "tests/support/room.h"
#include "tests/support/signals.h"
#include "tool_run.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

class PageBinderFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void anOverflowIsTheFilesFault_data();
    void anOverflowIsTheFilesFault();
    void aCrashIsACrash_data();
    void aCrashIsACrash();
    void aFaultSignalFromOutsideIsACrash_data();
    void aFaultSignalFromOutsideIsACrash();
    void aFileThatTakesTooLongIsTheFilesFault();
    void aFileThatNestsTooDeeplyIsNamed();

private:
    void runProbe(QProcess &probe, const QString &kind, const QString &limit = {});

    QTemporaryDir m_folder;
};

void PageBinderFaultsTest::runProbe(QProcess &probe, const QString &kind, const QString &limit)
{
    const QString hidden = m_folder.filePath(QStringLiteral(".hidden"));
    QFile file(hidden);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    const QString script = QStringLiteral("ulimit -c 0; ") + limit + QStringLiteral("exec \"$@\"");
    probe.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script, QStringLiteral("sh"),
                                            QStringLiteral(FAULT_PROBE), kind, hidden});
    QVERIFY(probe.waitForFinished(60000));
    QVERIFY(!QFileInfo::exists(hidden));
}

void PageBinderFaultsTest::anOverflowIsTheFilesFault_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("limit");
    for (const char *kind : {"overflow", "overflow in large steps"}) {
        QTest::addRow("%s", kind) << kind << "";
        QTest::addRow("%s, small stack", kind) << kind << "ulimit -s 300; ";
        // The stack then ends where the address space does.
        QTest::addRow("%s, no limit", kind) << kind << "ulimit -v 1000000; ulimit -s unlimited; ";
    }
}

void PageBinderFaultsTest::anOverflowIsTheFilesFault()
{
    QFETCH(QString, kind);
    QFETCH(QString, limit);
    QProcess probe;
    runProbe(probe, kind, limit);
    QCOMPARE(probe.exitStatus(), QProcess::NormalExit);
    QCOMPARE(probe.exitCode(), 1);
    QCOMPARE(probe.readAllStandardError(),
             QByteArray("pagebinder: input.pdf: its objects are nested too deeply\n"));
}

void PageBinderFaultsTest::aCrashIsACrash_data()
{
    QTest::addColumn<QString>("kind");
    for (const char *kind : {"null pointer", "stray pointer", "read-only memory", "abort"}) {
        QTest::newRow(kind) << kind;
    }
}

void PageBinderFaultsTest::aCrashIsACrash()
{
    QFETCH(QString, kind);
    QProcess probe;
    runProbe(probe, kind);
    QCOMPARE(probe.exitStatus(), QProcess::CrashExit);
    QCOMPARE(probe.readAllStandardError(), QByteArray());
}

void PageBinderFaultsTest::aFaultSignalFromOutsideIsACrash_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGSEGV") << SIGSEGV;
    QTest::newRow("SIGBUS") << SIGBUS;
    QTest::newRow("SIGFPE") << SIGFPE;
}

void PageBinderFaultsTest::aFaultSignalFromOutsideIsACrash()
{
    QFETCH(int, signal);
    const QString input = TestPdf::pages(2000).save(m_folder.path());
    const QString outputs = m_folder.filePath(QStringLiteral("out"));
    QVERIFY(QDir().mkpath(outputs));
    int crashes = 0;
    for (int step = 1; step <= 30; ++step) {
        QProcess tool;
        tool.start(binderPath(), {input, "-merge", "1-2000", "-outfile", outputs + "/q.pdf"});
        QVERIFY(tool.waitForStarted());
        QTest::qSleep(step);
        sendSignal(tool, signal);
        QVERIFY(tool.waitForFinished(60000));
        crashes += tool.exitStatus() == QProcess::CrashExit ? 1 : 0;
        QVERIFY(!tool.readAllStandardError().contains("nested"));
        const QStringList left =
            QDir(outputs).entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot);
        QVERIFY2(left.isEmpty() || left == QStringList("q.pdf"), qPrintable(left.join(' ')));
    }
    QVERIFY(crashes > 0);
}

void PageBinderFaultsTest::aFileThatTakesTooLongIsTheFilesFault()
{
    QProcess probe;
    runProbe(probe, QStringLiteral("endless"), QStringLiteral("ulimit -S -t 1; "));
    QCOMPARE(probe.exitStatus(), QProcess::NormalExit);
    QCOMPARE(probe.exitCode(), 1);
    QCOMPARE(probe.readAllStandardError(), QByteArray("pagebinder: input.pdf: takes too long\n"));
}

void PageBinderFaultsTest::aFileThatNestsTooDeeplyIsNamed()
{
    // With the usual stack the library's own limits come first.
    TestPdf pdf = TestPdf::pages(2, "", "/VP 90 0 R");
    pdf.object(90, QByteArray("[").repeated(3000) + "1" + QByteArray("]").repeated(3000));
    const QString input = pdf.save(m_folder.path(), "deep.pdf");
    const QString output = m_folder.filePath("deep-out.pdf");
    QProcess tool;
    tool.start("/bin/sh", {"-c", "ulimit -s 40; exec \"$@\"", "sh", binderPath(), input, "-merge",
                           "1", "-outfile", output});
    QVERIFY(tool.waitForFinished(60000));
    QCOMPARE(tool.exitStatus(), QProcess::NormalExit);
    QCOMPARE(tool.exitCode(), 1);
    QVERIFY(tool.readAllStandardError().endsWith("deep.pdf: its objects are nested too deeply\n"));
    QVERIFY(!QFileInfo::exists(output));
}

QUORLIN_TEST(PageBinderFaultsTest)
#include "test_faults.moc"
