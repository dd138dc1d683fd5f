#include "tests/faults/real_bench.h"
#include "tests/faults/statements.h"
#include "tests/support/process_state.h"
#include "tests/support/quiet.h"
#include "tests/support/room.h"
#include "tests/support/waiting.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <csignal>
#include <functional>

#include <sys/mount.h>
#include <sys/stat.h>

using quorlin::test::RealBench;
using quorlin::test::statementPdf;
using quorlin::test::waitUntil;
using quorlin::test::writeFile;

namespace {

const QString succeed = QStringLiteral("Succeed");
const QString failed = QStringLiteral("Failed");
const QString finishedLine = QStringLiteral("Conversion Finished.");

/// Two inputs and the outputs that belong to them when nothing comes to harm.
const QStringList alphaTexts = {QStringLiteral("A1"), QStringLiteral("A1"), QStringLiteral("A2")};
const QStringList betaTexts = {QStringLiteral("B1"), QStringLiteral("B2")};
const QStringList alphaOutputs = {QStringLiteral("alpha/1 A1 alpha 1-2.pdf"),
                                  QStringLiteral("alpha/2 A2 alpha 3.pdf")};
const QStringList betaOutputs = {QStringLiteral("beta/1 B1 beta 1.pdf"),
                                 QStringLiteral("beta/2 B2 beta 2.pdf")};

QStringList many(const QString &text, int count)
{
    QStringList texts;
    for (int i = 0; i < count; ++i) {
        texts.append(text + QString::number(i / 2));
    }
    return texts;
}

} // namespace

/// The window with the real tools while files, folders, rows and tools come to harm. Every test
/// ends by looking at the disk: inputs unchanged, outputs whole and of the right file.
class TestSplitReal : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aBatchIsSplit();
    void toolsHarmedAtEveryStage_data();
    void toolsHarmedAtEveryStage();
    void toolsThatCannotBeRun_data();
    void toolsThatCannotBeRun();
    void aHangingToolLeavesTheWindowAlive_data();
    void aHangingToolLeavesTheWindowAlive();
    void inputsHarmedAfterTheCount_data();
    void inputsHarmedAfterTheCount();
    void olderPagesNameNoOutputs();
    void temporaryFoldersComeToHarm_data();
    void temporaryFoldersComeToHarm();
    void aMissingTemporaryFolderIsNone();
    void aTemporaryFolderMayVanish_data();
    void aTemporaryFolderMayVanish();
    void plantedLinksInTheTemporaryFolder();
    void outputFoldersComeToHarm_data();
    void outputFoldersComeToHarm();
    void aFullOutputFolderLeavesNoHalves();
    void aStaleInformationFileIsNotTaken();
    void settingsOfAllKinds_data();
    void settingsOfAllKinds();
    void aPageOfVeryManyLinesIsRead();
    void rowsMayMoveDuringARun_data();
    void rowsMayMoveDuringARun();
    void splitPressedTwiceHarmsNothing();
    void theEditorMayOpenDuringARun();
    void closingTheWindowLeavesNoPartialFiles_data();
    void closingTheWindowLeavesNoPartialFiles();

private:
    /// Lists alpha and beta and sets the output folder.
    void listBoth();

    std::unique_ptr<RealBench> bench;
    QString alpha;
    QString beta;
};

void TestSplitReal::init()
{
    bench = std::make_unique<RealBench>();
    alpha = bench->addStatements(QStringLiteral("alpha.pdf"), alphaTexts);
    beta = bench->addStatements(QStringLiteral("beta.pdf"), betaTexts);
}

void TestSplitReal::cleanup()
{
    bench->closeWindow();
    QVERIFY(bench->inputsAreUntouched());
    bench.reset();
}

void TestSplitReal::listBoth()
{
    bench->list({alpha, beta});
    bench->setOutputFolder(bench->folders.outputs());
}

