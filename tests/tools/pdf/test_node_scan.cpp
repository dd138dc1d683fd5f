// Pages are told from nodes by the bytes of their objects. What is told must be what every reader
// finds there; anything else is left to the library, and so is what the bytes end in the middle of.

#include "tests/support/room.h"
#include "tools/pdf/node_scan.h"

#include <QtTest>

using tools::NodeScan;

namespace {

constexpr int number = 12;

std::string object(const std::string &dictionary)
{
    return "12 0 obj\n" + dictionary + "\nendobj\n";
}

NodeScan::Kind kindOf(const std::string &bytes)
{
    return tools::scanObject(bytes, number, false).kind;
}

} // namespace

class NodeScanTest : public QObject
{
    Q_OBJECT

private slots:
    void pagesHaveNoChildren_data();
    void pagesHaveNoChildren();
    void nodesListTheirChildren_data();
    void nodesListTheirChildren();
    void oddSyntaxIsLeftToTheLibrary_data();
    void oddSyntaxIsLeftToTheLibrary();
    void everyCutIsNoticed();
    void placesOfTheListAreTold();
    void objectsOfStreamsHaveNoEnd();
    void headersNameTheirObject();
};

void NodeScanTest::pagesHaveNoChildren_data()
{
    QTest::addColumn<QByteArray>("dictionary");
    for (const char *dictionary :
         {"<<>>", "<</Type/Page>>", "<< /Type /Pages /Count 3 >>", "<</Type/Page/Parent 2 0 R>>",
          "<</MediaBox[0 -1.5 +595 .5]/Rotate 0/Contents 3 0 R>>",
          "<</Resources<</Font<</F1 3 0 R>>>>/Contents[3 0 R 4 0 R]>>",
          "<</Title(/Kids[7 0 R])/Type/Page>>", "<</Title(a\\)/Kids[7 0 R](b))>>",
          "<</ID<414243>/Kid 5/KidsOld[7 0 R]>>", "<</PieceInfo<</Kids[7 0 R]>>>>",
          "<</Key/Kids/Other[/Kids[7 0 R]]>>", "<</True true/False false/Null null>>",
          "<</Type/Page/Contents 3 0 R/Kids[7 0 R]>>"}) {
        QTest::newRow(dictionary) << QByteArray(dictionary);
    }
}

void NodeScanTest::pagesHaveNoChildren()
{
    QFETCH(QByteArray, dictionary);
    QCOMPARE(kindOf(object(dictionary.toStdString())), NodeScan::Kind::page);
}

void NodeScanTest::nodesListTheirChildren_data()
{
    QTest::addColumn<QByteArray>("dictionary");
    QTest::addColumn<QList<int>>("kids");
    QTest::newRow("plain") << QByteArray("<</Type/Pages/Kids[7 0 R 9 0 R]/Count 2>>")
                           << QList<int>{7, 9};
    QTest::newRow("empty") << QByteArray("<</Kids[]>>") << QList<int>{};
    QTest::newRow("blanks") << QByteArray("<< /Kids [\r\n7 0 R\t9  1 R\f] >>") << QList<int>{7, 9};
    QTest::newRow("no blanks") << QByteArray("<</Kids[7 0 R]>>") << QList<int>{7};
    QTest::newRow("another list first")
        << QByteArray("<</Note<</Kids[1 0 R]>>/Kids[7 0 R]>>") << QList<int>{7};
    QTest::newRow("a page by name") << QByteArray("<</Type/Page/Kids[7 0 R]>>") << QList<int>{7};
    QTest::newRow("a node with content")
        << QByteArray("<</Type/Pages/Contents 3 0 R/Kids[7 0 R]>>") << QList<int>{7};
}

void NodeScanTest::nodesListTheirChildren()
{
    QFETCH(QByteArray, dictionary);
    QFETCH(QList<int>, kids);
    const std::string bytes = object(dictionary.toStdString());
    QCOMPARE(kindOf(bytes), NodeScan::Kind::node);
    const NodeScan scan = tools::scanObject(bytes, number, true);
    QCOMPARE(scan.kind, NodeScan::Kind::node);
    QCOMPARE(scan.kids, std::vector<int>(kids.begin(), kids.end()));
}

