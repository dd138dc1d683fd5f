#include "fake_tools.h"
#include "runner_process.h"
#include "tests/support/room.h"
#include "tests/support/signals.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <cstdlib>
#include <memory>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

/// The runner as its users start it: a process, with tools that fail when told to.
class TestRunner : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void everyGroupBecomesAnOutput_data();
    void everyGroupBecomesAnOutput();
    void aRuleIsTakenFromTheSettings();
    void progressIsPrintedLineByLine();
    void quietLeavesTheProgressOut();
    void oddFileNamesAreSplitToo();
    void everyFailingFileIsNamedWithItsReason();
    void leftoversAreNotTakenForOutputs();
    void aFailedExportLeavesNoOutput();
    void outputsReplacedByAnotherFileAreAFailure();
    void usageFaultsExitWithTwo_data();
    void usageFaultsExitWithTwo();
    void aMissingOutputFolderIsMadeOnlyWhenAsked();
    void missingToolsAreNamed();
    void aToolThatCannotStartFailsEveryFile_data();
    void aToolThatCannotStartFailsEveryFile();
    void aHungToolIsEndedAndTheOthersGoOn();
    void aVanishedOutputFolderFailsEveryFileBehindIt();
    void aSignalEndsToolsAndLeavesNothing_data();
    void aSignalEndsToolsAndLeavesNothing();
    void aReaderThatGoesAwayEndsTheRun();
    void aReaderThatWasNeverThereIsNoticed();
    void neitherHomeNorTemporaryFolderIsNeeded();
    void onlyQtCoreIsLinked();
    void aFileWithoutAnyTextFails();
    void theRunSaysWhatBecomesOfPagesWithoutText_data();
    void theRunSaysWhatBecomesOfPagesWithoutText();
    void pagesThatCouldNotBeReadFailTheirFile();
    void aChangedInputIsNamedAndLeavesNoOutput();
    void rulesWithOddNumbersAreRefused_data();
    void rulesWithOddNumbersAreRefused();
    void theSettingsStayAsTheyAre();
    void jobsLimitTheToolsThatRunAtOnce();
    void runsSideBySideKeepTheirFilesApart();
    void itemsOfAPageAreListed();
    void aPageThatIsNotThereIsAnError();
    void itemsOfAPartOfAPageAreToldApart();
    void helpAndVersionArePrinted();

private:
    QString input(const QString &name, const QByteArray &pages);
    QString content(const QString &output);
    QStringList outputs(const QString &subFolder);
    RunnerResult run(const QStringList &arguments);
    RunnerResult split(const QStringList &files);
    QStringList splitWords(const QStringList &files);

    std::unique_ptr<QTemporaryDir> root;
    std::unique_ptr<FakeTools> tools;
};

void TestRunner::init()
{
    root = std::make_unique<QTemporaryDir>();
    for (const char *folder : {"tools", "in", "out", "tmp"}) {
        QVERIFY(QDir(root->path()).mkdir(QLatin1String(folder)));
    }
    tools = std::make_unique<FakeTools>(root->filePath("tools"));
}

QString TestRunner::input(const QString &name, const QByteArray &pages)
{
    QFile file(root->filePath("in/" + name));
    if (!file.open(QIODevice::WriteOnly)) {
        qFatal("%s", qPrintable(file.errorString()));
    }
    file.write(pages);
    return QStringLiteral("in/") + name;
}

