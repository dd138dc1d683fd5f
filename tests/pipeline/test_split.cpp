#include "tests/support/process_state.h"
#include "tests/support/room.h"
#include "tests/support/window_bench.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using quorlin::test::PageTexts;
using quorlin::test::textA;
using quorlin::test::textB;
using quorlin::test::WindowBench;

/// Whole runs of "Split", checked by the files on disk and the lines of the progress pane.
class TestSplit : public QObject
{
    Q_OBJECT

private slots:
    void anEmptyListIsRefused();
    void aBadOutputFolderIsRefused_data();
    void aBadOutputFolderIsRefused();
    void aBatchSplitsFromEndToEnd();
    void outputsByMethod_data();
    void outputsByMethod();
    void commandsOfARun();
    void mergesRunOneAtATime();
    void progressLinesStandExactlyAsTheyAre();
    void tenGroupsHaveNoLeadingZeros();

    void theFirstItemAtThePositionCounts();
    void itemsBesideThePositionDoNotCount();
    void textsAreReadAsUtf8();
    void missingPageFilesCountAsPagesWithoutText();
    void pageFilesOfAnEarlierRunAreRead();
    void moreThanTenThousandLinesAreCompared();
    void aPageCountWithLeadingZerosIsANumber();
    void oddTemporaryFoldersAreRead_data();
    void oddTemporaryFoldersAreRead();

    void unknownRulesReadAsNothing();
    void aRuleNameWithASlashReadsNestedKeys();
    void aChangedRuleIsSeenByTheNextRun();
    void inputsOfOneBaseNameShareAFolder();
    void theMethodMayChangeDuringARun();

    void noPageCountMeansFailed();
    void aFileWithoutGroupIsJudgedByTheOutputBefore();
    void theLastOutputDecides_data();
    void theLastOutputDecides();
    void resultsAreSetOncePerFile();
    void aNewRunStartsAtTheFirstRow();
    void nothingIsDisabledDuringARun();
    void theWindowAnswersDuringTheAnalysis();
};

void TestSplit::anEmptyListIsRefused()
{
    WindowBench bench;
    bench.setOutputFolder(bench.folders.outputs());
    bench.click("runButton");
    QCOMPARE(bench.modals.boxes().size(), 1);
    const quorlin::test::ShownBox &box = bench.modals.boxes().first();
    QCOMPARE(box.title, QStringLiteral("Empty input"));
    QCOMPARE(box.text, QStringLiteral("Please choose files to split."));
    QCOMPARE(box.icon, int(QMessageBox::Warning));
    QCOMPARE(box.buttons, QStringList({QStringLiteral("OK")}));
    QCOMPARE(box.parent, &bench.window());
    QVERIFY(bench.paneLines().isEmpty());
    QCOMPARE(ProcessState::currentRow(bench.window()), 0);
}

void TestSplit::aBadOutputFolderIsRefused_data()
{
    QTest::addColumn<QString>("folder");
    QTest::newRow("empty") << "";
    QTest::newRow("missing") << "/no/such/folder";
    QTest::newRow("a file") << "FILE";
}

void TestSplit::aBadOutputFolderIsRefused()
{
    QFETCH(QString, folder);
    WindowBench bench;
    const QString file = bench.addBatch(QStringLiteral("a.pdf"), {textA});
    bench.addFiles({file});
    const QStringList lines = bench.paneLines();
    bench.setOutputFolder(folder == QLatin1String("FILE") ? file : folder);
    bench.click("runButton");
    QCOMPARE(bench.modals.boxes().size(), 1);
    const quorlin::test::ShownBox &box = bench.modals.boxes().first();
    QCOMPARE(box.title, QStringLiteral("Invalid order"));
    QCOMPARE(box.text, QStringLiteral("Please specify an output folder."));
    QCOMPARE(box.icon, int(QMessageBox::Information));
    QCOMPARE(box.buttons, QStringList({QStringLiteral("OK")}));
    QCOMPARE(box.parent, &bench.window());
    QCOMPARE(bench.widget<QLineEdit>("outputfolderEdit")->text(), QString());
    QCOMPARE(bench.paneLines(), lines);
    QCOMPARE(quorlin::test::toolCalls(bench.folders.application()).size(), 1); // the page count
}

