#include "pipeline/tool_process.h"
#include "tests/support/room.h"

#include <QElapsedTimer>
#include <QFile>
#include <QPointer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

class TestToolProcess : public QObject
{
    Q_OBJECT

private slots:
    void aFinishedProcessIsReleased();
    void aProcessThatCannotStartIsReleased();
    void muchOutputNeverBlocksATool();
    void runningProcessesEndWithTheirOwner();
    void aDeafProcessIsKilled();
};

void TestToolProcess::aFinishedProcessIsReleased()
{
    quorlin::ToolProcesses tools;
    const QPointer<QProcess> process = tools.create();
    QSignalSpy finished(process, &QProcess::finished);
    process->startCommand(QStringLiteral("true"), QIODevice::ReadWrite);
    QTRY_COMPARE(finished.size(), 1);
    QTRY_VERIFY(process.isNull());
}

void TestToolProcess::aProcessThatCannotStartIsReleased()
{
    quorlin::ToolProcesses tools;
    const QPointer<QProcess> process = tools.create();
    process->startCommand(QStringLiteral("/no/such/tool"), QIODevice::ReadWrite);
    QTRY_VERIFY(process.isNull());
}

void TestToolProcess::muchOutputNeverBlocksATool()
{
    quorlin::ToolProcesses tools;
    QProcess *process = tools.create();
    QSignalSpy finished(process, &QProcess::finished);
    process->startCommand(QStringLiteral("head -c 5000000 /dev/zero"), QIODevice::ReadWrite);
    QTRY_COMPARE(finished.size(), 1);
    QCOMPARE(finished.first().first().toInt(), 0);
}

void TestToolProcess::runningProcessesEndWithTheirOwner()
{
    qint64 id = 0;
    {
        quorlin::ToolProcesses tools;
        QProcess *process = tools.create();
        process->startCommand(QStringLiteral("sleep 600"), QIODevice::ReadWrite);
        QVERIFY(process->waitForStarted());
        id = process->processId();
        QCOMPARE(::kill(pid_t(id), 0), 0);
    }
    QCOMPARE(::kill(pid_t(id), 0), -1);
}

void TestToolProcess::aDeafProcessIsKilled()
{
    const QTemporaryDir folder;
    const QString ready = folder.filePath(QStringLiteral("ready"));
    qint64 id = 0;
    {
        quorlin::ToolProcesses tools;
        QProcess *process = tools.create();
        process->startCommand(
            QStringLiteral("sh -c \"trap '' TERM; touch %1; exec sleep 600\"").arg(ready),
            QIODevice::ReadWrite);
        QVERIFY(process->waitForStarted());
        QTRY_VERIFY(QFile::exists(ready));
        id = process->processId();
    }
    QCOMPARE(::kill(pid_t(id), 0), -1);
}

QUORLIN_TEST(TestToolProcess)
#include "test_tool_process.moc"
