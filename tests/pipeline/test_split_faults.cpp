#include "pipeline/input_identity.h"
#include "tests/support/process_state.h"
#include "tests/support/quiet.h"
#include "tests/support/room.h"
#include "tests/support/window_bench.h"

#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using quorlin::test::textA;
using quorlin::test::textB;
using quorlin::test::WindowBench;

/// What happens when tools, folders and rows go away while they are needed.
class TestSplitFaults : public QObject
{
    Q_OBJECT

private slots:
    void aMissingExportToolStopsSilently();
    void aMissingMergeToolStopsSilently();
    void theRunAfterAStopStartsWithTheFirstGroup();
    void aCrashingExportGoesOn();
    void anUnwritableOutputFolderFails();
    void rowsRemovedDuringARunStopIt();
    void aMovedOutputFolderStopsARun();
    void aSecondPressStartsASecondChain();
    void filesAddedDuringARunAreSplitToo();
    void theToolsAreToldWhichFileWasCounted();
    void aFileWithoutPageCountIsNotChecked();
    void aFileChangedAfterItsCountFails_data();
    void aFileChangedAfterItsCountFails();
    void aFileChangedAfterItsLastOutputSucceeds();
    void aStoppedRunLetsTheUserSortAgain_data();
    void aStoppedRunLetsTheUserSortAgain();
    void aRefusedPressDuringARunKeepsTheOrder();
    void onlyFilesOfTheRunAreJudged();
    void closingTheWindowEndsTheAnalysis();
    void closingTheWindowEndsTheTools_data();
    void closingTheWindowEndsTheTools();
    void namesTakenAsTheyAre_data();
    void namesTakenAsTheyAre();
    void textsWithQuotesFailOnlyTheirOwnFile();
    void aTextBeyondTheNameLimitFailsOnlyItsOwnOutput();
};

void TestSplitFaults::aMissingExportToolStopsSilently()
{
    WindowBench bench;
    const QString file = bench.addBatch(QStringLiteral("a.pdf"), {textA});
    bench.addFiles({file});
    QVERIFY(QFile::remove(bench.folders.application() + QStringLiteral("/pagexport")));
    QStringList failures;
    bench.window().toolFailureObserver = [&](const QString &command) { failures.append(command); };
    bench.setOutputFolder(bench.folders.outputs());
    bench.click("runButton");
    QTRY_COMPARE(failures.size(), 1);
    QCOMPARE(failures.first(),
             QStringLiteral("\"%1/pagexport\" -htmlformat \"%2\" \"%3/split.xml\"")
                 .arg(bench.folders.application(), file, bench.folders.temporary()));
    QVERIFY(isQuiet());
    QCOMPARE(bench.paneLines().last(), file);
    QVERIFY(bench.modals.boxes().isEmpty());
    QVERIFY(bench.folders.outputFiles().isEmpty());
    QVERIFY(bench.table()->item(0, 3) == nullptr);
}

void TestSplitFaults::aMissingMergeToolStopsSilently()
{
    WindowBench bench;
    bench.addFiles({bench.addBatch(QStringLiteral("a.pdf"), {textA, textB})});
    QVERIFY(QFile::remove(bench.folders.application() + QStringLiteral("/pagebinder")));
    int failures = 0;
    bench.window().toolFailureObserver = [&](const QString &) { ++failures; };
    bench.setOutputFolder(bench.folders.outputs());
    bench.click("runButton");
    QTRY_COMPARE(failures, 1);
    QVERIFY(isQuiet());
    QVERIFY(bench.paneLines().last().endsWith(QLatin1String("/a/1 A a 1.pdf")));
    QCOMPARE(ProcessState::groupIndex(bench.window()), 1);
    QVERIFY(bench.modals.boxes().isEmpty());
}