void NodeScanTest::oddSyntaxIsLeftToTheLibrary_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const auto row = [](const char *name, const std::string &dictionary) {
        QTest::newRow(name) << QByteArray::fromStdString(object(dictionary));
    };
    row("a name with an escape", "<</#4bids[7 0 R]>>");
    row("an escape in another name", "<</A#42/B/Kids[7 0 R]>>");
    row("a comment", "<<%\n/Kids[7 0 R]>>");
    row("two lists", "<</Kids[7 0 R]/Kids[8 0 R]>>");
    row("two types", "<</Type/Page/Type/Pages/Kids[7 0 R]>>");
    row("a list elsewhere", "<</Kids 8 0 R>>");
    row("no list", "<</Kids null>>");
    row("null among the children", "<</Kids[null 7 0 R]>>");
    row("a child in the list", "<</Kids[<</Type/Page>>]>>");
    row("object 0", "<</Kids[0 0 R]>>");
    row("a number too large", "<</Kids[99999999999 0 R]>>");
    row("a sign", "<</Kids[-7 0 R]>>");
    row("a word against a reference", "<</Kids[7 0 Rx]>>");
    row("half a reference", "<</Kids[7 0]>>");
    row("a key that is no name", "<</Kids[7 0 R] 5 /A 1>>");
    row("a key without a value", "<</Kids[7 0 R]/A>>");
    row("an array left open", "<</Kids[7 0 R]/A[1 2>>");
    row("a letter in a hexadecimal string", "<</Kids[7 0 R]/A<4G>>>");
    row("an R alone", "<</Kids[7 0 R]/A[7 R]>>");
    row("a stream", "<</Type/Page/Length 0>>stream\n\nendstream");
    row("an array", "[7 0 R]");
    row("a number", "42");
    row("a reference", "7 0 R");
    row("something behind", "<</Type/Page>> 5");
    row("too deep", "<</Kids[7 0 R]/A" + std::string(100, '[') + std::string(100, ']') + ">>");
    QTest::newRow("another object") << QByteArray("13 0 obj\n<</Type/Page>>\nendobj\n");
    QTest::newRow("no header") << QByteArray("<</Type/Page>>\nendobj\n");
    QTest::newRow("a comment before") << QByteArray("%\n12 0 obj\n<</Type/Page>>\nendobj\n");
}

void NodeScanTest::oddSyntaxIsLeftToTheLibrary()
{
    QFETCH(QByteArray, bytes);
    QCOMPARE(kindOf(bytes.toStdString()), NodeScan::Kind::unclear);
    QCOMPARE(tools::scanObject(bytes.toStdString(), number, true).kind, NodeScan::Kind::unclear);
}

void NodeScanTest::everyCutIsNoticed()
{
    const std::string whole =
        object("<</Type/Pages/A(x\\(y)/B<4142>/C[1 2 0 R]/D<</E true>>/Count 2"
               "/Kids[7 0 R 9 0 R]/F -1.5>>");
    QCOMPARE(kindOf(whole), NodeScan::Kind::node);
    const std::size_t end = whole.rfind("endobj") + 6;
    for (std::size_t length = 0; length <= end; ++length) {
        QCOMPARE(kindOf(whole.substr(0, length)), NodeScan::Kind::cutOff);
    }
    // A string left open reaches as far as the bytes do.
    QCOMPARE(kindOf(object("<</Kids[7 0 R]/A(1>>")), NodeScan::Kind::cutOff);
}

void NodeScanTest::placesOfTheListAreTold()
{
    const std::string bytes = object("<</Kids [7 0 R] /Count 1>>");
    const NodeScan scan = tools::scanObject(bytes, number, true);
    QCOMPARE(scan.listBegin, bytes.find('['));
    QCOMPARE(scan.listEnd, bytes.find(']'));
    QCOMPARE(scan.end, bytes.find("endobj") + 6);
}

void NodeScanTest::objectsOfStreamsHaveNoEnd()
{
    QCOMPARE(tools::scanDictionary("<</Type/Page>>", false).kind, NodeScan::Kind::page);
    QCOMPARE(tools::scanDictionary(" <</Kids[7 0 R]>> 13", true).kids, std::vector<int>{7});
    QCOMPARE(tools::scanDictionary("<</Kids[7 0 R]", true).kind, NodeScan::Kind::cutOff);
    QCOMPARE(tools::scanDictionary("null", true).kind, NodeScan::Kind::unclear);
    // Nothing mends these, so a glance is not enough.
    QCOMPARE(tools::scanDictionary("<</MediaBox[0 0 8s >>", false).kind, NodeScan::Kind::unclear);
    QCOMPARE(tools::scanDictionary("<</Type/Page/Contents>>", false).kind, NodeScan::Kind::unclear);
}

void NodeScanTest::headersNameTheirObject()
{
    QVERIFY(tools::startsObject("\n 12 0 obj<<", number));
    QVERIFY(!tools::startsObject("12 0 R", number));
    QVERIFY(!tools::startsObject("112 0 obj<<", number));
    QVERIFY(!tools::startsObject("", number));
}

QUORLIN_TEST(NodeScanTest)
#include "test_node_scan.moc"
