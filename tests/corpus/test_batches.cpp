#include "../batch/runner_process.h"
#include "corpus.h"
#include "field_position.h"
#include "page_texts.h"
#include "tests/support/room.h"
#include "text_comparison.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cstdlib>

/// Batches of many producers: each is split by all three methods, and every output must hold
/// exactly the pages that are known to belong to its text.
class TestCorpusBatches : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyGroupIsRight_data();
    void everyGroupIsRight();
};

namespace {

/// Pages as they stand in an output's name: "7", "3-6", "1-2 5".
QString rangesOf(const QList<int> &pages)
{
    QString ranges;
    for (qsizetype begin = 0; begin < pages.size();) {
        qsizetype end = begin;
        while (end + 1 < pages.size() && pages.at(end + 1) == pages.at(end) + 1) {
            ++end;
        }
        ranges += (ranges.isEmpty() ? "" : " ") + QString::number(pages.at(begin));
        if (end > begin) {
            ranges += u'-' + QString::number(pages.at(end));
        }
        begin = end + 1;
    }
    return ranges;
}

int numberOf(const QString &fileName)
{
    return fileName.section(' ', 0, 0).toInt();
}

/// Compares one output and the texts of its pages with its group; gives what differs, or an empty
/// text.
QString faultOf(const QString &name, int number, const QString &base, bool pagesInName,
                const ExpectedGroup &group, const QStringList &texts,
                const QStringList &sourceTexts)
{
    const QString key =
        keyOfOutput(name, number, base, pagesInName ? rangesOf(group.pages) : QString());
    if (key.isNull()) {
        return name + ": expected pages " + rangesOf(group.pages);
    }
    QString expectedKey = comparableText(group.key);
    expectedKey.replace('/', '-');
    if (!sameText(withoutReferences(key), expectedKey) || key.isEmpty()) {
        return name + ": expected the text " + expectedKey;
    }
    QStringList expectedTexts;
    for (const int page : group.pages) {
        expectedTexts.append(sourceTexts.value(page - 1));
    }
    return texts == expectedTexts ? QString() : name + ": holds other pages";
}

/// Compares the outputs of one run with the groups of @p method; gives the first difference.
QString faultOfRun(const QString &outputFolder, const CorpusFile &file, int method,
                   const QStringList &sourceTexts)
{
    const QList<ExpectedGroup> &groups = file.groups[size_t(method - 1)];
    const QString base = QFileInfo(file.path).baseName();
    const QDir folder(outputFolder + u'/' + base);
    QStringList names = folder.entryList(QDir::Files);
    if (names.size() != groups.size()) {
        return QString::number(names.size()) + " outputs, expected " +
               QString::number(groups.size());
    }
    std::sort(names.begin(), names.end(),
              [](const QString &a, const QString &b) { return numberOf(a) < numberOf(b); });
    QStringList paths;
    for (const QString &name : names) {
        paths.append(folder.filePath(name));
    }
    const QList<QStringList> texts = pageTexts(paths);
    for (int index = 0; index < int(groups.size()); ++index) {
        const QString fault = faultOf(names.at(index), index + 1, base, method != 3,
                                      groups.at(index), texts.value(index), sourceTexts);
        if (!fault.isEmpty()) {
            return fault;
        }
    }
    return {};
}

} // namespace

void TestCorpusBatches::initTestCase()
{
    if (!hasCorpus()) {
        QSKIP("the corpus is not on this machine");
    }
}

void TestCorpusBatches::everyGroupIsRight_data()
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

void TestCorpusBatches::everyGroupIsRight()
{
    QFETCH(CorpusFile, file);
    const QTemporaryDir root;
    QVERIFY(QDir(root.path()).mkdir("tmp"));
    const auto run = [&](const QStringList &words) {
        return runRunner(words, root.path(), root.filePath("tmp"));
    };
    const RunnerResult listing =
        run({"--list-items", file.path, "--page", QString::number(file.firstPage)});
    QVERIFY2(listing.exitCode == 0, qPrintable(listing.errors));
    const QString position = positionAt(listing.output, file.field);
    QVERIFY2(!position.isEmpty(), qPrintable(listing.output));
    const QStringList sourceTexts = pageTexts(file.path);
    QCOMPARE(sourceTexts.size(), file.pages.constFirst());

    for (int method = 1; method <= 3; ++method) {
        const QString number = QString::number(method);
        const RunnerResult result = run({"--position", position, "--method", number, "--output",
                                         "out" + number, "--create", "--quiet", file.path});
        QVERIFY2(result.exitCode == 0, qPrintable(result.errors));
        const QString fault = faultOfRun(root.filePath("out" + number), file, method, sourceTexts);
        QVERIFY2(fault.isEmpty(), qPrintable("method " + number + ": " + fault));
    }
}

QUORLIN_TEST(TestCorpusBatches)
#include "test_batches.moc"
