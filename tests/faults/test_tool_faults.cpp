#include "tests/faults/statements.h"
#include "tests/support/fake_batch.h"
#include "tests/support/room.h"
#include "tests/support/signals.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <cstring>

#include <sys/file.h>
#include <sys/mount.h>
#include <sys/stat.h>

using quorlin::test::pagesOf;
using quorlin::test::statementPdf;
using quorlin::test::writeFile;

namespace {

const QString binder = QStringLiteral(QUORLIN_BIN_DIR "/pagebinder");
const QString exporter = QStringLiteral(QUORLIN_BIN_DIR "/pagexport");

struct Outcome
{
    int status = -1;
    QStringList messages;
};

QStringList numbered(const QString &text, int count)
{
    QStringList texts;
    for (int i = 1; i <= count; ++i) {
        texts.append(text + QString::number(i));
    }
    return texts;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

mode_t modeOf(const QString &path)
{
    struct stat status = {};
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 0777U : 0;
}

/// Runs a shell script with @p arguments as "$1", "$2" ...
Outcome shell(const QString &script, const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral("/bin/sh"),
                  QStringList{QStringLiteral("-c"), script, QStringLiteral("sh")} + arguments);
    process.waitForFinished(120000);
    Outcome outcome;
    outcome.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    outcome.messages = QString::fromUtf8(process.readAllStandardError())
                           .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    return outcome;
}

Outcome run(const QString &tool, const QStringList &arguments)
{
    return shell(QStringLiteral("exec \"$@\""), QStringList{tool} + arguments);
}

/// Starts @p tool and sends it @p signal after so many microseconds.
void interrupt(const QString &tool, const QStringList &arguments, int signal, int microseconds)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedOutputChannel);
    process.start(tool, arguments);
    process.waitForStarted();
    ::usleep(useconds_t(microseconds));
    sendSignal(process, signal);
    process.waitForFinished(60000);
}

} // namespace

/// The tools alone, as processes: what they leave when they come to harm.
class TestToolFaults : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aStoppedMergeLeavesNothing();
    void aKilledMergeLeavesNoPartialOutput();
    void theNextMergeRemovesWhatAKilledOneLeft();
    void anUnfinishedOutputOfALivingMergeIsLeftAlone();
    void anUnfinishedOutputOfAnotherUserIsLeftAlone();
    void everySignalCleansUp_data();
    void everySignalCleansUp();
    void aStoppedExportIsNeverTakenForAWholeOne();
    void theNextExportRemovesWhatAnotherLeft();
    void aFailedExportLeavesNoOlderPages_data();
    void aFailedExportLeavesNoOlderPages();
    void aFullDiskLeavesNothing_data();
    void aFullDiskLeavesNothing();
    void anOlderOutputSurvivesAFailedMerge();
    void unwritablePlacesAreRefused_data();
    void unwritablePlacesAreRefused();
    void plantedLinksAreReplacedNotFollowed();
    void devicesAndPipesAreNeverReplaced_data();
    void devicesAndPipesAreNeverReplaced();
    void aFolderUnderAPageFilesNameFailsTheExport();
    void theInputIsNeverWritten_data();
    void theInputIsNeverWritten();
    void pagesAreForTheirOwnerOnly();
    void outputsFollowTheUmask_data();
    void outputsFollowTheUmask();
    void messagesAreOneLineEach();

private:
    QString path(const char *name) const { return folder->filePath(QLatin1String(name)); }
    QStringList entries() const;
    QStringList merge(const QString &input, const QString &range, const QString &output) const
    {
        return {input, QStringLiteral("-merge"), range, QStringLiteral("-outfile"), output};
    }
    QStringList exportOf(const QString &input) const
    {
        return {QStringLiteral("-htmlformat"), input, path("out/split.xml")};
    }

    std::unique_ptr<QTemporaryDir> folder;
    QByteArray content;
};