QString TestRunner::content(const QString &output)
{
    QFile file(root->filePath("out/" + output));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList TestRunner::outputs(const QString &subFolder)
{
    return QDir(root->filePath("out/" + subFolder)).entryList(QDir::Files, QDir::Name);
}

RunnerResult TestRunner::run(const QStringList &arguments)
{
    const RunnerResult result = runRunner(arguments, root->path(), root->filePath("tmp"));
    // Whatever happened, nothing stays behind.
    if (!QDir(root->filePath("tmp")).isEmpty()) {
        qFatal("scratch files stay behind");
    }
    return result;
}

QStringList TestRunner::splitWords(const QStringList &files)
{
    return QStringList{"--position", FakeTools::position(), "--output", "out", "--tools", "tools"} +
           files;
}

RunnerResult TestRunner::split(const QStringList &files)
{
    return run(splitWords(files));
}

void TestRunner::everyGroupBecomesAnOutput_data()
{
    QTest::addColumn<QString>("method");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("where the text differs")
        << "1" << QStringList{"1 A f 1-3.pdf", "2 B-C f 4.pdf", "3 A f 5.pdf"};
    QTest::newRow("at every text")
        << "2" << QStringList{"1 A f 1-2.pdf", "2 A f 3.pdf", "3 B-C f 4.pdf", "4 A f 5.pdf"};
    QTest::newRow("the same texts together") << "3" << QStringList{"1 A f.pdf", "2 B-C f.pdf"};
}

void TestRunner::everyGroupBecomesAnOutput()
{
    QFETCH(QString, method);
    QFETCH(QStringList, names);
    const QString file = input("f.pdf", "A\n\nA\nB/C\nA\n");
    const RunnerResult result = split({file, "--method", method});
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(outputs("f"), names);
    QCOMPARE(content("f/" + names.constFirst()), method == "3"   ? QString("A\n\nA\nA\n")
                                                 : method == "1" ? QString("A\n\nA\n")
                                                                 : QString("A\n\n"));
    QVERIFY(result.output.contains("Succeed  " + root->filePath(file) + " (5 pages, " +
                                   QString::number(names.size()) +
                                   " outputs, pages without text: 1)\n"));
    QVERIFY(result.output.endsWith("1 of 1 files split.\n"));
}

void TestRunner::aRuleIsTakenFromTheSettings()
{
    QFile settings(root->filePath("rules.ini"));
    QVERIFY(settings.open(QIODevice::WriteOnly));
    settings.write("[orbi]\nAccount%20number=1\n[Account%20number]\nxpos=100\nypos=50\ntext=\"A, "
                   "1\"\n");
    settings.close();
    const QString file = input("f.pdf", "A\nB\n");
    const RunnerResult result = run({"--rule", "Account number", "--settings", "rules.ini",
                                     "--output", "out", "--tools", "tools", file});
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(outputs("f"), QStringList({"1 A f 1.pdf", "2 B f 2.pdf"}));
    const RunnerResult listed = run({"--list-rules", "--settings", "rules.ini"});
    QCOMPARE(listed.output, "Account number\t100,50\tA, 1\n");
    QCOMPARE(listed.exitCode, 0);
}

void TestRunner::progressIsPrintedLineByLine()
{
    const QString first = input("a.pdf", "A\nB\n");
    const QString second = input("b.pdf", "C\n");
    const RunnerResult result = split({first, second});
    const QString folder = root->path();
    QCOMPARE(result.output, "Conversion Start:\n" + folder +
                                "/in/a.pdf\n"
                                "Analyzing page 1\n"
                                "Analyzing page 2\n"
                                "Generating " +
                                folder + "/out/a/1 A a 1.pdf\n" + "Generating " + folder +
                                "/out/a/2 B a 2.pdf\n" + "Succeed  " + folder +
                                "/in/a.pdf (2 pages, 2 outputs)\n" + folder +
                                "/in/b.pdf\n"
                                "Analyzing page 1\n"
                                "Generating " +
                                folder + "/out/b/1 C b 1.pdf\n" + "Succeed  " + folder +
                                "/in/b.pdf (1 page, 1 output)\n" +
                                "Conversion Finished.\n"
                                "2 of 2 files split.\n");
}

void TestRunner::quietLeavesTheProgressOut()
{
    const RunnerResult result = split({"--quiet", input("a.pdf", "A\nB\n")});
    QCOMPARE(result.output.count('\n'), 2);
    QVERIFY(result.output.startsWith("Succeed  "));
}

void TestRunner::oddFileNamesAreSplitToo()
{
    const QStringList names = {
        "noextension", "UPPER.PDF",     "-f.pdf",  "two  blanks & 'quotes' ü.pdf",
        "%1 100%.pdf", "a<b>&amp;.pdf", "#1?.pdf", "6\" pipe.pdf",
        "a\nb.pdf",    "report.v2.pdf"};
    QStringList words = splitWords({"--"});
    for (const QString &name : names) {
        words.append(input(name, "A\n"));
    }
    const RunnerResult result = run(words);
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(outputs("noextension"), QStringList{"1 A noextension 1.pdf"});
    QCOMPARE(outputs("two  blanks & 'quotes' ü"),
             QStringList{"1 A two  blanks & 'quotes' ü 1.pdf"});
    QCOMPARE(outputs("report"), QStringList{"1 A report 1.pdf"});
    QCOMPARE(outputs("6\" pipe"), QStringList{"1 A 6\" pipe 1.pdf"});
    QCOMPARE(outputs("a\nb"), QStringList{"1 A a\nb 1.pdf"});
    QVERIFY(result.output.endsWith("10 of 10 files split.\n"));
}

void TestRunner::everyFailingFileIsNamedWithItsReason()
{
    const RunnerResult result = split({
        input("good one.pdf", "A\nB\n"),
        input("uncountable.pdf", "A\n"),
        "in/missing.pdf",
        input("unexportable.pdf", "A\n"),
        input("unmergeable.pdf", "A\nB\n"),
        input("halfmerge.pdf", "A\nB\n"),
        input("crashexport.pdf", "A\n"),
        "in",
        input("good two.pdf", "C\n"),
    });
    QCOMPARE(result.exitCode, 1);
    const auto named = [&](const QString &name, const QString &reason) {
        const QRegularExpression line("^quorlin-batch: .*/" + name + ": .*" + reason,
                                      QRegularExpression::MultilineOption);
        return line.match(result.errors).hasMatch();
    };
    QVERIFY2(named("in/uncountable.pdf", "it is locked"), qPrintable(result.errors));
    QVERIFY2(named("in/missing.pdf", "no such file"), qPrintable(result.errors));
    QVERIFY2(named("in/unexportable.pdf", "its fonts are broken"), qPrintable(result.errors));
    QVERIFY2(named("in/unmergeable.pdf", "2 of 2 outputs .*no space is left"),
             qPrintable(result.errors));
    QVERIFY2(named("in/halfmerge.pdf", "1 of 2 outputs .*2 B halfmerge 2.pdf"),
             qPrintable(result.errors));
    QVERIFY2(named("in/crashexport.pdf", "pagexport ended abruptly"), qPrintable(result.errors));
    QVERIFY2(named("in", "it is a folder"), qPrintable(result.errors));
    QVERIFY(!result.errors.contains("quorlin-batch: " + root->filePath("in/good")));
    // One line for each; the tools' own words are not among them.
    QCOMPARE(result.errors.count('\n'), 7);
    QCOMPARE(outputs("good one"), QStringList({"1 A good one 1.pdf", "2 B good one 2.pdf"}));
    QCOMPARE(outputs("good two"), QStringList{"1 C good two 1.pdf"});
    QVERIFY(result.output.endsWith("2 of 9 files split.\n"));
}

void TestRunner::leftoversAreNotTakenForOutputs()
{
    QVERIFY(QDir(root->path()).mkpath("out/unmergeable"));
    QFile leftover(root->filePath("out/unmergeable/1 A unmergeable 1.pdf"));
    QVERIFY(leftover.open(QIODevice::WriteOnly));
    leftover.write("old");
    leftover.close();
    const RunnerResult result = split({input("unmergeable.pdf", "A\n")});
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains("1 of 1 outputs were not written"), qPrintable(result.errors));
    QCOMPARE(content("unmergeable/1 A unmergeable 1.pdf"), "old");
}