void TestSplit::aBatchSplitsFromEndToEnd()
{
    WindowBench bench;
    const QString first = bench.addBatch(QStringLiteral("one.pdf"), {textA, textA, textB});
    const QString second = bench.addBatch(QStringLiteral("two.v2.pdf"), {{}, textA});
    bench.addFiles({first, second});
    const qsizetype before = bench.paneLines().size();
    const QString out = bench.folders.outputs();
    bench.setOutputFolder(out);
    bench.split();
    QCOMPARE(
        bench.paneLines().sliced(before),
        QStringList({QStringLiteral("Conversion Start:"), first, QStringLiteral("Analyzing page 1"),
                     QStringLiteral("Analyzing page 2"), QStringLiteral("Analyzing page 3"),
                     QStringLiteral("Generating ") + out + QStringLiteral("/one/1 A one 1-2.pdf"),
                     QStringLiteral("Generating ") + out + QStringLiteral("/one/2 B one 3.pdf"),
                     second, QStringLiteral("Analyzing page 1"), QStringLiteral("Analyzing page 2"),
                     QStringLiteral("Generating ") + out + QStringLiteral("/two/1   two 1.pdf"),
                     QStringLiteral("Generating ") + out + QStringLiteral("/two/2 A two 2.pdf"),
                     QStringLiteral("Conversion Finished.")}));
    QCOMPARE(
        bench.folders.outputFiles(),
        QStringList({QStringLiteral("one/1 A one 1-2.pdf"), QStringLiteral("one/2 B one 3.pdf"),
                     QStringLiteral("two/1   two 1.pdf"), QStringLiteral("two/2 A two 2.pdf")}));
    QCOMPARE(bench.column(3), QStringList(2, QStringLiteral("Succeed")));
    QVERIFY(ProcessState::pageRanges(bench.window()).isEmpty());
    QVERIFY(ProcessState::rangeTexts(bench.window()).isEmpty());
    QVERIFY(ProcessState::pageTexts(bench.window()).isEmpty());
    QCOMPARE(ProcessState::currentRow(bench.window()), 0);
    QVERIFY(bench.modals.boxes().isEmpty());
}

void TestSplit::outputsByMethod_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<QStringList>("outputs"); // name=pages
    QTest::newRow("method 1") << 0
                              << QStringList({"1 A report 1-2.pdf=1-2", "2 B-C report 3.pdf=3",
                                              "3 A report 4-5.pdf=4-5"});
    QTest::newRow("method 2") << 1
                              << QStringList({"1 A report 1.pdf=1", "2 A report 2.pdf=2",
                                              "3 B-C report 3.pdf=3", "4 A report 4-5.pdf=4-5"});
    QTest::newRow("method 3") << 2 << QStringList({"1 A report.pdf=1-2 4-5", "2 B-C report.pdf=3"});
}

void TestSplit::outputsByMethod()
{
    QFETCH(int, method);
    QFETCH(QStringList, outputs);
    WindowBench bench;
    bench.addFiles({bench.addBatch(QStringLiteral("report.pdf"),
                                   {textA, textA, QStringLiteral("B/C"), textA, {}})});
    bench.setOutputFolder(bench.folders.outputs());
    auto *choice = bench.widget<QComboBox>("comboBox_method");
    QTest::keyClick(choice, Qt::Key_Home);
    for (int i = 0; i < method; ++i) {
        QTest::keyClick(choice, Qt::Key_Down);
    }
    bench.split();
    QStringList found;
    const QStringList files = bench.folders.outputFiles();
    for (const QString &file : files) {
        const QString content =
            quorlin::test::linesOf(bench.folders.outputs() + QLatin1Char('/') + file).value(0);
        found.append(file.sliced(int(qstrlen("report/"))) + QLatin1Char('=') + content);
    }
    QCOMPARE(found, outputs);
    QCOMPARE(bench.cell(0, 3), QStringLiteral("Succeed"));
}

