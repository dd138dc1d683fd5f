// Page trees that lie about their pages: whatever number a page goes by, its text and the page that
// a merge writes are the same page's, or texts would name the wrong outputs.

#include "export_run.h"
#include "tests/support/room.h"

#include <QRandomGenerator>
#include <QTest>

#include <functional>

using quorlin::test::ExportRun;
using quorlin::test::PdfBuilder;

namespace {

std::string reference(int number)
{
    return std::to_string(number) + " 0 R";
}

/// Builds page trees of pages that show "A", "B", "C" ... in their true order.
class TreeBuilder
{
public:
    int page()
    {
        const char name = static_cast<char>('A' + m_pages++ % 26);
        return pdf.addPage(std::string("BT /F1 12 Tf 72 700 Td (") + name + ") Tj ET");
    }
    int node(const std::string &count, const std::vector<int> &kids)
    {
        return pdf.add("<</Type/Pages/Parent 2 0 R" + source(count, kids));
    }
    /// A node with a true count of pages below it.
    int leaves(const std::string &count, int pages)
    {
        std::vector<int> kids;
        for (int i = 0; i < pages; ++i) {
            kids.push_back(page());
        }
        return node(count, kids);
    }
    void root(const std::string &count, const std::vector<int> &kids)
    {
        pdf.setPageTree("<</Type/Pages" + source(count, kids));
    }

    PdfBuilder pdf;

private:
    static std::string source(const std::string &count, const std::vector<int> &kids)
    {
        std::string text = count.empty() ? "" : "/Count " + count;
        text += "/Kids[";
        for (const int kid : kids) {
            text += reference(kid) + ' ';
        }
        return text + "]>>";
    }

    int m_pages = 0;
};

/// A tree of random shape whose counts are true, or lie in the places that chance chooses.
class RandomTree
{
public:
    explicit RandomTree(quint32 seed) : m_random(seed) {}

    PdfBuilder build()
    {
        const std::vector<int> kids = grow(0);
        m_tree.root(count(m_below), kids);
        return m_tree.pdf;
    }

private:
    std::string count(int pages)
    {
        switch (m_random.bounded(8)) {
        case 0:
            return std::to_string(pages + m_random.bounded(1, 4));
        case 1:
            return std::to_string(pages - m_random.bounded(1, 4));
        case 2:
            return m_random.bounded(2) == 0 ? "0" : "";
        default:
            return std::to_string(pages);
        }
    }

    std::vector<int> grow(int depth)
    {
        std::vector<int> kids;
        int below = 0;
        const int length = m_random.bounded(depth == 0 ? 1 : 0, 5);
        for (int i = 0; i < length; ++i) {
            const int kind = m_random.bounded(12);
            if (kind == 0) {
                kids.push_back(9999); // nothing there
            } else if (kind < 6 && depth < 3) {
                const std::vector<int> deeper = grow(depth + 1);
                kids.push_back(m_tree.node(count(m_below), deeper));
                below += m_below;
            } else {
                kids.push_back(m_tree.page());
                ++below;
            }
        }
        m_below = below;
        return kids;
    }

    QRandomGenerator m_random;
    TreeBuilder m_tree;
    int m_below = 0;
};

int runBinder(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral(QUORLIN_BIN_DIR "/pagebinder"), arguments);
    const bool ended = process.waitForFinished(60000);
    return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

/// What -getinfo answers, 0 when it refuses the file.
int countedPages(const QString &input, const QString &answer)
{
    if (runBinder({input, "-getinfo", "-outfile", answer}) != 0) {
        return 0;
    }
    QFile file(answer);
    return file.open(QIODevice::ReadOnly) ? file.readLine().mid(15).trimmed().toInt() : -1;
}

QString joined(const ExportRun &run, int pages)
{
    QStringList texts;
    for (int page = 1; page <= pages; ++page) {
        texts.append(run.texts(page).isEmpty() ? "-" : run.texts(page).join(' '));
    }
    return texts.join(' ');
}

qsizetype pageFiles(const ExportRun &run)
{
    return run.written().filter(QRegularExpression("^page_pg_\\d+\\.htm$")).size();
}

/// Compares the texts of all pages with those of each page read alone, and with those of the pages
/// that merges write. @returns the texts, "-" for a page without
QString textsOfEveryWay(const PdfBuilder &pdf)
{
    ExportRun run;
    const QString input = run.save(pdf);
    const int pages = countedPages(input, run.path("answer.txt"));
    if (pages == 0) {
        return run.run(input) == 1 ? "refused" : "refused by one";
    }
    if (run.run(input) != 0 || pageFiles(run) != pages) {
        return "the tools count differently";
    }
    const QString texts = joined(run, pages);
    ExportRun alone;
    QStringList single;
    for (int page = 1; page <= pages; ++page) {
        const QString number = QString::number(page);
        if (alone.run(input, {"-f", number, "-l", number}) != 0) {
            return "page " + number + " cannot be read alone";
        }
        single.append(joined(alone, 1));
    }
    if (single.join(' ') != texts) {
        return "alone " + single.join(' ') + ", together " + texts;
    }
    const QString output = run.path("merged.pdf");
    if (runBinder({input, "-merge", "1-" + QString::number(pages), "-outfile", output}) != 0) {
        return "cannot be merged";
    }
    ExportRun merged;
    if (merged.run(output) != 0 || joined(merged, pages) != texts) {
        return "merged " + joined(merged, pages) + ", read " + texts;
    }
    return texts;
}

} // namespace

