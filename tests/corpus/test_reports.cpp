#include "../batch/runner_process.h"
#include "corpus.h"
#include "field_position.h"
#include "tests/support/programs.h"
#include "tests/support/room.h"
#include "text_comparison.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// The runner's report over batches of many producers, planned and done, by every method: the same
/// texts and pages that are known to be right.
class TestCorpusReports : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void reportsTellWhatIsKnown_data();
    void reportsTellWhatIsKnown();
};

namespace {

QList<int> numbers(const QJsonArray &array)
{
    QList<int> list;
    for (const QJsonValue &value : array) {
        list.append(value.toInt());
    }
    return list;
}

/// Compares an output of the report with its group; gives what differs, or an empty text.
QString faultOfOutput(const QJsonObject &output, const ExpectedGroup &group, int number,
                      const QString &result)
{
    if (output["number"].toInt() != number || output["result"].toString() != result) {
        return "number or result";
    }
    if (!sameText(output["text"].toString(), group.key)) {
        return "text " + output["text"].toString() + ", expected " + group.key;
    }
    if (numbers(output["pages"].toArray()) != group.pages) {
        return "pages " + output["range"].toString();
    }
    const QFileInfo file(output["path"].toString());
    const bool isPlan = result == QLatin1String("planned");
    const qint64 bytes = isPlan ? 0 : file.size();
    return file.exists() == !isPlan && output["bytes"].toInteger() == bytes ? QString()
                                                                            : "size on the disk";
}

/// Compares the report of one run with what is known of @p file; gives the first difference.
QString faultOfReport(const QByteArray &json, const CorpusFile &file, int method,
                      const QString &result)
{
    const QJsonArray inputs = QJsonDocument::fromJson(json).object()["inputs"].toArray();
    const QJsonObject input = inputs.at(0).toObject();
    if (inputs.size() != 1 || input["path"].toString() != QDir::cleanPath(file.path) ||
        input["result"].toString() != result || !input["reason"].toString().isEmpty() ||
        input["pages"].toInt() != file.pages.constFirst()) {
        return "the input's fields: " + QString::fromUtf8(json.left(500));
    }
    const QList<ExpectedGroup> &groups = file.groups[size_t(method - 1)];
    const QJsonArray outputs = input["outputs"].toArray();
    if (outputs.size() != groups.size()) {
        return QString::number(outputs.size()) + " outputs";
    }
    for (int index = 0; index < int(groups.size()); ++index) {
        const QString fault =
            faultOfOutput(outputs.at(index).toObject(), groups.at(index), index + 1, result);
        if (!fault.isEmpty()) {
            return "output " + QString::number(index + 1) + ": " + fault;
        }
    }
    return {};
}

} // namespace

void TestCorpusReports::initTestCase()
{
    if (!hasCorpus()) {
        QSKIP("the corpus is not on this machine");
    }
    useRunnerIn(quorlin::test::startedPrograms());
}

void TestCorpusReports::reportsTellWhatIsKnown_data()
{
    QTest::addColumn<CorpusFile>("file");
    const QList<CorpusFile> files = corpusFiles(QStringLiteral("batch"));
    QVERIFY(!files.isEmpty());
    for (const CorpusFile &file : files) {
        if (file.counted) {
            QTest::newRow(qPrintable(file.name)) << file;
        }
    }
}

void TestCorpusReports::reportsTellWhatIsKnown()
{
    QFETCH(CorpusFile, file);
    const QTemporaryDir root;
    const auto run = [&root](const QStringList &words) {
        return runRunner(words, root.path(), QDir::tempPath());
    };
    const RunnerResult listing =
        run({"--list-items", file.path, "--page", QString::number(file.firstPage)});
    const QString position = positionAt(listing.output, file.field);
    QVERIFY2(!position.isEmpty(), qPrintable(listing.output));
    for (int method = 1; method <= 3; ++method) {
        const QString number = QString::number(method);
        QStringList words = {"--position",   position,   "--method", number, "--output",
                             "out" + number, "--create", "--report", "-",    file.path};
        const RunnerResult planned = run(words + QStringList{"--dry-run"});
        QVERIFY2(planned.exitCode == 0, qPrintable(planned.errors));
        const QString fault = faultOfReport(planned.output.toUtf8(), file, method, "planned");
        QVERIFY2(fault.isEmpty(), qPrintable("planned, method " + number + ": " + fault));
        const RunnerResult done = run(words);
        QVERIFY2(done.exitCode == 0, qPrintable(done.errors));
        const QString doneFault = faultOfReport(done.output.toUtf8(), file, method, "succeeded");
        QVERIFY2(doneFault.isEmpty(), qPrintable("method " + number + ": " + doneFault));
    }
}

QUORLIN_TEST(TestCorpusReports)
#include "test_reports.moc"