void TestSplit::commandsOfARun()
{
    WindowBench bench;
    const QString file = bench.addBatch(QStringLiteral("a b.pdf"), {textA, textB, textA});
    bench.addFiles({file});
    bench.setOutputFolder(bench.folders.outputs());
    bench.widget<QComboBox>("comboBox_method")->setCurrentIndex(2);
    bench.split();
    const QString out = bench.folders.outputs();
    QCOMPARE(quorlin::test::toolCalls(bench.folders.application()).sliced(1),
             QStringList({QStringLiteral("pagexport [-htmlformat] [%1] [%2/split.xml]")
                              .arg(file, bench.folders.temporary()),
                          QStringLiteral("pagebinder [%1] [-merge] [1] [3] [-outfile] "
                                         "[%2/a b/1 A a b.pdf]")
                              .arg(file, out),
                          QStringLiteral("pagebinder [%1] [-merge] [2] [-outfile] "
                                         "[%2/a b/2 B a b.pdf]")
                              .arg(file, out)}));
}

void TestSplit::mergesRunOneAtATime()
{
    WindowBench bench;
    PageTexts texts;
    for (int i = 0; i < 30; ++i) {
        texts.emplace_back(QString::number(i));
    }
    bench.addFiles({bench.addBatch(QStringLiteral("a.pdf"), texts),
                    bench.addBatch(QStringLiteral("b.pdf"), texts)});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QVERIFY(quorlin::test::toolsRanOneAtATime(bench.folders.application()));
    QCOMPARE(bench.folders.outputFiles().size(), 60);
}

void TestSplit::progressLinesStandExactlyAsTheyAre()
{
    WindowBench bench;
    const QString file = bench.addBatch(QStringLiteral("x<b>&amp;  y.pdf"), {textA});
    bench.addFiles({file});
    QStringList observed;
    bench.window().progressObserver = [&](const QString &line) {
        observed.append(line);
        QCOMPARE(bench.paneLines().last(), line);
    };
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QVERIFY(bench.paneLines().contains(file));
    QVERIFY(bench.paneLines().contains(QStringLiteral("Loading ") + file));
    QCOMPARE(observed.size(), 5);
}

void TestSplit::tenGroupsHaveNoLeadingZeros()
{
    WindowBench bench;
    PageTexts texts;
    for (int i = 0; i < 10; ++i) {
        texts.emplace_back(QString(QLatin1Char(char('a' + i))));
    }
    bench.addFiles({bench.addBatch(QStringLiteral("r.pdf"), texts)});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    const QStringList outputs = bench.folders.outputFiles();
    QVERIFY(outputs.contains(QStringLiteral("r/10 j r 10.pdf")));
    QVERIFY(outputs.contains(QStringLiteral("r/1 a r 1.pdf")));
}

void TestSplit::theFirstItemAtThePositionCounts()
{
    WindowBench bench;
    bench.addFiles({bench.folders.addInput(
        QStringLiteral("r.pdf"),
        "info NumberOfPages: 1\npage\nitem 72 104 first\nitem 72 104 second\n")});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QCOMPARE(bench.folders.outputFiles(), QStringList({QStringLiteral("r/1 first r 1.pdf")}));
}

void TestSplit::itemsBesideThePositionDoNotCount()
{
    WindowBench bench;
    bench.addFiles({bench.folders.addInput(
        QStringLiteral("r.pdf"), "info NumberOfPages: 2\npage\nitem 71 104 w\nitem 73 104 e\n"
                                 "item 72 103 n\nitem 72 105 s\n"
                                 "page\nline <span style=\"left:72;top:104;width:1;height:1\">"
                                 "other size</span>\n")});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QCOMPARE(bench.folders.outputFiles(), QStringList({QStringLiteral("r/1   r 1.pdf"),
                                                       QStringLiteral("r/2 other size r 2.pdf")}));
}

