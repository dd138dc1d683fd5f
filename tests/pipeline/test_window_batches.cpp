#include "analysis/line_parser.h"
#include "common/tool_commands.h"
#include "tests/corpus/corpus.h"
#include "tests/corpus/page_texts.h"
#include "tests/corpus/text_comparison.h"
#include "tests/support/programs.h"
#include "tests/support/room.h"
#include "tests/support/text_files.h"
#include "tests/support/window_bench.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTest>

#include <algorithm>
#include <cmath>

using quorlin::test::WindowBench;

namespace {

constexpr double unitsPerPoint = 1.5;
/// How far the field's edge may lie from where it was measured.
constexpr double tolerance = 4.0;
/// Pages of a long file. Long files are a test of their own, which runs beside the other.
constexpr int manyPages = 200;

/// Puts the real tools where the stand-ins were.
void installTools(const QString &folder)
{
    for (const char *name : {"/pagebinder", "/pagexport"}) {
        QFile::remove(folder + QLatin1String(name));
        if (!QFile::link(quorlin::test::startedPrograms() + QLatin1String(name),
                         folder + QLatin1String(name))) {
            qFatal("The tools are not built");
        }
    }
}

/// The item that a user would click for the field of @p file, as the page export gives it.
Subtext fieldOf(const CorpusFile &file, const WindowBench &bench)
{
    QProcess tool;
    tool.startCommand(
        quorlin::pageExportCommand(bench.folders.application(), file.path, file.firstPage,
                                   bench.folders.temporary() + QStringLiteral("/text.xml")));
    tool.waitForFinished();
    const QPointF place = file.field * unitsPerPoint;
    const QStringList lines =
        quorlin::test::linesOf(bench.folders.temporary() + QStringLiteral("/text_pg_0001.htm"));
    for (const QString &line : lines) {
        const Subtext item = quorlin::parseItem(line);
        if (!item.text.isEmpty() && std::abs(item.left - place.x()) <= tolerance &&
            item.top < place.y() && item.top + item.height + tolerance > place.y()) {
            return item;
        }
    }
    return {};
}

QString rangesOf(const QList<int> &pages)
{
    QStringList pieces;
    for (qsizetype begin = 0; begin < pages.size();) {
        qsizetype end = begin;
        while (end + 1 < pages.size() && pages.at(end + 1) == pages.at(end) + 1) {
            ++end;
        }
        pieces.append(QString::number(pages.at(begin)));
        if (end > begin) {
            pieces.last() += QLatin1Char('-') + QString::number(pages.at(end));
        }
        begin = end + 1;
    }
    return pieces.join(QLatin1Char(' '));
}

/// What differs between the outputs in @p folder and the groups; empty when they agree.
QString faultOf(const QDir &folder, const CorpusFile &file, int method, const QStringList &texts)
{
    QStringList names = folder.entryList(QDir::Files | QDir::Hidden);
    const auto number = [](const QString &name) { return name.section(u' ', 0, 0).toInt(); };
    std::sort(names.begin(), names.end(),
              [&](const QString &a, const QString &b) { return number(a) < number(b); });
    const QList<ExpectedGroup> &groups = file.groups.at(std::size_t(method));
    if (names.size() != groups.size()) {
        return QStringLiteral("%1 outputs instead of %2").arg(names.size()).arg(groups.size());
    }
    QStringList paths;
    for (const QString &name : names) {
        paths.append(folder.filePath(name));
    }
    const QList<QStringList> outputTexts = pageTexts(paths);
    for (qsizetype i = 0; i < groups.size(); ++i) {
        const ExpectedGroup &group = groups.at(i);
        QString expected = comparableText(group.key);
        expected.replace(u'/', u'-');
        const QString key = keyOfOutput(names.at(i), int(i) + 1, QFileInfo(file.path).baseName(),
                                        method == 2 ? QString() : rangesOf(group.pages));
        if (key.isEmpty() || !sameText(withoutReferences(key), expected)) {
            return names.at(i) + QStringLiteral(": expected ") + expected;
        }
        QStringList pages;
        for (const int page : group.pages) {
            pages.append(texts.value(page - 1));
        }
        if (outputTexts.value(i) != pages) {
            return names.at(i) + QStringLiteral(": holds other pages");
        }
    }
    return {};
}

/// What the runner writes otherwise than the window did into @p folder; empty when it writes the
/// same under the same names.
QString runnerDiffers(const WindowBench &bench, const QString &file, const Subtext &field,
                      int method, const QDir &folder)
{
    const QString base = QFileInfo(file).baseName();
    const QString output =
        bench.folders.outputs() + QStringLiteral("/runner") + QString::number(method);
    QProcess runner;
    runner.start(quorlin::test::startedPrograms() + QStringLiteral("/quorlin-batch"),
                 {QStringLiteral("--position"),
                  QString::number(field.left) + u',' + QString::number(field.top),
                  QStringLiteral("--method"), QString::number(method + 1),
                  QStringLiteral("--create"), QStringLiteral("--output"), output, file});
    if (!runner.waitForFinished(300000) || runner.exitCode() != 0) {
        return QString::fromUtf8(runner.readAllStandardError());
    }
    const QDir ours(output + u'/' + base);
    const QStringList names = folder.entryList(QDir::Files | QDir::Hidden, QDir::Name);
    if (ours.entryList(QDir::Files | QDir::Hidden, QDir::Name) != names) {
        return QStringLiteral("other names");
    }
    for (const QString &name : names) {
        if (quorlin::test::readFile(ours.filePath(name)) !=
            quorlin::test::readFile(folder.filePath(name))) {
            return name + QStringLiteral(" holds other bytes");
        }
    }
    return {};
}

} // namespace