void TestToolFaults::init()
{
    folder = std::make_unique<QTemporaryDir>();
    QDir().mkpath(path("out"));
    content = statementPdf(numbered(QStringLiteral("A"), 300));
    writeFile(path("in.pdf"), content);
}

void TestToolFaults::cleanup()
{
    QCOMPARE(contentOf(path("in.pdf")), content);
    folder.reset();
}

QStringList TestToolFaults::entries() const
{
    return QDir(path("out"))
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

void TestToolFaults::aStoppedMergeLeavesNothing()
{
    for (int step = 0; step < 40; ++step) {
        interrupt(binder, merge(path("in.pdf"), QStringLiteral("1-300"), path("out/q.pdf")),
                  SIGTERM, step * 500);
        const QStringList left = entries();
        QVERIFY2(left.isEmpty() || left == QStringList{QStringLiteral("q.pdf")},
                 qPrintable(left.join(QLatin1Char(' '))));
        if (!left.isEmpty()) {
            QCOMPARE(pagesOf(path("out/q.pdf")), 300);
            QVERIFY(QFile::remove(path("out/q.pdf")));
        }
    }
}

void TestToolFaults::aKilledMergeLeavesNoPartialOutput()
{
    for (int step = 0; step < 40; ++step) {
        interrupt(binder, merge(path("in.pdf"), QStringLiteral("1-300"), path("out/q.pdf")),
                  SIGKILL, step * 500);
        // Nobody can clean up after SIGKILL: a hidden file may be left, never half an output.
        if (QFile::exists(path("out/q.pdf"))) {
            QCOMPARE(pagesOf(path("out/q.pdf")), 300);
            QVERIFY(QFile::remove(path("out/q.pdf")));
        }
    }
    const QStringList left = entries();
    for (const QString &name : left) {
        QVERIFY2(name.startsWith(QLatin1Char('.')), qPrintable(name));
    }
}

void TestToolFaults::theNextMergeRemovesWhatAKilledOneLeft()
{
    const QString user = QString::number(::geteuid());
    for (const char *number : {"0", "1", "7"}) {
        writeFile(path("out/.pagebinder-") + user + QLatin1Char('-') + QLatin1String(number) +
                      QStringLiteral(".part"),
                  "unfinished");
    }
    writeFile(path("out/.pagebinder-notes.part"), "not an unfinished output");
    for (int step = 0; step < 20; ++step) {
        interrupt(binder, merge(path("in.pdf"), QStringLiteral("1-300"), path("out/q.pdf")),
                  SIGKILL, step * 500);
        QFile::remove(path("out/q.pdf"));
    }
    QCOMPARE(run(binder, merge(path("in.pdf"), QStringLiteral("2"), path("out/q.pdf"))).status, 0);
    // The last one lies behind free names, where a run looks only after more than four are taken.
    QFile::remove(path("out/.pagebinder-") + user + QStringLiteral("-7.part"));
    QCOMPARE(entries(),
             QStringList({QStringLiteral(".pagebinder-notes.part"), QStringLiteral("q.pdf")}));
}

void TestToolFaults::anUnfinishedOutputOfALivingMergeIsLeftAlone()
{
    const QString name =
        path("out/.pagebinder-") + QString::number(::geteuid()) + QStringLiteral("-0.part");
    writeFile(name, "being written");
    QFile living(name);
    QVERIFY(living.open(QIODevice::ReadWrite));
    QCOMPARE(::flock(living.handle(), LOCK_EX), 0);
    QCOMPARE(run(binder, merge(path("in.pdf"), QStringLiteral("2"), path("out/q.pdf"))).status, 0);
    QCOMPARE(contentOf(name), QByteArray("being written"));
    QCOMPARE(pagesOf(path("out/q.pdf")), 1);
    living.close();
    QCOMPARE(run(binder, merge(path("in.pdf"), QStringLiteral("2"), path("out/q.pdf"))).status, 0);
    QCOMPARE(entries(), QStringList(QStringLiteral("q.pdf")));
}

void TestToolFaults::anUnfinishedOutputOfAnotherUserIsLeftAlone()
{
    const QString user = QString::number(::geteuid());
    const QByteArray link =
        QFile::encodeName(path("out/.pagebinder-") + user + QStringLiteral("-0.part"));
    QCOMPARE(::symlink("/etc/passwd", link.constData()), 0);
    const QByteArray foreign =
        QFile::encodeName(path("out/.pagebinder-") + user + QStringLiteral("-1.part"));
    writeFile(QFile::decodeName(foreign), "another user's");
    if (::geteuid() == 0) {
        QCOMPARE(::chown(foreign.constData(), 12345, 12345), 0);
    }
    QCOMPARE(run(binder, merge(path("in.pdf"), QStringLiteral("2"), path("out/q.pdf"))).status, 0);
    struct stat status = {};
    QCOMPARE(::lstat(link.constData(), &status), 0);
    QCOMPARE(::lstat(foreign.constData(), &status), ::geteuid() == 0 ? 0 : -1);
    QCOMPARE(pagesOf(path("out/q.pdf")), 1);
}

void TestToolFaults::everySignalCleansUp_data()
{
    QTest::addColumn<int>("signal");
    QList<int> signalsToTry = {SIGTERM, SIGINT,    SIGHUP,  SIGQUIT, SIGUSR1, SIGUSR2,
                               SIGALRM, SIGVTALRM, SIGPROF, SIGXCPU, SIGTRAP, SIGSYS};
#ifndef QUORLIN_SANITIZED // the sanitizers report these themselves
    signalsToTry += {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT};
#endif
    for (const int signal : std::as_const(signalsToTry)) {
        QTest::addRow("%s", ::strsignal(signal)) << signal;
    }
}

void TestToolFaults::everySignalCleansUp()
{
    QFETCH(int, signal);
    for (int step = 1; step <= 6; ++step) {
        interrupt(exporter, exportOf(path("in.pdf")), signal, step * 3000);
        const QStringList left = entries();
        QVERIFY2(left.isEmpty() || left.contains(QStringLiteral("split.xml")),
                 qPrintable(left.join(QLatin1Char(' '))));
        QVERIFY(!left.contains(QStringLiteral("split.xml.part")));
        QDir(path("out")).removeRecursively();
        QVERIFY(QDir().mkpath(path("out")));
        interrupt(binder, merge(path("in.pdf"), QStringLiteral("1-300"), path("out/q.pdf")), signal,
                  step * 1000);
        const QStringList merged = entries();
        QVERIFY2(merged.isEmpty() || merged == QStringList(QStringLiteral("q.pdf")),
                 qPrintable(merged.join(QLatin1Char(' '))));
        QFile::remove(path("out/q.pdf"));
    }
}

void TestToolFaults::aStoppedExportIsNeverTakenForAWholeOne()
{
    for (const int signal : {SIGTERM, SIGKILL}) {
        for (int step = 0; step < 20; ++step) {
            interrupt(exporter, exportOf(path("in.pdf")), signal, step * 1000);
            // The index comes last: where it stands, every page file is whole.
            if (QFile::exists(path("out/split.xml"))) {
                QCOMPARE(entries().size(), 301);
                QVERIFY(QFile::remove(path("out/split.xml")));
            } else if (signal == SIGTERM) {
                QCOMPARE(entries(), QStringList());
            }
        }
    }
}

void TestToolFaults::theNextExportRemovesWhatAnotherLeft()
{
    QCOMPARE(run(exporter, exportOf(path("in.pdf"))).status, 0);
    QCOMPARE(entries().size(), 301);
    writeFile(path("out/split_pg_0001.txt"), "not of an export");
    writeFile(path("small.pdf"), statementPdf({QStringLiteral("B")}));
    QCOMPARE(run(exporter, exportOf(path("small.pdf"))).status, 0);
    QCOMPARE(entries(),
             QStringList({QStringLiteral("split.xml"), QStringLiteral("split_pg_0001.htm"),
                          QStringLiteral("split_pg_0001.txt")}));
    QVERIFY(contentOf(path("out/split_pg_0001.htm")).contains(">B</span>"));
}

void TestToolFaults::aFailedExportLeavesNoOlderPages_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::newRow("no PDF") << QByteArray("no PDF");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("cut short") << statementPdf({QStringLiteral("B")}).left(60);
    QTest::newRow("missing") << QByteArray("missing");
}

