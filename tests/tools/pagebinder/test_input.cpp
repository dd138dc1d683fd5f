// An input that changes is noticed, before and after the work, and nothing is made of it.

#include "pdf_inspector.h"
#include "test_pdf.h"
#include "tests/support/input_changes.h"
#include "tool_run.h"

#include "tests/support/room.h"
#include "tools/common/input_file.h"
#include "tools/pagebinder/document/information.h"
#include "tools/pagebinder/merge.h"
#include "tools/pagebinder/output/output_places.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using quorlin::test::Change;
using quorlin::test::changeFile;
using quorlin::test::identityText;
using tools::InputFile;

class PageBinderInputTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void readsIdentities_data();
    void readsIdentities();
    void theNotedInputIsTaken();
    void anInputThatChangedBeforeIsRefused_data() { addChanges(); }
    void anInputThatChangedBeforeIsRefused();
    void anInputThatChangesDuringTheWorkIsNoticed_data() { addChanges(); }
    void anInputThatChangesDuringTheWorkIsNoticed();
    void aLinkThatLeadsToAnotherFileIsNoticed();
    void anInputThatChangesBetweenOutputsStopsThem_data() { addChanges(); }
    void anInputThatChangesBetweenOutputsStopsThem();
    void anUnreadableIdentityIsWrongUsage();
    void anEmptyIdentityIsNone();
    void foldersAndDevicesAreNoInputs();
    void pagesComeFromTheFileThatWasOpened();

private:
    static void addChanges();
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QByteArray contentOf(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void writeOlderOutput(const QString &name) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("older");
    }
    QStringList hiddenFiles() const
    {
        return QDir(m_folder->path()).entryList({".*"}, QDir::Files | QDir::Hidden);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_input;
};

void PageBinderInputTest::addChanges()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("replaced") << Change::replaced;
    QTest::newRow("rewritten in place") << Change::rewritten;
    QTest::newRow("appended to") << Change::appended;
    QTest::newRow("truncated") << Change::truncated;
    QTest::newRow("removed") << Change::removed;
}

void PageBinderInputTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_input = TestPdf::pages(5).save(m_folder->path());
}

void PageBinderInputTest::readsIdentities_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("understood");
    QTest::newRow("all numbers") << QByteArray("1:2:3:4.000000005") << true;
    QTest::newRow("large numbers")
        << QByteArray("18446744073709551615:18446744073709551615:9:9223372036854775807.999999999")
        << true;
    QTest::newRow("before 1970") << QByteArray("1:2:3:-4.000000005") << true;
    QTest::newRow("nothing") << QByteArray() << false;
    QTest::newRow("too few numbers") << QByteArray("1:2:4.000000005") << false;
    QTest::newRow("too many numbers") << QByteArray("1:2:3:4.000000005:6") << false;
    QTest::newRow("fewer digits") << QByteArray("1:2:3:4.5") << false;
    QTest::newRow("more digits") << QByteArray("1:2:3:4.0000000050") << false;
    QTest::newRow("a sign behind the point") << QByteArray("1:2:3:4.-00000005") << false;
    QTest::newRow("no nanoseconds") << QByteArray("1:2:3:4") << false;
    QTest::newRow("negative") << QByteArray("-1:2:3:4.000000005") << false;
    QTest::newRow("letters") << QByteArray("a:2:3:4.000000005") << false;
    QTest::newRow("a letter at the end") << QByteArray("1:2:3:4.00000000x") << false;
    QTest::newRow("another sign between numbers") << QByteArray("1;2:3:4.000000005") << false;
    QTest::newRow("a blank") << QByteArray("1: 2:3:4.000000005") << false;
    QTest::newRow("too large") << QByteArray("1:2:18446744073709551616:4.000000005") << false;
}

void PageBinderInputTest::readsIdentities()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, understood);
    const std::optional<tools::FileIdentity> identity = tools::parseIdentity(text.toStdString());
    QCOMPARE(identity.has_value(), understood);
    if (text == "1:2:3:4.000000005") {
        QVERIFY(*identity == (tools::FileIdentity{1, 2, 3, 4, 5}));
    }
}