void TestSplit::textsAreReadAsUtf8()
{
    WindowBench bench;
    const QString text = QString::fromUtf8("Ærø 東京 & Söhne");
    bench.addFiles({bench.addBatch(QStringLiteral("r.pdf"), {text})});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QCOMPARE(bench.folders.outputFiles(),
             QStringList({QStringLiteral("r/1 ") + text + QStringLiteral(" r 1.pdf")}));
}

void TestSplit::missingPageFilesCountAsPagesWithoutText()
{
    WindowBench bench;
    bench.addFiles({bench.folders.addInput(QStringLiteral("r.pdf"),
                                           "info NumberOfPages: 3\npage\nitem 72 104 A\n")});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QCOMPARE(bench.folders.outputFiles(), QStringList({QStringLiteral("r/1 A r 1-3.pdf")}));
}

void TestSplit::pageFilesOfAnEarlierRunAreRead()
{
    WindowBench bench;
    const QString first = bench.addBatch(QStringLiteral("one.pdf"), {textA, textB});
    const QString second =
        bench.folders.addInput(QStringLiteral("two.pdf"), "info NumberOfPages: 2\nkeep-pages\n");
    bench.addFiles({first, second});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QVERIFY(bench.folders.outputFiles().contains(QStringLiteral("two/1 A two 1.pdf")));
    QVERIFY(QFile::exists(bench.folders.temporary() + QStringLiteral("/split_pg_0001.htm")));
    QVERIFY(QFile::exists(bench.folders.temporary() + QStringLiteral("/split.xml")));
}

void TestSplit::moreThanTenThousandLinesAreCompared()
{
    WindowBench bench;
    QByteArray orders = "info NumberOfPages: 1\npage\n";
    for (int i = 0; i < 12000; ++i) {
        orders += "item 5 6 x\n";
    }
    orders += "item 72 104 late\n";
    bench.addFiles({bench.folders.addInput(QStringLiteral("r.pdf"), orders)});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QCOMPARE(bench.folders.outputFiles(), QStringList({QStringLiteral("r/1 late r 1.pdf")}));
    QCOMPARE(ProcessState::pageItem(bench.window(), 9999).text, QStringLiteral("x"));
}

void TestSplit::aPageCountWithLeadingZerosIsANumber()
{
    WindowBench bench;
    bench.addFiles({bench.folders.addInput(
        QStringLiteral("r.pdf"),
        "info NumberOfPages: 0002\npage\nitem 72 104 A\npage\nitem 72 104 B\n")});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QCOMPARE(bench.cell(0, 1), QStringLiteral("0002"));
    QCOMPARE(bench.folders.outputFiles().size(), 2);
}

void TestSplit::oddTemporaryFoldersAreRead_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         {"a b", "a#b", "a?b=c", "a%41", "a%", "\xc3\xbc\xe6\x9d\xb1", "a;b&c"}) {
        QTest::newRow(name) << QString::fromUtf8(name);
    }
}

void TestSplit::oddTemporaryFoldersAreRead()
{
    QFETCH(QString, name);
    WindowBench bench;
    const QString temporary = bench.folders.temporary() + QLatin1Char('/') + name;
    QVERIFY(QDir().mkpath(temporary));
    qputenv("TMPDIR", temporary.toUtf8());
    bench.addFiles({bench.addBatch(QStringLiteral("r.pdf"), {textA})});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QCOMPARE(bench.folders.outputFiles(), QStringList({QStringLiteral("r/1 A r 1.pdf")}));
}

void TestSplit::unknownRulesReadAsNothing()
{
    WindowBench bench;
    quorlin::test::writeFile(bench.folders.settingsFile(), "[orbi]\nGhost=1\n");
    bench.addFiles({bench.folders.addInput(QStringLiteral("r.pdf"),
                                           "info NumberOfPages: 1\npage\nitem 72 104 A\n")});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QCOMPARE(ProcessState::rule(bench.window()), QList<int>({0, 0, 0, 0}));
    QCOMPARE(ProcessState::ruleText(bench.window()), QString());
    // The page's first line stands at 0, 0 and has no text.
    QCOMPARE(bench.folders.outputFiles(), QStringList({QStringLiteral("r/1  r 1.pdf")}));
    QCOMPARE(bench.cell(0, 3), QStringLiteral("Succeed"));
}

