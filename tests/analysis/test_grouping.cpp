#include "analysis/grouping.h"
#include "tests/support/room.h"

#include <QTest>

namespace {

/// "A-B" is a page with text A, one without text, one with text B.
QStringList pages(const QString &letters)
{
    QStringList texts;
    for (const QChar letter : letters) {
        texts.append(letter == QLatin1Char('-') ? quorlin::noTextMarker() : QString(letter));
    }
    return texts;
}

/// Each group as "range=text".
QStringList shown(const quorlin::PageGroups &groups)
{
    QStringList result;
    for (qsizetype i = 0; i < groups.ranges.size(); ++i) {
        const QString text = groups.texts.value(i, QStringLiteral("nothing"));
        result.append(groups.ranges.at(i) + QLatin1Char('=') +
                      (text == quorlin::noTextMarker() ? QStringLiteral("-") : text));
    }
    return result;
}

} // namespace

class TestGrouping : public QObject
{
    Q_OBJECT

private slots:
    void groups_data();
    void groups();
    void pagesWithoutTextGoWhereTheCallerSays_data();
    void pagesWithoutTextGoWhereTheCallerSays();
    void textsAreComparedExactly();
    void anEmptyTextIsAText();
    void unknownMethodsGiveNoGroups();
    void everyPageLandsInOneGroup_data();
    void everyPageLandsInOneGroup();
};

void TestGrouping::groups_data()
{
    QTest::addColumn<QString>("letters");
    QTest::addColumn<int>("method");
    QTest::addColumn<QStringList>("expected"); // "range=key", "-" stands for the marker

    const auto row = [](const char *name, const char *letters, int method,
                        const QStringList &expected) {
        QTest::newRow(name) << QString::fromLatin1(letters) << method << expected;
    };
    row("no page", "", 0, {});
    row("no page, any text", "", 1, {});
    row("no page, merged", "", 2, {});
    row("one page", "A", 0, {"1=A"});
    row("one page, any text", "A", 1, {"1=A"});
    row("one page, merged", "A", 2, {"1=A"});
    row("one page without text", "-", 0, {"1=-"});
    row("one page without text, any text", "-", 1, {"1=-"});
    row("one page without text, merged", "-", 2, {"1=-"});
    row("pages without text join the group before", "A--B", 0, {"1-3=A", "4=B"});
    row("equal texts stay together", "AAA", 0, {"1-3=A"});
    row("the last page alone", "AAB", 0, {"1-2=A", "3=B"});
    row("the last page without text joins", "AB-", 0, {"1=A", "2-3=B"});
    row("a group without text ends at the first text", "-A", 0, {"1=-", "2=A"});
    row("several pages without text first", "---A", 0, {"1-3=-", "4=A"});
    row("every page another text", "ABC", 0, {"1=A", "2=B", "3=C"});
    row("a text that comes back starts a group of its own", "ABA", 0, {"1=A", "2=B", "3=A"});
    row("equal text after a page without text", "A-A", 0, {"1-3=A"});
    row("all without text", "----", 0, {"1-4=-"});
    row("any text: equal texts part", "AAA", 1, {"1=A", "2=A", "3=A"});
    row("any text: pages without text join", "A-A", 1, {"1-2=A", "3=A"});
    row("any text: first page without text", "-A", 1, {"1=-", "2=A"});
    row("any text: all without text", "---", 1, {"1-3=-"});
    row("any text: different texts", "AB", 1, {"1=A", "2=B"});
    row("merged: in order of first occurrence", "AABA-", 2, {"1-2 4-5=A", "3=B"});
    row("merged: three pieces", "ABABA", 2, {"1 3 5=A", "2 4=B"});
    row("merged: all without text", "---", 2, {"1-3=-"});
    row("merged: pages without text only at the front", "-A-B-A", 2, {"1=-", "2-3 6=A", "4-5=B"});
}

void TestGrouping::groups()
{
    QFETCH(QString, letters);
    QFETCH(int, method);
    QTEST(shown(quorlin::groupPages(pages(letters), method)), "expected");
}

