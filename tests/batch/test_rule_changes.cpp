#include "runner_bench.h"
#include "tests/support/room.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTest>

#include <memory>

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>

/// Rules made and changed by the runner, in a settings file that the window uses, too.
class TestRuleChanges : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void aPositionIsSavedAsARule();
    void anItemIsSavedAsARule();
    void anItemThatIsMissingOrDoubleIsNoRule();
    void namesAreCheckedAsInTheEditor_data();
    void namesAreCheckedAsInTheEditor();
    void aRuleIsRemoved();
    void aRuleIsRenamed();
    void rulesAreCarriedToAnotherFile();
    void anExportReplacesNothingButRules();
    void rulesWithOtherValuesAreNotImported();
    void brokenRulesAreNotImported();
    void theOtherSettingsStayAsTheyAre();
    void settingsThatCannotBeWrittenAreAnError();
    void aFullDiskKeepsTheSettings_data();
    void aFullDiskKeepsTheSettings();
    void usageFaultsExitWithTwo_data();
    void usageFaultsExitWithTwo();

private:
    RunnerResult change(const QStringList &words) const
    {
        return bench->run(words + QStringList{"--settings", "rules.ini"});
    }
    QString rules(const QString &file = "rules.ini") const
    {
        return bench->run({"--list-rules", "--settings", file}).output;
    }

    std::unique_ptr<RunnerBench> bench;
};

void TestRuleChanges::init()
{
    bench = std::make_unique<RunnerBench>();
    bench->write("rules.ini", "[dir]\ninput=/in\n\n[currule]\nrule=Account\n\n[orbi]\nAccount=1\n\n"
                              "[Account]\nxpos=100\nypos=50\nwid=40\nhei=12\ntext=10-1\n");
}

void TestRuleChanges::aPositionIsSavedAsARule()
{
    const RunnerResult result = change({"--save-rule", "Invoice", "--position", "7,9"});
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.output, "Invoice\t7,9\t\n");
    QCOMPARE(rules(), "Account\t100,50\t10-1\nInvoice\t7,9\t\n");
}

void TestRuleChanges::anItemIsSavedAsARule()
{
    const QString file = bench->input("f.pdf", "first\nsecond & <last>\n");
    const RunnerResult result = change({"--save-rule", "Name", "--from", file, "--page", "2",
                                        "--text", "second & <last>", "--tools", "tools"});
    QCOMPARE(result.errors, QString());
    QCOMPARE(rules(), "Account\t100,50\t10-1\nName\t100,50\tsecond & <last>\n");
    const QSettings settings(bench->path("rules.ini"), QSettings::IniFormat);
    QCOMPARE(settings.value("Name/text").toString(), "second & &lt;last&gt;");
    QCOMPARE(settings.value("Name/wid").toInt(), 40);
    QCOMPARE(bench->splitBy({"--rule", "Name", "--settings", "rules.ini", file}).exitCode, 0);
}

void TestRuleChanges::anItemThatIsMissingOrDoubleIsNoRule()
{
    const QByteArray before = bench->read("rules.ini");
    const QString file = bench->input("f.pdf", "Statement\n");
    const QStringList words = {"--save-rule", "Name", "--from", file, "--tools", "tools", "--text"};
    const RunnerResult missing = change(words + QStringList{"other"});
    QCOMPARE(missing.exitCode, 1);
    QCOMPARE(missing.errors, "quorlin-batch: " + bench->path(file) +
                                 ": no item of the page has the text \"other\" (--list-items "
                                 "shows them)\n");
    const RunnerResult twice = change(words + QStringList{"Statement"});
    QCOMPARE(twice.exitCode, 1);
    QCOMPARE(twice.errors, "quorlin-batch: " + bench->path(file) +
                               ": the text occurs at several places: 20,30 and 100,50 (choose one "
                               "with --position)\n");
    QCOMPARE(bench->read("rules.ini"), before);
}

void TestRuleChanges::namesAreCheckedAsInTheEditor_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("said");
    QTest::newRow("taken") << "Account"
                           << "the rule \"Account\" already exists; choose another name";
    QTest::newRow("empty") << ""
                           << "--save-rule an empty value (see --help)";
    QTest::newRow("a slash") << "a/b"
                             << "the rule \"a/b\" could not be chosen: its name has a slash";
    QTest::newRow("a backslash") << "a\\b"
                                 << "the rule \"a\\b\" could not be chosen: its name has a slash";
    QTest::newRow("the list of rules itself")
        << "orbi"
        << "the rule \"orbi\" would be mixed up with the settings; choose another name";
    QTest::newRow("a section that is read otherwise")
        << "General"
        << "the rule \"General\" would be mixed up with the settings; choose another name";
}