void TestSplitFaults::theRunAfterAStopStartsWithTheFirstGroup()
{
    WindowBench bench;
    bench.addFiles({bench.addBatch(QStringLiteral("a.pdf"), {textA, textB})});
    const QString tool = bench.folders.application() + QStringLiteral("/pagebinder");
    QVERIFY(QFile::rename(tool, tool + QStringLiteral(".away")));
    int failures = 0;
    bench.window().toolFailureObserver = [&](const QString &) { ++failures; };
    bench.setOutputFolder(bench.folders.outputs());
    bench.click("runButton");
    QTRY_COMPARE(failures, 1);
    QVERIFY(QFile::rename(tool + QStringLiteral(".away"), tool));
    bench.split();
    QCOMPARE(bench.folders.outputFiles(),
             QStringList({QStringLiteral("a/1 A a 1.pdf"), QStringLiteral("a/2 B a 2.pdf")}));
    QVERIFY(bench.table()->isSortingEnabled());
}

void TestSplitFaults::aCrashingExportGoesOn()
{
    WindowBench bench;
    const QString file = bench.addBatch(QStringLiteral("a.pdf"), {textA});
    const QString other = bench.addBatch(QStringLiteral("b.pdf"), {textB});
    bench.addFiles({file, other});
    quorlin::test::writeFile(file, "crash\n");
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QCOMPARE(bench.column(3), QStringList({QStringLiteral("Failed"), QStringLiteral("Succeed")}));
    QCOMPARE(bench.folders.outputFiles(), QStringList({QStringLiteral("b/1 B b 1.pdf")}));
}

void TestSplitFaults::anUnwritableOutputFolderFails()
{
    WindowBench bench;
    bench.addFiles({bench.addBatch(QStringLiteral("a.pdf"), {textA}),
                    bench.addBatch(QStringLiteral("b.pdf"), {textA})});
    // A file where the folder of the outputs should be.
    quorlin::test::writeFile(bench.folders.outputs() + QStringLiteral("/a"), "in the way");
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QCOMPARE(bench.column(3), QStringList({QStringLiteral("Failed"), QStringLiteral("Succeed")}));
    QCOMPARE(bench.folders.outputFiles(),
             QStringList({QStringLiteral("a"), QStringLiteral("b/1 A b 1.pdf")}));
}

void TestSplitFaults::rowsRemovedDuringARunStopIt()
{
    WindowBench bench;
    const QString first = bench.addBatch(QStringLiteral("a.pdf"), {textA});
    const QString second = bench.addBatch(QStringLiteral("b.pdf"), {textB});
    bench.addFiles({first, second});
    bench.setOutputFolder(bench.folders.outputs());
    bench.window().progressObserver = [&](const QString &line) {
        if (line.startsWith(QLatin1String("Generating "))) {
            QTest::mouseClick(bench.widget<QPushButton>("removeallButton"), Qt::LeftButton);
        }
    };
    bench.click("runButton");
    QTRY_COMPARE(bench.modals.boxes().size(), 1);
    QCOMPARE(bench.modals.boxes().first().title, QStringLiteral("Empty input"));
    QCOMPARE(ProcessState::currentRow(bench.window()), 1);
    QVERIFY(!bench.paneLines().contains(QStringLiteral("Conversion Finished.")));

    // With files in the list again the next press goes on at the second row, and judges the row
    // before it by the output made last.
    bench.window().progressObserver = nullptr;
    bench.addFiles({first, second});
    const qsizetype before = bench.paneLines().size();
    bench.split();
    QCOMPARE(bench.paneLines().at(before), second);
    QCOMPARE(bench.column(3), QStringList(2, QStringLiteral("Succeed")));
    QCOMPARE(bench.folders.outputFiles(),
             QStringList({QStringLiteral("a/1 A a 1.pdf"), QStringLiteral("b/1 B b 1.pdf")}));
}

void TestSplitFaults::aMovedOutputFolderStopsARun()
{
    WindowBench bench;
    const QString first = bench.addBatch(QStringLiteral("a.pdf"), {textA});
    const QString second = bench.addBatch(QStringLiteral("b.pdf"), {textB});
    bench.addFiles({first, second});
    bench.setOutputFolder(bench.folders.outputs());
    bench.window().progressObserver = [&](const QString &line) {
        if (line.startsWith(QLatin1String("Generating "))) {
            bench.setOutputFolder(QString());
        }
    };
    bench.click("runButton");
    QTRY_COMPARE(bench.modals.boxes().size(), 1);
    QCOMPARE(bench.modals.boxes().first().title, QStringLiteral("Invalid order"));
    QCOMPARE(ProcessState::currentRow(bench.window()), 1);
    QVERIFY(bench.table()->item(0, 3) == nullptr);

    // The next press goes on from there and judges the row before.
    bench.window().progressObserver = nullptr;
    const qsizetype before = bench.paneLines().size();
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QCOMPARE(bench.paneLines().at(before), second);
    QCOMPARE(bench.column(3), QStringList(2, QStringLiteral("Succeed")));
    QCOMPARE(bench.paneLines().count(first), 1);
}

