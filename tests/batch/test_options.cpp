#include "runner_bench.h"
#include "tests/support/room.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <memory>

/// What the runner's options do, seen from outside: a process, and what it leaves.
class TestOptions : public QObject
{
    Q_OBJECT

private slots:
    void init() { bench = std::make_unique<RunnerBench>(); }

    void theTextIsFoundWhereTheOptionsSay_data();
    void theTextIsFoundWhereTheOptionsSay();
    void aRuleToleratesWhatItIsTold();
    void namesFollowThePattern_data();
    void namesFollowThePattern();
    void flatOutputsHaveTheSameNamesInEveryRun();
    void aStoppedFlatRunEnds();
    void existingOutputsAreReplacedSkippedOrAFault_data();
    void existingOutputsAreReplacedSkippedOrAFault();
    void onlyMissingOutputsAreWrittenWhenTheOthersAreSkipped();
    void aFileIsNotSkippedForAnotherFilesOutputs();
    void outputsOfAnEarlierRunAreMentioned();
    void aDryRunWritesNothing();
    void aDryRunFailsAsTheRealRunWould();
    void filesAreTakenFromAList_data();
    void filesAreTakenFromAList();
    void anEmptyListIsNothingToDo();
    void foldersAreRefusedWithAHint();
    void toolMessagesComeWithVerboseOnly();
    void failuresSayWhatToDo_data();
    void failuresSayWhatToDo();
    void contradictionsAreUsageFaults_data();
    void contradictionsAreUsageFaults();
    void itemsAndRulesArePrintedAsJson();

private:
    std::unique_ptr<RunnerBench> bench;
};

void TestOptions::theTextIsFoundWhereTheOptionsSay_data()
{
    QTest::addColumn<QStringList>("place");
    QTest::addColumn<QStringList>("names");
    const QStringList all = {"1 A-1 f 1-2.pdf", "2 B-22 f 3.pdf"};
    QTest::newRow("position") << QStringList{"--position", "100,50"} << all;
    QTest::newRow("position, off") << QStringList{"--position", "98,53", "--tolerance", "3"} << all;
    QTest::newRow("region") << QStringList{"--region", "90,40,20,20"} << all;
    QTest::newRow("region with both items")
        << QStringList{"--region", "0,0,200,200"}
        << QStringList{"1 Statement A-1 f 1-2.pdf", "2 Statement B-22 f 3.pdf"};
    QTest::newRow("label, text below") << QStringList{"--after", "Statement"} << all;
    QTest::newRow("match") << QStringList{"--position", "100,50", "--match", "\\d+"}
                           << QStringList{"1 1 f 1-2.pdf", "2 22 f 3.pdf"};
    QTest::newRow("group") << QStringList{"--after", "Statement", "--match", "^(\\w)-"}
                           << QStringList{"1 A f 1-2.pdf", "2 B f 3.pdf"};
}

void TestOptions::theTextIsFoundWhereTheOptionsSay()
{
    QFETCH(QStringList, place);
    const RunnerResult result =
        bench->splitBy(place + QStringList{bench->input("f.pdf", "A-1\nA-1\nB-22\n")});
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, 0);
    QTEST(bench->outputs("f"), "names");
}

void TestOptions::aRuleToleratesWhatItIsTold()
{
    bench->write("rules.ini", "[orbi]\nAccount=1\n[Account]\nxpos=104\nypos=50\n");
    const QStringList words = {"--rule", "Account", "--settings", "rules.ini",
                               bench->input("f.pdf", "A\nB\n")};
    const RunnerResult exact = bench->splitBy(words);
    QCOMPARE(exact.exitCode, 1);
    QVERIFY2(exact.errors.contains("no page has text at 104,50"), qPrintable(exact.errors));
    QCOMPARE(bench->splitBy(words + QStringList{"--tolerance", "4"}).exitCode, 0);
    QCOMPARE(bench->outputs("f").size(), 2);
}