void TestSplitReal::aBatchIsSplit()
{
    listBoth();
    bench->split();
    QCOMPARE(bench->column(3), QStringList(2, succeed));
    QCOMPARE(bench->folders.outputFiles(), alphaOutputs + betaOutputs);
    QVERIFY(bench->outputsAreWhole());
}

void TestSplitReal::toolsHarmedAtEveryStage_data()
{
    QTest::addColumn<QString>("tool");
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QStringList>("results");
    QTest::addColumn<QStringList>("outputs");
    const auto row = [](const char *name, const char *tool, const QByteArray &script,
                        const QStringList &results, const QStringList &outputs) {
        QTest::newRow(name) << QString::fromLatin1(tool) << script << results << outputs;
    };
    const QByteArray rest = "exec \"$REAL\" \"$@\"\n";
    const auto when = [&](const char *pattern, const char *harm) {
        return QByteArray("case \"$*\" in ") + pattern + ") " + harm + ";; esac\n" + rest;
    };
    // Without text, the pages of a file are one group under a blank.
    const QStringList blankAlpha = {QStringLiteral("alpha/1   alpha 1-3.pdf")};
    row("killed while counting", "pagebinder", when("*alpha*-getinfo*", "kill -KILL $$"),
        {failed, succeed}, betaOutputs);
    row("killed before the export", "pagexport", when("*alpha*", "kill -KILL $$"),
        {succeed, succeed}, blankAlpha + betaOutputs);
    row("killed after the export", "pagexport", when("*alpha*", "\"$REAL\" \"$@\"; kill -KILL $$"),
        {succeed, succeed}, alphaOutputs + betaOutputs);
    row("killed during the export", "pagexport",
        when("*alpha*", "\"$REAL\" \"$@\"; eval t=\\${$#}; rm \"$t\" \"${t%.xml}_pg_0003.htm\"; "
                        "kill -KILL $$"),
        {succeed, succeed}, QStringList{QStringLiteral("alpha/1 A1 alpha 1-3.pdf")} + betaOutputs);
    row("killed before the first merge", "pagebinder",
        when("*alpha*-merge\\ 1-2*", "kill -KILL $$"), {succeed, succeed},
        QStringList{alphaOutputs.last()} + betaOutputs);
    row("killed before the last merge", "pagebinder", when("*alpha*-merge\\ 3*", "kill -KILL $$"),
        {failed, succeed}, QStringList{alphaOutputs.first()} + betaOutputs);
    row("killed after a merge", "pagebinder",
        when("*alpha*-merge*", "\"$REAL\" \"$@\"; kill -KILL $$"), {succeed, succeed},
        alphaOutputs + betaOutputs);
    row("no memory for merges", "pagebinder", when("*alpha*-merge*", "ulimit -v 4000"),
        {failed, succeed}, betaOutputs);
    row("no memory for the export", "pagexport", when("*alpha*", "ulimit -v 4000"),
        {succeed, succeed}, blankAlpha + betaOutputs);
    row("outputs limited in size", "pagebinder", when("*alpha*-merge*", "ulimit -f 0"),
        {failed, succeed}, betaOutputs);
}

void TestSplitReal::toolsHarmedAtEveryStage()
{
    QFETCH(QString, tool);
    QFETCH(QByteArray, script);
    QFETCH(QStringList, results);
    QFETCH(QStringList, outputs);
    bench->replaceTool(tool, script);
    listBoth();
    bench->split();
    QCOMPARE(bench->column(3), results);
    QCOMPARE(bench->folders.outputFiles(), outputs);
    QVERIFY(bench->outputsAreWhole());
    QVERIFY(bench->modals.boxes().isEmpty());

    // The program keeps running: with the tool back the same list is split whole.
    bench->restoreTool(tool);
    bench->click("removeallButton");
    bench->list({alpha, beta});
    bench->split();
    QCOMPARE(bench->column(3), QStringList(2, succeed));
    for (const QString &output : alphaOutputs + betaOutputs) {
        QVERIFY(bench->folders.outputFiles().contains(output));
    }
}