void TestRunner::aFailedExportLeavesNoOutput()
{
    const RunnerResult result =
        split({input("a.pdf", "A\n"), input("unexportable.pdf", "X\n"), input("b.pdf", "B\n")});
    QCOMPARE(result.exitCode, 1);
    QVERIFY(outputs("unexportable").isEmpty());
    QCOMPARE(outputs("a"), QStringList{"1 A a 1.pdf"});
    QCOMPARE(outputs("b"), QStringList{"1 B b 1.pdf"});
}

void TestRunner::outputsReplacedByAnotherFileAreAFailure()
{
    QVERIFY(QDir(root->path()).mkpath("in/other"));
    const RunnerResult result =
        split({input("a.pdf", "A\n"), input("other/a.pdf", "A\n"), input("b.pdf", "B\n")});
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains("share the output folder"), qPrintable(result.errors));
    QVERIFY2(result.errors.contains("(--flat keeps the outputs of all)"),
             qPrintable(result.errors));
    QVERIFY2(result.errors.contains(root->filePath("in/a.pdf") + ": another file"),
             qPrintable(result.errors));
    QVERIFY(result.output.endsWith("2 of 3 files split.\n"));
}

void TestRunner::usageFaultsExitWithTwo_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::newRow("nothing") << QStringList();
    QTest::newRow("no file") << QStringList{"--position", "1,2", "--output", "out"};
    QTest::newRow("unknown rule") << QStringList{"--rule",   "None", "--settings", "none.ini",
                                                 "--output", "out",  "in/f.pdf"};
    QTest::newRow("output folder is a file")
        << QStringList{"--position", "1,2", "--output", "in/f.pdf", "in/f.pdf"};
    QTest::newRow("output folder missing")
        << QStringList{"--position", "1,2", "--output", "none", "in/f.pdf"};
    QTest::newRow("method") << QStringList{"--position", "1,2", "--method", "4", "in/f.pdf"};
}