void TestOptions::namesFollowThePattern_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QStringList>("outputs");
    QTest::newRow("in the input's folder")
        << QStringList{"--name", "{text}"} << QStringList{"A.pdf", "B-C.pdf", "a (2).pdf"};
    QTest::newRow("numbers that sort") << QStringList{"--name", "{number:03} {first}-{last}"}
                                       << QStringList{"001 1-2.pdf", "002 3-3.pdf", "003 4-4.pdf"};
    QTest::newRow("method 3") << QStringList{"--name", "{text} {count}", "--method", "3"}
                              << QStringList{"A 2.pdf", "B-C 1.pdf", "a 1.pdf"};
}

void TestOptions::namesFollowThePattern()
{
    QFETCH(QStringList, words);
    const QString file = bench->input("f.pdf", "A\nA\nB/C\na\n");
    const RunnerResult result = bench->split(words + QStringList{file});
    QCOMPARE(result.exitCode, 0);
    QTEST(bench->outputs("f"), "outputs");
    const bool isNumbered = bench->outputs("f").contains("a (2).pdf");
    QCOMPARE(result.output.contains("outputs numbered because of equal names: 1"), isNumbered);
    QCOMPARE(bench->split(words + QStringList{"--flat", file}).exitCode, 0);
    QTEST(bench->outputs(), "outputs");
}

void TestOptions::flatOutputsHaveTheSameNamesInEveryRun()
{
    QStringList words = {"--flat", "--name", "{text}", "--jobs", "4"};
    QStringList expected = {"A.pdf"};
    for (int number = 0; number < 12; ++number) {
        // The first files take the longest to read.
        words.append(bench->input(QStringLiteral("f%1.pdf").arg(number),
                                  QByteArray("A\n").repeated(number < 3 ? 400 : 1)));
    }
    for (int number = 2; number <= 12; ++number) {
        expected.append(QStringLiteral("A (%1).pdf").arg(number));
    }
    QCOMPARE(bench->split(words).exitCode, 0);
    QCOMPARE(bench->read("out/A.pdf"), QByteArray("A\n").repeated(400));
    QCOMPARE(bench->read("out/A (3).pdf"), QByteArray("A\n").repeated(400));
    QCOMPARE(bench->read("out/A (4).pdf"), QByteArray("A\n"));
    QStringList outputs = bench->outputs();
    outputs.sort();
    expected.sort();
    QCOMPARE(outputs, expected);
}

void TestOptions::aStoppedFlatRunEnds()
{
    // The second file waits for the first one's names, which never come.
    const RunnerResult result =
        bench->split({"--flat", "--jobs", "2", "--timeout", "1",
                      bench->input("hangexport.pdf", "A\n"), bench->input("b.pdf", "B\n"),
                      bench->input("uncountable.pdf", "B\n"), bench->input("c.pdf", "C\n")});
    QVERIFY(!result.crashed);
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(bench->outputs(), QStringList({"1 B b 1.pdf", "1 C c 1.pdf"}));
}

void TestOptions::existingOutputsAreReplacedSkippedOrAFault_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("said");
    QTest::newRow("by default") << QStringList() << 0 << QByteArray("B\n") << "Succeed  ";
    QTest::newRow("replace") << QStringList{"--existing", "replace"} << 0 << QByteArray("B\n")
                             << "Succeed  ";
    QTest::newRow("skip") << QStringList{"--existing", "skip"} << 0 << QByteArray("old")
                          << "outputs skipped: 1";
    QTest::newRow("fail") << QStringList{"--existing", "fail"} << 1 << QByteArray("old")
                          << "1 of 2 outputs already exist, the first is ";
}

void TestOptions::existingOutputsAreReplacedSkippedOrAFault()
{
    QFETCH(QStringList, words);
    QFETCH(QString, said);
    bench->write("out/f/2 B f 2.pdf", "old");
    const RunnerResult result = bench->split(words + QStringList{bench->input("f.pdf", "A\nB\n")});
    QTEST(result.exitCode, "status");
    QTEST(bench->read("out/f/2 B f 2.pdf"), "content");
    QVERIFY2((result.output + result.errors).contains(said), qPrintable(result.output));
    QCOMPARE(bench->outputs("f").size(), result.exitCode == 0 ? 2 : 1);
}

