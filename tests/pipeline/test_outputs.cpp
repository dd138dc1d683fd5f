#include "pipeline/output_list.h"
#include "pipeline/output_writer.h"
#include "pipeline/split_batch.h"
#include "pipeline/verdict.h"
#include "tests/support/room.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <array>

#ifdef __linux__
#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

using namespace quorlin;

namespace {

OutputResult writtenOutput(const QString &path, qint64 bytes = 3)
{
    OutputResult output;
    output.path = path;
    output.bytes = bytes;
    output.state = OutputResult::State::Written;
    return output;
}

/// Whether root may go beyond the permissions of files; others never do. @returns success
bool usePrivileges([[maybe_unused]] bool areUsed)
{
#ifdef __linux__
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> sets{};
    if (::syscall(SYS_capget, &header, sets.data()) != 0) {
        return false;
    }
    for (__user_cap_data_struct &set : sets) {
        set.effective = areUsed ? set.permitted : 0;
    }
    return ::syscall(SYS_capset, &header, sets.data()) == 0;
#else
    return true;
#endif
}

void writeFile(const QString &path, const QByteArray &bytes = "abc")
{
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly | QIODevice::Truncate), qPrintable(path));
    file.write(bytes);
}

/// What is known of a file of five pages that was split as it should be.
SplitFacts goodFacts()
{
    SplitFacts facts;
    facts.pages = 5;
    facts.pagesRead = 5;
    facts.outputs = {writtenOutput("/out/a/1 A a 1-2.pdf"), writtenOutput("/out/a/2 B a 3-5.pdf")};
    return facts;
}

SplitSettings settingsWith(std::optional<BlankPages> blankPages = {}, bool blankPagesFail = false)
{
    SplitSettings settings;
    settings.place.position = QPoint(100, 50);
    settings.blankPages = blankPages;
    settings.blankPagesFail = blankPagesFail;
    return settings;
}

} // namespace

Q_DECLARE_METATYPE(quorlin::SplitFacts)
Q_DECLARE_METATYPE(quorlin::SplitSettings)

/// What the engine plans, hears from the tool and makes of it.
class TestOutputs : public QObject
{
    Q_OBJECT

private slots:
    void namesAreTheWindows();
    void entriesHoldRangesAndPath();
    void answersAreRead_data();
    void answersAreRead();
    void anAnswerNamesThePathThatWasWritten();
    void oddLinesAreNoAnswers_data();
    void oddLinesAreNoAnswers();
    void verdictsNameTheReason_data();
    void verdictsNameTheReason();
    void anOutputMustBeThereAsItWasWritten();
    void anOutputThatAnotherOneReplacedIsNoted();
    void onlyOutputsOfThisRunAreRemoved();
    void anOutputThatCannotBeRemovedSaysSo();
    void namesThatADiskMayConfuseShareAFolder();
    void anotherProcessPaysForManyOutputsOnly();
};

void TestOutputs::namesAreTheWindows()
{
    const QList<OutputResult> outputs =
        planOutputs({{"1-2", "3"}, {"A/B", "<C>"}}, "/in/report.v2.pdf", "/out", 0);
    QCOMPARE(outputs.size(), 2);
    QCOMPARE(outputs.at(0).path, "/out/report/1 A-B report 1-2.pdf");
    QCOMPARE(outputs.at(0).text, "A/B");
    QCOMPARE(outputs.at(0).number, 1);
    QCOMPARE(outputs.at(1).number, 2);
    QCOMPARE(outputs.at(1).path, "/out/report/2 &lt;C&gt; report 3.pdf");
    QCOMPARE(outputs.at(1).text, "<C>");
    QCOMPARE(planOutputs({{"1-2 4"}, {" "}}, "/in/report.pdf", "/out", 2).at(0).path,
             "/out/report/1   report.pdf");
}

void TestOutputs::entriesHoldRangesAndPath()
{
    OutputResult output = writtenOutput(QStringLiteral("/out/a\n\tü.pdf"));
    output.range = "1-2 5";
    QCOMPARE(listEntry(output), QByteArray("1-2 5\t/out/a\n\t\xc3\xbc.pdf\0", 21));
}

void TestOutputs::answersAreRead_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("rest");
    using State = OutputResult::State;
    QTest::newRow("written") << QByteArray("done\t1\t3\t/o/a.pdf") << 0 << int(State::Written)
                             << "/o/a.pdf"
                             << "";
    QTest::newRow("with stand-ins")
        << QByteArray("standin\t12\t3\t4 7\t/o/a.pdf") << 11 << int(State::StandIns) << "/o/a.pdf"
        << "4 7";
    QTest::newRow("failed") << QByteArray("failed\t2\tno space is left") << 1 << int(State::Failed)
                            << ""
                            << "no space is left";
    QTest::newRow("failed for a reason with a tab")
        << QByteArray("failed\t2\tno\tspace") << 1 << int(State::Failed) << ""
        << "no\tspace";
    QTest::newRow("a path that ends within an escape")
        << QByteArray("done\t1\t3\t/o/a\\x4") << 0 << int(State::Written) << "/o/a\\x4"
        << "";
    QTest::newRow("an odd path") << QByteArray("done\t1\t3\t/o/a\\x0ab\\\\c\\x09.pdf") << 0
                                 << int(State::Written) << "/o/a\nb\\c\t.pdf"
                                 << "";
}

