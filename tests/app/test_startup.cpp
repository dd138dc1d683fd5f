#include "tests/support/room.h"
#include "tests/support/signals.h"
#include "tests/support/text_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using quorlin::test::linesOf;

namespace {

struct Run
{
    int status = -1;
    bool crashed = false;
    QStringList output;
};

} // namespace

class TestStartup : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void theFirstLineNamesTheApplicationFolder();
    void theCurrentFolderIsTheApplicationFolder();
    void onlyThePluginFolderIsSearched();
    void aMissingPluginFolderGivesItsParent();
    void thePluginFolderBringsEveryKindOfPicture();
    void everyKindOfMessageHasItsFormat();
    void loggingRulesDoNotSilenceTheLog();
    void theLogHoldsTheLastRunOnly();
    void theLogCanBeTakenAwayAtAnyTime();
    void withoutDataFolderNothingIsWritten();
    void anUnopenableLogDropsTheMessages();
    void aFatalMessageAbortsWithoutALine();
    void aMessageBeforeTheApplicationIsDropped();
    void theInputOfTheCallerIsForgotten();
    void theProgramShowsItsWindowAndLogs();
    void aSignalLeavesNothingBehind_data();
    void aSignalLeavesNothingBehind();
    void anIgnoredSignalStaysIgnored();

private:
    Run run(const QStringList &arguments, const QString &program = QString(),
            const QString &workingFolder = QStringLiteral("/"));
    QString logPath(const QString &program) const;

    std::unique_ptr<QTemporaryDir> data;
    const QString probe = QStringLiteral(QUORLIN_STARTUP_PROBE);
    const QString probeFolder = QFileInfo(probe).canonicalPath();
};

void TestStartup::init()
{
    data = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(data->path()).mkpath(QStringLiteral("startup_probe")));
    QVERIFY(QDir(data->path()).mkpath(QStringLiteral("quorlin-cleaver")));
    QDir(probeFolder + QStringLiteral("/..")).mkpath(QStringLiteral("Plugins"));
}

QString TestStartup::logPath(const QString &program) const
{
    return data->filePath(program + QStringLiteral("/splitterlog.txt"));
}

Run TestStartup::run(const QStringList &arguments, const QString &program,
                     const QString &workingFolder)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_DATA_HOME"), data->path());
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(workingFolder);
    process.start(program.isEmpty() ? probe : program, arguments);
    process.waitForFinished();
    Run result;
    result.crashed = process.exitStatus() == QProcess::CrashExit;
    result.status = process.exitCode();
    result.output = QString::fromUtf8(process.readAllStandardOutput()).split(QLatin1Char('\n'));
    return result;
}

void TestStartup::theFirstLineNamesTheApplicationFolder()
{
    QCOMPARE(run({}).status, 0);
    QCOMPARE(linesOf(logPath(QStringLiteral("startup_probe"))).value(0),
             QStringLiteral("Debug: Current path: \"%1\"  ").arg(probeFolder));
}

void TestStartup::theCurrentFolderIsTheApplicationFolder()
{
    for (const QString &folder : {QStringLiteral("/"), data->path()}) {
        const Run result = run({}, {}, folder);
        QCOMPARE(result.output.value(0), QStringLiteral("current=") + probeFolder);
        QCOMPARE(result.output.value(3), QStringLiteral("organisation="));
    }
}

void TestStartup::onlyThePluginFolderIsSearched()
{
    QCOMPARE(run({}).output.value(1),
             QStringLiteral("plugins=") +
                 QFileInfo(probeFolder + QStringLiteral("/../Plugins")).absoluteFilePath());
}

void TestStartup::aMissingPluginFolderGivesItsParent()
{
    QVERIFY(QDir(probeFolder + QStringLiteral("/..")).rmdir(QStringLiteral("Plugins")));
    QCOMPARE(run({}).output.value(1),
             QStringLiteral("plugins=") + QFileInfo(probeFolder).absolutePath());
}