void TestRunner::usageFaultsExitWithTwo()
{
    QFETCH(QStringList, words);
    input("f.pdf", "A\n");
    const RunnerResult result = run(words);
    QCOMPARE(result.exitCode, 2);
    QVERIFY(result.errors.startsWith("quorlin-batch: "));
    QCOMPARE(result.errors.count('\n'), 1);
    QCOMPARE(result.output, QString());
    QVERIFY(QDir(root->filePath("out")).isEmpty());
}

void TestRunner::aMissingOutputFolderIsMadeOnlyWhenAsked()
{
    const QString file = input("f.pdf", "A\n");
    const QStringList words{"--position", FakeTools::position(), "--tools", "tools",
                            "--output",   "out/new/deep",        file};
    QCOMPARE(run(words).exitCode, 2);
    QCOMPARE(run(words + QStringList{"--create"}).exitCode, 0);
    QCOMPARE(outputs("new/deep/f"), QStringList{"1 A f 1.pdf"});
}

void TestRunner::missingToolsAreNamed()
{
    QVERIFY(QFile::remove(root->filePath("tools/pagebinder")));
    const RunnerResult result = split({input("f.pdf", "A\n")});
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains("tools/pagebinder"), qPrintable(result.errors));
}

void TestRunner::aToolThatCannotStartFailsEveryFile_data()
{
    QTest::addColumn<QString>("tool");
    QTest::newRow("pagexport") << "pagexport";
    QTest::newRow("pagebinder") << "pagebinder";
}

void TestRunner::aToolThatCannotStartFailsEveryFile()
{
    QFETCH(QString, tool);
    tools->breakTool(tool);
    const RunnerResult result = split({input("a.pdf", "A\n"), input("b.pdf", "A\n")});
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains("cannot be started"), qPrintable(result.errors));
    QVERIFY(result.errors.contains("in/a.pdf: "));
    QVERIFY(result.errors.contains("in/b.pdf: "));
    QVERIFY(result.output.endsWith("0 of 2 files split.\n"));
}

void TestRunner::aHungToolIsEndedAndTheOthersGoOn()
{
    const RunnerResult result = split({"--timeout", "1", input("hangexport.pdf", "A\n"),
                                       input("hangcount.pdf", "A\n"), input("b.pdf", "B\n")});
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains("hangexport.pdf: a tool made no progress"),
             qPrintable(result.errors));
    QVERIFY2(result.errors.contains("hangcount.pdf: a tool made no progress"),
             qPrintable(result.errors));
    QCOMPARE(outputs("b"), QStringList{"1 B b 1.pdf"});
    QVERIFY(outputs("hangexport").isEmpty());
    QVERIFY(result.output.endsWith("1 of 3 files split.\n"));
}