void TestSplitReal::toolsThatCannotBeRun_data()
{
    QTest::addColumn<QString>("tool");
    QTest::addColumn<bool>("missing");
    for (const bool missing : {true, false}) {
        for (const char *tool : {"pagexport", "pagebinder"}) {
            QTest::addRow("%s %s", tool, missing ? "missing" : "not executable")
                << QString::fromLatin1(tool) << missing;
        }
    }
}

void TestSplitReal::toolsThatCannotBeRun()
{
    QFETCH(QString, tool);
    QFETCH(bool, missing);
    listBoth();
    const QString path = bench->folders.application() + QLatin1Char('/') + tool;
    bench->replaceTool(tool, "exec \"$REAL\" \"$@\"\n");
    if (missing) {
        QVERIFY(QFile::remove(path));
    } else {
        QVERIFY(QFile::setPermissions(path, QFile::ReadOwner));
    }
    int failures = 0;
    bench->window().toolFailureObserver = [&](const QString &) { ++failures; };
    bench->click("runButton");
    QTRY_COMPARE(failures, 1);
    QVERIFY(bench->modals.boxes().isEmpty());
    QVERIFY(bench->folders.outputFiles().isEmpty());

    bench->restoreTool(tool);
    bench->split();
    QCOMPARE(bench->folders.outputFiles(), alphaOutputs + betaOutputs);
    QCOMPARE(bench->column(3), QStringList(2, succeed));
}

void TestSplitReal::aHangingToolLeavesTheWindowAlive_data()
{
    QTest::addColumn<QString>("tool");
    QTest::addColumn<QString>("line");
    QTest::newRow("export") << "pagexport"
                            << "alpha.pdf";
    QTest::newRow("merge") << "pagebinder"
                           << "alpha/1 A1 alpha 1-2.pdf";
}

void TestSplitReal::aHangingToolLeavesTheWindowAlive()
{
    QFETCH(QString, tool);
    QFETCH(QString, line);
    listBoth();
    const QString pidFile = bench->folders.application() + QStringLiteral("/pid");
    bench->replaceTool(tool, "echo $$ > '" + QFile::encodeName(pidFile) + "'\nexec sleep 600\n");
    bench->click("runButton");
    QTRY_VERIFY(QFileInfo(pidFile).size() > 0);
    QVERIFY(bench->paneLines().last().endsWith(line));
    // Everything still answers: rows move, the about box opens, files are added.
    bench->selectRows({1});
    bench->click("pushButton_up");
    QCOMPARE(bench->cell(0, 0), beta);
    bench->modals.cancelNext();
    bench->click("aboutpushButton");
    bench->closeWindow();
    const pid_t pid = quorlin::test::linesOf(pidFile).value(0).toInt();
    QVERIFY(pid > 0);
    QCOMPARE(::kill(pid, 0), -1);
    QVERIFY(bench->folders.outputFiles().isEmpty());
}

void TestSplitReal::inputsHarmedAfterTheCount_data()
{
    QTest::addColumn<QString>("harm");
    QTest::addColumn<QString>("moment");
    for (const char *harm : {"removed", "truncated", "emptied", "replaced by fewer pages",
                             "replaced by no PDF", "replaced by a folder"}) {
        QTest::addRow("%s before the export", harm) << QString::fromLatin1(harm) << "export";
        QTest::addRow("%s before the merges", harm) << QString::fromLatin1(harm) << "merge";
    }
}