void TestStartup::thePluginFolderBringsEveryKindOfPicture()
{
    const QStringList pictures = {QStringLiteral(QUORLIN_ICONS_DIR "/stock-ved.jpg"),
                                  QStringLiteral(QUORLIN_ICONS_DIR "/zoom_in.ico"),
                                  QStringLiteral(QUORLIN_ICONS_DIR "/content32.png")};
    QStringList arguments;
    for (const QString &picture : pictures) {
        arguments.append(QStringLiteral("picture=") + picture);
    }
    // What is built into the libraries is read without any plug-in.
    const QStringList without = run(arguments).output.mid(4, 3);
    const QString folder = probeFolder + QStringLiteral("/../Plugins");
    QVERIFY(QDir().rmdir(folder));
    QVERIFY(QFile::link(QStringLiteral(QUORLIN_BIN_DIR "/../Plugins"), folder));
    const QStringList with = run(arguments).output.mid(4, 3);
    QVERIFY(QFile::remove(folder));
    QCOMPARE(without, QStringList({pictures.at(0) + QStringLiteral(" cannot be read"),
                                   pictures.at(1) + QStringLiteral(" cannot be read"),
                                   pictures.at(2) + QStringLiteral(" is read")}));
    QCOMPARE(with, QStringList({pictures.at(0) + QStringLiteral(" is read"),
                                pictures.at(1) + QStringLiteral(" is read"),
                                pictures.at(2) + QStringLiteral(" is read")}));
}

void TestStartup::everyKindOfMessageHasItsFormat()
{
    run({QStringLiteral("debug=one"), QStringLiteral("info=two"), QStringLiteral("warning=abc"),
         QStringLiteral("critical=four %1"), QString::fromUtf8("debug=grün")});
    const QStringList lines = linesOf(logPath(QStringLiteral("startup_probe")));
    QCOMPARE(lines.sliced(1),
             QStringList({QStringLiteral("Debug: one"), QStringLiteral("Debug: two"),
                          QStringLiteral("Warning: abc"), QStringLiteral("Critical: four %1"),
                          QString::fromUtf8("Debug: grün")}));
    // Every line ends with one line feed, the last one, too.
    const QByteArray log = quorlin::test::readFile(logPath(QStringLiteral("startup_probe")));
    QCOMPARE(log.count('\n'), 6);
    QVERIFY(log.endsWith("grün\n"));
    QVERIFY(!log.contains('\r'));
}

void TestStartup::loggingRulesDoNotSilenceTheLog()
{
    qputenv("QT_LOGGING_RULES", "*.debug=false");
    run({QStringLiteral("debug=one")});
    qunsetenv("QT_LOGGING_RULES");
    QCOMPARE(linesOf(logPath(QStringLiteral("startup_probe"))).size(), 2);
}

void TestStartup::theLogHoldsTheLastRunOnly()
{
    run({QStringLiteral("warning=first")});
    run({QStringLiteral("warning=second")});
    const QStringList lines = linesOf(logPath(QStringLiteral("startup_probe")));
    QCOMPARE(lines.size(), 2);
    QVERIFY(lines.first().startsWith(QLatin1String("Debug: Current path: ")));
    QCOMPARE(lines.last(), QStringLiteral("Warning: second"));
}

void TestStartup::theLogCanBeTakenAwayAtAnyTime()
{
    run({QStringLiteral("warning=before"), QStringLiteral("remove="),
         QStringLiteral("warning=after")});
    QCOMPARE(linesOf(logPath(QStringLiteral("startup_probe"))),
             QStringList({QStringLiteral("Warning: after")}));
}

