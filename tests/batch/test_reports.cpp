#include "batch/plan_table.h"
#include "batch/report.h"
#include "batch/shown_text.h"
#include "runner_bench.h"
#include "tests/support/room.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

#include <memory>

#include <sys/stat.h>

using namespace quorlin;
using namespace quorlin::batch;

namespace {

OutputResult output(qsizetype number, const QString &text, const QString &range,
                    OutputResult::State state)
{
    OutputResult result;
    result.number = number;
    result.text = text;
    result.range = range;
    result.path = QStringLiteral("/out/") + QString::number(number) + QStringLiteral(".pdf");
    result.state = state;
    result.bytes = state == OutputResult::State::Written ? 1234 : 0;
    return result;
}

SplitResult twoOutputs(OutputResult::State first, OutputResult::State second, bool succeeded)
{
    SplitResult result;
    result.path = "/in/f.pdf";
    result.verdict = {succeeded, succeeded ? QString() : QStringLiteral("it is odd")};
    result.facts.pages = 4;
    result.facts.pagesWithoutText = 1;
    result.facts.outputs = {output(1, "A, \"1\"", "1-2 4", first), output(2, " ", "3", second)};
    return result;
}

QJsonObject read(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).object();
}

} // namespace

/// The reports of a run: what they hold, and when they appear.
class TestReports : public QObject
{
    Q_OBJECT

private slots:
    void init() { bench = std::make_unique<RunnerBench>(); }

    void everyResultHasItsWord_data();
    void everyResultHasItsWord();
    void anEntryHoldsTheFieldsOfTheSchema();
    void fieldsOfCsvAreQuotedWhereTheyMust();
    void anInputWithoutOutputsHasALineInCsv();
    void warningsAreSentences();
    void thePlanIsATable();
    void timeLeftIsToldOnLongRuns_data();
    void timeLeftIsToldOnLongRuns();
    void everyInputIsReportedInItsPlace();
    void standardOutputHoldsTheReportAlone();
    void aReportAppearsWholeOrNotAtAll();
    void aPipeIsNotReplacedByAReport();
    void aStoppedRunIsReportedToo();
    void aPlanIsReportedAsTheRunWillBe();

private:
    std::unique_ptr<RunnerBench> bench;
};

void TestReports::everyResultHasItsWord_data()
{
    using State = OutputResult::State;
    QTest::addColumn<SplitResult>("result");
    QTest::addColumn<bool>("dryRun");
    QTest::addColumn<QStringList>("words"); // of the input and its two outputs
    QTest::newRow("written") << twoOutputs(State::Written, State::Written, true) << false
                             << QStringList{"succeeded", "succeeded", "succeeded"};
    QTest::newRow("written, one skipped")
        << twoOutputs(State::Skipped, State::Written, true) << false
        << QStringList{"succeeded", "skipped", "succeeded"};
    QTest::newRow("all skipped") << twoOutputs(State::Skipped, State::Skipped, true) << false
                                 << QStringList{"skipped", "skipped", "skipped"};
    QTest::newRow("one failed") << twoOutputs(State::Written, State::Failed, false) << false
                                << QStringList{"failed", "succeeded", "failed"};
    QTest::newRow("stand-ins") << twoOutputs(State::StandIns, State::Written, false) << false
                               << QStringList{"failed", "succeeded", "succeeded"};
    QTest::newRow("ended early") << twoOutputs(State::Written, State::Planned, false) << false
                                 << QStringList{"failed", "succeeded", "failed"};
    QTest::newRow("planned") << twoOutputs(State::Planned, State::Skipped, true) << true
                             << QStringList{"planned", "planned", "skipped"};
    QTest::newRow("planned, but not possible") << twoOutputs(State::Planned, State::Planned, false)
                                               << true << QStringList{"failed", "failed", "failed"};
}

void TestReports::everyResultHasItsWord()
{
    QFETCH(SplitResult, result);
    QFETCH(bool, dryRun);
    SplitSettings settings;
    settings.dryRun = dryRun;
    const QJsonObject entry = reportEntry(result, settings);
    QStringList words = {entry["result"].toString()};
    for (const QJsonValue &written : entry["outputs"].toArray()) {
        words.append(written["result"].toString());
    }
    QTEST(words, "words");
}