void TestSplitFaults::aSecondPressStartsASecondChain()
{
    WindowBench bench;
    quorlin::test::PageTexts texts;
    for (int i = 0; i < 20; ++i) {
        texts.emplace_back(QString::number(i / 2));
    }
    bench.addFiles({bench.addBatch(QStringLiteral("a.pdf"), texts),
                    bench.addBatch(QStringLiteral("b.pdf"), texts),
                    bench.addBatch(QStringLiteral("c.pdf"), texts)});
    bench.setOutputFolder(bench.folders.outputs());
    int presses = 0;
    bench.window().progressObserver = [&](const QString &line) {
        const bool press =
            line == QLatin1String("Analyzing page 7") || line.contains(QLatin1String("/3 2 b "));
        if (press && presses < 4) {
            ++presses;
            QTest::mouseClick(bench.widget<QPushButton>("runButton"), Qt::LeftButton);
        }
    };
    bench.split();
    // Every chain comes to its end.
    QTRY_VERIFY_WITH_TIMEOUT(isQuiet([&bench] { return bench.paneLines().size(); }), 60000);
    QVERIFY(presses > 0);
    QCOMPARE(bench.table()->rowCount(), 3);
    // A press starts the file of the current row once more.
    const QStringList calls = quorlin::test::toolCalls(bench.folders.application());
    const auto exports =
        calls.filter(QStringLiteral("pagexport [-htmlformat] [%1]").arg(bench.cell(0, 0)));
    QVERIFY2(exports.size() > 1, qPrintable(calls.join(QLatin1Char('\n'))));
}

void TestSplitFaults::filesAddedDuringARunAreSplitToo()
{
    WindowBench bench;
    const QString first = bench.addBatch(QStringLiteral("a.pdf"), {textA, textA, textA, textA});
    const QString second = bench.addBatch(QStringLiteral("b.pdf"), {textB});
    bench.addFiles({first});
    bench.setOutputFolder(bench.folders.outputs());
    const QString gate = bench.folders.temporary() + QStringLiteral("/gate");
    quorlin::test::writeFile(first, quorlin::test::ordersFor({textA, textA}).toUtf8() + "wait " +
                                        gate.toUtf8() + "\n");
    bench.click("runButton");
    bench.dropFiles({second});
    QTRY_VERIFY(bench.controlsEnabled());
    QCOMPARE(bench.column(1), QStringList({QStringLiteral("4"), QStringLiteral("1")}));
    quorlin::test::writeFile(gate, "");
    QTRY_COMPARE(bench.paneLines().last(), QStringLiteral("Conversion Finished."));
    QCOMPARE(bench.column(3), QStringList(2, QStringLiteral("Succeed")));
    QVERIFY(bench.folders.outputFiles().contains(QStringLiteral("b/1 B b 1.pdf")));
}

void TestSplitFaults::theToolsAreToldWhichFileWasCounted()
{
    WindowBench bench;
    const QString file = bench.addBatch(QStringLiteral("a.pdf"), {textA, textB});
    bench.addFiles({file});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    const auto identity = quorlin::identifyFile(file);
    QVERIFY(identity);
    const QString text = QString::fromLatin1(quorlin::inputIdentityText(*identity));
    QCOMPARE(
        quorlin::test::linesOf(bench.folders.application() + QStringLiteral("/identities.txt")),
        QStringList({QStringLiteral("pagebinder "), QStringLiteral("pagexport ") + text,
                     QStringLiteral("pagebinder ") + text, QStringLiteral("pagebinder ") + text}));
}