void TestToolFaults::aFailedExportLeavesNoOlderPages()
{
    QFETCH(QByteArray, input);
    QCOMPARE(run(exporter, exportOf(path("in.pdf"))).status, 0);
    if (input != "missing") {
        writeFile(path("bad.pdf"), input);
    }
    const Outcome outcome = run(exporter, exportOf(path("bad.pdf")));
    QCOMPARE(outcome.status, 1);
    QVERIFY(!outcome.messages.isEmpty());
    QVERIFY(outcome.messages.last().contains(path("bad.pdf")));
    QVERIFY(entries().isEmpty());
}

void TestToolFaults::aFullDiskLeavesNothing_data()
{
    QTest::addColumn<bool>("merging");
    QTest::addColumn<bool>("realDisk");
    QTest::newRow("merge, file size limit") << true << false;
    QTest::newRow("merge, full disk") << true << true;
    QTest::newRow("export, full disk") << false << true;
}

void TestToolFaults::aFullDiskLeavesNothing()
{
    QFETCH(bool, merging);
    QFETCH(bool, realDisk);
#ifdef Q_OS_LINUX
    const QByteArray place = QFile::encodeName(path("out"));
    const bool mounted =
        realDisk && ::mount("tmpfs", place.constData(), "tmpfs", 0, "size=32k") == 0;
    if (realDisk && !mounted) {
        return; // only root can make a small disk; the size limit stands in for it
    }
#else
    const bool mounted = false;
    if (realDisk) {
        return;
    }
#endif
    const QString tool = merging ? binder : exporter;
    const QStringList arguments =
        merging ? merge(path("in.pdf"), QStringLiteral("1-300"), path("out/q.pdf"))
                : exportOf(path("in.pdf"));
    const QString limit = realDisk ? QString() : QStringLiteral("ulimit -f 16; ");
    const Outcome outcome =
        shell(limit + QStringLiteral("exec \"$@\""), QStringList{tool} + arguments);
    const QStringList left = entries();
#ifdef Q_OS_LINUX
    if (mounted) {
        ::umount(place.constData());
    }
#else
    Q_UNUSED(mounted);
#endif
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.messages.size(), 1);
    QVERIFY(left.isEmpty());
}