void TestReports::anEntryHoldsTheFieldsOfTheSchema()
{
    using State = OutputResult::State;
    const QJsonObject entry =
        reportEntry(twoOutputs(State::Written, State::Written, true), SplitSettings());
    QCOMPARE(entry["path"].toString(), "/in/f.pdf");
    QCOMPARE(entry["pages"].toInt(), 4);
    QCOMPARE(entry["pagesWithoutText"].toInt(), 1);
    const QJsonObject first = entry["outputs"].toArray().at(0).toObject();
    QCOMPARE(first["text"].toString(), "A, \"1\"");
    QCOMPARE(first["pages"].toArray(), QJsonArray({1, 2, 4}));
    QCOMPARE(first["range"].toString(), "1-2 4");
    QCOMPARE(first["bytes"].toInt(), 1234);
    QCOMPARE(entry["outputs"].toArray().at(1).toObject()["text"].toString(), QString());
    // The schema and the program know the same fields.
    QFile file(QStringLiteral(QUORLIN_SOURCE_DIR "/docs/report.schema.json"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QJsonObject types = read(file.readAll())["$defs"].toObject();
    QCOMPARE(types["input"]["properties"].toObject().keys(), entry.keys());
    QCOMPARE(types["output"]["properties"].toObject().keys(), first.keys());
    for (const char *type : {"input", "output"}) {
        QStringList required;
        for (const QJsonValue &name : types[QLatin1String(type)]["required"].toArray()) {
            required.append(name.toString());
        }
        required.sort();
        QCOMPARE(required, types[QLatin1String(type)]["properties"].toObject().keys());
    }
}

void TestReports::fieldsOfCsvAreQuotedWhereTheyMust()
{
    using State = OutputResult::State;
    SplitResult result = twoOutputs(State::Written, State::Failed, false);
    result.path = "/in/a,b\nc.pdf";
    result.facts.pageWarnings = 1;
    result.facts.otherOutputs = 2;
    QCOMPARE(csvLines(reportEntry(result, SplitSettings())),
             "\"/in/a,b\nc.pdf\",failed,it is odd,4,1,1 page could be read only in part; 2 PDF "
             "files of earlier runs in the output folder,1,\"A, \"\"1\"\"\",1 2 4,1-2 "
             "4,/out/1.pdf,1234,succeeded\r\n"
             "\"/in/a,b\nc.pdf\",failed,it is odd,4,1,1 page could be read only in part; 2 PDF "
             "files of earlier runs in the output folder,2,,3,3,/out/2.pdf,0,failed\r\n");
    QCOMPARE(csvHeading().count(','), 12);
}

void TestReports::anInputWithoutOutputsHasALineInCsv()
{
    SplitResult result;
    result.path = "/in/none.pdf";
    result.verdict.reason = "there is no such file";
    QCOMPARE(csvLines(reportEntry(result, SplitSettings())),
             "/in/none.pdf,failed,there is no such file,0,0,,,,,,,,\r\n");
}

void TestReports::warningsAreSentences()
{
    SplitFacts facts;
    QCOMPARE(warningsOf(facts), QStringList());
    facts.droppedPages = 2;
    facts.numberedOutputs = 1;
    QCOMPARE(warningsOf(facts), QStringList({"2 pages without text dropped",
                                             "1 output numbered because of equal names"}));
}

void TestReports::thePlanIsATable()
{
    using State = OutputResult::State;
    QCOMPARE(planTable(twoOutputs(State::Planned, State::Skipped, true).facts.outputs),
             "number  pages  text    name\n"
             "     1  1-2 4  A, \"1\"  1.pdf\n"
             "     2  3              2.pdf (exists, skipped)\n");
    const QString wide = planTable({output(1, QString(100, u't'), "1", State::Planned)});
    QVERIFY(wide.section('\n', 1, 1).endsWith(QLatin1String("ttt  1.pdf")));
    QVERIFY(!planTable({output(1, "a\033b", "1", State::Planned)}).contains('\033'));
}

void TestReports::timeLeftIsToldOnLongRuns_data()
{
    QTest::addColumn<double>("elapsed");
    QTest::addColumn<double>("share");
    QTest::addColumn<QString>("text");
    QTest::newRow("just begun") << 2.0 << 0.5 << "";
    QTest::newRow("nothing done yet") << 60.0 << 0.0 << "";
    QTest::newRow("nearly done") << 60.0 << 0.99 << "";
    QTest::newRow("done") << 60.0 << 1.0 << "";
    QTest::newRow("seconds") << 60.0 << 0.5 << "about 60 s left";
    QTest::newRow("minutes") << 60.0 << 0.1 << "about 9 min left";
    QTest::newRow("hours") << 3600.0 << 0.25 << "about 3 h left";
}

void TestReports::timeLeftIsToldOnLongRuns()
{
    QFETCH(double, elapsed);
    QFETCH(double, share);
    QTEST(timeLeftText(elapsed, share), "text");
}

void TestReports::everyInputIsReportedInItsPlace()
{
    const QStringList words = {bench->input("a.pdf", "A\n<B>\n"), "in/missing.pdf",
                               bench->input("uncountable.pdf", "A\n"), bench->input("c.pdf", "C\n"),
                               "in"};
    QCOMPARE(bench->split(words + QStringList{"--report", "r.json"}).exitCode, 1);
    const QJsonObject report = read(bench->read("r.json"));
    QCOMPARE(report["version"].toInt(), 1);
    QStringList results;
    for (const QJsonValue &entry : report["inputs"].toArray()) {
        results.append(entry["path"].toString().section('/', -1) + " " +
                       entry["result"].toString());
    }
    QCOMPARE(results, QStringList({"a.pdf succeeded", "missing.pdf failed",
                                   "uncountable.pdf failed", "c.pdf succeeded", "in failed"}));
    const QJsonObject second =
        report["inputs"].toArray().at(0)["outputs"].toArray().at(1).toObject();
    QCOMPARE(second["text"].toString(), "<B>");
    QCOMPARE(second["path"].toString(), bench->path("out/a/2 &lt;B&gt; a 2.pdf"));
    QCOMPARE(second["bytes"].toInt(), 4);
    QCOMPARE(bench->split(words + QStringList{"--report", "R.CSV"}).exitCode, 1);
    const QByteArrayList lines = bench->read("R.CSV").split('\n');
    QCOMPARE(lines.size(), 8); // heading, two outputs, three failures, one output, the end
    QVERIFY(lines.at(3).startsWith(bench->path("in/missing.pdf").toUtf8() + ",failed,"));
}

void TestReports::standardOutputHoldsTheReportAlone()
{
    for (const char *mode : {"--create", "--dry-run"}) {
        const RunnerResult result =
            bench->split({bench->input("a.pdf", "A\n"), "--report", "-", QLatin1String(mode)});
        QCOMPARE(result.errors, QString());
        QJsonParseError error;
        const QJsonDocument report = QJsonDocument::fromJson(result.output.toUtf8(), &error);
        QVERIFY2(error.error == QJsonParseError::NoError, qPrintable(result.output));
        QCOMPARE(report["inputs"].toArray().size(), 1);
    }
    QCOMPARE(read(bench->split({"--files-from", "-", "--report", "-"}).output.toUtf8())["inputs"]
                 .toArray()
                 .size(),
             0);
}

void TestReports::aReportAppearsWholeOrNotAtAll()
{
    bench->write("r.csv", "an earlier report");
    const RunnerResult refused = bench->split(
        {bench->input("a.pdf", "A\n"), "--report", "r.csv", "--settings", "x.ini", "--rule", "R"});
    QCOMPARE(refused.exitCode, 2);
    QCOMPARE(bench->read("r.csv"), "an earlier report");
    QCOMPARE(bench->split({"in/a.pdf", "--report", "r.csv"}).exitCode, 0);
    QVERIFY(bench->read("r.csv").startsWith("path,result,"));
    QCOMPARE(QDir(bench->path()).entryList({"r.csv*"}, QDir::Files | QDir::Hidden).size(), 1);
}

void TestReports::aPipeIsNotReplacedByAReport()
{
    const QString pipe = bench->path("r.csv");
    QCOMPARE(mkfifo(qPrintable(pipe), 0600), 0);
    const RunnerResult refused = bench->split({bench->input("a.pdf", "A\n"), "--report", "r.csv"});
    QCOMPARE(refused.exitCode, 2);
    QCOMPARE(refused.errors, "quorlin-batch: " + pipe +
                                 ": the report could not be written: it is not a regular file\n");
    QVERIFY(bench->outputs().isEmpty());
    QVERIFY(!QFileInfo(pipe).isFile());
}

void TestReports::aStoppedRunIsReportedToo()
{
    const RunnerResult result =
        bench->split({"--timeout", "1", "--report", "r.json", "--jobs", "1",
                      bench->input("hangcount1.pdf", "A\n"), bench->input("hangcount2.pdf", "A\n"),
                      bench->input("hangcount3.pdf", "A\n"), bench->input("z.pdf", "Z\n")});
    QCOMPARE(result.exitCode, 1);
    QVERIFY(result.errors.contains("the run ends here"));
    const QJsonArray inputs = read(bench->read("r.json"))["inputs"].toArray();
    QCOMPARE(inputs.size(), 4);
    QCOMPARE(inputs.at(3)["result"].toString(), "failed");
    QCOMPARE(inputs.at(3)["reason"].toString(), "the run ended before its turn");
}

void TestReports::aPlanIsReportedAsTheRunWillBe()
{
    const QStringList words = {"--flat",
                               "--name",
                               "{text}",
                               "--report",
                               "-",
                               bench->input("a.pdf", "A\nB\n"),
                               bench->input("b.pdf", "A\n")};
    const QJsonObject plan = read(bench->split(words + QStringList{"--dry-run"}).output.toUtf8());
    QVERIFY(bench->outputs().isEmpty());
    const QJsonObject done = read(bench->split(words).output.toUtf8());
    QCOMPARE(plan["inputs"].toArray().size(), 2);
    for (int input = 0; input < 2; ++input) {
        const QJsonArray planned = plan["inputs"].toArray().at(input)["outputs"].toArray();
        const QJsonArray written = done["inputs"].toArray().at(input)["outputs"].toArray();
        QCOMPARE(planned.size(), written.size());
        for (int index = 0; index < planned.size(); ++index) {
            for (const char *field : {"number", "text", "pages", "range", "path"}) {
                QCOMPARE(planned.at(index)[QLatin1String(field)],
                         written.at(index)[QLatin1String(field)]);
            }
            QCOMPARE(planned.at(index)["result"].toString(), "planned");
            QCOMPARE(written.at(index)["result"].toString(), "succeeded");
        }
    }
    QCOMPARE(bench->outputs(), QStringList({"A (2).pdf", "A.pdf", "B.pdf"}));
}

QUORLIN_TEST(TestReports)
#include "test_reports.moc"