void TestRunner::aVanishedOutputFolderFailsEveryFileBehindIt()
{
    const RunnerResult result =
        split({"--jobs", "1", input("unfolder.pdf", "A\n"), input("b.pdf", "B\n")});
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains("in/unfolder.pdf: 1 of 1 outputs"), qPrintable(result.errors));
    QVERIFY2(result.errors.contains("in/b.pdf: its output folder could not be created"),
             qPrintable(result.errors));
}

void TestRunner::aSignalEndsToolsAndLeavesNothing_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGHUP") << SIGHUP;
    QTest::newRow("SIGQUIT") << SIGQUIT;
    QTest::newRow("SIGUSR1") << SIGUSR1;
    QTest::newRow("SIGUSR2") << SIGUSR2;
    QTest::newRow("SIGALRM") << SIGALRM;
    QTest::newRow("SIGVTALRM") << SIGVTALRM;
    QTest::newRow("SIGPROF") << SIGPROF;
    QTest::newRow("SIGXCPU") << SIGXCPU;
}

void TestRunner::aSignalEndsToolsAndLeavesNothing()
{
    QFETCH(int, signal);
    QProcess process;
    prepareRunner(process, splitWords({input("hangmerge.pdf", "A\n")}), root->path(),
                  root->filePath("tmp"));
    process.start();
    QFile hanging(root->filePath("out/hanging"));
    QTRY_VERIFY_WITH_TIMEOUT(hanging.exists() && hanging.size() > 0, 30000);
    QVERIFY(hanging.open(QIODevice::ReadOnly));
    const auto tool = static_cast<pid_t>(hanging.readAll().trimmed().toLong());
    QVERIFY(tool > 0);
    QCOMPARE(::kill(tool, 0), 0);
    QVERIFY(sendSignal(process, signal));
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 128 + signal);
    QVERIFY(::kill(tool, 0) != 0);
    QVERIFY(QDir(root->filePath("tmp")).isEmpty());
    QVERIFY(!QDir(root->filePath("out/hangmerge")).exists());
    const QByteArray errors = process.readAllStandardError();
    QVERIFY2(errors.startsWith("quorlin-batch: asked to end\n"), errors.constData());
    QVERIFY(errors.contains("hangmerge.pdf: "));
}

void TestRunner::aReaderThatGoesAwayEndsTheRun()
{
    int ends[2] = {};
    QCOMPARE(pipe2(ends, O_CLOEXEC), 0);
    QProcess process;
    prepareRunner(process, splitWords({"--quiet", input("hangmerge.pdf", "A\n")}), root->path(),
                  root->filePath("tmp"));
    process.setStandardOutputFile(QStringLiteral("/dev/fd/%1").arg(ends[1]), QIODevice::Append);
    process.start();
    ::close(ends[1]);
    QFile hanging(root->filePath("out/hanging"));
    QTRY_VERIFY_WITH_TIMEOUT(hanging.exists() && hanging.size() > 0, 30000);
    QVERIFY(hanging.open(QIODevice::ReadOnly));
    const auto tool = static_cast<pid_t>(hanging.readAll().trimmed().toLong());
    ::close(ends[0]);
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 128 + SIGPIPE);
    QVERIFY(::kill(tool, 0) != 0);
    QVERIFY(!QDir(root->filePath("out/hangmerge")).exists());
}

void TestRunner::aReaderThatWasNeverThereIsNoticed()
{
    int ends[2] = {};
    QCOMPARE(pipe2(ends, O_CLOEXEC), 0);
    QProcess process;
    prepareRunner(process, splitWords({input("f.pdf", "A\nB\n")}), root->path(),
                  root->filePath("tmp"));
    process.setStandardOutputFile(QStringLiteral("/dev/fd/%1").arg(ends[1]), QIODevice::Append);
    process.start();
    ::close(ends[1]);
    ::close(ends[0]);
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 128 + SIGPIPE);
}

