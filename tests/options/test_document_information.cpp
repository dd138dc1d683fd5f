#include "options/document_information.h"
#include "tests/support/room.h"

#include <QTest>

using namespace quorlin;

class DocumentInformationTest : public QObject
{
    Q_OBJECT

private slots:
    void fieldsFillThePattern_data();
    void fieldsFillThePattern();
    void emptyFieldsLeaveSixEmptyPairs();
};

void DocumentInformationTest::fieldsFillThePattern_data()
{
    QTest::addColumn<QStringList>("fields");
    QTest::addColumn<QStringList>("shown");
    QTest::newRow("each in its own place")
        << QStringList{"T", "A", "S", "K", "C", "P"} << QStringList{"T", "A", "S", "K", "C", "P"};
    QTest::newRow("delimiters are not escaped") << QStringList{"a)b", "(", "\\", "\\)", "((", "))"}
                                                << QStringList{"a)b", "(", "\\", "\\)", "((", "))"};
    QTest::newRow("place-holder in a field is filled by a later one")
        << QStringList{"t%2", "A", "S", "K", "C", "P"}
        << QStringList{"tA", "A", "S", "K", "C", "P"};
    QTest::newRow("lowest place-holder is filled first")
        << QStringList{"t%1", "A", "S", "K", "C", "P"}
        << QStringList{"tA", "S", "K", "C", "P", "%6"};
    QTest::newRow("place-holder of a later field in the last one stays")
        << QStringList{"T", "A", "S", "K", "C", "%7"} << QStringList{"T", "A", "S", "K", "C", "%7"};
    QTest::newRow("blanks at the ends stay")
        << QStringList{" T ", "", " ", "", "", ""} << QStringList{" T ", "", " ", "", "", ""};
}

void DocumentInformationTest::fieldsFillThePattern()
{
    QFETCH(QStringList, fields);
    QFETCH(QStringList, shown);
    const DocumentInformation information{fields.at(0), fields.at(1), fields.at(2),
                                          fields.at(3), fields.at(4), fields.at(5)};
    const QString expected = "[ /Title (" + shown.at(0) + ")\n /Author (" + shown.at(1) +
                             ") \n /Subject (" + shown.at(2) + ") \n /Keywords (" + shown.at(3) +
                             ") \n /Creator (" + shown.at(4) + ") \n /Producer (" + shown.at(5) +
                             ") \n /DOCINFO pdfmark";
    QCOMPARE(documentInformationText(information), expected);
}

void DocumentInformationTest::emptyFieldsLeaveSixEmptyPairs()
{
    QCOMPARE(documentInformationText({}),
             QStringLiteral("[ /Title ()\n /Author () \n /Subject () \n /Keywords () \n /Creator "
                            "() \n /Producer () \n /DOCINFO pdfmark"));
}

QUORLIN_TEST(DocumentInformationTest)
#include "test_document_information.moc"
