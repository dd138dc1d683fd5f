#include "../batch/runner_process.h"
#include "corpus.h"
#include "page_texts.h"
#include "tests/support/room.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

/// Files as they are found in the world, damaged, odd and hostile ones among them, all in one run:
/// what can be read comes out whole, what cannot is named and leaves nothing, and no file disturbs
/// another.
class TestCorpusFiles : public QObject
{
    Q_OBJECT

public:
    explicit TestCorpusFiles(const char *name) : kind(QString::fromLatin1(name)) {}

private slots:
    void initTestCase();
    void noToolCrashedOrHung();
    void everyFileEndsAsItShould_data();
    void everyFileEndsAsItShould();

private:
    const QString kind;
    QTemporaryDir root;
    QList<CorpusFile> files;
    RunnerResult result;
    /// Page count of every file that was split, by path; -1 for one that failed.
    QHash<QString, int> results;
};

namespace {

/// A name of its own for every file, because inputs of one name share an output folder.
QString linkName(qsizetype index)
{
    return QStringLiteral("f") + QString::number(index) + QStringLiteral(".pdf");
}

QHash<QString, int> readResults(const QString &output)
{
    static const QRegularExpression line(
        QStringLiteral("^(Succeed|Failed)\\s+.*/([^/]+?)(?: \\((\\d+) pages?, .*\\))?$"));
    QHash<QString, int> results;
    for (const QString &text : output.split('\n', Qt::SkipEmptyParts)) {
        const QRegularExpressionMatch match = line.match(text);
        if (match.hasMatch()) {
            results.insert(match.captured(2), match.captured(1) == QLatin1String("Succeed")
                                                  ? match.captured(3).toInt()
                                                  : -1);
        }
    }
    return results;
}

} // namespace

void TestCorpusFiles::initTestCase()
{
    if (!hasCorpus()) {
        QSKIP("the corpus is not on this machine");
    }
    files = corpusFiles(kind);
    QVERIFY(!files.isEmpty());
    for (const char *folder : {"in", "out", "tmp"}) {
        QVERIFY(QDir(root.path()).mkdir(QLatin1String(folder)));
    }
    // No item stands there, so that every file becomes one output of all its pages.
    QStringList words{"--position", "1,9999999", "--pages-without-text", "join", "--output",
                      "out",        "--quiet"};
    for (qsizetype index = 0; index < files.size(); ++index) {
        const QString link = QStringLiteral("in/") + linkName(index);
        QVERIFY2(QFile::link(files.at(index).path, root.filePath(link)), qPrintable(link));
        words.append(link);
    }
    result = runRunner(words, root.path(), root.filePath("tmp"));
    results = readResults(result.output);
    QCOMPARE(results.size(), files.size());
}

void TestCorpusFiles::noToolCrashedOrHung()
{
    QVERIFY(!result.crashed);
    QVERIFY(result.exitCode == 0 || result.exitCode == 1);
    for (const char *word : {"ended abruptly", "no progress", "given up", "cannot be started",
                             "Sanitizer", "runtime error"}) {
        QVERIFY2(!result.errors.contains(QLatin1String(word)), qPrintable(result.errors));
    }
    QVERIFY(QDir(root.filePath("tmp")).isEmpty());
}

void TestCorpusFiles::everyFileEndsAsItShould_data()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < int(files.size()); ++index) {
        QTest::newRow(qPrintable(files.at(index).name)) << index;
    }
}

void TestCorpusFiles::everyFileEndsAsItShould()
{
    QFETCH(int, index);
    const CorpusFile &file = files.at(index);
    const QString name = linkName(index);
    const QDir folder(root.filePath("out/" + QString(name).chopped(4)));
    const QStringList outputs = folder.entryList(QDir::Files);
    const int pages = results.value(name, 0);
    if (pages < 0) {
        const QString reason = result.errors.section("/" + name + ": ", -1).section('\n', 0, 0);
        // The outputs of a file with unreadable pages are written, with stand-ins.
        if (reason.contains("unreadable pages") || reason.contains("only in part")) {
            QCOMPARE(outputs.size(), 1);
            return;
        }
        QVERIFY2(file.readable != CorpusFile::Readable::Yes || file.mergeMayFail,
                 qPrintable(reason));
        QVERIFY2(outputs.isEmpty(), qPrintable(outputs.join('\n')));
        QVERIFY(result.errors.contains("/" + name + ": "));
        return;
    }
    QVERIFY(file.readable != CorpusFile::Readable::No);
    QVERIFY2(file.pages.contains(pages), qPrintable(QString::number(pages)));
    const QString ranges = pages == 1 ? QString("1") : "1-" + QString::number(pages);
    QCOMPARE(outputs, QStringList{"1   " + name.chopped(4) + ' ' + ranges + ".pdf"});
    QCOMPARE(pageTexts(folder.filePath(outputs.constFirst())).size(), pages);
}

class TestNasty : public TestCorpusFiles
{
public:
    TestNasty() : TestCorpusFiles("nasty") {}
};

class TestFeatures : public TestCorpusFiles
{
public:
    TestFeatures() : TestCorpusFiles("features") {}
};

class TestReal : public TestCorpusFiles
{
public:
    TestReal() : TestCorpusFiles("real") {}
};

QUORLIN_NAMED_TEST("nasty", TestNasty)
QUORLIN_NAMED_TEST("features", TestFeatures)
QUORLIN_NAMED_TEST("real", TestReal)
#include "test_files.moc"
