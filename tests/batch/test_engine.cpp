#include "fake_tools.h"

#include "pipeline/split_batch.h"
#include "pipeline/tool_run.h"
#include "tests/support/room.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace quorlin;

namespace {

constexpr int longestWait = 60000;

} // namespace

/// The engine over tools that fail when told to.
class TestEngine : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void aFileBecomesItsOutputs();
    void aFileIsToldOfStepByStep();
    void theCountAndTheExportMustAgree();
    void anExportThatBreaksOffFailsTheFile_data();
    void anExportThatBreaksOffFailsTheFile();
    void theOutputThatCrashedGetsASecondTry();
    void anOutputThatCrashesTwiceFailsAlone();
    void endlessCrashesAreGivenUp();
    void aHangingOutputEndsItsFile();
    void aChangedInputLosesItsOutputs();
    void answersMayComeInPieces();
    void theFirstAnswerAboutAnOutputHolds();
    void anInputThatIsGoneFails();
    void outputsThatAreNotThereFail();
    void stoppedJobsEndTheirTools();
    void aBatchTellsInTheOrderOfItsFiles();
    void severalFilesAreSplitAtOnce();
    void oneJobRunsOneToolAtATime();
    void manyOutputsAreSharedByProcesses();
    void filesThatShareAFolderAreSplitInTurn();
    void aCancelledBatchTellsOfEveryFile();
    void hangingAgainAndAgainEndsTheBatch();
    void anEmptyBatchEnds();
    void aTalkativeToolIsHeard();

private:
    QString input(const QString &name, const QByteArray &pages) const;
    QStringList outputs(const QString &subFolder) const;
    SplitResult split(const QString &name, const QByteArray &pages);
    QList<SplitResult> splitAll(const QStringList &files, int jobs);

    std::unique_ptr<QTemporaryDir> root;
    std::unique_ptr<FakeTools> tools;
    SplitSettings settings;
};

void TestEngine::init()
{
    root = std::make_unique<QTemporaryDir>();
    for (const char *folder : {"tools", "in", "out"}) {
        QVERIFY(QDir(root->path()).mkdir(QLatin1String(folder)));
    }
    tools = std::make_unique<FakeTools>(root->filePath("tools"));
    settings = SplitSettings();
    settings.toolFolder = tools->folder();
    settings.outputFolder = root->filePath("out");
    settings.place.position = QPoint(100, 50);
}

QString TestEngine::input(const QString &name, const QByteArray &pages) const
{
    QString path = root->filePath("in/" + name);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(pages) != pages.size()) {
        qFatal("%s", qPrintable(file.errorString()));
    }
    return path;
}