void TestRunner::neitherHomeNorTemporaryFolderIsNeeded()
{
    QProcess process;
    prepareRunner(process, splitWords({input("f.pdf", "A\nB\n")}), root->path(), "/nonexistent");
    QProcessEnvironment environment = process.processEnvironment();
    for (const char *name : {"HOME", "XDG_RUNTIME_DIR", "DISPLAY", "WAYLAND_DISPLAY", "USER"}) {
        environment.remove(QLatin1String(name));
    }
    process.setProcessEnvironment(environment);
    process.start();
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.readAllStandardError(), QByteArray());
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(outputs("f").size(), 2);
}

void TestRunner::onlyQtCoreIsLinked()
{
    QProcess ldd;
    ldd.start("ldd", {runnerPath()});
    QVERIFY(ldd.waitForFinished());
    const QString libraries = QString::fromUtf8(ldd.readAllStandardOutput());
    QVERIFY2(libraries.contains("libQt6Core"), qPrintable(libraries));
    for (const char *name : {"Qt6Gui", "Qt6Widgets", "Qt6Network", "libX", "libxcb", "libwayland",
                             "libGL", "libEGL", "fontconfig", "freetype"}) {
        QVERIFY2(!libraries.contains(QLatin1String(name)), name);
    }
}

void TestRunner::aFileWithoutAnyTextFails()
{
    const RunnerResult result = split({input("blank.pdf", "\n\n"), input("b.pdf", "B\n")});
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains("in/blank.pdf: no page has text at 100,50 (--list-items"),
             qPrintable(result.errors));
    QVERIFY(!QDir(root->filePath("out/blank")).exists());
    QVERIFY(result.output.endsWith("1 of 2 files split.\n"));
}

void TestRunner::theRunSaysWhatBecomesOfPagesWithoutText_data()
{
    QTest::addColumn<QString>("choice");
    QTest::addColumn<QByteArray>("pages");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QString>("told");
    QTest::newRow("joined") << "join" << QByteArray("A\n\nA\n\nB\n")
                            << QStringList{"1 A f 1-4.pdf", "2 B f 5.pdf"}
                            << "(5 pages, 2 outputs, pages without text: 2)";
    QTest::newRow("separate") << "separate" << QByteArray("A\n\n\nA\nB\n")
                              << QStringList{"1 A f 1.pdf", "2   f 2-3.pdf", "3 A f 4.pdf",
                                             "4 B f 5.pdf"}
                              << "(5 pages, 4 outputs, pages without text: 2)";
    QTest::newRow("dropped") << "drop" << QByteArray("\nA\n\nA\nB\n")
                             << QStringList{"1 A f 2 4.pdf", "2 B f 5.pdf"}
                             << "(5 pages, 2 outputs, pages without text: 2, pages dropped: 2)";
    QTest::newRow("not allowed") << "fail" << QByteArray("A\n\nA\n") << QStringList()
                                 << "1 of 3 pages have no text at 100,50";
    QTest::newRow("no text at all, joined")
        << "join" << QByteArray("\n\n") << QStringList{"1   f 1-2.pdf"}
        << "(2 pages, 1 output, pages without text: 2)";
    QTest::newRow("no text at all, dropped")
        << "drop" << QByteArray("\n\n") << QStringList() << "no page has text";
}

void TestRunner::theRunSaysWhatBecomesOfPagesWithoutText()
{
    QFETCH(QString, choice);
    QFETCH(QByteArray, pages);
    QFETCH(QStringList, names);
    QFETCH(QString, told);
    const RunnerResult result = split({"--pages-without-text", choice, input("f.pdf", pages)});
    QCOMPARE(outputs("f"), names);
    QCOMPARE(result.exitCode, names.isEmpty() ? 1 : 0);
    QVERIFY2((result.output + result.errors).contains(told), qPrintable(result.output));
}