void TestSplitFaults::aFileWithoutPageCountIsNotChecked()
{
    WindowBench bench;
    const QString file = bench.folders.addInput(QStringLiteral("a.pdf"), "page\n");
    bench.addFiles({file});
    QCOMPARE(bench.cell(0, 1), QString());
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QCOMPARE(
        quorlin::test::linesOf(bench.folders.application() + QStringLiteral("/identities.txt")),
        QStringList({QStringLiteral("pagebinder "), QStringLiteral("pagexport ")}));
    QCOMPARE(bench.cell(0, 3), QStringLiteral("Failed"));
    QCOMPARE(bench.table()->item(0, 3)->toolTip(), QString());
}

void TestSplitFaults::aFileChangedAfterItsCountFails_data()
{
    QTest::addColumn<bool>("duringTheRun");
    QTest::newRow("written anew between Add and Split") << false;
    QTest::newRow("written anew between two outputs") << true;
}

void TestSplitFaults::aFileChangedAfterItsCountFails()
{
    QFETCH(bool, duringTheRun);
    WindowBench bench;
    const QByteArray orders = quorlin::test::ordersFor({textA, textB}).toUtf8() + "checked\n";
    const QString file = bench.folders.addInput(QStringLiteral("a.pdf"), orders);
    const QString other = bench.addBatch(QStringLiteral("b.pdf"), {textA});
    bench.addFiles({file, other});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split(); // leaves outputs of every name
    QCOMPARE(bench.column(3), QStringList(2, QStringLiteral("Succeed")));
    QCOMPARE(bench.table()->item(0, 3)->toolTip(), QString());
    if (!duringTheRun) {
        quorlin::test::writeFile(file, orders + "\n");
    }
    bench.window().progressObserver = [&](const QString &line) {
        if (duringTheRun && line.contains(QLatin1String("/2 B a "))) {
            quorlin::test::writeFile(file, orders + "\n");
        }
    };
    bench.split();
    QCOMPARE(bench.column(3), QStringList({QStringLiteral("Failed"), QStringLiteral("Succeed")}));
    QVERIFY2(bench.table()->item(0, 3)->toolTip().contains(QLatin1String(
                 "The file changed after its pages were counted. Remove it from the list, then add "
                 "it again.")),
             qPrintable(bench.table()->item(0, 3)->toolTip()));

    // Added again, it is counted anew; nothing of the change is left.
    bench.window().progressObserver = nullptr;
    bench.selectRows({0});
    bench.click("removeButton");
    bench.addFiles({file});
    bench.split();
    QCOMPARE(bench.column(3), QStringList(2, QStringLiteral("Succeed")));
}

void TestSplitFaults::aFileChangedAfterItsLastOutputSucceeds()
{
    WindowBench bench;
    const QString file = bench.addBatch(QStringLiteral("a.pdf"), {textA});
    bench.addFiles({file});
    bench.setOutputFolder(bench.folders.outputs());
    // The stand-in reads its orders and does not look again, as a tool that had finished.
    bench.window().progressObserver = [&](const QString &line) {
        if (line.startsWith(QLatin1String("Generating "))) {
            quorlin::test::writeFile(file, quorlin::test::ordersFor({textA, textB}).toUtf8());
        }
    };
    bench.split();
    QCOMPARE(bench.cell(0, 3), QStringLiteral("Succeed"));
}

void TestSplitFaults::aStoppedRunLetsTheUserSortAgain_data()
{
    QTest::addColumn<QString>("reason");
    QTest::newRow("rows removed") << "rows";
    QTest::newRow("output folder emptied") << "folder";
    QTest::newRow("no export tool") << "pagexport";
    QTest::newRow("no merge tool") << "pagebinder";
}

