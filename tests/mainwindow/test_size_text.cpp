#include "mainwindow/size_text.h"
#include "tests/support/room.h"

#include <QFile>
#include <QLocale>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <clocale>

class TestSizeText : public QObject
{
    Q_OBJECT

private slots:
    void sizes_data();
    void sizes();
    void thePointIsAPointInEveryLanguage();
    void thePointIsAPointInEveryLocaleOfTheSystem();
};

void TestSizeText::sizes_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, qint64 bytes, const char *text) {
        QTest::newRow(name) << bytes << QString::fromLatin1(text);
    };
    row("nothing", 0, "");
    row("unknown", -1, "");
    row("one byte", 1, "         0.001 KB");
    row("thousands are decimal", 123456, "       123.456 KB");
    row("last of the thousands", 1048576, "      1048.576 KB");
    row("first of the millions", 1048577, "         1.049 MB");
    row("just below 2 GiB", 2147483647, "      2147.484 MB");
    row("2 GiB shows no size", 2147483648, "");
    row("just below 4 GiB shows no size", 4294967295, "");
    row("beyond 4 GiB starts again", 4294967297, "         0.001 KB");
}

void TestSizeText::sizes()
{
    QFETCH(qint64, bytes);
    QTEST(quorlin::sizeText(bytes), "text");
}

void TestSizeText::thePointIsAPointInEveryLanguage()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const QString written = QLocale().toString(0.5);
    const QString text = quorlin::sizeText(1048576);
    QLocale::setDefault(before);
    QCOMPARE(written, QStringLiteral("0,5"));
    QCOMPARE(text, QStringLiteral("      1048.576 KB"));
}

void TestSizeText::thePointIsAPointInEveryLocaleOfTheSystem()
{
    // A locale of the test's own: hardly a machine for builds has one with a decimal comma.
    const QTemporaryDir folder;
    const QString locale = folder.filePath(QStringLiteral("comma.UTF-8"));
    const int status =
        QProcess::execute(QStringLiteral("localedef"), {"-i", "de_DE", "-f", "UTF-8", locale});
    if (status == -2) {
        QSKIP("the system has no localedef");
    }
    QCOMPARE(status, 0);
    const QByteArray before = std::setlocale(LC_NUMERIC, nullptr);
    qputenv("LOCPATH", QFile::encodeName(folder.path()));
    QVERIFY(std::setlocale(LC_NUMERIC, "comma.UTF-8") != nullptr);
    const QByteArray point = std::localeconv()->decimal_point;
    const QString text = quorlin::sizeText(1048576);
    std::setlocale(LC_NUMERIC, before.constData());
    qunsetenv("LOCPATH");
    QCOMPARE(point, QByteArray(","));
    QCOMPARE(text, QStringLiteral("      1048.576 KB"));
}

QUORLIN_TEST(TestSizeText)
#include "test_size_text.moc"