void TestOptions::onlyMissingOutputsAreWrittenWhenTheOthersAreSkipped()
{
    const QString file = bench->input("f.pdf", "A\nB\nC\nD\nE\n");
    bench->write("out/f/1 A f 1.pdf", "old");
    bench->write("out/f/3 C f 3.pdf", "old");
    const RunnerResult result = bench->split({"--existing", "skip", file});
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(bench->read("out/f/1 A f 1.pdf"), "old");
    QCOMPARE(bench->read("out/f/2 B f 2.pdf"), "B\n");
    QCOMPARE(bench->read("out/f/3 C f 3.pdf"), "old");
    QCOMPARE(bench->read("out/f/5 E f 5.pdf"), "E\n");
    const RunnerResult again = bench->split({"--existing", "skip", file});
    QCOMPARE(again.exitCode, 0);
    QVERIFY2(again.output.contains("Skipped  " + bench->path(file)), qPrintable(again.output));
    QVERIFY(again.output.endsWith("0 of 1 files split, 1 skipped.\n"));
    QVERIFY(!again.output.contains("Generating"));
}

void TestOptions::aFileIsNotSkippedForAnotherFilesOutputs()
{
    const RunnerResult result = bench->split(
        {"--existing", "skip", bench->input("f.pdf", "A\n"), bench->input("other/f.pdf", "A\n")});
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains("other/f.pdf: another file of the same name wrote 1"),
             qPrintable(result.errors));
}

void TestOptions::outputsOfAnEarlierRunAreMentioned()
{
    const QString file = bench->input("f.pdf", "A\nB\n");
    QVERIFY(!bench->split({file}).output.contains("earlier runs"));
    bench->write(file, "A\nX\n");
    const RunnerResult result = bench->split({file});
    QVERIFY2(result.output.contains("PDF files of earlier runs in its output folder: 1"),
             qPrintable(result.output));
    QCOMPARE(bench->outputs("f").size(), 3);
}

void TestOptions::aDryRunWritesNothing()
{
    const RunnerResult result = bench->split(
        {"--dry-run", "--quiet", bench->input("f.pdf", "A\nA\nlonger text\n"), "--create"});
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.output, "Planned  " + bench->path("in/f.pdf") +
                                " (3 pages, 2 outputs)\n"
                                "number  pages  text         name\n"
                                "     1  1-2    A            1 A f 1-2.pdf\n"
                                "     2  3      longer text  2 longer text f 3.pdf\n"
                                "1 of 1 files planned.\n");
    QVERIFY(QDir(bench->path("out")).isEmpty());
    QCOMPARE(bench->tools().calls().filter("start pagebinder").size(), 1);
    QCOMPARE(bench
                 ->run({"--position", "100,50", "--dry-run", "--create", "--output", "new",
                        "--tools", "tools", "in/f.pdf"})
                 .exitCode,
             0);
    QVERIFY(!QFile::exists(bench->path("new")));
}

void TestOptions::aDryRunFailsAsTheRealRunWould()
{
    const RunnerResult result =
        bench->split({"--dry-run", bench->input("blank.pdf", " \n"), bench->input("f.pdf", "A\n"),
                      bench->input("uncountable.pdf", "A\n")});
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains("blank.pdf: no page has text"), qPrintable(result.errors));
    QVERIFY(result.errors.contains("uncountable.pdf: it is locked"));
    QVERIFY(result.output.endsWith("1 of 3 files planned.\n"));
}