void TestSplitReal::inputsHarmedAfterTheCount()
{
    QFETCH(QString, harm);
    QFETCH(QString, moment);
    listBoth();
    const QByteArray whole = statementPdf(alphaTexts);
    const auto damage = [&] {
        if (harm == QLatin1String("removed")) {
            QFile::remove(alpha);
        } else if (harm == QLatin1String("truncated")) {
            writeFile(alpha, whole.left(whole.size() / 3));
        } else if (harm == QLatin1String("emptied")) {
            writeFile(alpha, {});
        } else if (harm == QLatin1String("replaced by fewer pages")) {
            writeFile(alpha, statementPdf({QStringLiteral("A1")}));
        } else if (harm == QLatin1String("replaced by no PDF")) {
            writeFile(alpha, "no PDF at all");
        } else {
            QFile::remove(alpha);
            QDir().mkdir(alpha);
        }
    };
    bench->forget(alpha);
    if (moment == QLatin1String("export")) {
        damage();
    } else {
        bench->window().progressObserver = [&](const QString &line) {
            if (line.endsWith(alphaOutputs.first())) {
                damage();
            }
        };
    }
    bench->split();
    // What is left of a truncated file can still be read.
    if (harm != QLatin1String("truncated")) {
        QCOMPARE(bench->cell(0, 3), failed);
    }
    QCOMPARE(bench->cell(1, 3), succeed);
    // What there is of alpha is of its own pages; beta is whole.
    const QStringList outputs = bench->folders.outputFiles();
    for (const QString &output : outputs) {
        QVERIFY2(output.startsWith(QLatin1String("alpha/")) || betaOutputs.contains(output),
                 qPrintable(output));
    }
    for (const QString &output : betaOutputs) {
        QVERIFY(outputs.contains(output));
    }
    QVERIFY(bench->outputsAreWhole());
}

void TestSplitReal::olderPagesNameNoOutputs()
{
    const QString bad = bench->addStatements(
        QStringLiteral("bad.pdf"), {QStringLiteral("X"), QStringLiteral("Y"), QStringLiteral("Z")});
    bench->list({alpha, bad});
    bench->setOutputFolder(bench->folders.outputs());
    // The export of the second file fails, its merges would work.
    bench->replaceTool(QStringLiteral("pagexport"),
                       "case \"$*\" in *bad.pdf*) printf x > '" + QFile::encodeName(bad) +
                           ".broken'; set -- -htmlformat '" + QFile::encodeName(bad) +
                           ".broken' \"$3\";; esac\nexec \"$REAL\" \"$@\"\n");
    bench->split();
    QCOMPARE(bench->folders.outputFiles(),
             alphaOutputs + QStringList{QStringLiteral("bad/1   bad 1-3.pdf")});
}

void TestSplitReal::temporaryFoldersComeToHarm_data()
{
    QTest::addColumn<QString>("harm");
    QTest::addColumn<bool>("readable");
    QTest::newRow("a file in its place") << "file" << false;
    QTest::newRow("read-only") << "proc" << false;
    QTest::newRow("full") << "full" << false;
    QTest::newRow("odd name") << "odd" << true;
    QTest::newRow("a link to it") << "link" << true;
}

void TestSplitReal::temporaryFoldersComeToHarm()
{
    QFETCH(QString, harm);
    QFETCH(bool, readable);
    listBoth();
    QString folder = bench->folders.temporary() + QStringLiteral("/inner");
    bool mounted = false;
    if (harm == QLatin1String("file")) {
        writeFile(folder, "in the way");
    } else if (harm == QLatin1String("proc")) {
        folder = QStringLiteral("/proc");
    } else if (harm == QLatin1String("full")) {
        QDir().mkdir(folder);
#ifdef Q_OS_LINUX
        mounted =
            ::mount("tmpfs", QFile::encodeName(folder).constData(), "tmpfs", 0, "size=4k") == 0;
#endif
        if (!mounted) {
            return; // only root can make a small disk
        }
        QFile filler(folder + QStringLiteral("/filler"));
        QVERIFY(filler.open(QIODevice::WriteOnly));
        filler.write(QByteArray(4096, 'x'));
    } else if (harm == QLatin1String("odd")) {
        folder += QStringLiteral(" 100% #1 ? ü");
        QDir().mkdir(folder);
    } else if (harm == QLatin1String("link")) {
        const QString target = bench->folders.temporary() + QStringLiteral("/target");
        QVERIFY(QDir().mkdir(target));
        QVERIFY(QFile::link(target, folder));
    }
    qputenv("TMPDIR", QFile::encodeName(folder));
    bench->split();
    qputenv("TMPDIR", QFile::encodeName(bench->folders.temporary()));
#ifdef Q_OS_LINUX
    if (mounted) {
        ::umount(QFile::encodeName(folder).constData());
    }
#endif
    // Where no page could be read, every file is one group without a text: all its pages are kept.
    const QStringList blank = {QStringLiteral("alpha/1   alpha 1-3.pdf"),
                               QStringLiteral("beta/1   beta 1-2.pdf")};
    QCOMPARE(bench->folders.outputFiles(), readable ? alphaOutputs + betaOutputs : blank);
    QVERIFY(bench->outputsAreWhole());
}