void TestRunner::pagesThatCouldNotBeReadFailTheirFile()
{
    const RunnerResult result = split({input("a.pdf", "A\n!\nB\n"), input("b.pdf", "A\n~\n"),
                                       input("c.pdf", "A\n~B\n"), input("standin.pdf", "A\nB\n")});
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains("in/a.pdf: it has unreadable pages: page 2"),
             qPrintable(result.errors));
    QVERIFY2(result.errors.contains("in/b.pdf: pages could be read only in part"),
             qPrintable(result.errors));
    QVERIFY2(result.errors.contains("in/standin.pdf: unreadable pages have a stand-in: page 2 in"),
             qPrintable(result.errors));
    QVERIFY(result.output.contains("in/c.pdf (2 pages, 2 outputs, page warnings: 1)\n"));
    // The outputs are there, with a stand-in for what could not be read.
    QCOMPARE(outputs("a").size(), 2);
    QCOMPARE(outputs("standin").size(), 2);
}

void TestRunner::aChangedInputIsNamedAndLeavesNoOutput()
{
    const RunnerResult result = split({input("changing.pdf", "A\nB\nC\n"), input("b.pdf", "B\n")});
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains("in/changing.pdf: it changed while it was split"),
             qPrintable(result.errors));
    QVERIFY(!QDir(root->filePath("out/changing")).exists());
    QCOMPARE(outputs("b").size(), 1);
}

void TestRunner::rulesWithOddNumbersAreRefused_data()
{
    QTest::addColumn<QByteArray>("numbers");
    QTest::addColumn<QString>("reason");
    QTest::newRow("negative") << QByteArray("xpos=-5\nypos=50\n") << "xpos is \"-5\"";
    QTest::newRow("too large") << QByteArray("xpos=100\nypos=99999999999\n")
                               << "ypos is \"99999999999\"";
    QTest::newRow("no number") << QByteArray("xpos=100px\nypos=50\n") << "xpos is \"100px\"";
    QTest::newRow("a fraction") << QByteArray("xpos=100\nypos=50.5\n") << "ypos is \"50.5\"";
    QTest::newRow("none") << QByteArray("wid=100\n") << "has no position";
}

void TestRunner::rulesWithOddNumbersAreRefused()
{
    QFETCH(QByteArray, numbers);
    QFETCH(QString, reason);
    QFile settings(root->filePath("rules.ini"));
    QVERIFY(settings.open(QIODevice::WriteOnly));
    settings.write("[orbi]\nOdd=1\n[Odd]\n" + numbers);
    settings.close();
    const RunnerResult result = run({"--rule", "Odd", "--settings", "rules.ini", "--output", "out",
                                     "--tools", "tools", input("f.pdf", "A\n")});
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.errors.contains(reason), qPrintable(result.errors));
    QVERIFY(QDir(root->filePath("out")).isEmpty());
}

void TestRunner::theSettingsStayAsTheyAre()
{
    const QString folder = root->filePath("settings");
    QVERIFY(QDir().mkdir(folder));
    const QByteArray text = "[orbi]\nAccount=1\n[Account]\nypos=50\nxpos=100\n; a remark\n";
    QFile settings(folder + "/rules.ini");
    QVERIFY(settings.open(QIODevice::WriteOnly));
    settings.write(text);
    settings.close();
    const RunnerResult result = run({"--rule", "Account", "--settings", settings.fileName(),
                                     "--output", "out", "--tools", "tools", input("f.pdf", "A\n")});
    QCOMPARE(result.exitCode, 0);
    QVERIFY(settings.open(QIODevice::ReadOnly));
    QCOMPARE(settings.readAll(), text);
    QCOMPARE(QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{"rules.ini"});
}

void TestRunner::jobsLimitTheToolsThatRunAtOnce()
{
    QStringList words = {"--jobs", "3"};
    for (int number = 0; number < 9; ++number) {
        words.append(input(QStringLiteral("f%1.pdf").arg(number), "A\nB\n"));
    }
    const RunnerResult result = split(words);
    QCOMPARE(result.exitCode, 0);
    QVERIFY(tools->mostAtOnce() <= 3);
    QStringList told;
    for (const QString &line : result.output.split('\n')) {
        if (line.startsWith("Succeed")) {
            told.append(line.section('/', -1).section(' ', 0, 0));
        }
    }
    QCOMPARE(told, QStringList({"f0.pdf", "f1.pdf", "f2.pdf", "f3.pdf", "f4.pdf", "f5.pdf",
                                "f6.pdf", "f7.pdf", "f8.pdf"}));
}