void TestToolFaults::anOlderOutputSurvivesAFailedMerge()
{
    QCOMPARE(run(binder, merge(path("in.pdf"), QStringLiteral("1-2"), path("out/q.pdf"))).status,
             0);
    const QByteArray before = contentOf(path("out/q.pdf"));
    const Outcome outcome =
        run(binder, merge(path("in.pdf"), QStringLiteral("299-301"), path("out/q.pdf")));
    QCOMPARE(outcome.status, 1);
    QCOMPARE(contentOf(path("out/q.pdf")), before);
    QCOMPARE(entries().size(), 1);
}

void TestToolFaults::unwritablePlacesAreRefused_data()
{
    QTest::addColumn<QString>("output");
    QTest::newRow("missing folder") << "none/q.pdf";
    QTest::newRow("file as folder") << "in.pdf/q.pdf";
    QTest::newRow("folder as file") << "out";
    QTest::newRow("folder with a slash") << "out/";
    // Takes no files from anyone, not even from root, whom modes do not stop.
    QTest::newRow("read-only") << "/proc/q.pdf";
}

void TestToolFaults::unwritablePlacesAreRefused()
{
    QFETCH(QString, output);
    const QString place = QDir(folder->path()).absoluteFilePath(output);
    const Outcome merged = run(binder, merge(path("in.pdf"), QStringLiteral("1"), place));
    QVERIFY(merged.status == 1 || merged.status == 2);
    QCOMPARE(merged.messages.size(), 1);
    const Outcome exported = run(exporter, {QStringLiteral("-htmlformat"), path("in.pdf"), place});
    if (output != QLatin1String("out")) {
        QVERIFY(exported.status == 1 || exported.status == 2);
        QCOMPARE(exported.messages.size(), 1);
    }
    QVERIFY(entries().isEmpty());
}

