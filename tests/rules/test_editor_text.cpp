#include "rules/editor_text.h"
#include "tests/support/room.h"

#include <QTest>

using namespace quorlin;

class TestEditorText : public QObject
{
    Q_OBJECT

private slots:
    void tipShowsLeftAndTop();
    void contentShowsPlaceAndText_data();
    void contentShowsPlaceAndText();
    void pageCountIsReadBackFromItsLabel_data();
    void pageCountIsReadBackFromItsLabel();
    void pageButtonsFollowThePage_data();
    void pageButtonsFollowThePage();
};

void TestEditorText::tipShowsLeftAndTop()
{
    QCOMPARE(positionTip({72, 104, 210, 12, "Invoice"}), QStringLiteral("Position\n X- 72 Y- 104"));
}

void TestEditorText::contentShowsPlaceAndText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("content");
    QTest::newRow("plain") << "Total 5"
                           << "(10 20 30 40)=Total 5";
    QTest::newRow("empty") << ""
                           << "(10 20 30 40)=";
    QTest::newRow("place markers stay") << "%1 of %5 %L2"
                                        << "(10 20 30 40)=%1 of %5 %L2";
    QTest::newRow("blanks stay") << "  a  "
                                 << "(10 20 30 40)=  a  ";
}

void TestEditorText::contentShowsPlaceAndText()
{
    QFETCH(QString, text);
    QFETCH(QString, content);
    QCOMPARE(ruleContent({10, 20, 30, 40, text}), content);
}

void TestEditorText::pageCountIsReadBackFromItsLabel_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<int>("count");
    QTest::newRow("written by us") << pageCountLabel(12) << 12;
    QTest::newRow("no text yet") << "" << 0;
    QTest::newRow("every slash is dropped") << "/1/2" << 12;
    QTest::newRow("no number") << "/many" << 0;
    QTest::newRow("the largest") << pageCountLabel(2147483647) << 2147483647;
}

void TestEditorText::pageCountIsReadBackFromItsLabel()
{
    QFETCH(QString, label);
    QFETCH(int, count);
    QCOMPARE(pageCountFromLabel(label), count);
}

void TestEditorText::pageButtonsFollowThePage_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("previous");
    QTest::addColumn<int>("next");
    QTest::newRow("no pages") << 0 << 0 << 0 << 0;
    QTest::newRow("no pages, an old number") << 7 << 0 << 0 << 0;
    QTest::newRow("one page") << 1 << 1 << 0 << 0;
    QTest::newRow("first of five") << 1 << 5 << 0 << 2;
    QTest::newRow("middle of five") << 3 << 5 << 2 << 4;
    QTest::newRow("last of five") << 5 << 5 << 4 << 0;
}

void TestEditorText::pageButtonsFollowThePage()
{
    QFETCH(int, page);
    QFETCH(int, count);
    QFETCH(int, previous);
    QFETCH(int, next);
    QCOMPARE(pageButtons(page, count), (PageButtons{previous != 0, next != 0}));
    QCOMPARE(previousPage(page, count), previous != 0 ? std::optional(previous) : std::nullopt);
    QCOMPARE(nextPage(page, count), next != 0 ? std::optional(next) : std::nullopt);
}

QUORLIN_TEST(TestEditorText)
#include "test_editor_text.moc"