Q_DECLARE_METATYPE(CorpusFile)

/// Batches of many producers, split in the window with the real tools, and again by the runner.
class TestWindowBatches : public QObject
{
    Q_OBJECT

public:
    explicit TestWindowBatches(bool areLong = false) : m_areLong(areLong) {}

private slots:
    void initTestCase();
    void everyGroupIsRight_data();
    void everyGroupIsRight();

private:
    const bool m_areLong;
};

void TestWindowBatches::initTestCase()
{
    if (!hasCorpus()) {
        QSKIP("the corpus is not on this machine");
    }
}

void TestWindowBatches::everyGroupIsRight_data()
{
    QTest::addColumn<CorpusFile>("file");
    int counted = 0;
    const QList<CorpusFile> files = corpusFiles(QStringLiteral("batch"));
    for (const CorpusFile &file : files) {
        if (file.counted && (file.pages.constFirst() >= manyPages) == m_areLong) {
            QTest::newRow(qPrintable(file.name)) << file;
            ++counted;
        }
    }
    QVERIFY(counted > 0);
}

void TestWindowBatches::everyGroupIsRight()
{
    QFETCH(CorpusFile, file);
    WindowBench bench;
    installTools(bench.folders.application());
    const Subtext field = fieldOf(file, bench);
    QVERIFY(field.left != 0);
    bench.folders.saveRule(QStringLiteral("Account"), field.left, field.top);
    bench.addFiles({file.path});
    QCOMPARE(bench.cell(0, 1), QString::number(file.pages.constFirst()));
    const QStringList texts = pageTexts(file.path);
    QCOMPARE(texts.size(), file.pages.constFirst());
    for (int method = 0; method < 3; ++method) {
        const QString folder = bench.folders.outputs() + QLatin1Char('/') + QString::number(method);
        QVERIFY(QDir().mkpath(folder));
        bench.setOutputFolder(folder);
        bench.widget<QComboBox>("comboBox_method")->setCurrentIndex(method);
        bench.split();
        QCOMPARE(bench.cell(0, 3), QStringLiteral("Succeed"));
        const QDir outputs(folder + QLatin1Char('/') + QFileInfo(file.path).baseName());
        const QString fault = faultOf(outputs, file, method, texts);
        QVERIFY2(fault.isEmpty(),
                 qPrintable(QStringLiteral("method %1: ").arg(method + 1) + fault));
        const QString difference = runnerDiffers(bench, file.path, field, method, outputs);
        QVERIFY2(difference.isEmpty(),
                 qPrintable(QStringLiteral("runner, method %1: ").arg(method + 1) + difference));
    }
}

class TestLongWindowBatches : public TestWindowBatches
{
public:
    TestLongWindowBatches() : TestWindowBatches(true) {}
};

QUORLIN_TEST(TestWindowBatches)
QUORLIN_NAMED_TEST("long_window_batches", TestLongWindowBatches)
#include "test_window_batches.moc"