void TestSplit::aRuleNameWithASlashReadsNestedKeys()
{
    WindowBench bench;
    bench.folders.saveRule(QStringLiteral("bank/account"), 5, 6);
    auto *rules = bench.widget<QComboBox>("comboBox_rule");
    rules->addItem(QStringLiteral("bank/account")); // as the rule editor leaves it
    rules->setCurrentIndex(rules->count() - 1);
    bench.addFiles({bench.folders.addInput(QStringLiteral("r.pdf"),
                                           "info NumberOfPages: 1\npage\nitem 5 6 nested\n")});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QCOMPARE(ProcessState::rule(bench.window()), QList<int>({5, 6, 90, 12}));
    QCOMPARE(ProcessState::ruleText(bench.window()), QStringLiteral("sample"));
    QCOMPARE(bench.folders.outputFiles(), QStringList({QStringLiteral("r/1 nested r 1.pdf")}));
}

void TestSplit::aChangedRuleIsSeenByTheNextRun()
{
    WindowBench bench;
    bench.addFiles({bench.folders.addInput(
        QStringLiteral("r.pdf"),
        "info NumberOfPages: 1\npage\nitem 72 104 before\nitem 80 110 after\n")});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    quorlin::test::writeFile(bench.folders.settingsFile(),
                             "[Account]\nxpos=80\nypos=110\nwid=1\nhei=1\n");
    bench.split();
    QCOMPARE(bench.folders.outputFiles(), QStringList({QStringLiteral("r/1 after r 1.pdf"),
                                                       QStringLiteral("r/1 before r 1.pdf")}));
}

void TestSplit::inputsOfOneBaseNameShareAFolder()
{
    WindowBench bench;
    QVERIFY(QDir().mkpath(bench.folders.inputs() + QStringLiteral("/other")));
    bench.addFiles({bench.addBatch(QStringLiteral("report.pdf"), {textA}),
                    bench.addBatch(QStringLiteral("other/report.v2.pdf"), {textB})});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QCOMPARE(bench.folders.outputFiles(), QStringList({QStringLiteral("report/1 A report 1.pdf"),
                                                       QStringLiteral("report/1 B report 1.pdf")}));
}

void TestSplit::theMethodMayChangeDuringARun()
{
    WindowBench bench;
    bench.addFiles({bench.addBatch(QStringLiteral("r.pdf"), {textA, textB})});
    bench.setOutputFolder(bench.folders.outputs());
    bench.window().progressObserver = [&](const QString &line) {
        if (line.startsWith(QLatin1String("Generating "))) {
            bench.widget<QComboBox>("comboBox_method")->setCurrentIndex(2);
        }
    };
    bench.split();
    QCOMPARE(bench.folders.outputFiles(),
             QStringList({QStringLiteral("r/1 A r 1.pdf"), QStringLiteral("r/2 B r.pdf")}));
}

void TestSplit::noPageCountMeansFailed()
{
    WindowBench bench;
    const QString file = bench.addBatch(QStringLiteral("r.pdf"), {textA});
    bench.addFiles({file});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QCOMPARE(bench.cell(0, 3), QStringLiteral("Succeed"));
    // The output of the run before still exists.
    bench.table()->item(0, 1)->setText(QString());
    const qsizetype before = bench.paneLines().size();
    bench.split();
    QCOMPARE(bench.cell(0, 3), QStringLiteral("Failed"));
    QCOMPARE(bench.paneLines().sliced(before),
             QStringList({QStringLiteral("Conversion Start:"), file,
                          QStringLiteral("Conversion Finished.")}));
}