void TestRuleChanges::namesAreCheckedAsInTheEditor()
{
    QFETCH(QString, name);
    QFETCH(QString, said);
    const QByteArray before = bench->read("rules.ini");
    const RunnerResult result = change({"--save-rule", name, "--position", "7,9"});
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.errors, "quorlin-batch: " + said + "\n");
    QCOMPARE(bench->read("rules.ini"), before);
}

void TestRuleChanges::aRuleIsRemoved()
{
    QCOMPARE(change({"--remove-rule", "Account"}).exitCode, 0);
    QCOMPARE(rules(), QString());
    QVERIFY(!bench->read("rules.ini").contains("Account")); // nor is it the current one
    const RunnerResult again = change({"--remove-rule", "Account"});
    QCOMPARE(again.exitCode, 2);
    QCOMPARE(again.errors,
             "quorlin-batch: there is no rule \"Account\" in " + bench->path("rules.ini") + "\n");
}

void TestRuleChanges::aRuleIsRenamed()
{
    QCOMPARE(change({"--rename-rule", "Account", "Customer, new"}).exitCode, 0);
    QCOMPARE(rules(), "Customer, new\t100,50\t10-1\n");
    QVERIFY(bench->read("rules.ini").contains("rule=\"Customer, new\""));
    change({"--save-rule", "Other", "--position", "1,2"});
    QCOMPARE(change({"--rename-rule", "Other", "Customer, new"}).exitCode, 2);
    QCOMPARE(change({"--rename-rule", "None", "New"}).exitCode, 2);
}

void TestRuleChanges::rulesAreCarriedToAnotherFile()
{
    change({"--save-rule", "Invoice", "--position", "7,9"});
    QCOMPARE(change({"--export-rules", "exported.ini"}).errors, QString());
    QCOMPARE(rules("exported.ini"), rules());
    QVERIFY(!bench->read("exported.ini").contains("/in"));
    bench->write("other.ini", "[orbi]\nInvoice=1\n[Invoice]\nxpos=7\nypos=9\nwid=0\nhei=0\n");
    const RunnerResult result =
        bench->run({"--import-rules", "exported.ini", "--settings", "other.ini"});
    QCOMPARE(result.errors, QString());
    QCOMPARE(rules("other.ini"), rules());
    QCOMPARE(QDir(bench->path()).entryList(QDir::Hidden | QDir::AllEntries).filter(".rules"),
             QStringList());
}

void TestRuleChanges::anExportReplacesNothingButRules()
{
    const QByteArray before = bench->read("rules.ini");
    QVERIFY(QFile::link(bench->path("rules.ini"), bench->path("link.ini")));
    for (const char *name : {"rules.ini", "link.ini"}) {
        const RunnerResult onto = change({"--export-rules", QLatin1String(name)});
        QCOMPARE(onto.exitCode, 2);
        QCOMPARE(onto.errors, "quorlin-batch: this is the settings file with the rules: " +
                                  bench->path(QLatin1String(name)) + "\n");
        QCOMPARE(bench->read("rules.ini"), before);
    }
    const QString pipe = bench->path("pipe.ini");
    QCOMPARE(mkfifo(qPrintable(pipe), 0600), 0);
    for (const QString &target : {pipe, bench->path("in")}) {
        const RunnerResult refused = change({"--export-rules", target});
        QCOMPARE(refused.exitCode, 2);
        QCOMPARE(refused.errors, "quorlin-batch: this is not a regular file: " + target + "\n");
        QVERIFY(!QFileInfo(target).isFile());
    }
}

void TestRuleChanges::rulesWithOtherValuesAreNotImported()
{
    bench->write("new.ini", "[orbi]\nA=1\nAccount=1\n[A]\nxpos=1\nypos=1\n"
                            "[Account]\nxpos=1\nypos=2\n");
    const QByteArray before = bench->read("rules.ini");
    const RunnerResult result = change({"--import-rules", "new.ini"});
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.errors, "quorlin-batch: the rule \"Account\" already exists with other values "
                            "(--remove-rule or --rename-rule first)\n");
    QCOMPARE(bench->read("rules.ini"), before);
}