void TestRunner::runsSideBySideKeepTheirFilesApart()
{
    constexpr int runs = 6;
    std::vector<std::unique_ptr<QProcess>> processes;
    for (int number = 0; number < runs; ++number) {
        const QByteArray text = QByteArray::number(number);
        QByteArray pages;
        for (int page = 0; page < 20 + number; ++page) {
            pages += text + "-" + QByteArray::number(page) + "\n";
        }
        auto process = std::make_unique<QProcess>();
        prepareRunner(*process, splitWords({input("f" + QString::fromUtf8(text) + ".pdf", pages)}),
                      root->path(), root->filePath("tmp"));
        process->start();
        processes.push_back(std::move(process));
    }
    for (int number = 0; number < runs; ++number) {
        QProcess &process = *processes.at(size_t(number));
        QVERIFY(process.waitForFinished(120000));
        QCOMPARE(process.exitCode(), 0);
        const QString base = "f" + QString::number(number);
        QCOMPARE(outputs(base).size(), 20 + number);
        QCOMPARE(content(base + "/12 " + QString::number(number) + "-11 " + base + " 12.pdf"),
                 QString::number(number) + "-11\n");
    }
    QVERIFY(QDir(root->filePath("tmp")).isEmpty());
}

void TestRunner::itemsOfAPageAreListed()
{
    const RunnerResult result = run({"--list-items", input("f.pdf", "first\nsecond page\n"),
                                     "--page", "2", "--tools", "tools"});
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.output, "   left    top  width height  text\n"
                            "     20     30     90     12  Statement\n"
                            "    100     50     40     12  second page\n");
}

void TestRunner::aPageThatIsNotThereIsAnError()
{
    const QString file = input("f.pdf", "first\n");
    const RunnerResult result = run({"--list-items", file, "--page", "2", "--tools", "tools"});
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.errors, "quorlin-batch: " + root->filePath(file) + ": there is no such page\n");
    const RunnerResult missing = run({"--list-items", "none.pdf", "--tools", "tools"});
    QCOMPARE(missing.exitCode, 1);
    QCOMPARE(missing.errors,
             "quorlin-batch: " + root->filePath("none.pdf") + ": there is no such file\n");
    const RunnerResult late =
        run({"--list-items", input("hangexport.pdf", "A\n"), "--timeout", "1", "--tools", "tools"});
    QCOMPARE(late.exitCode, 1);
    QCOMPARE(late.errors,
             "quorlin-batch: " + root->filePath("in/hangexport.pdf") +
                 ": the page took too long (allow more time with --timeout SECONDS)\n");
}

void TestRunner::itemsOfAPartOfAPageAreToldApart()
{
    const QStringList words = {"--list-items", input("f.pdf", "~first\n!\n"), "--tools", "tools"};
    const RunnerResult partial = run(words);
    QCOMPARE(partial.exitCode, 0);
    QVERIFY2(partial.output.endsWith("  first\n"), qPrintable(partial.output));
    QCOMPARE(partial.errors, "quorlin-batch: warning: " + root->filePath("in/f.pdf") +
                                 ": page 1 could be read only in part\n");
    const RunnerResult unreadable = run(words + QStringList{"--page", "2"});
    QCOMPARE(unreadable.exitCode, 1);
    QCOMPARE(unreadable.output, QString());
    QCOMPARE(unreadable.errors,
             "quorlin-batch: " + root->filePath("in/f.pdf") + ": page 2 could not be read\n");
}

void TestRunner::helpAndVersionArePrinted()
{
    const RunnerResult help = run({"--help"});
    QCOMPARE(help.exitCode, 0);
    QVERIFY(help.output.contains("--list-items FILE"));
    const RunnerResult version = run({"--version"});
    QCOMPARE(version.exitCode, 0);
    QVERIFY(QRegularExpression("^quorlin-batch \\d+\\.\\d+\\.\\d+\n$")
                .match(version.output)
                .hasMatch());
}

QUORLIN_TEST(TestRunner)
#include "test_runner.moc"