void TestSplitReal::aMissingTemporaryFolderIsNone()
{
    listBoth();
    const QString folder = bench->folders.temporary() + QStringLiteral("/none");
    qputenv("TMPDIR", QFile::encodeName(folder));
    bench->split();
    qputenv("TMPDIR", QFile::encodeName(bench->folders.temporary()));
    for (const char *name : {"split.xml", "split_pg_0001.htm", "split_pg_0002.htm"}) {
        QVERIFY(QFile::remove(QStringLiteral("/tmp/") + QLatin1String(name)));
    }
    // "/tmp" stands in for it; none is made.
    QCOMPARE(bench->folders.outputFiles(), alphaOutputs + betaOutputs);
    QVERIFY(!QDir(folder).exists());
    QVERIFY(bench->outputsAreWhole());
}

void TestSplitReal::aTemporaryFolderMayVanish_data()
{
    QTest::addColumn<QString>("moment");
    QTest::addColumn<QStringList>("alphaFiles");
    const QStringList blank = {QStringLiteral("alpha/1   alpha 1-3.pdf")};
    QTest::newRow("at the first page") << "Analyzing page 1" << blank;
    // The texts read so far stand; pages that were not read stay with the group before them.
    QTest::newRow("at the second page")
        << "Analyzing page 2" << QStringList{QStringLiteral("alpha/1 A1 alpha 1-3.pdf")};
    QTest::newRow("at the first output") << "alpha/1 A1 alpha 1-2.pdf" << alphaOutputs;
}

void TestSplitReal::aTemporaryFolderMayVanish()
{
    QFETCH(QString, moment);
    QFETCH(QStringList, alphaFiles);
    bench->list({alpha});
    bench->setOutputFolder(bench->folders.outputs());
    const QString folder = bench->folders.temporary() + QStringLiteral("/inner");
    QVERIFY(QDir().mkdir(folder));
    qputenv("TMPDIR", QFile::encodeName(folder));
    bench->window().progressObserver = [&](const QString &line) {
        if (line.endsWith(moment)) {
            QDir(folder).removeRecursively();
        }
    };
    bench->split();
    qputenv("TMPDIR", QFile::encodeName(bench->folders.temporary()));
    QVERIFY(!QDir(folder).exists());
    QCOMPARE(bench->folders.outputFiles(), alphaFiles);
    QCOMPARE(bench->cell(0, 3), succeed);
    QVERIFY(bench->outputsAreWhole());
}

void TestSplitReal::plantedLinksInTheTemporaryFolder()
{
    const QString victim = bench->folders.inputs() + QStringLiteral("/victim");
    writeFile(victim, "precious");
    for (const char *name : {"/split.xml", "/split_pg_0001.htm", "/split_pg_0002.htm"}) {
        QVERIFY(QFile::link(victim, bench->folders.temporary() + QLatin1String(name)));
    }
    listBoth();
    bench->split();
    QCOMPARE(bench->folders.outputFiles(), alphaOutputs + betaOutputs);
    QCOMPARE(quorlin::test::linesOf(victim), QStringList{QStringLiteral("precious")});
}

