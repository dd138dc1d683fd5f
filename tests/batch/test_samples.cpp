#include "runner_process.h"
#include "tests/support/room.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

/// The sample batch, the sample rules and the real tools: what a new user runs first.
class TestSamples : public QObject
{
    Q_OBJECT

private slots:
    void bothFilesSplitByTheCustomerNumber();
    void sameCustomersComeTogether();
    void invoicesSplitByTheirNumber();
    void theRulesStandWhereTheItemsAre();
};

namespace {

QString sample(const char *name)
{
    return QStringLiteral(QUORLIN_SAMPLES_DIR "/") + QLatin1String(name);
}

QStringList names(const QTemporaryDir &folder, const char *subFolder)
{
    return QDir(folder.filePath(QLatin1String(subFolder))).entryList(QDir::Files, QDir::Name);
}

RunnerResult splitSamples(const QTemporaryDir &folder, const char *rule, const char *method,
                          const QStringList &files)
{
    return runRunner(QStringList{"--rule", rule, "--settings", sample("setting.ini"), "--method",
                                 method, "--output", folder.path()} +
                         files,
                     folder.path(), QDir::tempPath());
}

} // namespace

void TestSamples::bothFilesSplitByTheCustomerNumber()
{
    const QTemporaryDir folder;
    const RunnerResult result = splitSamples(folder, "Customer number", "1",
                                             {sample("statements.pdf"), sample("invoices.pdf")});
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(names(folder, "statements"),
             QStringList({"1 10-44710 statements 1-3.pdf", "2 10-51822 statements 4-5.pdf",
                          "3 10-60359 statements 6.pdf", "4 10-73341 statements 7-10.pdf",
                          "5 10-88094 statements 11-12.pdf"}));
    QCOMPARE(names(folder, "invoices").size(), 7);
}

void TestSamples::sameCustomersComeTogether()
{
    const QTemporaryDir folder;
    const RunnerResult result =
        splitSamples(folder, "Customer number", "3", {sample("invoices.pdf")});
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(names(folder, "invoices"),
             QStringList({"1 10-44710 invoices.pdf", "2 10-51822 invoices.pdf",
                          "3 10-73341 invoices.pdf", "4 10-88094 invoices.pdf",
                          "5 10-60359 invoices.pdf"}));
}

void TestSamples::invoicesSplitByTheirNumber()
{
    const QTemporaryDir folder;
    const RunnerResult result =
        splitSamples(folder, "Invoice number", "2", {sample("invoices.pdf")});
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(names(folder, "invoices").size(), 8);
    QCOMPARE(names(folder, "invoices").constLast(), "8 LS-2024307 invoices 8.pdf");
}

void TestSamples::theRulesStandWhereTheItemsAre()
{
    const RunnerResult rules =
        runRunner({"--list-rules", "--settings", sample("setting.ini")}, "/", QDir::tempPath());
    const RunnerResult items =
        runRunner({"--list-items", sample("invoices.pdf")}, "/", QDir::tempPath());
    const QStringList lines = rules.output.split('\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 2);
    for (const QString &line : lines) {
        const QStringList pieces = line.split('\t');
        const QStringList position = pieces.at(1).split(',');
        const QString row = position.at(0).rightJustified(7) + position.at(1).rightJustified(7);
        QVERIFY2(items.output.contains('\n' + row), qPrintable(items.output));
        QVERIFY(items.output.contains("  " + pieces.at(2) + '\n'));
    }
}

QUORLIN_TEST(TestSamples)
#include "test_samples.moc"