void TestSplitFaults::aStoppedRunLetsTheUserSortAgain()
{
    QFETCH(QString, reason);
    WindowBench bench;
    const QString first = bench.addBatch(QStringLiteral("z.pdf"), {textA});
    const QString second = bench.addBatch(QStringLiteral("y.pdf"), {textB});
    bench.addFiles({first, second});
    bench.setOutputFolder(bench.folders.outputs());
    bench.window().progressObserver = [&](const QString &line) {
        if (!line.startsWith(QLatin1String("Generating "))) {
            return;
        }
        if (reason == QLatin1String("rows")) {
            bench.click("removeallButton");
        } else if (reason == QLatin1String("folder")) {
            bench.setOutputFolder(QString());
        }
    };
    QFile::remove(bench.folders.application() + QLatin1Char('/') + reason);
    bench.click("runButton");
    QVERIFY(!bench.table()->isSortingEnabled());
    QTRY_VERIFY(bench.table()->isSortingEnabled());
    QCOMPARE(bench.table()->horizontalHeader()->sortIndicatorSection(), -1);
    if (bench.table()->rowCount() == 2) {
        QCOMPARE(bench.column(0), QStringList({first, second}));
        bench.table()->sortItems(0);
        QCOMPARE(bench.column(0), QStringList({second, first}));
    }
}

void TestSplitFaults::aRefusedPressDuringARunKeepsTheOrder()
{
    WindowBench bench;
    const QString gate = bench.folders.temporary() + QStringLiteral("/gate");
    const QString file = bench.addBatch(QStringLiteral("a.pdf"), {textA});
    bench.addFiles({file});
    bench.setOutputFolder(bench.folders.outputs());
    quorlin::test::writeFile(file, quorlin::test::ordersFor({textA}).toUtf8() + "wait " +
                                       gate.toUtf8() + "\n");
    bench.click("runButton");
    bench.setOutputFolder(QString());
    bench.click("runButton");
    QCOMPARE(bench.modals.boxes().size(), 1);
    QVERIFY(!bench.table()->isSortingEnabled()); // the file is still being split
    bench.setOutputFolder(bench.folders.outputs());
    quorlin::test::writeFile(gate, "");
    QTRY_COMPARE(bench.paneLines().last(), QStringLiteral("Conversion Finished."));
    QVERIFY(bench.table()->isSortingEnabled());
}

void TestSplitFaults::onlyFilesOfTheRunAreJudged()
{
    WindowBench bench;
    const QString first = bench.addBatch(QStringLiteral("a.pdf"), {textA});
    const QString second = bench.addBatch(QStringLiteral("b.pdf"), {textB});
    bench.addFiles({first, second});
    bench.setOutputFolder(bench.folders.outputs());
    bench.window().progressObserver = [&](const QString &line) {
        if (line.startsWith(QLatin1String("Generating "))) {
            bench.click("removeallButton");
        }
    };
    bench.click("runButton");
    QTRY_COMPARE(bench.modals.boxes().size(), 1);
    bench.window().progressObserver = nullptr;
    // The next press goes on at the second row; no run has split the first one.
    const QString third = bench.addBatch(QStringLiteral("c.pdf"), {textA});
    bench.addFiles({third, second});
    bench.split();
    QCOMPARE(bench.column(3), QStringList({QString(), QStringLiteral("Succeed")}));
    QVERIFY(bench.table()->item(0, 3) == nullptr);
    QVERIFY(!bench.folders.outputFiles().contains(QStringLiteral("c/1 A c 1.pdf")));
}

void TestSplitFaults::closingTheWindowEndsTheAnalysis()
{
    WindowBench bench;
    bench.addFiles({bench.addBatch(QStringLiteral("a.pdf"), {textA, textB, textA, textB})});
    bench.setOutputFolder(bench.folders.outputs());
    bool closed = false;
    bench.window().progressObserver = [&](const QString &line) {
        if (line == QLatin1String("Analyzing page 2")) {
            QTimer::singleShot(0, qApp, [&] {
                bench.closeWindow();
                closed = true;
            });
        }
    };
    bench.click("runButton");
    QTRY_VERIFY(closed);
    QVERIFY(isQuiet());
    QVERIFY(bench.folders.outputFiles().isEmpty());
    QCOMPARE(quorlin::test::toolCalls(bench.folders.application()).size(), 2);
}

void TestSplitFaults::closingTheWindowEndsTheTools_data()
{
    QTest::addColumn<QString>("stage");
    QTest::newRow("page count") << "count";
    QTest::newRow("export") << "export";
    QTest::newRow("merge") << "merge";
}