void TestSplitReal::outputFoldersComeToHarm_data()
{
    QTest::addColumn<QString>("harm");
    QTest::addColumn<QString>("box");
    QTest::addColumn<QStringList>("results");
    QTest::newRow("removed before the run") << "before"
                                            << "Invalid order" << QStringList{{}, {}};
    QTest::newRow("removed during the merges") << "during"
                                               << "Invalid order" << QStringList{{}, {}};
    QTest::newRow("a file instead") << "file"
                                    << "Invalid order" << QStringList{{}, {}};
    QTest::newRow("read-only") << "proc"
                               << "" << QStringList{failed, failed};
    QTest::newRow("a file in a file's place") << "inner"
                                              << "" << QStringList{failed, succeed};
    QTest::newRow("a folder in an output's place") << "folder"
                                                   << "" << QStringList{succeed, succeed};
}

void TestSplitReal::outputFoldersComeToHarm()
{
    QFETCH(QString, harm);
    QFETCH(QString, box);
    QFETCH(QStringList, results);
    listBoth();
    const QString outputs = bench->folders.outputs();
    if (harm == QLatin1String("before")) {
        QVERIFY(QDir().rmdir(outputs));
    } else if (harm == QLatin1String("during")) {
        bench->window().progressObserver = [&](const QString &line) {
            if (line.endsWith(alphaOutputs.first())) {
                QDir(outputs).removeRecursively();
            }
        };
    } else if (harm == QLatin1String("file")) {
        QVERIFY(QDir().rmdir(outputs));
        writeFile(outputs, "in the way");
    } else if (harm == QLatin1String("proc")) {
        bench->setOutputFolder(QStringLiteral("/proc"));
    } else if (harm == QLatin1String("inner")) {
        writeFile(outputs + QStringLiteral("/alpha"), "in the way");
    } else {
        QVERIFY(QDir().mkpath(outputs + QLatin1Char('/') + alphaOutputs.last()));
    }
    if (box.isEmpty()) {
        bench->split();
    } else {
        bench->click("runButton");
        QTRY_COMPARE(bench->modals.boxes().size(), 1);
        QCOMPARE(bench->modals.boxes().first().title, box);
    }
    QCOMPARE(bench->column(3), results);
    if (harm == QLatin1String("folder")) {
        // Something of that name is there, so the list says "Succeed"; nothing was written over it.
        QVERIFY(QFileInfo(outputs + QLatin1Char('/') + alphaOutputs.last()).isDir());
        QCOMPARE(bench->folders.outputFiles(), QStringList{alphaOutputs.first()} + betaOutputs);
    }
}

void TestSplitReal::aFullOutputFolderLeavesNoHalves()
{
    const QString large =
        bench->addStatements(QStringLiteral("large.pdf"), many(QStringLiteral("L"), 400));
    bench->list({large});
    bench->setOutputFolder(bench->folders.outputs());
#ifdef Q_OS_LINUX
    const QByteArray place = QFile::encodeName(bench->folders.outputs());
    if (::mount("tmpfs", place.constData(), "tmpfs", 0, "size=100k") != 0) {
        return; // only root can make a small disk
    }
    bench->split();
    const bool whole = bench->outputsAreWhole();
    const qsizetype written = bench->folders.outputFiles().size();
    const QString result = bench->cell(0, 3);
    bench->closeWindow();
    ::umount(place.constData());
    QVERIFY(whole);
    QVERIFY(written > 0);
    QVERIFY(written < 200);
    QCOMPARE(result, failed);
#endif
}

void TestSplitReal::aStaleInformationFileIsNotTaken()
{
    const QString bad = bench->folders.addInput(QStringLiteral("bad.pdf"), "no PDF");
    writeFile(bench->folders.application() + QStringLiteral("/fileinfo.txt"),
              "NumberOfPages: 77\n");
    bench->list({bad, alpha});
    QCOMPARE(bench->column(1), QStringList({QString(), QStringLiteral("3")}));
}