void TestOutputs::answersAreRead()
{
    QFETCH(QByteArray, line);
    const std::optional<OutputReport> report = readOutputReport(line);
    QVERIFY(report.has_value());
    QTEST(int(report->index), "index");
    QTEST(int(report->state), "state");
    QTEST(report->path, "path");
    QTEST(report->standInPages + report->reason, "rest");
    QVERIFY(!report->inputChanged);
}

void TestOutputs::anAnswerNamesThePathThatWasWritten()
{
    OutputResult output = writtenOutput("/o/a very long name.pdf", 0);
    applyReport(*readOutputReport("done\t1\t77\t/o/a very.pdf"), output);
    QCOMPARE(output.path, "/o/a very.pdf");
    QCOMPARE(output.bytes, 77);
    applyReport(*readOutputReport("failed\t1\tit broke"), output);
    QCOMPARE(output.path, "/o/a very.pdf");
    QCOMPARE(output.reason, "it broke");
    QVERIFY(readOutputReport("changed")->inputChanged);
}

void TestOutputs::oddLinesAreNoAnswers_data()
{
    QTest::addColumn<QByteArray>("line");
    for (const char *line : {"", "done", "done\t1", "done\t1\t3", "done\tx\t3\t/o/a.pdf",
                             "done\t0\t3\t/o/a.pdf", "done\t1\tx\t/o/a.pdf", "failed\t1",
                             "standin\t1\t3\t/o/a.pdf", "hello\t1\t3\t/o/a.pdf"}) {
        QTest::newRow(line) << QByteArray(line);
    }
}

void TestOutputs::oddLinesAreNoAnswers()
{
    QFETCH(QByteArray, line);
    QVERIFY(!readOutputReport(line).has_value());
}

void TestOutputs::verdictsNameTheReason_data()
{
    QTest::addColumn<SplitFacts>("facts");
    QTest::addColumn<SplitSettings>("settings");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char *name, const char *reason, auto change,
                        const SplitSettings &settings = settingsWith()) {
        SplitFacts facts = goodFacts();
        change(facts);
        QTest::newRow(name) << facts << settings << reason;
    };
    row("all well", "", [](SplitFacts &) {});
    row("a fault", "it is locked", [](SplitFacts &f) { f.fault = "it is locked"; });
    row("a hung tool", "no progress", [](SplitFacts &f) { f.stalled = true; });
    row("the run ended inside the file", "before it was done",
        [](SplitFacts &f) { f.cancelled = true; });
    row("the input changed", "it changed while it was split", [](SplitFacts &f) {
        f.inputChanged = true;
        f.fault = "whatever came of it";
    });
    row("an output missing", "1 of 2 outputs were not written, the first is /out/a/2", [](auto &f) {
        f.outputs[1].state = OutputResult::State::Failed;
        f.outputs[1].reason = "no space is left";
    });
    row("an output missing, the tool says why", "(no space is left)", [](auto &f) {
        f.outputs[0].state = OutputResult::State::Failed;
        f.outputs[0].reason = "no space is left";
    });
    row("an output replaced", "another file of the same name replaced 1",
        [](auto &f) { f.replacedOutputs = QStringList{"/out/a/1 A a 1-2.pdf"}; });
    row("no outputs", "no output was written", [](auto &f) { f.outputs.clear(); });
    row("an unreadable page", "unreadable pages: page 3",
        [](auto &f) { f.unreadablePages = QList<int>{3}; });
    row("unreadable pages", "2 pages, the first is page 3", [](auto &f) {
        f.unreadablePages = QList<int>{3, 4};
    });
    row("a page read in part without its text", "only in part", [](auto &f) {
        f.doubtfulPages = QList<int>{2};
        f.pagesWithoutText = 1;
    });
    row("a page read in part with its text", "", [](auto &f) { f.pageWarnings = 1; });
    row("a stand-in", "page 4 in /out/a/2", [](auto &f) {
        f.outputs[1].state = OutputResult::State::StandIns;
        f.outputs[1].standInPages = "4 5";
    });
    const auto someBlank = [](SplitFacts &f) { f.pagesWithoutText = 2; };
    const auto allBlank = [](SplitFacts &f) { f.pagesWithoutText = 5; };
    row("some pages without text", "", someBlank);
    row("some dropped", "", someBlank, settingsWith(BlankPages::Drop));
    row("some not allowed", "2 of 5 pages have no text at 100,50", someBlank,
        settingsWith({}, true));
    row("no text at all", "no page has text at 100,50 (--list-items", allBlank);
    row("no text at all, joined", "", allBlank, settingsWith(BlankPages::Join));
    row("no text at all, separate", "", allBlank, settingsWith(BlankPages::Separate));
    row("no text at all, dropped", "no page has text at 100,50", allBlank,
        settingsWith(BlankPages::Drop));
}

