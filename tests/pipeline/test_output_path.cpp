#include "pipeline/output_path.h"
#include "tests/support/room.h"

#include <QTest>

class TestOutputPath : public QObject
{
    Q_OBJECT

private slots:
    void paths_data();
    void paths();
    void baseNames_data();
    void baseNames();
};

void TestOutputPath::paths_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("range");
    QTest::addColumn<int>("method");
    QTest::addColumn<QString>("path");

    QTest::newRow("method 1") << 0 << "ACME"
                              << "1-3" << 0 << "/out/report/1 ACME report 1-3.pdf";
    QTest::newRow("method 2") << 0 << "ACME"
                              << "1-3" << 1 << "/out/report/1 ACME report 1-3.pdf";
    QTest::newRow("method 3 leaves the pages out")
        << 0 << "ACME"
        << "1-2 5" << 2 << "/out/report/1 ACME report.pdf";
    QTest::newRow("slashes become dashes") << 1 << "B/C/"
                                           << "3" << 0 << "/out/report/2 B-C- report 3.pdf";
    QTest::newRow("no leading zeros") << 9 << "D"
                                      << "4-9" << 0 << "/out/report/10 D report 4-9.pdf";
    QTest::newRow("no text gives three blanks") << 0 << " "
                                                << "1-2" << 0 << "/out/report/1   report 1-2.pdf";
    QTest::newRow("no text with method 3") << 0 << " "
                                           << "1-2" << 2 << "/out/report/1   report.pdf";
    QTest::newRow("everything else stays")
        << 0 << "a\\b:c*%1\"<>|  d."
        << "1" << 0 << "/out/report/1 a\\b:c*%1\"<>|  d. report 1.pdf";
    QTest::newRow("texts of dots stay inside the folder")
        << 0 << ".."
        << "1" << 2 << "/out/report/1 .. report.pdf";
}

void TestOutputPath::paths()
{
    QFETCH(int, index);
    QFETCH(QString, text);
    QFETCH(QString, range);
    QFETCH(int, method);
    QTEST(quorlin::outputPath(QStringLiteral("/out"), QStringLiteral("/in/report.pdf"), index, text,
                              range, method),
          "path");
}

void TestOutputPath::baseNames_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("base");
    QTest::newRow("plain") << "/in/report.pdf"
                           << "report";
    QTest::newRow("up to the first dot") << "/in/report.v2.pdf"
                                         << "report";
    QTest::newRow("no suffix") << "/in/report"
                               << "report";
    QTest::newRow("hidden file") << "/in/.hidden.pdf"
                                 << "";
    QTest::newRow("blanks and signs") << "/in/a b & c.pdf"
                                      << "a b & c";
}

void TestOutputPath::baseNames()
{
    QFETCH(QString, input);
    QTEST(quorlin::inputBaseName(input), "base");
}

QUORLIN_TEST(TestOutputPath)
#include "test_output_path.moc"