void TestSplitReal::settingsOfAllKinds_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<QString>("rule");
    const QByteArray rule = "[orbi]\nAccount=1\n[Account]\nxpos=108\nypos=123\n";
    QTest::newRow("foreign keys")
        << rule + "[foreign]\nkey=@ByteArray(\\0\\x1)\n[Set]\nSet=@Variant(\\0\\0\\0\\x7f)\n"
        << "Account";
    QTest::newRow("damaged") << "\xff\xfe[orbi\nAcc=\n=1\n]]\n\x01\x02[" + rule << "";
    QTest::newRow("random") << QByteArray(20000, '\x9c') + rule << "";
    QTest::newRow("empty") << QByteArray() << "";
    QTest::newRow("a folder") << QByteArray("folder") << "";
}

void TestSplitReal::settingsOfAllKinds()
{
    QFETCH(QByteArray, settings);
    QFETCH(QString, rule);
    const QString path = bench->folders.settingsFile();
    QFile::remove(path);
    if (settings == "folder") {
        QVERIFY(QDir().mkdir(path));
    } else {
        writeFile(path, settings);
    }
    listBoth();
    bench->split();
    const QStringList outputs = bench->folders.outputFiles();
    if (!rule.isEmpty()) {
        QCOMPARE(outputs, alphaOutputs + betaOutputs);
    }
    QCOMPARE(bench->column(3), QStringList(2, succeed));
    QVERIFY(bench->outputsAreWhole());
    if (settings != "folder" && !settings.isEmpty()) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), settings); // splitting changes no setting
    }
}

void TestSplitReal::aPageOfVeryManyLinesIsRead()
{
    const QString single =
        bench->addStatements(QStringLiteral("single.pdf"), {QStringLiteral("A")});
    bench->list({single});
    bench->setOutputFolder(bench->folders.outputs());
    bench->replaceTool(
        QStringLiteral("pagexport"),
        "page=\"${3%.xml}_pg_0001.htm\"\n"
        "seq -f '<span style=\"left:5;top:%.0f;width:9;height:9\">x</span>' 300000 > \"$page\"\n"
        "echo '<span style=\"left:108;top:123;width:9;height:9\">END</span>' >> \"$page\"\n");
    bench->split();
    QCOMPARE(bench->folders.outputFiles(),
             QStringList{QStringLiteral("single/1 END single 1.pdf")});
}

void TestSplitReal::rowsMayMoveDuringARun_data()
{
    QTest::addColumn<QString>("change");
    QTest::addColumn<QString>("moment");
    for (const char *change : {"move", "remove", "add"}) {
        for (const char *moment : {"alpha.pdf", "Analyzing page 2", "alpha/1 A1 alpha 1-2.pdf"}) {
            QTest::addRow("%s at %s", change, moment)
                << QString::fromLatin1(change) << QString::fromLatin1(moment);
        }
    }
}

void TestSplitReal::rowsMayMoveDuringARun()
{
    QFETCH(QString, change);
    QFETCH(QString, moment);
    const QString gamma = bench->addStatements(QStringLiteral("gamma.pdf"), {QStringLiteral("C1")});
    listBoth();
    bench->selectRows({0});
    bool changed = false;
    bench->window().progressObserver = [&](const QString &line) {
        if (changed || !line.endsWith(moment)) {
            return;
        }
        changed = true;
        // From the event loop, as a user's click comes.
        QTimer::singleShot(0, &bench->window(), [&] {
            if (change == QLatin1String("move")) {
                QTest::mouseClick(bench->widget<QPushButton>("pushButton_down"), Qt::LeftButton);
            } else if (change == QLatin1String("remove")) {
                QTest::mouseClick(bench->widget<QPushButton>("removeButton"), Qt::LeftButton);
            } else {
                bench->dropFiles({gamma});
            }
        });
    };
    bench->click("runButton");
    QTRY_COMPARE(bench->paneLines().last(), finishedLine);
    // Whatever happens to its row, the file being split gets its own pages under its own texts.
    const QStringList outputs = bench->folders.outputFiles();
    QCOMPARE(outputs.mid(0, 2), alphaOutputs);
    const QStringList allowed =
        alphaOutputs + betaOutputs + QStringList{QStringLiteral("gamma/1 C1 gamma 1.pdf")};
    for (const QString &output : outputs) {
        QVERIFY2(allowed.contains(output), qPrintable(output));
    }
    QVERIFY(bench->outputsAreWhole());
    for (int row = 0; row < bench->table()->rowCount(); ++row) {
        const QString folder = QFileInfo(bench->cell(row, 0)).baseName() + QLatin1Char('/');
        const bool split = !outputs.filter(folder).isEmpty();
        QVERIFY(bench->cell(row, 3) != (split ? failed : succeed));
    }
}