QStringList TestEngine::outputs(const QString &subFolder) const
{
    return QDir(root->filePath("out/" + subFolder))
        .entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

SplitResult TestEngine::split(const QString &name, const QByteArray &pages)
{
    ToolBudget budget(1);
    SplitJob job(input(name, pages), settings, budget, nullptr);
    QSignalSpy finished(&job, &SplitJob::finished);
    job.start();
    if (finished.isEmpty() && !finished.wait(longestWait)) {
        qFatal("The job does not end");
    }
    return job.result();
}

QList<SplitResult> TestEngine::splitAll(const QStringList &files, int jobs)
{
    QList<SplitResult> results;
    SplitBatch batch(files, settings, jobs);
    QSignalSpy finished(&batch, &SplitBatch::finished);
    connect(&batch, &SplitBatch::fileEnds, this, [&](qsizetype index, const SplitResult &result) {
        QCOMPARE(index, results.size());
        results.append(result);
    });
    batch.start();
    if (finished.isEmpty() && !finished.wait(longestWait)) {
        qFatal("The batch does not end");
    }
    return results;
}

void TestEngine::aFileBecomesItsOutputs()
{
    const SplitResult result = split("f.pdf", "A\n\nA\n<B>\nA\n");
    QCOMPARE(result.verdict.reason, QString());
    QVERIFY(result.verdict.succeeded);
    QCOMPARE(result.facts.pages, 5);
    QCOMPARE(result.facts.pagesWithoutText, 1);
    QCOMPARE(outputs("f"), QStringList({"1 A f 1-3.pdf", "2 &lt;B&gt; f 4.pdf", "3 A f 5.pdf"}));
    QCOMPARE(result.facts.outputs.at(1).text, "<B>");
    QCOMPARE(result.facts.outputs.at(1).bytes, 4);
}

void TestEngine::aFileIsToldOfStepByStep()
{
    ToolBudget budget(1);
    SplitJob job(input("f.pdf", "A\nA\nB\n"), settings, budget, nullptr);
    QStringList steps;
    connect(&job, &SplitJob::counted, this,
            [&](int pages) { steps.append("counted " + QString::number(pages)); });
    connect(&job, &SplitJob::pageRead, this,
            [&](int page) { steps.append("page " + QString::number(page)); });
    connect(&job, &SplitJob::outputReported, this,
            [&](qsizetype output) { steps.append("output " + QString::number(output)); });
    connect(&job, &SplitJob::finished, this, [&] { steps.append("finished"); });
    job.start();
    QTRY_VERIFY_WITH_TIMEOUT(steps.contains("finished"), longestWait);
    QCOMPARE(steps, QStringList({"counted 3", "page 1", "page 2", "page 3", "output 0", "output 1",
                                 "finished"}));
    QCOMPARE(tools->calls().filter("start "),
             QStringList({"start pagebinder " + job.result().path,
                          "start pagexport " + job.result().path,
                          "start pagebinder " + job.result().path}));
}

void TestEngine::theCountAndTheExportMustAgree()
{
    const SplitResult result = split("miscounted.pdf", "A\nB\n");
    QVERIFY2(result.verdict.reason.contains("counted as 3, but read as 2"),
             qPrintable(result.verdict.reason));
    QVERIFY(!QDir(root->filePath("out/miscounted")).exists());
}

void TestEngine::anExportThatBreaksOffFailsTheFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");
    QTest::newRow("locked") << "uncountable.pdf"
                            << "it is locked";
    QTest::newRow("refused") << "unexportable.pdf"
                             << "its fonts are broken";
    QTest::newRow("crashed") << "crashexport.pdf"
                             << "pagexport ended abruptly";
    QTest::newRow("ended early") << "cutexport.pdf"
                                 << "could not be read to the end";
}

void TestEngine::anExportThatBreaksOffFailsTheFile()
{
    QFETCH(QString, name);
    QFETCH(QString, reason);
    const SplitResult result = split(name, "A\nB\n");
    QVERIFY(!result.verdict.succeeded);
    QVERIFY2(result.verdict.reason.contains(reason), qPrintable(result.verdict.reason));
    QVERIFY(QDir(root->filePath("out")).isEmpty());
}

void TestEngine::theOutputThatCrashedGetsASecondTry()
{
    const SplitResult result = split("crashonce.pdf", "A\nB\nC\nD\n");
    QCOMPARE(result.verdict.reason, QString());
    QCOMPARE(outputs("crashonce").size(), 4);
    // Count; the first process, the lone second try, the one behind it.
    QCOMPARE(tools->calls().filter("start pagebinder").size(), 4);
}

void TestEngine::anOutputThatCrashesTwiceFailsAlone()
{
    const SplitResult result = split("crashtwice.pdf", "A\nB\nC\nD\n");
    QVERIFY2(result.verdict.reason.contains("1 of 4 outputs were not written, the first is "),
             qPrintable(result.verdict.reason));
    QVERIFY(result.verdict.reason.contains("2 B crashtwice 2.pdf (pagebinder ended abruptly)"));
    QCOMPARE(outputs("crashtwice"),
             QStringList({"1 A crashtwice 1.pdf", "3 C crashtwice 3.pdf", "4 D crashtwice 4.pdf"}));
}

void TestEngine::endlessCrashesAreGivenUp()
{
    const SplitResult result = split("crashmerge.pdf", "A\nB\nC\nD\nE\nF\nG\nH\n");
    QVERIFY2(result.verdict.reason.contains("8 of 8 outputs"), qPrintable(result.verdict.reason));
    QVERIFY(tools->calls().filter("start pagebinder").size() < 10);
    // Nothing was written into the folder, so it goes.
    QVERIFY(!QDir(root->filePath("out/crashmerge")).exists());
}

void TestEngine::aHangingOutputEndsItsFile()
{
    settings.timeoutSeconds = 1;
    const SplitResult result = split("hangsecond.pdf", "A\nB\nC\n");
    QVERIFY(result.facts.stalled);
    QVERIFY2(result.verdict.reason.contains("no progress"), qPrintable(result.verdict.reason));
    QCOMPARE(outputs("hangsecond"), QStringList{"1 A hangsecond 1.pdf"});
}

