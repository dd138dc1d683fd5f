#include "batch/rule_lookup.h"
#include "batch/run_plan.h"
#include "tests/support/room.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace quorlin::batch;

namespace {

void writeFile(const QString &path, const QByteArray &bytes = "x")
{
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(path));
    file.write(bytes);
}

} // namespace

class TestPlan : public QObject
{
    Q_OBJECT

private slots:
    void relativePathsBelongToTheCaller_data();
    void relativePathsBelongToTheCaller();
    void whatIsNoFileIsRefused();
    void otherFilesStayWhenOneIsRefused();
    void aFileNamedTwiceIsSplitOnce();
    void sharedOutputFoldersAreWarnedOf();
    void theOutputFolderMustBeThere();
    void theOutputFolderIsMadeWhenAsked();
    void rulesComeFromTheSettingsFile();
    void aMissingSettingsFileHoldsNoRules();

private:
    QTemporaryDir folder;
};

void TestPlan::relativePathsBelongToTheCaller_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("absolute");
    QTest::newRow("plain") << "a.pdf"
                           << "/home/ada/a.pdf";
    QTest::newRow("up") << "../b/./a.pdf"
                        << "/home/b/a.pdf";
    QTest::newRow("absolute") << "/x//a.pdf"
                              << "/x/a.pdf";
    QTest::newRow("option-like") << "-f.pdf"
                                 << "/home/ada/-f.pdf";
}

void TestPlan::relativePathsBelongToTheCaller()
{
    QFETCH(QString, path);
    QFETCH(QString, absolute);
    QCOMPARE(absolutePath(path, QStringLiteral("/home/ada")), absolute);
}

void TestPlan::whatIsNoFileIsRefused()
{
    const QString pipe = folder.filePath("pipe.pdf");
    QCOMPARE(mkfifo(qPrintable(pipe), 0600), 0);
    const QString good = folder.filePath("good.pdf");
    writeFile(good);
    QCOMPARE(refusalOf(folder.filePath("none.pdf")), "there is no such file");
    QCOMPARE(refusalOf(folder.path()),
             "it is a folder (name its files, for example with \"find FOLDER -name '*.pdf' | "
             "quorlin-batch --files-from -\")");
    QCOMPARE(refusalOf(pipe), "it is not a regular file");
    QCOMPARE(refusalOf(good), QString());
}

void TestPlan::otherFilesStayWhenOneIsRefused()
{
    writeFile(folder.filePath("one.pdf"));
    writeFile(folder.filePath("two.pdf"));
    Arguments arguments;
    arguments.outputFolder = "out";
    arguments.files = QStringList{"one.pdf", "none.pdf", "", "two.pdf"};
    const RunPlan plan = planRun(arguments, folder.path());
    QCOMPARE(plan.outputFolder, folder.filePath("out"));
    QCOMPARE(plan.files, QStringList({folder.filePath("one.pdf"), folder.filePath("two.pdf")}));
    QCOMPARE(plan.refusedFiles.size(), 2);
    QCOMPARE(plan.refusedFiles.at(0).path, folder.filePath("none.pdf"));
    QCOMPARE(plan.refusedFiles.at(0).reason, "there is no such file");
    QCOMPARE(plan.refusedFiles.at(0).filesBefore, 1);
    QCOMPARE(plan.refusedFiles.at(1).reason, "an empty file name");
    QCOMPARE(plan.refusedFiles.at(1).filesBefore, 1);
}

void TestPlan::aFileNamedTwiceIsSplitOnce()
{
    writeFile(folder.filePath("one.pdf"));
    Arguments arguments;
    arguments.outputFolder = "out";
    arguments.files = QStringList{"one.pdf", "./one.pdf"};
    const RunPlan plan = planRun(arguments, folder.path());
    QCOMPARE(plan.files, QStringList{folder.filePath("one.pdf")});
    QCOMPARE(plan.warnings,
             QStringList{folder.filePath("one.pdf") + ": listed twice, but split only once"});
}

void TestPlan::sharedOutputFoldersAreWarnedOf()
{
    QCOMPARE(sharedFolderWarnings({"/a/x.pdf", "/a/y.pdf"}, "/out"), QStringList());
    const QStringList warnings =
        sharedFolderWarnings({"/a/x.pdf", "/b/x.v2.pdf", "/a/y.pdf"}, "/out");
    QCOMPARE(warnings, QStringList{"2 files share the output folder /out/x (--flat keeps the "
                                   "outputs of all): /a/x.pdf, /b/x.v2.pdf"});
}

void TestPlan::theOutputFolderMustBeThere()
{
    QCOMPARE(prepareOutputFolder(folder.path(), false), QString());
    QCOMPARE(prepareOutputFolder(folder.filePath("missing"), false),
             folder.filePath("missing") + ": there is no such output folder (--create makes it)");
    writeFile(folder.filePath("file"));
    QCOMPARE(prepareOutputFolder(folder.filePath("file"), true),
             folder.filePath("file") + ": the output folder is a file");
    QCOMPARE(prepareOutputFolder(folder.filePath("file/sub"), true),
             folder.filePath("file/sub") + ": the output folder could not be created");
}

void TestPlan::theOutputFolderIsMadeWhenAsked()
{
    QCOMPARE(prepareOutputFolder(folder.filePath("new/deep"), true), QString());
    QVERIFY(QDir(folder.filePath("new/deep")).exists());
}

void TestPlan::rulesComeFromTheSettingsFile()
{
    const QString settings = folder.filePath("rules.ini");
    writeFile(settings, "[orbi]\nAccount%20number=1\nEmpty=1\nlet\\ter=1\n\n"
                        "[Account%20number]\nxpos=600\nypos=72\nwid=10\nhei=12\ntext=\"a, b\"\n");
    const RuleLookup lookup(settings);
    QCOMPARE(lookup.fault(), QString());
    QCOMPARE(lookup.listedRules().size(), 2);
    QCOMPARE(lookup.listedRules().at(0).name, "Account number");
    QCOMPARE(lookup.listedRules().at(0).item, (Subtext{600, 72, 10, 12, "a, b"}));
    const RuleLookup::Position rule = lookup.find("Account number");
    QCOMPARE(rule.fault, QString());
    QCOMPARE(rule.position, QPoint(600, 72));
    QVERIFY(lookup.find("Empty").fault.contains("has no position"));
    QVERIFY2(lookup.find("let/ter").fault.contains("has no position"),
             "a name with a slash is not listed, yet known");
    QVERIFY(lookup.find("account number").fault.contains("there is no rule"));
    QVERIFY(lookup.find("None").fault.contains("there is no rule"));
}

void TestPlan::aMissingSettingsFileHoldsNoRules()
{
    const RuleLookup lookup(folder.filePath("none.ini"));
    QCOMPARE(lookup.fault(), QString());
    QVERIFY(lookup.listedRules().isEmpty());
    QVERIFY(!QFile::exists(folder.filePath("none.ini")));
    QVERIFY(RuleLookup(folder.path()).fault().contains("cannot be read"));
}

QUORLIN_TEST(TestPlan)
#include "test_plan.moc"
