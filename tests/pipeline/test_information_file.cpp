#include "pipeline/information_file.h"
#include "tests/support/room.h"

#include <QTest>

class TestInformationFile : public QObject
{
    Q_OBJECT

private slots:
    void digits_data();
    void digits();
};

void TestInformationFile::digits_data()
{
    QTest::addColumn<QString>("information");
    QTest::addColumn<QString>("digits");

    QTest::newRow("plain") << "NumberOfPages: 12\n"
                           << "12";
    QTest::newRow("leading zeros stay") << "NumberOfPages: 0012\n"
                                        << "0012";
    QTest::newRow("among other lines") << "Title: x\nNumberOfPages: 3\nAuthor: 9\n"
                                       << "3";
    QTest::newRow("the first occurrence counts") << "NumberOfPages: 4\nNumberOfPages: 5"
                                                 << "4";
    QTest::newRow("digits end at anything else") << "NumberOfPages: 12a3"
                                                 << "12";
    QTest::newRow("at the end of the text") << "NumberOfPages: 7"
                                            << "7";
    QTest::newRow("nothing behind the key") << "NumberOfPages: "
                                            << "";
    QTest::newRow("two blanks are one too many") << "NumberOfPages:  7"
                                                 << "";
    QTest::newRow("a sign is no digit") << "NumberOfPages: -7"
                                        << "";
    QTest::newRow("case counts") << "numberofpages: 1"
                                 << "";
    QTest::newRow("without blank the scan starts at position 14") << "NumberOfPages:12"
                                                                  << "12";
    QTest::newRow("position 14 of other text") << "Number of pages is 15"
                                               << "";
    QTest::newRow("digits at position 14 of other text") << "01234567890123456x"
                                                         << "456";
    QTest::newRow("text shorter than that") << "no pages"
                                            << "";
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("digits of other scripts are taken as they stand")
        << QString::fromUtf8("NumberOfPages: ١٢") << QString::fromUtf8("١٢");
}

void TestInformationFile::digits()
{
    QFETCH(QString, information);
    QTEST(quorlin::pageCountDigits(information), "digits");
}

QUORLIN_TEST(TestInformationFile)
#include "test_information_file.moc"
