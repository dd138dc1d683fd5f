#include "../faults/statements.h"
#include "runner_process.h"

#include "analysis/line_parser.h"
#include "batch/item_listing.h"
#include "pipeline/page_file_text.h"
#include "pipeline/page_items.h"
#include "tests/support/pdf_builder.h"
#include "tests/support/room.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using quorlin::test::statementPdf;

namespace {

const QString position =
    QStringLiteral("%1,%2").arg(quorlin::test::statementLeft).arg(quorlin::test::statementTop);

QString toolPath(const char *name)
{
    return QStringLiteral(QUORLIN_BIN_DIR "/") + QLatin1String(name);
}

} // namespace

/// The runner with the real tools, in what stand-ins for them cannot show.
class TestRealRuns : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void itemsAreThoseOfThePageFiles();
    void outputsAreNamedByTheTextsOfPageFiles();
    void aShortenedNameCountsAsWritten();
    void anInputThatChangesLeavesNoOutput_data();
    void anInputThatChangesLeavesNoOutput();
    void anUnreadablePageIsNamed();
    void theLogSaysWhatSandboxTheToolsHave();

private:
    QString write(const QString &name, const QByteArray &bytes) const;
    QStringList outputs(const QString &subFolder) const;
    RunnerResult split(const QStringList &words) const;
    QByteArray toolOutput(const QStringList &arguments) const;

    std::unique_ptr<QTemporaryDir> root;
};

void TestRealRuns::init()
{
    root = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(root->path()).mkdir("out"));
}

QString TestRealRuns::write(const QString &name, const QByteArray &bytes) const
{
    const QString path = root->filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("%s", qPrintable(file.errorString()));
    }
    return path;
}