void PageBinderInputTest::theNotedInputIsTaken()
{
    const QString identity = identityText(m_input);
    const QStringList merging = {m_input, "-merge", "1-2", "-outfile", path("out.pdf")};
    QCOMPARE(runBinder(merging, {}, identity).status, 0);
    QCOMPARE(PdfInspector(path("out.pdf")).pageCount(), 2);
    QCOMPARE(runBinder({m_input, "-getinfo", "-outfile", path("info")}, {}, identity).status, 0);
    QVERIFY(contentOf("info").startsWith("NumberOfPages: 5\n"));
    QCOMPARE(
        runBinder({m_input, "-split", "-"}, "1\t" + path("a.pdf").toUtf8() + '\n', identity).status,
        0);
}

void PageBinderInputTest::anInputThatChangedBeforeIsRefused()
{
    QFETCH(Change, change);
    const QString identity = identityText(m_input);
    changeFile(m_input, change);
    writeOlderOutput("out.pdf");
    const QByteArray line =
        "pagebinder: " + m_input.toUtf8() +
        (change == Change::removed ? ": No such file or directory\n"
                                   : ": changed since its pages were counted\n");

    const ToolRun merged =
        runBinder({m_input, "-merge", "1", "-outfile", path("out.pdf")}, {}, identity);
    QCOMPARE(merged.status, 1);
    QCOMPARE(merged.errors, line);
    QCOMPARE(contentOf("out.pdf"), QByteArray("older"));

    const ToolRun informed =
        runBinder({m_input, "-getinfo", "-outfile", path("info")}, {}, identity);
    QCOMPARE(informed.status, 1);
    QCOMPARE(informed.errors, line);
    QVERIFY(!QFileInfo::exists(path("info")));

    const ToolRun split =
        runBinder({m_input, "-split", "-"}, "1\t" + path("out.pdf").toUtf8() + '\n', identity);
    QCOMPARE(split.status, 1);
    QCOMPARE(split.errors, line);
    QCOMPARE(contentOf("out.pdf"), QByteArray("older"));
    QCOMPARE(hiddenFiles(), QStringList());
}

void PageBinderInputTest::anInputThatChangesDuringTheWorkIsNoticed()
{
    QFETCH(Change, change);
    writeOlderOutput("out.pdf");
    tools::PdfContext context("pagebinder");
    InputFile input(m_input.toStdString());
    const tools::OutputPlaces places(input,
                                     {path("out.pdf").toStdString(), path("info").toStdString()});
    tools::SourceFile file(context, std::move(input));
    changeFile(m_input, change);
    try {
        tools::mergePages(file, {{1, 5}}, places.at(0));
        QFAIL("an output was made of two states of the input");
    } catch (const tools::InputChanged &error) {
        QCOMPARE(QByteArray(error.what()), QByteArray("changed while it was read"));
    }
    QVERIFY_EXCEPTION_THROWN(tools::writeInformation(file, places.at(1)), tools::InputChanged);
    QCOMPARE(contentOf("out.pdf"), QByteArray("older"));
    QVERIFY(!QFileInfo::exists(path("info")));
    QCOMPARE(hiddenFiles(), QStringList());
}

void PageBinderInputTest::aLinkThatLeadsToAnotherFileIsNoticed()
{
    QVERIFY(QFile::link(m_input, path("link")));
    tools::PdfContext context("pagebinder");
    InputFile input(path("link").toStdString());
    const tools::OutputPlaces places(input, {path("out.pdf").toStdString()});
    tools::SourceFile file(context, std::move(input));
    QVERIFY(QFile::copy(m_input, path("other.pdf")));
    QVERIFY(QFile::remove(path("link")));
    QVERIFY(QFile::link(path("other.pdf"), path("link")));
    QVERIFY_EXCEPTION_THROWN(tools::mergePages(file, {{1, 5}}, places.at(0)), tools::InputChanged);
    QVERIFY(!QFileInfo::exists(path("out.pdf")));
}