void TestSplit::aFileWithoutGroupIsJudgedByTheOutputBefore()
{
    WindowBench bench;
    const QByteArray noPages = "info NumberOfPages: 0\n";
    bench.addFiles({bench.folders.addInput(QStringLiteral("none.pdf"), noPages),
                    bench.addBatch(QStringLiteral("r.pdf"), {textA}),
                    bench.folders.addInput(QStringLiteral("none2.pdf"), noPages)});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QCOMPARE(bench.column(3), QStringList({QStringLiteral("Failed"), QStringLiteral("Succeed"),
                                           QStringLiteral("Succeed")}));
    QCOMPARE(bench.folders.outputFiles(), QStringList({QStringLiteral("r/1 A r 1.pdf")}));
}

void TestSplit::theLastOutputDecides_data()
{
    QTest::addColumn<QByteArray>("failing");
    QTest::addColumn<QString>("result");
    QTest::newRow("first merge fails") << QByteArray("fail 1\n") << "Succeed";
    QTest::newRow("last merge fails") << QByteArray("fail 2\n") << "Failed";
}

void TestSplit::theLastOutputDecides()
{
    QFETCH(QByteArray, failing);
    QFETCH(QString, result);
    WindowBench bench;
    bench.addFiles({bench.folders.addInput(
        QStringLiteral("r.pdf"), quorlin::test::ordersFor({textA, textB}).toUtf8() + failing)});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QCOMPARE(bench.cell(0, 3), result);
    QCOMPARE(bench.folders.outputFiles().size(), 1);
}

void TestSplit::resultsAreSetOncePerFile()
{
    WindowBench bench;
    bench.addFiles({bench.addBatch(QStringLiteral("a.pdf"), {textA, textB}),
                    bench.addBatch(QStringLiteral("b.pdf"), {textA, textB})});
    bench.setOutputFolder(bench.folders.outputs());
    QStringList changes;
    QObject::connect(bench.table(), &QTableWidget::itemChanged, &bench.window(),
                     [&](QTableWidgetItem *item) {
                         if (item->column() == 3) {
                             changes.append(QString::number(item->row()) + item->text() + u'@' +
                                            bench.paneLines().last().section(u'/', -1));
                         }
                     });
    bench.split();
    QCOMPARE(changes, QStringList({QStringLiteral("0Succeed@2 B a 2.pdf"),
                                   QStringLiteral("1Succeed@2 B b 2.pdf")}));
}

void TestSplit::aNewRunStartsAtTheFirstRow()
{
    WindowBench bench;
    bench.addFiles({bench.addBatch(QStringLiteral("a.pdf"), {textA}),
                    bench.addBatch(QStringLiteral("b.pdf"), {textA})});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    const QStringList first = bench.paneLines();
    bench.split();
    const QStringList second = bench.paneLines().sliced(first.size());
    QCOMPARE(second, first.sliced(first.indexOf(QStringLiteral("Conversion Start:"))));
}

void TestSplit::nothingIsDisabledDuringARun()
{
    WindowBench bench;
    bench.addFiles({bench.addBatch(QStringLiteral("a.pdf"), {textA, textB})});
    bench.setOutputFolder(bench.folders.outputs());
    bool enabled = true;
    bench.window().progressObserver = [&](const QString &) {
        enabled = enabled && bench.controlsEnabled();
    };
    bench.split();
    QVERIFY(enabled);
    QVERIFY(bench.controlsEnabled());
}

void TestSplit::theWindowAnswersDuringTheAnalysis()
{
    WindowBench bench;
    bench.addFiles({bench.addBatch(QStringLiteral("a.pdf"), PageTexts(1000, textA))});
    bench.setOutputFolder(bench.folders.outputs());
    // Timers and clicks are served between the pages, not only before and after them.
    bool analysing = false;
    int turns = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] { turns += analysing ? 1 : 0; });
    timer.start(1);
    bench.window().progressObserver = [&](const QString &line) {
        analysing = line.startsWith(QLatin1String("Analyzing page "));
    };
    bench.split();
    QVERIFY2(turns > 10, qPrintable(QString::number(turns)));
    QCOMPARE(bench.folders.outputFiles(), QStringList({QStringLiteral("a/1 A a 1-1000.pdf")}));
}

QUORLIN_TEST(TestSplit)
#include "test_split.moc"