void TestOptions::filesAreTakenFromAList_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QByteArray>("list");
    QTest::newRow("lines") << QStringList{"--files-from", "-"}
                           << QByteArray("in/a b.pdf\nin/c.pdf\n");
    QTest::newRow("no end of line at the end")
        << QStringList{"--files-from", "-"} << QByteArray("in/a b.pdf\nin/c.pdf");
    QTest::newRow("lines of another system, and empty ones")
        << QStringList{"--files-from", "-"} << QByteArray("in/a b.pdf\r\n\r\n\nin/c.pdf\r\n");
    QTest::newRow("NULs") << QStringList{"--files-from", "-", "--null"}
                          << QByteArray("in/a b.pdf\0in/c.pdf\0", 20);
    QTest::newRow("a file") << QStringList{"--files-from", "list.txt"} << QByteArray();
    QTest::newRow("behind those of the command line")
        << QStringList{"in/a b.pdf", "--files-from", "-"} << QByteArray("in/c.pdf\n");
}

void TestOptions::filesAreTakenFromAList()
{
    QFETCH(QStringList, words);
    QFETCH(QByteArray, list);
    bench->input("a b.pdf", "A\n");
    bench->input("c.pdf", "C\n");
    bench->write("list.txt", "in/a b.pdf\nin/c.pdf\n");
    const RunnerResult result = bench->split(words, list);
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, 0);
    QVERIFY(result.output.indexOf("a b.pdf (") < result.output.indexOf("c.pdf ("));
    QVERIFY(result.output.endsWith("2 of 2 files split.\n"));
}

void TestOptions::anEmptyListIsNothingToDo()
{
    const RunnerResult result = bench->split({"--files-from", "-", "--quiet"});
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.output, "0 of 0 files split.\n");
    const RunnerResult missing = bench->split({"--files-from", "none.txt"});
    QCOMPARE(missing.exitCode, 2);
    QVERIFY2(missing.errors.contains("none.txt: "), qPrintable(missing.errors));
}

void TestOptions::foldersAreRefusedWithAHint()
{
    const RunnerResult result = bench->split({"--files-from", "-"}, "in\n");
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains("in: it is a folder (name its files"),
             qPrintable(result.errors));
    QVERIFY(result.errors.contains("--files-from"));
}

void TestOptions::toolMessagesComeWithVerboseOnly()
{
    const QString file = bench->input("talkative.pdf", "A\n");
    QCOMPARE(bench->split({file}).errors, QString());
    const QString errors = bench->split({"--verbose", file}).errors;
    const QString path = bench->path(file);
    QVERIFY2(errors.contains(path + ": pagexport: " + path + ": warning: page 1 is odd\n"),
             qPrintable(errors));
    QVERIFY(errors.contains("-items"));
}

void TestOptions::failuresSayWhatToDo_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("pages");
    QTest::addColumn<QString>("line");
    QTest::newRow("an empty file")
        << "empty.pdf" << QByteArray() << "it is empty (check whether it was copied completely)";
    QTest::newRow("a locked file") << "protected.pdf" << QByteArray("A\n")
                                   << "needs a password (give it with --password-file FILE)";
    QTest::newRow("no text") << "f.pdf" << QByteArray(" \n")
                             << "no page has text at 100,50 (--list-items shows where text stands)";
}

void TestOptions::failuresSayWhatToDo()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, pages);
    QFETCH(QString, line);
    const RunnerResult result = bench->split({bench->input(name, pages)});
    QCOMPARE(result.errors, "quorlin-batch: " + bench->path("in/" + name) + ": " + line + "\n");
}

