// Tagged files of many producers: what is marked on a page has the same elements above it in every
// part, the parts' trees are sound, and other readers find the same text in the same order.

#include "tag_reader.h"
#include "tests/support/room.h"
#include "tool_run.h"

#include <QDirIterator>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

class PageBinderTaggedCorpusTest : public QObject
{
    Q_OBJECT

private slots:
    void partsKeepTheTagsOfTheirPages_data();
    void partsKeepTheTagsOfTheirPages();
    void allPagesGiveTheSameStructuredText_data();
    void allPagesGiveTheSameStructuredText();

private:
    static QString corpus() { return QStringLiteral(QUORLIN_CORPUS_DIR); }
    static void addFiles(int most, const QStringList &left = {});
};

namespace {

constexpr int mostPages = 400;
constexpr int mostPagesToCompare = 12; // the reader takes seconds a page on longer ones

/// A file whose root states no pages: other readers make some up.
const QString withoutPages = QStringLiteral("real/pikepdf/378014596.pdf");
/// One page of a long document with all its elements; the reader shows those of the other pages
/// with the text of this one.
const QString withForeignElements = QStringLiteral("real/pdfplumber/scotus-transcript-p1.pdf");

/// Pages at the start, in the middle and at the end, all of them, and some in another order.
QStringList rangesOf(int pages)
{
    const int middle = (pages + 1) / 2;
    return {QStringLiteral("1"), QString::number(middle), QString::number(pages),
            QStringLiteral("1-%1").arg(pages),
            QStringLiteral("%1-%2 1").arg(middle).arg(qMin(pages, middle + 2))};
}

/// The text by its structure; the numbers of objects, which differ, are left out.
QString structuredText(const QString &path)
{
    QProcess reader;
    reader.setStandardErrorFile(QProcess::nullDevice());
    reader.start(QStringLiteral("pdfinfo"), {QStringLiteral("-struct-text"), path});
    if (!reader.waitForFinished(60000)) {
        return QStringLiteral("the reader does not end with %1").arg(path);
    }
    static const QRegularExpression object(QStringLiteral("Object \\d+ \\d+"));
    return QString::fromUtf8(reader.readAllStandardOutput())
        .replace(object, QStringLiteral("Object"));
}

} // namespace

void PageBinderTaggedCorpusTest::addFiles(int most, const QStringList &left)
{
    QTest::addColumn<QString>("path");
    QDirIterator files(corpus(), {QStringLiteral("*.pdf")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        const QString name = QDir(corpus()).relativeFilePath(path);
        if (name == withoutPages || left.contains(name)) {
            continue;
        }
        const TagReader tags(path);
        if (tags.isTagged() && tags.pageCount() > 0 && tags.pageCount() <= most) {
            QTest::newRow(qPrintable(name)) << path;
        }
    }
}

void PageBinderTaggedCorpusTest::partsKeepTheTagsOfTheirPages_data()
{
    addFiles(mostPages);
}

void PageBinderTaggedCorpusTest::partsKeepTheTagsOfTheirPages()
{
    QFETCH(QString, path);
    const QTemporaryDir folder;
    const QString output = folder.filePath(QStringLiteral("out.pdf"));
    const TagReader whole(path);
    for (const QString &ranges : rangesOf(whole.pageCount())) {
        const ToolRun run = merge(path, ranges, output);
        QVERIFY2(run.status == 0, run.errors.constData());
        const TagReader part(output);
        QCOMPARE(part.faults(), QStringList());
        const QList<int> pages = pagesOf(ranges);
        QCOMPARE(part.pageCount(), int(pages.size()));
        for (int i = 0; i < pages.size(); ++i) {
            QVERIFY2(part.marksOn(i + 1) == whole.marksOn(pages.at(i)),
                     qPrintable(QStringLiteral("pages %1, page %2").arg(ranges).arg(pages.at(i))));
        }
    }
}

void PageBinderTaggedCorpusTest::allPagesGiveTheSameStructuredText_data()
{
    addFiles(mostPagesToCompare, {withForeignElements});
}

void PageBinderTaggedCorpusTest::allPagesGiveTheSameStructuredText()
{
    QFETCH(QString, path);
    if (QStandardPaths::findExecutable(QStringLiteral("pdfinfo")).isEmpty()) {
        QSKIP("pdfinfo is not installed");
    }
    const QTemporaryDir folder;
    const QString output = folder.filePath(QStringLiteral("out.pdf"));
    const TagReader whole(path);
    const ToolRun run = merge(path, QStringLiteral("1-%1").arg(whole.pageCount()), output);
    QVERIFY2(run.status == 0, run.errors.constData());
    QCOMPARE(structuredText(output), structuredText(path));
}

QUORLIN_TEST(PageBinderTaggedCorpusTest)
#include "test_tagged_corpus.moc"
