// A tool that a file has taken over gets nothing. The probe enters the sandbox as the tools do and
// tries each thing; docs/security.md names them all.

#include "tests/support/room.h"
#include "tests/support/text_files.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <set>

using quorlin::test::writeFile;

namespace {

struct Answer
{
    bool hasExited = false;
    int status = -1;
    QString text;
};

const std::set<QString> ordinaryWork = {"work as a tool does", "use threads",
                                        "raise a signal of its own", "read the input",
                                        "map the input"};
/// What Landlock refuses where there is no filter. It came to the network in its version 4.
const std::set<QString> refusedByLandlock = {"read another file",
                                             "read a file of the output folder",
                                             "open the input for writing",
                                             "make a file elsewhere",
                                             "rename over another file",
                                             "rename another file",
                                             "remove another file",
                                             "make a symbolic link",
                                             "make a folder",
                                             "make a pipe with a name",
                                             "run a program",
                                             "open the memory of another process"};

} // namespace

class SandboxTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void ordinaryWorkGoesOn_data();
    void ordinaryWorkGoesOn();
    void everythingElseIsRefused_data();
    void everythingElseIsRefused();
    void landlockAloneHoldsFiles_data();
    void landlockAloneHoldsFiles();
    void outsideTheyWouldBeDone_data();
    void outsideTheyWouldBeDone();
    void sealedNamesCannotBeWritten();
    void callsOfAnotherKindEndTheTool_data();
    void callsOfAnotherKindEndTheTool();
    void aSystemThatGrantsNothingStillWorks();
    void everyRefusalIsNamedInTheManual();

private:
    Answer attempt(const QString &parts, const QString &action) const;
    static QStringList allActions();
    QByteArray secret() const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void SandboxTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(m_folder->path()).mkdir("out"));
    writeFile(m_folder->filePath("in.pdf"), "%PDF-1.7");
    writeFile(m_folder->filePath("secret.txt"), "secret");
    writeFile(m_folder->filePath("out/other.pdf"), "other");
}

Answer SandboxTest::attempt(const QString &parts, const QString &action) const
{
    QProcess probe;
    probe.setStandardInputFile(m_folder->filePath("secret.txt"));
    probe.start(QStringLiteral(SANDBOX_PROBE), {parts, m_folder->path(), action});
    if (!probe.waitForFinished(60000)) {
        return {};
    }
    return {probe.exitStatus() == QProcess::NormalExit, probe.exitCode(),
            QString::fromUtf8(probe.readAllStandardOutput()).trimmed()};
}