void TestOptions::contradictionsAreUsageFaults_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QString>("said");
    const QStringList split = {"--output", "out", "in/f.pdf"};
    QTest::newRow("two places") << split + QStringList{"--position", "1,2", "--after", "A"}
                                << "give either";
    QTest::newRow("tolerance around a label")
        << split + QStringList{"--after", "A", "--tolerance", "3"}
        << "--tolerance can only be used with";
    QTest::newRow("a region without size")
        << split + QStringList{"--region", "1,2,0,4"} << "--region takes LEFT,TOP,WIDTH,HEIGHT";
    QTest::newRow("a broken pattern")
        << split + QStringList{"--after", "A", "--match", "a(b"}
        << "--match: missing closing parenthesis at character 4: a(b <-- here";
    QTest::newRow("a path as a name") << split + QStringList{"--after", "A", "--name", "x/{text}"}
                                      << "--name: \"/\" cannot be used";
    QTest::newRow("an unknown policy") << split + QStringList{"--after", "A", "--existing", "keep"}
                                       << "--existing takes replace, skip or fail";
    QTest::newRow("a report of no known kind")
        << split + QStringList{"--after", "A", "--report", "r.xml"} << ".json or .csv";
    QTest::newRow("a report that cannot be written")
        << split + QStringList{"--after", "A", "--report", "none/r.csv"} << "r.csv: the report";
    QTest::newRow("NULs of no list") << split + QStringList{"--after", "A", "--null"}
                                     << "--null can only be used with --files-from";
    QTest::newRow("two lists from standard input")
        << QStringList{"--output",     "out", "--after",         "A",
                       "--files-from", "-",   "--password-file", "-"}
        << "--files-from and --password-file cannot both read standard input";
    QTest::newRow("JSON of a split")
        << split + QStringList{"--after", "A", "--json"} << "--json cannot be used with a split";
    QTest::newRow("jobs of a list")
        << QStringList{"--list-rules", "--jobs", "2"} << "--jobs cannot be used with --list-rules";
    QTest::newRow("two lists") << QStringList{"--list-rules", "--list-items", "f.pdf"}
                               << "cannot be used with";
    QTest::newRow("a page without a file")
        << QStringList{"--save-rule", "R", "--position", "1,2", "--page", "3"}
        << "--page and --password-file are about the file of --from";
    QTest::newRow("passwords without a file")
        << QStringList{"--save-rule", "R", "--position", "1,2", "--password-file", "p"}
        << "--page and --password-file are about the file of --from";
    QTest::newRow("rules to standard output")
        << QStringList{"--export-rules", "-"}
        << "--export-rules writes a file, not standard output";
    QTest::newRow("settings that are missing")
        << split + QStringList{"--rule", "R", "--settings", "none.ini"}
        << "there is no settings file";
    QTest::newRow("settings that are none")
        << split + QStringList{"--rule", "R", "--settings", "in/f.pdf"}
        << "this is not a settings file";
    QTest::newRow("a password file that is missing")
        << split + QStringList{"--after", "A", "--password-file", "none"} << "none: ";
    QTest::newRow("a password file without passwords")
        << split + QStringList{"--after", "A", "--password-file", "empty"}
        << "contains no passwords";
}

void TestOptions::contradictionsAreUsageFaults()
{
    QFETCH(QStringList, words);
    QFETCH(QString, said);
    bench->input("f.pdf", "A\n");
    bench->write("empty", "\n");
    const RunnerResult result = bench->run(words);
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.errors.contains(said), qPrintable(result.errors));
    QCOMPARE(result.errors.count('\n'), 1);
    QVERIFY(bench->outputs().isEmpty());
}

void TestOptions::itemsAndRulesArePrintedAsJson()
{
    const QString file = bench->input("f.pdf", "A & B\n");
    const RunnerResult listed = bench->run({"--list-items", file, "--json", "--tools", "tools"});
    const QJsonObject page = QJsonDocument::fromJson(listed.output.toUtf8()).object();
    QCOMPARE(page["path"].toString(), bench->path(file));
    const QJsonObject item = page["items"].toArray().at(1).toObject();
    QCOMPARE(item["left"].toInt(), 100);
    QCOMPARE(item["height"].toInt(), 12);
    QCOMPARE(item["text"].toString(), "A & B");
    bench->write("rules.ini",
                 "[orbi]\nA=1\n[A]\nxpos=1\nypos=2\nwid=3\nhei=4\ntext=\"&lt;x&gt;\"\n");
    const RunnerResult rules = bench->run({"--list-rules", "--json", "--settings", "rules.ini"});
    const QJsonArray list =
        QJsonDocument::fromJson(rules.output.toUtf8()).object()["rules"].toArray();
    QCOMPARE(list.size(), 1);
    QCOMPARE(list.at(0)["name"].toString(), "A");
    QCOMPARE(list.at(0)["text"].toString(), "<x>");
}

QUORLIN_TEST(TestOptions)
#include "test_options.moc"
