#include "batch/advice.h"
#include "batch/item_listing.h"
#include "batch/shown_text.h"
#include "tests/support/room.h"

#include <QTest>

using namespace quorlin::batch;

class TestPrinting : public QObject
{
    Q_OBJECT

private slots:
    void theLiveLineFitsTheTerminal();
    void controlCharactersNeverReachATerminal();
    void itemsAreListedInColumns();
    void reasonsComeWithAdvice_data();
    void reasonsComeWithAdvice();
};

void TestPrinting::theLiveLineFitsTheTerminal()
{
    QCOMPARE(liveText(2, 3, "a.pdf", "counting pages", 80), "[2/3] a.pdf: counting pages");
    const QString cut = liveText(2, 3, QString(200, u'n'), "counting pages", 40);
    QCOMPARE(cut.size(), 40);
    QVERIFY(cut.endsWith(QLatin1String("~: counting pages")));
    QVERIFY(liveText(2, 3, "a.pdf", "counting pages", 5).size() <= 5);
}

void TestPrinting::controlCharactersNeverReachATerminal()
{
    QCOMPARE(printable(QStringLiteral("a\033[2Jb\n\u009b")), "a?[2Jb??");
    QCOMPARE(printable(QStringLiteral("a\u202efdp.exe")), "a?fdp.exe");
    QCOMPARE(printable(QStringLiteral("Müller \u05d0\u65e5 ") + QStringLiteral("😀")),
             QStringLiteral("Müller \u05d0\u65e5 ") + QStringLiteral("😀"));
    QCOMPARE(printable(QString(QChar(0xd83d))), QString(QChar::ReplacementCharacter));
}

void TestPrinting::itemsAreListedInColumns()
{
    ItemGatherer gatherer;
    gatherer.takeItem("72\t104\t210\t12\tINV 1");
    gatherer.takeItem("600\t1104\t21\t12\ttwo  words");
    QCOMPARE(gatherer.items().size(), 2);
    QCOMPARE(gatherer.items().at(0), (Subtext{72, 104, 210, 12, "INV 1"}));
    QCOMPARE(itemTable(gatherer.items()), "   left    top  width height  text\n"
                                          "     72    104    210     12  INV 1\n"
                                          "    600   1104     21     12  two  words\n");
}

void TestPrinting::reasonsComeWithAdvice_data()
{
    QTest::addColumn<QString>("reason");
    QTest::addColumn<QString>("line");
    const auto row = [](const char *reason, const char *advice) {
        const QString text = QLatin1String(reason);
        QTest::newRow(reason) << text << text + QLatin1String(advice);
    };
    row("needs a password", " (give it with --password-file FILE)");
    row("needs a password that was not given",
        " (add its password to the file behind --password-file)");
    row("cannot be read as PDF", " (check whether a PDF viewer can open it)");
    row("is too damaged", " (try to open it in a PDF viewer and to save it again)");
    row("it is empty", " (check whether it was copied completely)");
    row("it changed while it was split; its outputs were removed",
        " (split it again once it is complete)");
    row("a tool made no progress and was ended", " (allow more time with --timeout SECONDS)");
    row("the page took too long", " (allow more time with --timeout SECONDS)");
    row("there is no such file", "");
    row("the output needs a password", "");
}

void TestPrinting::reasonsComeWithAdvice()
{
    QFETCH(QString, reason);
    QTEST(advisedReason(reason), "line");
}

QUORLIN_TEST(TestPrinting)
#include "test_printing.moc"