void TestGrouping::pagesWithoutTextGoWhereTheCallerSays_data()
{
    using quorlin::BlankPages;
    QTest::addColumn<QString>("letters");
    QTest::addColumn<int>("method");
    QTest::addColumn<BlankPages>("blankPages");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *name, const char *letters, int method, BlankPages blankPages,
                        const QStringList &expected) {
        QTest::newRow(name) << QString::fromLatin1(letters) << method << blankPages << expected;
    };
    row("dropped at the front, within and at the end", "-A--B-", 0, BlankPages::Drop,
        {"2=A", "5=B"});
    row("dropped within a group", "A-A", 0, BlankPages::Drop, {"1 3=A"});
    row("dropped between single pages", "A-A", 1, BlankPages::Drop, {"1=A", "3=A"});
    row("dropped from merged groups", "AB-AA", 2, BlankPages::Drop, {"1 4-5=A", "2=B"});
    row("dropped all", "---", 0, BlankPages::Drop, {});
    row("apart between other texts", "A--B", 0, BlankPages::Separate, {"1=A", "2-3=-", "4=B"});
    row("apart between equal texts", "A-A", 0, BlankPages::Separate, {"1=A", "2=-", "3=A"});
    row("apart between single pages", "A--A", 1, BlankPages::Separate, {"1=A", "2-3=-", "4=A"});
    row("apart and merged", "A-A-", 2, BlankPages::Separate, {"1 3=A", "2 4=-"});
    row("apart all", "---", 0, BlankPages::Separate, {"1-3=-"});
}

void TestGrouping::pagesWithoutTextGoWhereTheCallerSays()
{
    QFETCH(QString, letters);
    QFETCH(int, method);
    QFETCH(quorlin::BlankPages, blankPages);
    QTEST(shown(quorlin::groupPages(pages(letters), method, blankPages)), "expected");
}

void TestGrouping::textsAreComparedExactly()
{
    const QStringList texts = {QStringLiteral("ACME"), QStringLiteral("Acme"),
                               QStringLiteral("ACME "), QStringLiteral("  ")};
    QCOMPARE(quorlin::groupPages(texts, 0).texts, texts);
    QCOMPARE(quorlin::groupPages(texts, 2).texts, texts);
}

void TestGrouping::anEmptyTextIsAText()
{
    const QStringList texts = {QStringLiteral("A"), QString(), QStringLiteral("A")};
    QCOMPARE(quorlin::groupPages(texts, 0).ranges,
             QStringList({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}));
    QCOMPARE(quorlin::groupPages(texts, 2).ranges,
             QStringList({QStringLiteral("1 3"), QStringLiteral("2")}));
}

void TestGrouping::unknownMethodsGiveNoGroups()
{
    for (const int method : {-1, 3}) {
        QCOMPARE(quorlin::groupPages(pages(QStringLiteral("AB")), method), quorlin::PageGroups());
    }
}

void TestGrouping::everyPageLandsInOneGroup_data()
{
    QTest::addColumn<int>("method");
    QTest::newRow("method 1") << 0;
    QTest::newRow("method 2") << 1;
    QTest::newRow("method 3") << 2;
}

void TestGrouping::everyPageLandsInOneGroup()
{
    // Every sequence of up to seven pages over two texts and none.
    QFETCH(int, method);
    const QString alphabet = QStringLiteral("AB-");
    for (int length = 1, count = 3; length <= 7; ++length, count *= 3) {
        for (int code = 0; code < count; ++code) {
            QString letters;
            for (int i = 0, rest = code; i < length; ++i, rest /= 3) {
                letters += alphabet.at(rest % 3);
            }
            QList<int> hits(length, 0);
            const QStringList ranges = quorlin::groupPages(pages(letters), method).ranges;
            for (const QString &piece : ranges.join(QLatin1Char(' ')).split(QLatin1Char(' '))) {
                const QStringList ends = piece.split(QLatin1Char('-'));
                for (int page = ends.first().toInt(); page <= ends.last().toInt(); ++page) {
                    ++hits[page - 1];
                }
            }
            QVERIFY2(hits == QList<int>(length, 1), qPrintable(letters));
        }
    }
}

QUORLIN_TEST(TestGrouping)
#include "test_grouping.moc"