void TestRuleChanges::brokenRulesAreNotImported()
{
    bench->write("new.ini", "[orbi]\nA=1\nB=1\n[A]\nxpos=1\nypos=1\n[B]\nxpos=1\nypos=-2\n");
    const RunnerResult result = change({"--import-rules", "new.ini"});
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.errors.contains("\"B\" has no usable position"), qPrintable(result.errors));
    QCOMPARE(rules(), "Account\t100,50\t10-1\n");
    QCOMPARE(change({"--import-rules", "none.ini"}).exitCode, 2);
    bench->write("empty.ini", "");
    QVERIFY(change({"--import-rules", "empty.ini"}).errors.contains("there are no rules in"));
}

void TestRuleChanges::theOtherSettingsStayAsTheyAre()
{
    const auto others = [this] {
        QSettings settings(bench->path("rules.ini"), QSettings::IniFormat);
        return settings.value("dir/input").toString() + "|" +
               settings.value("currule/rule").toString();
    };
    change({"--save-rule", "Invoice", "--position", "7,9"});
    QCOMPARE(others(), "/in|Account");
    change({"--rename-rule", "Invoice", "Bill"});
    QCOMPARE(others(), "/in|Account");
    change({"--remove-rule", "Bill"});
    QCOMPARE(others(), "/in|Account");
    // What a rule of that name shares a section with is not the rule's.
    change({"--save-rule", "dir", "--position", "7,9"});
    change({"--remove-rule", "dir"});
    QCOMPARE(others(), "/in|Account");
}

void TestRuleChanges::settingsThatCannotBeWrittenAreAnError()
{
    const RunnerResult result =
        bench->run({"--export-rules", "none/rules.ini", "--settings", "rules.ini"});
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.errors, "quorlin-batch: the settings cannot be written: " +
                                bench->path("none/rules.ini") + "\n");
}

void TestRuleChanges::aFullDiskKeepsTheSettings_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::newRow("saving") << QStringList{"--save-rule", "New", "--position", "7,9"};
    QTest::newRow("removing") << QStringList{"--remove-rule", "Account"};
    QTest::newRow("renaming") << QStringList{"--rename-rule", "Account", "New"};
    QTest::newRow("importing") << QStringList{"--import-rules", "more.ini"};
}

void TestRuleChanges::aFullDiskKeepsTheSettings()
{
    QFETCH(QStringList, words);
    bench->write("more.ini", "[orbi]\nNew=1\n[New]\nxpos=7\nypos=9\n");
    const QByteArray before = bench->read("rules.ini");
    QProcess process; // a limit on file sizes fails a write as a full disk does
    process.setChildProcessModifier([] {
        const rlimit limit{0, 0};
        setrlimit(RLIMIT_FSIZE, &limit);
        std::signal(SIGXFSZ, SIG_IGN);
    });
    prepareRunner(process, words + QStringList{"--settings", "rules.ini"}, bench->path(),
                  bench->path("tmp"));
    process.start();
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 2);
    QCOMPARE(QString::fromUtf8(process.readAllStandardError()),
             "quorlin-batch: the settings cannot be written: " + bench->path("rules.ini") + "\n");
    QCOMPARE(bench->read("rules.ini"), before);
}

void TestRuleChanges::usageFaultsExitWithTwo_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::newRow("neither position nor item") << QStringList{"--save-rule", "A"};
    QTest::newRow("position and item")
        << QStringList{"--save-rule", "A", "--position", "1,2", "--text", "t"};
    QTest::newRow("an item without text") << QStringList{"--save-rule", "A", "--from", "f.pdf"};
    QTest::newRow("one name") << QStringList{"--rename-rule", "A"};
    QTest::newRow("three names") << QStringList{"--rename-rule", "A", "B", "C"};
    QTest::newRow("a file too much") << QStringList{"--remove-rule", "A", "f.pdf"};
    QTest::newRow("two changes") << QStringList{"--remove-rule", "A", "--export-rules", "f"};
    QTest::newRow("an option of splits") << QStringList{"--remove-rule", "A", "--flat"};
}

void TestRuleChanges::usageFaultsExitWithTwo()
{
    QFETCH(QStringList, words);
    const QByteArray before = bench->read("rules.ini");
    const RunnerResult result = change(words);
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.errors.count('\n'), 1);
    QCOMPARE(bench->read("rules.ini"), before);
    const RunnerResult missing =
        bench->run({"--save-rule", "A", "--position", "1,2", "--settings", "none.ini"});
    QCOMPARE(missing.exitCode, 2);
    QVERIFY(!QFile::exists(bench->path("none.ini")));
}

QUORLIN_TEST(TestRuleChanges)
#include "test_rule_changes.moc"