QStringList SandboxTest::allActions()
{
    QProcess probe;
    probe.start(QStringLiteral(SANDBOX_PROBE), {"all", ".", "list"});
    probe.waitForFinished(60000);
    return QString::fromUtf8(probe.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
}

QByteArray SandboxTest::secret() const
{
    QFile file(m_folder->filePath("secret.txt"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void SandboxTest::ordinaryWorkGoesOn_data()
{
    QTest::addColumn<QString>("parts");
    QTest::addColumn<QString>("action");
    for (const QString &action : ordinaryWork) {
        for (const char *parts : {"all", "filter", "landlock", "container"}) {
            QTest::addRow("%s, %s", qPrintable(action), parts) << parts << action;
        }
    }
}

void SandboxTest::ordinaryWorkGoesOn()
{
    QFETCH(QString, parts);
    QFETCH(QString, action);
    const Answer answer = attempt(parts, action);
    QCOMPARE(answer.text, QString("allowed"));
    QVERIFY(answer.hasExited);
}

void SandboxTest::everythingElseIsRefused_data()
{
    QTest::addColumn<QString>("parts");
    QTest::addColumn<QString>("action");
    for (const QString &action : allActions()) {
        if (ordinaryWork.count(action) == 0) {
            QTest::addRow("%s", qPrintable(action)) << "all" << action;
            QTest::addRow("%s, filter alone", qPrintable(action)) << "filter" << action;
        }
    }
}

void SandboxTest::everythingElseIsRefused()
{
    QFETCH(QString, parts);
    QFETCH(QString, action);
    const Answer answer = attempt(parts, action);
    QVERIFY(answer.hasExited);
    QCOMPARE(answer.status, 0);
    const bool isClosed = action == "use a descriptor that was left open";
    QCOMPARE(answer.text, QString(isClosed ? "EBADF" : "EPERM"));
    QCOMPARE(secret(), QByteArray("secret"));
    QVERIFY(!QFile::exists(m_folder->filePath("new")));
    QVERIFY(!QFile::exists(m_folder->filePath("out/other")));
}

void SandboxTest::landlockAloneHoldsFiles_data()
{
    QTest::addColumn<QString>("action");
    for (const QString &action : allActions()) {
        if (refusedByLandlock.count(action) != 0) {
            QTest::addRow("%s", qPrintable(action)) << action;
        }
    }
}

void SandboxTest::landlockAloneHoldsFiles()
{
    QFETCH(QString, action);
    if (!QFile::exists("/sys/kernel/security/landlock") &&
        attempt("landlock", "read another file").text == "allowed") {
        QSKIP("this kernel has no Landlock");
    }
    const Answer answer = attempt("landlock", action);
    QVERIFY2(answer.text == "EACCES" || answer.text == "EPERM" || answer.text == "EXDEV",
             qPrintable(answer.text));
    QCOMPARE(secret(), QByteArray("secret"));
}

void SandboxTest::outsideTheyWouldBeDone_data()
{
    everythingElseIsRefused_data();
}

// What is refused anyway would show nothing about the sandbox.
void SandboxTest::outsideTheyWouldBeDone()
{
    // These need rights that not every user and system has, or would change the system.
    static const std::set<QString> privileged = {"mount",
                                                 "leave the namespace",
                                                 "trace another process",
                                                 "read another process",
                                                 "open the memory of another process",
                                                 "load a kernel program",
                                                 "count events",
                                                 "handle page faults",
                                                 "queue calls past the filter",
                                                 "type into the terminal"};
    QFETCH(QString, parts);
    QFETCH(QString, action);
    if (parts != "all" || privileged.count(action) != 0) {
        return;
    }
    const Answer answer = attempt("container", action);
    QVERIFY2(answer.text != "EPERM", qPrintable(action));
}

void SandboxTest::sealedNamesCannotBeWritten()
{
    QVERIFY(!attempt("all", "write into sealed names").hasExited);
}

void SandboxTest::callsOfAnotherKindEndTheTool_data()
{
    QTest::addColumn<QString>("action");
    for (const char *action :
         {"call as another architecture", "call by the other numbers of this architecture"}) {
        QTest::newRow(action) << action;
    }
}

void SandboxTest::callsOfAnotherKindEndTheTool()
{
    QFETCH(QString, action);
    const Answer answer = attempt("all", action);
    if (answer.hasExited && answer.status == 2) {
        QSKIP("this architecture has no other");
    }
    QVERIFY(!answer.hasExited);
    QVERIFY(answer.text.isEmpty());
}

void SandboxTest::aSystemThatGrantsNothingStillWorks()
{
    QCOMPARE(attempt("container", "read another file").text, QString("allowed"));
    QCOMPARE(attempt("container", "use a descriptor that was left open").text, QString("EBADF"));
}

void SandboxTest::everyRefusalIsNamedInTheManual()
{
    QFile file(QStringLiteral(SECURITY_MANUAL));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString manual = QString::fromUtf8(file.readAll()).simplified().toLower();
    for (const QString &action : allActions()) {
        if (ordinaryWork.count(action) == 0) {
            QVERIFY2(manual.contains(action.toLower()), qPrintable(action));
        }
    }
}

QUORLIN_TEST(SandboxTest)
#include "test_refusals.moc"