void PageBinderInputTest::anInputThatChangesBetweenOutputsStopsThem()
{
    QFETCH(Change, change);
    // More reports than a pipe holds: the tool waits in the middle until they are read.
    QString deep = m_folder->path();
    for (int i = 0; i < 10; ++i) {
        deep += '/' + QString(200, QChar('a' + i));
    }
    QVERIFY(QDir().mkpath(deep));
    constexpr int outputs = 400;
    QByteArray list;
    for (int i = 1; i <= outputs; ++i) {
        list += "1-5\t" + deep.toUtf8() + '/' + QByteArray::number(i) + '\n';
    }
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QUORLIN_INPUT_IDENTITY", identityText(m_input));
    process.setProcessEnvironment(environment);
    process.start(binderPath(), {m_input, "-split", "-"});
    process.write(list);
    process.closeWriteChannel();
    QVERIFY(process.waitForReadyRead());
    changeFile(m_input, change);
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 1);
    QCOMPARE(process.readAllStandardError(),
             "pagebinder: " + m_input.toUtf8() + ": changed since its pages were counted\n");

    QList<QByteArray> lines = process.readAllStandardOutput().split('\n');
    QCOMPARE(lines.takeLast(), QByteArray());
    QCOMPARE(lines.takeLast(), QByteArray("changed"));
    QCOMPARE(lines.size(), outputs);
    int done = 0;
    while (lines[done].startsWith("done\t")) {
        ++done;
    }
    QVERIFY(done > 0 && done < outputs);
    for (int i = done; i < outputs; ++i) {
        QCOMPARE(lines[i],
                 "failed\t" + QByteArray::number(i + 1) + "\tchanged since its pages were counted");
    }
    // What was reported as done holds the pages that were counted, and the rest is not there.
    QCOMPARE(QDir(deep).entryList(QDir::Files | QDir::Hidden).size(), done);
    QCOMPARE(PdfInspector(deep + '/' + QString::number(done)).pageCount(), 5);
}

void PageBinderInputTest::anUnreadableIdentityIsWrongUsage()
{
    writeOlderOutput("out.pdf");
    for (const QStringList &action : {QStringList{"-merge", "1"}, QStringList{"-getinfo"}}) {
        const ToolRun run = runBinder(
            QStringList{m_input} + action + QStringList{"-outfile", path("out.pdf")}, {}, "5:6");
        QCOMPARE(run.status, 2);
        QCOMPARE(run.errors,
                 QByteArray("pagebinder: QUORLIN_INPUT_IDENTITY is not a valid identity: 5:6\n"));
        QCOMPARE(contentOf("out.pdf"), QByteArray("older"));
    }
}

void PageBinderInputTest::anEmptyIdentityIsNone()
{
    QCOMPARE(runBinder({m_input, "-merge", "1", "-outfile", path("out.pdf")}, {}, "").status, 0);
}

void PageBinderInputTest::foldersAndDevicesAreNoInputs()
{
    for (const QString &input : {path("."), QStringLiteral("/dev/null")}) {
        const ToolRun run = runBinder({input, "-merge", "1", "-outfile", path("out.pdf")});
        QCOMPARE(run.status, 1);
        QVERIFY2(run.errors.contains("not a regular file"), run.errors.constData());
    }
}

void PageBinderInputTest::pagesComeFromTheFileThatWasOpened()
{
    const InputFile input(m_input.toStdString());
    const QByteArray before = contentOf("input.pdf");
    changeFile(m_input, Change::replaced);
    QCOMPARE(input.size(), std::int64_t(before.size()));
    QByteArray read(before.size(), '\0');
    QCOMPARE(::pread(input.descriptor(), read.data(), size_t(read.size()), 0), before.size());
    QCOMPARE(read, before);
    QVERIFY_EXCEPTION_THROWN(input.checkUnchanged(), tools::InputChanged);
}

QUORLIN_TEST(PageBinderInputTest)
#include "test_input.moc"
