// Page trees that lie about their pages: whatever number a page goes by, its text and the page that
// a merge writes are the same page's, or texts would name the wrong outputs.

#include "export_here.h"
#include "tests/support/room.h"

#include <QRandomGenerator>
#include <QTest>

#include <functional>

using quorlin::test::ExportHere;
using quorlin::test::ExportRun;
using quorlin::test::PdfBuilder;
using quorlin::test::reference;

namespace {

/// Builds page trees of pages that show "A", "B", "C" ... in their true order.
class TreeBuilder
{
public:
    int page()
    {
        const char name = static_cast<char>('A' + m_pages++ % 26);
        // Small, because each is drawn several times.
        return pdf.addPage(std::string("BT /F1 12 Tf 12 12 Td (") + name + ") Tj ET",
                           {.mediaBox = "[0 0 60 40]"});
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

bool isWritten(int status)
{
    return status == 0 || status == 3; // with stand-ins
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
        const QString text = run.texts(page).join(' ');
        texts.append(text.isEmpty() || text.contains("could not be read") ? "-" : text);
    }
    return texts.join(' ');
}

qsizetype pageFiles(const ExportRun &run)
{
    return run.written().filter(QRegularExpression("^page_pg_\\d+\\.htm$")).size();
}

/// Compares the texts of all pages with those of each page read alone, and with those of the pages
/// that merges write. @returns the texts, "-" for a page that could not be read
QString textsOfEveryWay(const PdfBuilder &pdf)
{
    ExportHere run;
    const QString input = run.save(pdf);
    const int pages = countedPages(input, run.path("answer.txt"));
    if (pages == 0) {
        return run.run(input) == 1 ? "refused" : "refused by one";
    }
    if (run.run(input) != 0 || pageFiles(run) != pages) {
        return "the tools count differently";
    }
    const QString texts = joined(run, pages);
    ExportHere alone;
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
    const QString range = "1-" + QString::number(pages);
    const int status = runBinder({input, "-merge", range, "-outfile", output});
    if (!isWritten(status) || (status == 3) != texts.split(' ').contains("-")) {
        return "merged with status " + QString::number(status);
    }
    ExportHere merged;
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
    void nodesAmongTheKidsOfAList_data();
    void nodesAmongTheKidsOfAList();
    void oddKids_data();
    void oddKids();
    void missingKids();
    void loops();
    void pagesThatComeTwice();
    void roots();
    void pagesInTheListItself();
    void pagesInTheListBesideOthers();
    void aPageWithAListOfKidsIsAPage();
    void streamsAreNoPages();
    void referencesToReferencesLeadToPages();
    void placesThatLeadBackCountWhereTheRootCountsThem();
    void sizesComeFromThePageOrTheNodesAboveIt();
    void foreignParents();
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
    QTest::newRow("too high") << "4"
                              << "A B C D E";
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
    for (const char *count :
         {"5", "9", "2", "1", "2000000000", "0", "-5", "", "null", "/Five", "5.0"}) {
        QTest::newRow(count) << QString(count);
    }
}

void TestPageNumbers::liesOfTheRoot()
{
    QFETCH(QString, count);
    // A root that denies its pages has none in any reader; one that states any has all of them.
    const QString texts = count.toDouble() > 0 ? "A B C D E" : "refused";
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

/// A node that states as many pages as it has kids, some of which hold none and others more.
void TestPageNumbers::nodesAmongTheKidsOfAList_data()
{
    QTest::addColumn<QByteArray>("kids"); // P: page, 0, 1, 2: node of so many, X: missing
    QTest::addColumn<QString>("texts");
    QTest::newRow("nodes of one page") << QByteArray("1P1") << "A B C";
    QTest::newRow("an empty node behind") << QByteArray("2P0") << "A B C";
    QTest::newRow("an empty node before") << QByteArray("02P") << "A B C";
    QTest::newRow("an empty node between") << QByteArray("P0P2P") << "A B C D E";
    QTest::newRow("a missing kid before") << QByteArray("PX2P") << "A B C D";
    QTest::newRow("a missing kid behind") << QByteArray("P2PX") << "A B C D";
}

void TestPageNumbers::nodesAmongTheKidsOfAList()
{
    QFETCH(QByteArray, kids);
    QFETCH(QString, texts);
    const auto grow = [&kids](TreeBuilder &tree) {
        std::vector<int> numbers;
        for (const char kind : kids) {
            numbers.push_back(kind == 'P'   ? tree.page()
                              : kind == 'X' ? 9999
                                            : tree.leaves({kind}, kind - '0'));
        }
        return numbers;
    };
    const std::string count = std::to_string(kids.size());
    TreeBuilder root;
    root.root(count, grow(root));
    QCOMPARE(textsOfEveryWay(root.pdf), texts);
    TreeBuilder below;
    const int node = below.node(count, grow(below));
    below.root(count, {node});
    QCOMPARE(textsOfEveryWay(below.pdf), texts);
}

/// A kid of an odd type, in place of the second of three pages.
void TestPageNumbers::oddKids_data()
{
    QTest::addColumn<QByteArray>("object");
    QTest::addColumn<QString>("texts");
    const QByteArray box = "/Parent 2 0 R/MediaBox[0 0 595 842]/Resources<</Font<</F1 3 0 R>>>>";
    const auto page = [&box](const QByteArray &entries) { return "<<" + box + entries + ">>"; };
    for (const char *type : {"/Type/Pages", "/Type/page", "/Type/Template", "/Type/Catalog",
                             "/Type(Page)", "/Type null", ""}) {
        QTest::newRow(type) << page(type + QByteArray("/Contents 6 0 R")) << "A A C";
    }
    QTest::newRow("a page with a list") << page("/Type/Page/Contents 6 0 R/Kids[7 0 R]") << "A A C";
    QTest::newRow("a page with no list") << page("/Type/Pages/Contents 6 0 R/Kids null") << "A A C";
    QTest::newRow("a node called a page") << page("/Type/Page/Kids[7 0 R 7 0 R]") << "A A A C";
    QTest::newRow("a node called otherwise") << page("/Type/Foo/Kids[7 0 R 7 0 R]") << "A A A C";
    QTest::newRow("a node without a type") << page("/Kids[7 0 R 7 0 R]") << "A A A C";
    QTest::newRow("a node in a string")
        << page("/Note(/Kids[7 0 R 7 0 R])/Contents 6 0 R") << "A A C";
    QTest::newRow("a node in an entry") << page("/Note<</Kids[7 0 R]>>/Contents 6 0 R") << "A A C";
    QTest::newRow("a spelt key") << page("/#4bids[7 0 R 7 0 R]") << "A A A C";
    QTest::newRow("a list elsewhere") << page("/Kids 10 0 R") << "A A A C";
    QTest::newRow("a lost list") << page("/Type/Pages/Kids 99 0 R") << "A - C";
    QTest::newRow("nothing") << QByteArray("null") << "A - C";
    QTest::newRow("a number") << QByteArray("42") << "A - C";
    QTest::newRow("a list") << QByteArray("[7 0 R]") << "A - C";
    QTest::newRow("damaged") << QByteArray("(where a page should be") << "A - C";
    QTest::newRow("a wreck") << QByteArray("what a wreck") << "A - C";
}

void TestPageNumbers::oddKids()
{
    QFETCH(QByteArray, object);
    QFETCH(QString, texts);
    TreeBuilder tree;
    const int first = tree.page();
    const int second = tree.page();
    const int third = tree.page();
    QCOMPARE(tree.pdf.add("[7 0 R 7 0 R]"), 12);
    QCOMPARE(first, 7);
    tree.pdf.set(second, QByteArray(object).replace("10 0 R", "12 0 R").toStdString());
    tree.root("3", {first, second, third});
    QCOMPARE(textsOfEveryWay(tree.pdf), texts);
}

void TestPageNumbers::missingKids()
{
    TreeBuilder list;
    const int first = list.page();
    const int last = list.page();
    list.root("3", {first, 9999, last});
    QCOMPARE(textsOfEveryWay(list.pdf), QString("A - B"));
    // Without it the number of pages is right, so nothing is lost.
    list.root("2", {first, 9999, last});
    QCOMPARE(textsOfEveryWay(list.pdf), QString("A B"));
    list.root("1", {9999});
    QCOMPARE(textsOfEveryWay(list.pdf), QString("refused"));
}

void TestPageNumbers::loops()
{
    TreeBuilder tree;
    const int first = tree.page();
    const int node = tree.node("2", {tree.page(), 2});
    tree.root("3", {first, 2, node, tree.page()});
    QCOMPARE(textsOfEveryWay(tree.pdf), QString("A B C"));
}

void TestPageNumbers::pagesThatComeTwice()
{
    TreeBuilder tree;
    const int page = tree.page();
    const int node = tree.leaves("1", 1);
    tree.root("4", {page, page, node, node});
    QCOMPARE(textsOfEveryWay(tree.pdf), QString("A A B B"));
}

void TestPageNumbers::roots()
{
    TreeBuilder page;
    page.page();
    page.page();
    page.pdf.setCatalogEntries("/Pages 7 0 R"); // in place of the root
    QCOMPARE(textsOfEveryWay(page.pdf), QString("A B"));
    TreeBuilder lonely;
    const int only = lonely.page();
    lonely.root("1", {});
    lonely.pdf.setCatalogEntries("/Pages " + reference(only));
    QCOMPARE(textsOfEveryWay(lonely.pdf), QString("A"));
}

void TestPageNumbers::pagesInTheListItself()
{
    TreeBuilder tree;
    const int first = tree.page();
    const int second = tree.page();
    const std::string direct = "<</Type/Page/MediaBox[0 0 595 842]/Contents 8 0 R"
                               "/Resources<</Font<</F1 3 0 R>>>>>>";
    QCOMPARE(second, 9);
    tree.pdf.setPageTree("<</Type/Pages/Count 3/Kids[" + reference(second) + direct +
                         reference(first) + "]>>");
    QCOMPARE(textsOfEveryWay(tree.pdf), QString("B B A"));
    // Called a node, though it has no list, but a content.
    std::string called = direct;
    called.replace(called.find("/Page"), 5, "/Pages");
    tree.pdf.setPageTree("<</Type/Pages/Count 3/Kids[" + reference(second) + called +
                         reference(first) + "]>>");
    QCOMPARE(textsOfEveryWay(tree.pdf), QString("B B A"));
}

void TestPageNumbers::aPageWithAListOfKidsIsAPage()
{
    TreeBuilder tree;
    const int content = tree.pdf.addStream({}, "BT /F1 12 Tf 72 700 Td (A) Tj ET");
    const int page = tree.pdf.add("<</Type/Page/Parent 2 0 R/Kids[]/MediaBox[0 0 595 842]"
                                  "/Resources<</Font<</F1 3 0 R>>>>/Contents " +
                                  reference(content) + ">>");
    tree.root("1", {page});
    QCOMPARE(textsOfEveryWay(tree.pdf), QString("A"));
}

void TestPageNumbers::referencesToReferencesLeadToPages()
{
    TreeBuilder tree;
    const int page = tree.page();
    tree.root("2", {tree.page(), tree.pdf.add(reference(page))});
    QCOMPARE(textsOfEveryWay(tree.pdf), QString("B A"));
}

void TestPageNumbers::streamsAreNoPages()
{
    TreeBuilder tree;
    const int first = tree.page();
    const int stream = tree.pdf.addStream({}, "no page");
    const int last = tree.page();
    tree.root("2", {first, stream, last});
    QCOMPARE(textsOfEveryWay(tree.pdf), QString("A B"));
}

void TestPageNumbers::placesThatLeadBackCountWhereTheRootCountsThem()
{
    TreeBuilder tree;
    const int first = tree.page();
    const int last = tree.page();
    tree.root("3", {first, 2, last});
    QCOMPARE(textsOfEveryWay(tree.pdf), QString("A - B"));
    tree.root("2", {first, 2, last});
    QCOMPARE(textsOfEveryWay(tree.pdf), QString("A B"));
}

/// One reader goes from a page with a number of its own to one without and back.
void TestPageNumbers::pagesInTheListBesideOthers()
{
    TreeBuilder tree;
    const int first = tree.page();
    const int last = tree.page();
    const int content = tree.pdf.addStream({}, "BT /F1 12 Tf 72 700 Td (in the list) Tj ET");
    tree.pdf.setPageTree("<</Type/Pages/Count 3/Kids[" + reference(first) +
                         "<</Type/Page/MediaBox[0 0 595 842]/Contents " + reference(content) +
                         "/Resources<</Font<</F1 3 0 R>>>>>>" + reference(last) + "]>>");
    ExportHere run;
    QCOMPARE(run.call({"-items", "-threads", "1", run.save(tree.pdf)}), 0);
    QStringList texts;
    for (const QByteArray &line : run.output().split('\n')) {
        if (line.startsWith("item\t")) {
            texts.append(line.mid(line.lastIndexOf('\t') + 1));
        }
    }
    QCOMPARE(texts, QStringList({"A", "in the list", "B"}));
}

void TestPageNumbers::sizesComeFromThePageOrTheNodesAboveIt()
{
    TreeBuilder tree;
    const int taken = tree.pdf.add("<</Type/Page>>");
    const int own = tree.pdf.add("<</Type/Page/MediaBox[0 0 300 100]/Rotate 0>>");
    tree.pdf.setPageTree("<</Type/Pages/Count 2/MediaBox[0 0 200 100]/Rotate 90/Kids[" +
                         reference(taken) + ' ' + reference(own) + "]>>");
    ExportHere run;
    const QString input = run.save(tree.pdf);
    const QString output = run.path("merged.pdf");
    QCOMPARE(runBinder({input, "-merge", "1-2", "-outfile", output}), 0);
    for (const QString &file : {input, output}) {
        QCOMPARE(run.call({"-items", file}), 0);
        QCOMPARE(run.output(), QByteArray("page\t1\t150\t300\twhole\n"
                                          "page\t2\t450\t150\twhole\nend\t2\n"));
    }
}

/// What pages take over comes from the nodes that list them, whatever they call their parent.
void TestPageNumbers::foreignParents()
{
    TreeBuilder tree;
    const int content = tree.pdf.addStream({}, "BT /F1 12 Tf 72 700 Td (A) Tj ET");
    const int other = tree.pdf.add("<</Type/Pages/Rotate 90/Resources<<>>>>");
    std::vector<int> pages;
    for (const std::string &parent : {std::string(), "/Parent " + reference(other)}) {
        pages.push_back(
            tree.pdf.add("<</Type/Page" + parent + "/Contents " + reference(content) + ">>"));
    }
    tree.pdf.setPageTree("<</Type/Pages/Count 2/MediaBox[0 0 595 842]/Resources<</Font<</F1 3 0 R"
                         ">>>>/Kids[" +
                         reference(pages[0]) + ' ' + reference(pages[1]) + "]>>");
    QCOMPARE(textsOfEveryWay(tree.pdf), QString("A A"));
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