void TestToolFaults::plantedLinksAreReplacedNotFollowed()
{
    writeFile(path("victim"), "precious");
    for (const char *name : {"out/split.xml", "out/split.xml.part", "out/split_pg_0001.htm",
                             "out/split_pg_0300.htm", "out/q.pdf"}) {
        QVERIFY(QFile::link(path("victim"), path(name)));
    }
    QCOMPARE(run(exporter, exportOf(path("in.pdf"))).status, 0);
    QCOMPARE(run(binder, merge(path("in.pdf"), QStringLiteral("1"), path("out/q.pdf"))).status, 0);
    QCOMPARE(contentOf(path("victim")), "precious");
    for (const char *name :
         {"out/split.xml", "out/split_pg_0001.htm", "out/split_pg_0300.htm", "out/q.pdf"}) {
        QVERIFY(!QFileInfo(path(name)).isSymLink());
    }
}

void TestToolFaults::devicesAndPipesAreNeverReplaced_data()
{
    QTest::addColumn<QString>("kind");
    for (const char *kind : {"pipe", "link to a device", "link to an open file"}) {
        QTest::newRow(kind) << kind;
    }
}

void TestToolFaults::devicesAndPipesAreNeverReplaced()
{
    QFETCH(QString, kind);
    const auto plant = [&kind](const QString &name) {
        const QByteArray file = QFile::encodeName(name);
        return kind == QLatin1String("pipe")
                   ? ::mkfifo(file.constData(), 0600)
                   : ::symlink(kind == QLatin1String("link to a device") ? "/dev/null"
                                                                         : "/proc/self/fd/1",
                               file.constData());
    };
    const auto modeOf = [](const QString &name) {
        struct stat status = {};
        return ::lstat(QFile::encodeName(name).constData(), &status) == 0 ? status.st_mode : 0;
    };
    for (const char *name : {"out/split.xml", "out/split_pg_0001.htm", "out/q.pdf"}) {
        QCOMPARE(plant(path(name)), 0);
        const auto before = modeOf(path(name));
        const bool isMerge = QString::fromLatin1(name).endsWith(QLatin1String("q.pdf"));
        const Outcome outcome =
            isMerge ? run(binder, merge(path("in.pdf"), QStringLiteral("1"), path(name)))
                    : run(exporter, exportOf(path("in.pdf")));
        QCOMPARE(outcome.status, 1);
        QCOMPARE(outcome.messages.size(), 1);
        QCOMPARE(modeOf(path(name)), before);
        QVERIFY(QFile::remove(path(name)));
    }
    QCOMPARE(entries(), QStringList());
}

void TestToolFaults::aFolderUnderAPageFilesNameFailsTheExport()
{
    QVERIFY(QDir().mkdir(path("out/split_pg_0007.htm")));
    const Outcome outcome = run(exporter, exportOf(path("in.pdf")));
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.messages.size(), 1);
    QCOMPARE(entries(), QStringList{QStringLiteral("split_pg_0007.htm")});
}

void TestToolFaults::theInputIsNeverWritten_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("same path") << "same";
    QTest::newRow("hard link") << "hard";
    QTest::newRow("symbolic link") << "symbolic";
}