void TestEngine::aChangedInputLosesItsOutputs()
{
    const SplitResult result = split("changing.pdf", "A\nB\nC\n");
    QVERIFY2(result.verdict.reason.contains("changed while it was split"),
             qPrintable(result.verdict.reason));
    QVERIFY(!QDir(root->filePath("out/changing")).exists());
    // A count and one attempt: what is left of the outputs is not asked for again.
    QCOMPARE(tools->calls().filter("start pagebinder").size(), 2);
}

void TestEngine::answersMayComeInPieces()
{
    const SplitResult result = split("piecemeal.pdf", "A\nB\nC\n");
    QCOMPARE(result.verdict.reason, QString());
    QCOMPARE(outputs("piecemeal"),
             QStringList({"1 A piecemeal 1.pdf", "2 B piecemeal 2.pdf", "3 C piecemeal 3.pdf"}));
    QCOMPARE(tools->calls().filter("start pagebinder").size(), 2);
}

void TestEngine::theFirstAnswerAboutAnOutputHolds()
{
    const SplitResult result = split("repeating.pdf", "A\nB\n");
    QCOMPARE(result.verdict.reason, QString());
    QVERIFY(result.verdict.succeeded);
    QCOMPARE(result.facts.outputs.at(0).reason, QString());
}

void TestEngine::anInputThatIsGoneFails()
{
    const QString path = input("f.pdf", "A\n");
    const QString empty = input("empty.pdf", "");
    QVERIFY(QFile::remove(path));
    const QList<SplitResult> results = splitAll({path, empty}, 1);
    QVERIFY(results.at(0).verdict.reason.contains("no longer there"));
    QVERIFY(results.at(1).verdict.reason.contains("it is empty"));
    QCOMPARE(tools->calls(), QStringList());
}

void TestEngine::outputsThatAreNotThereFail()
{
    const SplitResult result = split("vanishing.pdf", "A\nB\n");
    QVERIFY2(result.verdict.reason.contains("2 of 2 outputs"), qPrintable(result.verdict.reason));
}

void TestEngine::stoppedJobsEndTheirTools()
{
    ToolBudget budget(1);
    SplitJob job(input("hangmerge.pdf", "A\n"), settings, budget, nullptr);
    QSignalSpy finished(&job, &SplitJob::finished);
    job.start();
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(root->filePath("out/hanging")), longestWait);
    QVERIFY(finished.isEmpty());
    job.cancel();
    QVERIFY(finished.wait(longestWait));
    QVERIFY(job.result().verdict.reason.contains("the run ended before it was done"));
    QVERIFY(!QDir(root->filePath("out/hangmerge")).exists());
}

void TestEngine::aBatchTellsInTheOrderOfItsFiles()
{
    QStringList files;
    for (int number = 0; number < 12; ++number) {
        const QString name = QStringLiteral("f%1.pdf").arg(number);
        files.append(input(name, QByteArray("A\nB\n").repeated(number % 3 == 0 ? 60 : 1)));
    }
    SplitBatch batch(files, settings, 4);
    QSignalSpy finished(&batch, &SplitBatch::finished);
    QList<qsizetype> begun;
    QList<qsizetype> ended;
    int pages = 0;
    connect(&batch, &SplitBatch::fileBegins, this, [&](qsizetype index) { begun.append(index); });
    connect(&batch, &SplitBatch::pageRead, this, [&](qsizetype index, int page) {
        QCOMPARE(begun.last(), index);
        QCOMPARE(page, ++pages);
    });
    connect(&batch, &SplitBatch::fileEnds, this, [&](qsizetype index, const SplitResult &result) {
        QCOMPARE(begun.last(), index);
        QCOMPARE(result.path, files.at(index));
        QCOMPARE(result.facts.pages, pages);
        QCOMPARE(result.verdict.reason, QString());
        ended.append(index);
        pages = 0;
    });
    batch.start();
    QVERIFY(finished.wait(longestWait));
    QCOMPARE(begun.size(), 12);
    QCOMPARE(ended, begun);
    QVERIFY(std::is_sorted(begun.begin(), begun.end()));
}

void TestEngine::severalFilesAreSplitAtOnce()
{
    QStringList files;
    for (int number = 0; number < 8; ++number) {
        files.append(input(QStringLiteral("f%1.pdf").arg(number), "A\nB\n"));
    }
    for (const SplitResult &result : splitAll(files, 4)) {
        QCOMPARE(result.verdict.reason, QString());
    }
    QVERIFY(tools->mostAtOnce() > 1);
    QVERIFY(tools->mostAtOnce() <= 4);
}