void TestSplitFaults::closingTheWindowEndsTheTools()
{
    QFETCH(QString, stage);
    WindowBench bench;
    const QString gate = bench.folders.temporary() + QStringLiteral("/never");
    const QByteArray orders = quorlin::test::ordersFor(quorlin::test::PageTexts(4, textA)).toUtf8();
    const QByteArray waiting = orders + "wait " + gate.toUtf8() + "\n";
    const QString file = bench.folders.addInput(QStringLiteral("a.pdf"), orders);
    if (stage == QLatin1String("count")) {
        quorlin::test::writeFile(file, waiting);
        bench.dropFiles({file});
    } else {
        bench.addFiles({file});
        bench.setOutputFolder(bench.folders.outputs());
        bench.window().progressObserver = [&](const QString &line) {
            if (stage == QLatin1String("merge") && line == QLatin1String("Analyzing page 1")) {
                quorlin::test::writeFile(file, waiting);
            }
        };
        if (stage == QLatin1String("export")) {
            quorlin::test::writeFile(file, waiting);
        }
        bench.click("runButton");
    }
    const auto running = [&] {
        const QStringList lines =
            quorlin::test::linesOf(bench.folders.application() + QStringLiteral("/calls.txt"));
        const QString start = stage == QLatin1String("export") ? QStringLiteral("start pagexport")
                                                               : QStringLiteral("start pagebinder");
        return !lines.isEmpty() && lines.last().startsWith(start);
    };
    QTRY_VERIFY(running());
    bench.closeWindow();
    // The tool was ended, it did not end: it waits for a file that never comes.
    QVERIFY(running());
    QVERIFY(bench.folders.outputFiles().isEmpty());
    QVERIFY(isQuiet());
}

void TestSplitFaults::namesTakenAsTheyAre_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         {"a b  c.pdf", "-leading.pdf", "it's.pdf", "100%1%2.pdf", "a#b?c&d;e.pdf", "a\nb.pdf",
          "\xe6\x9d\xb1\xe4\xba\xac.pdf", "\xf0\x9f\x93\x84.pdf", "e\xcc\x81.pdf", "UPPER.PDF",
          "$HOME `id`.pdf", "back\\slash.pdf", "[x]{y}*.pdf"}) {
        QTest::newRow(name) << QString::fromUtf8(name);
    }
    QTest::newRow("255 bytes") << QString(251, QLatin1Char('n')) + QStringLiteral(".pdf");
}

void TestSplitFaults::namesTakenAsTheyAre()
{
    QFETCH(QString, name);
    WindowBench bench;
    const QString file = bench.addBatch(name, {textA, textB});
    bench.dropFiles({file});
    QTRY_VERIFY(bench.controlsEnabled());
    QCOMPARE(bench.column(0), QStringList({file}));
    QCOMPARE(bench.cell(0, 1), QStringLiteral("2"));
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    const QStringList calls =
        quorlin::test::linesOf(bench.folders.application() + QStringLiteral("/calls.txt"));
    QVERIFY(calls.join(QLatin1Char('\n')).contains(QStringLiteral("[-htmlformat] [%1]").arg(file)));
    if (name.size() < 200) { // shortening is the tool's affair
        QCOMPARE(bench.folders.outputFiles().size(), 2);
        QCOMPARE(bench.cell(0, 3), QStringLiteral("Succeed"));
    }
}

void TestSplitFaults::textsWithQuotesFailOnlyTheirOwnFile()
{
    WindowBench bench;
    bench.addFiles({bench.addBatch(QStringLiteral("a.pdf"), {QStringLiteral("6\" pipe")}),
                    bench.addBatch(QStringLiteral("b.pdf"), {textB})});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QCOMPARE(bench.column(3), QStringList({QStringLiteral("Failed"), QStringLiteral("Succeed")}));
}

void TestSplitFaults::aTextBeyondTheNameLimitFailsOnlyItsOwnOutput()
{
    WindowBench bench;
    bench.addFiles(
        {bench.addBatch(QStringLiteral("a.pdf"), {QString(300, QLatin1Char('x')), textB})});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QVERIFY(bench.folders.outputFiles().contains(QStringLiteral("a/2 B a 2.pdf")));
    QCOMPARE(bench.cell(0, 3), QStringLiteral("Succeed"));
}

QUORLIN_TEST(TestSplitFaults)
#include "test_split_faults.moc"