void TestOutputs::verdictsNameTheReason()
{
    QFETCH(SplitFacts, facts);
    QFETCH(SplitSettings, settings);
    QFETCH(QString, reason);
    const Verdict verdict = judge(facts, settings);
    QCOMPARE(verdict.succeeded, reason.isEmpty());
    QVERIFY2(verdict.reason.contains(reason), qPrintable(verdict.reason));
}

void TestOutputs::anOutputMustBeThereAsItWasWritten()
{
    QTemporaryDir folder;
    QList<OutputResult> outputs = {writtenOutput(folder.filePath("whole")),
                                   writtenOutput(folder.filePath("short"), 4),
                                   writtenOutput(folder.filePath("missing"))};
    writeFile(outputs.at(0).path);
    writeFile(outputs.at(1).path);
    inspectOutputs(outputs);
    QCOMPARE(outputs.at(0).state, OutputResult::State::Written);
    QVERIFY(outputs.at(0).identity.has_value());
    QCOMPARE(outputs.at(1).state, OutputResult::State::Failed);
    QCOMPARE(outputs.at(2).state, OutputResult::State::Failed);
}

void TestOutputs::anOutputThatAnotherOneReplacedIsNoted()
{
    QTemporaryDir folder;
    SplitFacts facts;
    facts.outputs = {writtenOutput(folder.filePath("one")), writtenOutput(folder.filePath("two"))};
    writeFile(folder.filePath("one"));
    writeFile(folder.filePath("two"));
    inspectOutputs(facts.outputs);
    writeFile(folder.filePath("new"));
    QVERIFY(QFile::remove(folder.filePath("two")));
    QVERIFY(QFile::rename(folder.filePath("new"), folder.filePath("two")));
    noteReplacedOutputs(facts);
    QCOMPARE(facts.replacedOutputs, QStringList{folder.filePath("two")});
}

void TestOutputs::onlyOutputsOfThisRunAreRemoved()
{
    QTemporaryDir folder;
    QList<OutputResult> outputs = {writtenOutput(folder.filePath("written")),
                                   writtenOutput(folder.filePath("planned")),
                                   writtenOutput(folder.filePath("other"), 99)};
    outputs[1].state = OutputResult::State::Planned;
    for (const OutputResult &output : std::as_const(outputs)) {
        writeFile(output.path);
    }
    removeOutputs(outputs);
    QVERIFY(!QFile::exists(outputs.at(0).path));
    QVERIFY(QFile::exists(outputs.at(1).path));
    QVERIFY(QFile::exists(outputs.at(2).path));
}

void TestOutputs::anOutputThatCannotBeRemovedSaysSo()
{
    QTemporaryDir folder;
    QList<OutputResult> outputs = {writtenOutput(folder.filePath("written"))};
    writeFile(outputs.at(0).path);
    QVERIFY(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner));
    QVERIFY(usePrivileges(false));
    removeOutputs(outputs);
    QVERIFY(usePrivileges(true));
    QVERIFY(QFile::setPermissions(folder.path(),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QVERIFY(QFile::exists(outputs.at(0).path));
    QCOMPARE(outputs.at(0).state, OutputResult::State::Failed);
    QCOMPARE(outputs.at(0).reason,
             QStringLiteral("the input changed, but the output could not be removed"));
}

void TestOutputs::namesThatADiskMayConfuseShareAFolder()
{
    QCOMPARE(filesSharingFolders({"/a/x.pdf", "/a/y.pdf"}), QList<QList<qsizetype>>());
    QCOMPARE(filesSharingFolders({"/a/x.pdf", "/a/y.pdf", "/b/X.v2.pdf", "/a/.z", "/b/.pdf"}),
             QList<QList<qsizetype>>({{0, 2}, {3, 4}}));
    // The same letter as one character and as two.
    QCOMPARE(
        filesSharingFolders({QStringLiteral("/a/\u00fc.pdf"), QStringLiteral("/b/u\u0308.pdf")}),
        QList<QList<qsizetype>>({{0, 1}}));
}

void TestOutputs::anotherProcessPaysForManyOutputsOnly()
{
    QCOMPARE(passCount(0, 8), 1);
    QCOMPARE(passCount(76, 8), 1);
    QCOMPARE(passCount(4000, 2), 2);
    QCOMPARE(passCount(4000, 1), 1);
    QVERIFY(passCount(1000, 64) < 10);
}

QUORLIN_TEST(TestOutputs)
#include "test_outputs.moc"
