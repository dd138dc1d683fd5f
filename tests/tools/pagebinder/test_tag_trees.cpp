// Structure trees made at random: whatever pages are taken, their marks keep the elements above
// them, the parts' trees are sound, and no element of other pages travels.

#include "merge_bench.h"
#include "random_tags.h"
#include "tag_reader.h"
#include "tests/support/room.h"

#include <QtTest>

class TestTagTrees : public QObject
{
    Q_OBJECT

private slots:
    void partsKeepTheTagsOfTheirPages_data();
    void partsKeepTheTagsOfTheirPages();
    void manyOutputsOfALargeTreeKeepTheirTags();

private:
    MergeBench m_bench;
};

void TestTagTrees::partsKeepTheTagsOfTheirPages_data()
{
    QTest::addColumn<unsigned>("seed");
    for (unsigned seed = 1; seed <= 120; ++seed) {
        QTest::addRow("%u", seed) << seed;
    }
}

void TestTagTrees::partsKeepTheTagsOfTheirPages()
{
    QFETCH(unsigned, seed);
    RandomTags tags(seed, 1 + int(seed % 9), 1 + int(seed % 12));
    const QTemporaryDir folder;
    const TagReader whole(tags.pdf().save(folder.path()));
    QCOMPARE(whole.faults(), QStringList());
    for (int trial = 0; trial < 3; ++trial) {
        const QString ranges = tags.randomRanges();
        const QList<int> pages = pagesOf(ranges);
        const auto part = m_bench.merged(tags.pdf(), ranges);
        QVERIFY2(part, qPrintable(ranges));
        const TagReader kept(m_bench.path(QStringLiteral("out.pdf")));
        QCOMPARE(kept.faults(), QStringList());
        for (int i = 0; i < pages.size(); ++i) {
            QVERIFY2(kept.marksOn(i + 1) == whole.marksOn(pages.at(i)), qPrintable(ranges));
        }
        const QByteArray everything = part->everything();
        for (const QByteArray &title : tags.titlesApartFrom(pages)) {
            QVERIFY2(!everything.contains(title), title.constData());
        }
    }
}

void TestTagTrees::manyOutputsOfALargeTreeKeepTheirTags()
{
    // More elements than are held at a time.
    constexpr int pageCount = 900;
    constexpr int step = 3;
    const RandomTags tags(4, pageCount, 90);
    const QTemporaryDir folder;
    const QString input = tags.pdf().save(folder.path());
    QByteArray list;
    for (int first = 1; first <= pageCount; first += step) {
        list += QStringLiteral("%1-%2\t%3/%1.pdf\n")
                    .arg(first)
                    .arg(first + step - 1)
                    .arg(folder.path())
                    .toUtf8();
    }
    const ToolRun run = runBinder({input, QStringLiteral("-split"), QStringLiteral("-")}, list);
    QVERIFY2(run.status == 0, run.errors.constData());
    const TagReader whole(input);
    QCOMPARE(whole.faults(), QStringList());
    for (int first = 1; first <= pageCount; first += step) {
        const TagReader part(folder.filePath(QString::number(first) + ".pdf"));
        QCOMPARE(part.faults(), QStringList());
        for (int page = 0; page < step; ++page) {
            QVERIFY(part.marksOn(page + 1) == whole.marksOn(first + page));
        }
    }
}

QUORLIN_TEST(TestTagTrees)
#include "test_tag_trees.moc"