class TestPageNumbers : public QObject
{
    Q_OBJECT

private slots:
    void liesOfOneNode_data();
    void liesOfOneNode();
    void liesOfTheRoot_data();
    void liesOfTheRoot();
    void nodesAmongTheKidsOfAList();
    void missingKids();
    void treesOfAllKinds();
};

void TestPageNumbers::liesOfOneNode_data()
{
    QTest::addColumn<QString>("count");
    QTest::addColumn<QString>("texts");
    QTest::newRow("true") << "2"
                          << "A B C D E";
    QTest::newRow("too low") << "1"
                             << "A B C D E";
    QTest::newRow("zero") << "0"
                          << "A B C D E";
    QTest::newRow("negative") << "-2"
                              << "A B C D E";
    QTest::newRow("missing") << ""
                             << "A B C D E";
    QTest::newRow("no number") << "/Two"
                               << "A B C D E";
    QTest::newRow("beyond the file") << "2000000000"
                                     << "A B C D E";
    // A place that holds nothing is an empty page: no page behind it changes its number.
    QTest::newRow("too high") << "4"
                              << "A B - - C D E";
}

void TestPageNumbers::liesOfOneNode()
{
    QFETCH(QString, count);
    QFETCH(QString, texts);
    for (const char *total : {"5", "6", "7", "4"}) {
        TreeBuilder tree;
        const int first = tree.leaves(count.toStdString(), 2);
        const int second = tree.leaves("3", 3);
        tree.root(total, {first, second});
        QCOMPARE(textsOfEveryWay(tree.pdf), texts);
    }
}

void TestPageNumbers::liesOfTheRoot_data()
{
    QTest::addColumn<QString>("count");
    QTest::addColumn<QString>("texts");
    for (const char *count : {"5", "9", "2", "1", "2000000000"}) {
        QTest::newRow(count) << QString(count) << "A B C D E";
    }
    // No reader shows pages of a tree that states none.
    for (const char *count : {"0", "-5", "", "null", "/Five"}) {
        QTest::newRow(count) << QString(count) << "refused";
    }
}

void TestPageNumbers::liesOfTheRoot()
{
    QFETCH(QString, count);
    QFETCH(QString, texts);
    TreeBuilder nested;
    const int first = nested.leaves("2", 2);
    const int second = nested.leaves("3", 3);
    nested.root(count.toStdString(), {first, second});
    QCOMPARE(textsOfEveryWay(nested.pdf), texts);
    TreeBuilder flat;
    std::vector<int> kids;
    for (int i = 0; i < 5; ++i) {
        kids.push_back(flat.page());
    }
    flat.root(count.toStdString(), kids);
    QCOMPARE(textsOfEveryWay(flat.pdf), texts);
}

void TestPageNumbers::nodesAmongTheKidsOfAList()
{
    TreeBuilder tree;
    const int first = tree.leaves("1", 1);
    const int second = tree.page();
    const int third = tree.leaves("1", 1);
    tree.root("3", {first, second, third});
    QCOMPARE(textsOfEveryWay(tree.pdf), QString("A B C"));
    // As many pages as kids, by an empty node and a larger one.
    TreeBuilder uneven;
    const int larger = uneven.leaves("2", 2);
    const int single = uneven.page();
    const int empty = uneven.leaves("0", 0);
    uneven.root("3", {larger, single, empty});
    QCOMPARE(textsOfEveryWay(uneven.pdf), QString("A B C"));
    uneven.root("3", {empty, larger, single});
    QCOMPARE(textsOfEveryWay(uneven.pdf), QString("A B C"));
}

void TestPageNumbers::missingKids()
{
    TreeBuilder list;
    const int first = list.page();
    const int last = list.page();
    list.root("3", {first, 9999, last});
    QCOMPARE(textsOfEveryWay(list.pdf), QString("A - B"));
    list.root("2", {first, 9999, last});
    QCOMPARE(textsOfEveryWay(list.pdf), QString("A B"));
}

void TestPageNumbers::treesOfAllKinds()
{
    for (quint32 seed = 1; seed <= 30; ++seed) {
        const QString texts = textsOfEveryWay(RandomTree(seed).build());
        QVERIFY2(!texts.contains(QRegularExpression("[a-z]{2}")) || texts == "refused",
                 qPrintable(QString::number(seed) + ": " + texts));
    }
}

QUORLIN_TEST(TestPageNumbers)
#include "test_page_numbers.moc"