void TestStartup::withoutDataFolderNothingIsWritten()
{
    QVERIFY(QDir(data->path()).rmdir(QStringLiteral("startup_probe")));
    QCOMPARE(run({QStringLiteral("warning=abc")}).status, 0);
    QCOMPARE(QDir(data->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList({QStringLiteral("quorlin-cleaver")}));
}

void TestStartup::anUnopenableLogDropsTheMessages()
{
    QVERIFY(QDir(data->path()).mkpath(QStringLiteral("startup_probe/splitterlog.txt/x")));
    const Run result = run({QStringLiteral("warning=abc")});
    QCOMPARE(result.status, 0);
    QVERIFY(QFileInfo(logPath(QStringLiteral("startup_probe"))).isDir());
}

void TestStartup::aFatalMessageAbortsWithoutALine()
{
    const Run result = run({QStringLiteral("warning=before"), QStringLiteral("fatal=end")});
    QVERIFY(result.crashed);
    QCOMPARE(result.status, SIGABRT);
    QCOMPARE(linesOf(logPath(QStringLiteral("startup_probe"))).last(),
             QStringLiteral("Warning: before"));
}

void TestStartup::aMessageBeforeTheApplicationIsDropped()
{
    QCOMPARE(run({QStringLiteral("early")}).status, 0);
    QCOMPARE(QDir(data->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name),
             QStringList({QStringLiteral("quorlin-cleaver"), QStringLiteral("startup_probe")}));
    QCOMPARE(linesOf(logPath(QStringLiteral("startup_probe"))).size(), 1);
}

void TestStartup::theInputOfTheCallerIsForgotten()
{
    qputenv("QUORLIN_INPUT_IDENTITY", "1:2:3:4.000000005");
    const Run result = run({});
    qunsetenv("QUORLIN_INPUT_IDENTITY");
    QVERIFY(result.output.contains(QStringLiteral("identity=")));
}

void TestStartup::theProgramShowsItsWindowAndLogs()
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_DATA_HOME"), data->path());
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(QStringLiteral("/"));
    // It has no arguments of its own; what stands there is left alone.
    process.start(QStringLiteral(QUORLIN_BIN_DIR "/quorlin-cleaver"),
                  {QStringLiteral("--frobnicate"), QStringLiteral("/nonexistent/a.pdf")});
    const QString log = logPath(QStringLiteral("quorlin-cleaver"));
    const QString shown = QStringLiteral("Warning: This plugin does not support "
                                         "propagateSizeHints()");
    // The offscreen platform says this of every window that is shown.
    QTRY_VERIFY_WITH_TIMEOUT(linesOf(log).contains(shown), 30000);
    QCOMPARE(process.state(), QProcess::Running);
    QCOMPARE(linesOf(log).first(),
             QStringLiteral("Debug: Current path: \"%1\"  ")
                 .arg(QFileInfo(QStringLiteral(QUORLIN_BIN_DIR)).canonicalFilePath()));
    process.terminate();
    QVERIFY(process.waitForFinished());
}

namespace {

/// The program, run over a temporary folder of its own.
class RunningWindow
{
public:
    explicit RunningWindow(const QString &temporary)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("TMPDIR"), temporary);
        // Where it is missing or open to others, Qt makes a folder of its own below the temporary
        // one.
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime.path());
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(QUORLIN_BIN_DIR "/quorlin-cleaver"), QStringList());
        process.waitForStarted(-1);
    }

    void send(int signal) { QVERIFY(sendSignal(process, signal)); }

    QTemporaryDir runtime; // outlives the process
    QProcess process;
};

QStringList entriesOf(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden |
                                  QDir::System);
}

} // namespace

void TestStartup::aSignalLeavesNothingBehind_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("TERM") << SIGTERM;
    QTest::newRow("HUP") << SIGHUP;
    QTest::newRow("INT") << SIGINT;
    QTest::newRow("QUIT") << SIGQUIT;
    QTest::newRow("USR1") << SIGUSR1;
    QTest::newRow("XCPU") << SIGXCPU;
}

void TestStartup::aSignalLeavesNothingBehind()
{
    QFETCH(int, signal);
    const QTemporaryDir temporary;
    RunningWindow first(temporary.path());
    const auto lockFile = QStringLiteral("quorlin-cleaver.lock");
    QTRY_VERIFY_WITH_TIMEOUT(entriesOf(temporary.path()).contains(lockFile), 60000);
    // A second window works in private folders.
    RunningWindow second(temporary.path());
    QTRY_VERIFY_WITH_TIMEOUT(entriesOf(temporary.path()).size() > 1, 60000);
    second.send(signal);
    QVERIFY(second.process.waitForFinished(-1));
    QCOMPARE(entriesOf(temporary.path()), QStringList(lockFile));
    first.send(signal);
    QVERIFY(first.process.waitForFinished(-1));
    QCOMPARE(entriesOf(temporary.path()), QStringList());
    // Whoever waits for the program sees what ended it.
    for (const QProcess *process : {&first.process, &second.process}) {
        QCOMPARE(process->exitStatus(), QProcess::CrashExit);
        QCOMPARE(process->exitCode(), signal);
    }
}

void TestStartup::anIgnoredSignalStaysIgnored()
{
    const QTemporaryDir temporary;
    const auto before = std::signal(SIGHUP, SIG_IGN); // as nohup does
    RunningWindow window(temporary.path());
    std::signal(SIGHUP, before);
    QTRY_VERIFY_WITH_TIMEOUT(!entriesOf(temporary.path()).isEmpty(), 60000);
    window.send(SIGHUP);
    QVERIFY(!window.process.waitForFinished(500));
    window.send(SIGTERM);
    QVERIFY(window.process.waitForFinished(-1));
    QCOMPARE(entriesOf(temporary.path()), QStringList());
}

QUORLIN_TEST(TestStartup)
#include "test_startup.moc"