void TestEngine::oneJobRunsOneToolAtATime()
{
    const QStringList files = {input("a.pdf", QByteArray("A\nB\n").repeated(400)),
                               input("b.pdf", "A\nB\n")};
    for (const SplitResult &result : splitAll(files, 1)) {
        QCOMPARE(result.verdict.reason, QString());
    }
    QCOMPARE(tools->mostAtOnce(), 1);
}

void TestEngine::manyOutputsAreSharedByProcesses()
{
    const QStringList files = {input("a.pdf", QByteArray("A\nB\n").repeated(400))};
    const QList<SplitResult> results = splitAll(files, 2);
    QCOMPARE(results.at(0).verdict.reason, QString());
    QCOMPARE(outputs("a").size(), 800);
    QCOMPARE(tools->calls().filter("start pagebinder").size(), 3); // a count and two shares
}

void TestEngine::filesThatShareAFolderAreSplitInTurn()
{
    const QStringList files = {input("one/a.pdf", "A\nB\n"), input("b.pdf", "B\n"),
                               input("two/a.pdf", "A\nC\n"), input("c.pdf", "C\n")};
    const QList<SplitResult> results = splitAll(files, 4);
    QVERIFY2(results.at(0).verdict.reason.contains("another file of the same name replaced 1"),
             qPrintable(results.at(0).verdict.reason));
    for (const qsizetype index : {1, 2, 3}) {
        QCOMPARE(results.at(index).verdict.reason, QString());
    }
    QCOMPARE(outputs("a"), QStringList({"1 A a 1.pdf", "2 B a 2.pdf", "2 C a 2.pdf"}));
    const QStringList calls = tools->calls().filter("/a.pdf");
    const QStringList first = calls.filter("/one/a.pdf");
    QCOMPARE(first.size(), 6); // three tools, a start and an end each
    QCOMPARE(calls.mid(0, 6), first);
    QCOMPARE(calls.size(), 12);
}

void TestEngine::aCancelledBatchTellsOfEveryFile()
{
    QStringList files = {input("hangmerge.pdf", "A\n")};
    for (int number = 0; number < 5; ++number) {
        files.append(input(QStringLiteral("f%1.pdf").arg(number), "A\nB\n"));
    }
    QStringList reasons;
    SplitBatch batch(files, settings, 1);
    QSignalSpy finished(&batch, &SplitBatch::finished);
    connect(&batch, &SplitBatch::fileEnds, this,
            [&](qsizetype, const SplitResult &result) { reasons.append(result.verdict.reason); });
    batch.start();
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(root->filePath("out/hanging")), longestWait);
    batch.cancel();
    QVERIFY(finished.wait(longestWait));
    QCOMPARE(reasons.size(), 6);
    QCOMPARE(reasons.first(), "the run ended before it was done");
    QCOMPARE(reasons.filter("the run ended before its turn").size(), 5);
}

void TestEngine::hangingAgainAndAgainEndsTheBatch()
{
    settings.timeoutSeconds = 1;
    QStringList files;
    for (int number = 0; number < 6; ++number) {
        files.append(input(QStringLiteral("hangcount%1.pdf").arg(number), "A\n"));
    }
    const QList<SplitResult> results = splitAll(files, 3);
    QCOMPARE(results.size(), 6);
    QVERIFY(results.first().facts.stalled);
    QVERIFY(results.last().verdict.reason.contains("before its turn"));
}

void TestEngine::anEmptyBatchEnds()
{
    QCOMPARE(splitAll({}, 2).size(), 0);
}

void TestEngine::aTalkativeToolIsHeard()
{
    ToolBudget budget(1);
    SplitJob job(input("talkative.pdf", "A\n"), settings, budget, nullptr);
    QByteArray heard;
    connect(&job, &SplitJob::toolSaid, this, [&](const QByteArray &text) { heard += text; });
    QSignalSpy finished(&job, &SplitJob::finished);
    job.start();
    QVERIFY(finished.wait(longestWait));
    QCOMPARE(heard.count('\n'), 3);
    QVERIFY(heard.contains("talkative.pdf: warning: page 1 is odd"));
    QVERIFY(job.result().verdict.succeeded);
}

QUORLIN_TEST(TestEngine)
#include "test_engine.moc"