void TestSplitReal::splitPressedTwiceHarmsNothing()
{
    const QString large =
        bench->addStatements(QStringLiteral("large.pdf"), many(QStringLiteral("L"), 30));
    bench->list({large, alpha});
    bench->setOutputFolder(bench->folders.outputs());
    int presses = 0;
    bench->window().progressObserver = [&](const QString &line) {
        if (presses < 2 && (line.endsWith(QLatin1String("large.pdf")) ||
                            line.endsWith(QLatin1String("Analyzing page 5")))) {
            ++presses;
            QTimer::singleShot(0, &bench->window(), [this] {
                QTest::mouseClick(bench->widget<QPushButton>("runButton"), Qt::LeftButton);
            });
        }
    };
    bench->split();
    QTRY_VERIFY_WITH_TIMEOUT(isQuiet([this] { return bench->paneLines().size(); }), 60000);
    QCOMPARE(presses, 2);
    QVERIFY(bench->outputsAreWhole());
    // A run on its own afterwards is right again.
    bench->window().progressObserver = nullptr;
    bench->click("removeallButton");
    bench->list({alpha, beta});
    bench->split();
    for (const QString &output : alphaOutputs + betaOutputs) {
        QVERIFY(bench->folders.outputFiles().contains(output));
    }
}

void TestSplitReal::theEditorMayOpenDuringARun()
{
    listBoth();
    bool opened = false;
    bench->window().progressObserver = [&](const QString &line) {
        if (!opened && line == QLatin1String("Analyzing page 2")) {
            opened = true;
            QTimer::singleShot(0, &bench->window(), [this] {
                bench->modals.cancelNext();
                QTest::mouseClick(bench->widget<QPushButton>("pushButton_option"), Qt::LeftButton);
            });
        }
    };
    bench->split();
    QVERIFY(opened);
    QCOMPARE(bench->folders.outputFiles(), alphaOutputs + betaOutputs);
    QCOMPARE(bench->column(3), QStringList(2, succeed));
}

void TestSplitReal::closingTheWindowLeavesNoPartialFiles_data()
{
    QTest::addColumn<QString>("moment");
    QTest::newRow("export") << "large.pdf";
    QTest::newRow("analysis") << "Analyzing page 100";
    QTest::newRow("first merge") << "/1 L0 large 1-2.pdf";
    QTest::newRow("a later merge") << "/40 L39 large 79-80.pdf";
}

void TestSplitReal::closingTheWindowLeavesNoPartialFiles()
{
    QFETCH(QString, moment);
    const QString large =
        bench->addStatements(QStringLiteral("large.pdf"), many(QStringLiteral("L"), 600));
    bench->list({large});
    bench->setOutputFolder(bench->folders.outputs());
    bool reached = false;
    bench->window().progressObserver = [&](const QString &line) {
        reached = reached || line.endsWith(moment);
    };
    bench->click("runButton");
    QVERIFY(waitUntil([&reached] { return reached; }, 60000));
    bench->closeWindow();
    QVERIFY(bench->outputsAreWhole());
    QVERIFY(bench->folders.outputFiles().size() < 300);
}

QUORLIN_TEST(TestSplitReal)
#include "test_split_real.moc"
