#include "tests/support/room.h"
#include "text_comparison.h"

#include <QTest>

/// The comparison itself: were it too lenient, no run over the corpus could fail.
class TestTextComparison : public QObject
{
    Q_OBJECT

private slots:
    void textsAreTheSame_data();
    void textsAreTheSame();
    void keysAreCutOutOfNames();
    void referencesAreSpeltOutOnce();
};

void TestTextComparison::textsAreTheSame_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<bool>("same");
    QTest::newRow("equal") << "AC-1"
                           << "AC-1" << true;
    QTest::newRow("other case") << "ac-1"
                                << "AC-1" << false;
    QTest::newRow("a character more") << "AC-12"
                                      << "AC-1" << false;
    QTest::newRow("ligature") << "o\uFB03ce"
                              << "office" << true;
    QTest::newRow("composed and decomposed") << "e\u0301"
                                             << "\u00e9" << true;
    QTest::newRow("white space of any kind") << "a\u00a0b\tc"
                                             << "a b c" << true;
    QTest::newRow("words glued together") << "ab c"
                                          << "a b c" << false;
    QTest::newRow("direction marks") << "\u200eAC\u200f"
                                     << "AC" << true;
    QTest::newRow("seen order") << "\u05d2\u05d1\u05d0"
                                << "\u05d0\u05d1\u05d2" << true;
    QTest::newRow("mixed-up letters") << "\u05d1\u05d2\u05d0"
                                      << "\u05d0\u05d1\u05d2" << false;
    QTest::newRow("left-to-right text backwards") << "cba"
                                                  << "abc" << false;
    QTest::newRow("nothing") << ""
                             << "a" << false;
}

void TestTextComparison::textsAreTheSame()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QFETCH(bool, same);
    QCOMPARE(sameText(text, expected), same);
}

void TestTextComparison::keysAreCutOutOfNames()
{
    QCOMPARE(keyOfOutput("12 A B base 3-4.pdf", 12, "base", "3-4"), "A B");
    QCOMPARE(keyOfOutput("1   base 3.pdf", 1, "base", "3"), " ");
    QCOMPARE(keyOfOutput("1 A base.pdf", 1, "base", ""), "A");
    QVERIFY(keyOfOutput("1 A base 3.pdf", 2, "base", "3").isNull());
    QVERIFY(keyOfOutput("1 A base 3.pdf", 1, "base", "4").isNull());
}

void TestTextComparison::referencesAreSpeltOutOnce()
{
    QCOMPARE(withoutReferences("A &lt;B&gt; &quot;C&quot; & D"), "A <B> \"C\" & D");
    QCOMPARE(withoutReferences("a&amp;amp;b"), "a&amp;b");
    QCOMPARE(withoutReferences("&amp;lt;"), "&lt;");
}

QUORLIN_TEST(TestTextComparison)
#include "test_text_comparison.moc"