void TestToolFaults::theInputIsNeverWritten()
{
    QFETCH(QString, kind);
    QString output = path("in.pdf");
    if (kind == QLatin1String("hard")) {
        output = path("out/split_pg_0001.htm");
        QCOMPARE(::link(QFile::encodeName(path("in.pdf")).constData(),
                        QFile::encodeName(output).constData()),
                 0);
    } else if (kind == QLatin1String("symbolic")) {
        output = path("out/split_pg_0001.htm");
        QVERIFY(QFile::link(path("in.pdf"), output));
    }
    QCOMPARE(run(binder, merge(path("in.pdf"), QStringLiteral("1"), output)).status, 1);
    QCOMPARE(run(binder,
                 {path("in.pdf"), QStringLiteral("-getinfo"), QStringLiteral("-outfile"), output})
                 .status,
             1);
    const int exported =
        run(exporter, {QStringLiteral("-htmlformat"), path("in.pdf"),
                       kind == QLatin1String("same") ? path("in.pdf") : path("out/split.xml")})
            .status;
    QCOMPARE(exported, 1);
    QCOMPARE(contentOf(path("in.pdf")), content);
}

void TestToolFaults::pagesAreForTheirOwnerOnly()
{
    const QStringList arguments = {QStringLiteral("-htmlformat"), QStringLiteral("-f"),
                                   QStringLiteral("2"),           QStringLiteral("-l"),
                                   QStringLiteral("2"),           path("in.pdf"),
                                   path("out/text.xml")};
    QCOMPARE(
        shell(QStringLiteral("umask 0; exec \"$@\""), QStringList{exporter} + arguments).status, 0);
    QCOMPARE(entries(), QStringList({QStringLiteral("text.xml"), QStringLiteral("text_pg_0001.htm"),
                                     QStringLiteral("text_pg_0001.png")}));
    for (const char *name : {"out/text.xml", "out/text_pg_0001.htm", "out/text_pg_0001.png"}) {
        QCOMPARE(modeOf(path(name)), mode_t(0600));
    }
}

void TestToolFaults::outputsFollowTheUmask_data()
{
    QTest::addColumn<QString>("umask");
    QTest::addColumn<uint>("mode");
    QTest::newRow("022") << "022" << 0644U;
    QTest::newRow("027") << "027" << 0640U;
    QTest::newRow("077") << "077" << 0600U;
    QTest::newRow("002") << "002" << 0664U;
}

void TestToolFaults::outputsFollowTheUmask()
{
    QFETCH(QString, umask);
    QFETCH(uint, mode);
    const QString script = QStringLiteral("umask ") + umask + QStringLiteral("; exec \"$@\"");
    QCOMPARE(shell(script, QStringList{binder} +
                               merge(path("in.pdf"), QStringLiteral("1"), path("out/q.pdf")))
                 .status,
             0);
    QCOMPARE(modeOf(path("out/q.pdf")), mode_t(mode));
}

void TestToolFaults::messagesAreOneLineEach()
{
    const QString name = folder->filePath(QStringLiteral("two\nlines\033[31m\u202e\u009b.pdf"));
    writeFile(name, "no PDF");
    for (const Outcome &outcome : {run(binder, merge(name, QStringLiteral("1"), path("out/q.pdf"))),
                                   run(exporter, exportOf(name))}) {
        QCOMPARE(outcome.status, 1);
        QVERIFY(outcome.messages.size() <= 7);
        for (const QString &message : outcome.messages) {
            QVERIFY(message.startsWith(QLatin1String("page")));
            QVERIFY(!message.contains(QRegularExpression(
                QStringLiteral("[\\x{0000}-\\x{001f}\\x{007f}-\\x{009f}\\x{202a}-\\x{202e}]"))));
        }
    }
}

QUORLIN_TEST(TestToolFaults)
#include "test_tool_faults.moc"