QStringList TestRealRuns::outputs(const QString &subFolder) const
{
    return QDir(root->filePath("out/" + subFolder))
        .entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

RunnerResult TestRealRuns::split(const QStringList &words) const
{
    return runRunner(QStringList{"--position", position, "--output", "out"} + words, root->path(),
                     "/nonexistent");
}

QByteArray TestRealRuns::toolOutput(const QStringList &arguments) const
{
    QProcess tool;
    tool.setStandardInputFile(QProcess::nullDevice());
    tool.start(toolPath("pagexport"), arguments);
    return tool.waitForFinished() && tool.exitCode() == 0 ? tool.readAllStandardOutput()
                                                          : QByteArray();
}

void TestRealRuns::itemsAreThoseOfThePageFiles()
{
    const QString input =
        write("in.pdf", statementPdf({"<B> & \"C\"; &amp; AT&T &#38; &x",
                                      QStringLiteral("M\u00fcller & S\u00f6hne"), "", "a&lt;b"}));
    quorlin::batch::ItemGatherer gatherer;
    quorlin::PageItemsReader reader(gatherer);
    reader.take(toolOutput({"-items", input}));
    QVERIFY(reader.isComplete());

    toolOutput({"-htmlformat", input, root->filePath("split.xml")});
    QList<Subtext> expected;
    for (int page = 1; page <= 4; ++page) {
        QFile file(root->filePath(QStringLiteral("split_pg_000%1.htm").arg(page)));
        QVERIFY(file.open(QIODevice::ReadOnly));
        for (const QString &line : quorlin::pageFileLines(QString::fromUtf8(file.readAll()))) {
            if (const Subtext item = quorlin::parseItem(line); item != Subtext()) {
                expected.append(item);
            }
        }
    }
    QCOMPARE(expected.size(), 7);
    QCOMPARE(gatherer.items().size(), expected.size());
    for (qsizetype i = 0; i < expected.size(); ++i) {
        Subtext item = gatherer.items().at(i);
        QCOMPARE(quorlin::plainText(expected.at(i).text), item.text);
        item.text = quorlin::pageFileText(item.text);
        QCOMPARE(item.text, expected.at(i).text);
        QCOMPARE(item, expected.at(i));
    }
}

void TestRealRuns::outputsAreNamedByTheTextsOfPageFiles()
{
    const RunnerResult result =
        split({write("in.pdf", statementPdf({"A/B <C> & \"D\"", "A/B <C> & \"D\"", "x&lt;y"}))});
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(outputs("in"),
             QStringList({"1 A-B &lt;C&gt; & &quot;D&quot; in 1-2.pdf", "2 x&amp;lt;y in 3.pdf"}));
    const RunnerResult items = runRunner({"--list-items", "in.pdf"}, root->path(), "/nonexistent");
    QVERIFY2(items.output.contains("  A/B <C> & \"D\"\n"), qPrintable(items.output));
}

void TestRealRuns::aShortenedNameCountsAsWritten()
{
    const RunnerResult result = split({write("in.pdf", statementPdf({QString(230, u'x'), "B"})),
                                       write(QString(250, u'n') + ".pdf", statementPdf({"A"}))});
    QCOMPARE(result.exitCode, 0);
    QVERIFY(result.output.endsWith("2 of 2 files split.\n"));
    QCOMPARE(outputs("in").size(), 2);
    QCOMPARE(outputs(QString(250, u'n')).size(), 1);
}

void TestRealRuns::anInputThatChangesLeavesNoOutput_data()
{
    QTest::addColumn<QByteArray>("change");
    QTest::newRow("replaced") << QByteArray("cp \"$input\" new && mv new \"$input\"");
    QTest::newRow("written again at the same length")
        << QByteArray("cp \"$input\" copy && cat copy > \"$input\"");
    QTest::newRow("cut") << QByteArray("head -c 700 \"$input\" > copy && cat copy > \"$input\"");
    QTest::newRow("gone") << QByteArray("rm \"$input\"");
}

void TestRealRuns::anInputThatChangesLeavesNoOutput()
{
    QFETCH(QByteArray, change);
    const QString input = write("in.pdf", statementPdf({"A", "B", "C"}));
    // The export is the real one; as it ends, somebody touches the file.
    QVERIFY(QDir(root->path()).mkdir("tools"));
    QVERIFY(QFile::link(toolPath("pagebinder"), root->filePath("tools/pagebinder")));
    const QString tool = write("tools/pagexport", "#!/bin/sh\nfor input; do :; done\n'" +
                                                      QFile::encodeName(toolPath("pagexport")) +
                                                      "' \"$@\" || exit\n" + change + "\n");
    QVERIFY(QFile::setPermissions(tool, QFile::ReadOwner | QFile::ExeOwner));
    const RunnerResult result = split({"--tools", "tools", input});
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains("in.pdf: it changed while it was split"),
             qPrintable(result.errors));
    QVERIFY(QDir(root->filePath("out")).isEmpty());
}

void TestRealRuns::anUnreadablePageIsNamed()
{
    quorlin::test::PdfBuilder pdf;
    const auto addPage = [&](const char *text) {
        return std::to_string(
                   pdf.addPage("BT /F1 20 Tf 72 742 Td (" + std::string(text) + ") Tj ET")) +
               " 0 R ";
    };
    const std::string first = addPage("A");
    const std::string last = addPage("B");
    // Between them the tree names an object that does not exist.
    pdf.setPageTree("<</Type/Pages/Count 3/Kids[" + first + "99 0 R " + last + "]>>");
    const QString input = root->filePath("in.pdf");
    QVERIFY(pdf.save(input.toStdString()));
    const RunnerResult result = split({input});
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains("in.pdf: it has unreadable pages: page 2"),
             qPrintable(result.errors));
    QCOMPARE(outputs("in"), QStringList({"1 A in 1-2.pdf", "2 B in 3.pdf"}));
}

void TestRealRuns::theLogSaysWhatSandboxTheToolsHave()
{
    const QString input = write("in.pdf", statementPdf({"A", "B"}));
    const RunnerResult told = split({"--verbose", input});
    QCOMPARE(told.exitCode, 0);
    QVERIFY(told.errors.contains("pagexport: sandbox: system call filter"));
    QVERIFY(told.errors.contains("pagebinder: sandbox: system call filter"));
    QVERIFY(!split({input}).errors.contains("sandbox: "));
}

QUORLIN_TEST(TestRealRuns)
#include "test_real_runs.moc"
