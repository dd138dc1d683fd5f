#include "pipeline/page_file.h"
#include "tests/support/room.h"

#include <QTest>

class TestPageFile : public QObject
{
    Q_OBJECT

private slots:
    void names_data();
    void names();
    void plainPathsGiveTheirAddress();
    void charactersOfAddressesStandForThemselves_data();
    void charactersOfAddressesStandForThemselves();
};

void TestPageFile::names_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("path");
    QTest::newRow("first") << 1 << "/t/split_pg_0001.htm";
    QTest::newRow("four digits") << 1234 << "/t/split_pg_1234.htm";
    QTest::newRow("five digits") << 10000 << "/t/split_pg_10000.htm";
}

void TestPageFile::names()
{
    QFETCH(int, page);
    QTEST(quorlin::pageFilePath(QStringLiteral("/t"), page), "path");
}

void TestPageFile::plainPathsGiveTheirAddress()
{
    const QString path = QStringLiteral("/t/split_pg_0001.htm");
    QCOMPARE(quorlin::pageFileUrl(path).toString(), QStringLiteral("file:///") + path);
}

void TestPageFile::charactersOfAddressesStandForThemselves_data()
{
    QTest::addColumn<QString>("path");
    for (const char *path : {"/t #1/a.htm", "/t?x=1/a.htm", "/t%41/a.htm", "/t%/a.htm",
                             "/t b/a.htm", "/t;:@&=+$,/a.htm", "/t\xc3\xbc/a.htm", "/t/\\a.htm"}) {
        QTest::newRow(path) << QString::fromUtf8(path);
    }
}

void TestPageFile::charactersOfAddressesStandForThemselves()
{
    QFETCH(QString, path);
    QCOMPARE(quorlin::pageFileUrl(path).path(QUrl::FullyDecoded), QLatin1Char('/') + path);
    QVERIFY(quorlin::pageFileUrl(path).query().isEmpty());
    QVERIFY(quorlin::pageFileUrl(path).fragment().isEmpty());
}

QUORLIN_TEST(TestPageFile)
#include "test_page_file.moc"
