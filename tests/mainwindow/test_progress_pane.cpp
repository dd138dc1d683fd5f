#include "mainwindow/progress_pane.h"
#include "tests/support/room.h"

#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextEdit>

#include <ctime>
#include <vector>

class TestProgressPane : public QObject
{
    Q_OBJECT

private slots:
    void linesStandAtOnce();
    void linesAreNoRichText();
    void theViewFollowsTheEnd();
    void aViewScrolledUpStays();
    void theScreenFollows();
    void aLineCostsTheSameAtAnyLength();
};

namespace {

QStringList linesOf(const QTextEdit &edit)
{
    QStringList lines;
    for (QTextBlock block = edit.document()->begin(); block.isValid(); block = block.next()) {
        lines.append(block.text());
    }
    return lines;
}

/// Seconds that this thread has computed; what else the machine does hardly counts.
double processorSeconds()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

} // namespace

void TestProgressPane::linesStandAtOnce()
{
    QTextEdit edit;
    quorlin::ProgressPane pane(&edit);
    pane.addLine(QStringLiteral("first"));
    QCOMPARE(linesOf(edit), QStringList({QStringLiteral("first")}));
    pane.addLine(QStringLiteral("second"));
    QCOMPARE(linesOf(edit), QStringList({QStringLiteral("first"), QStringLiteral("second")}));
    QCOMPARE(edit.toPlainText(), QStringLiteral("first\nsecond"));
}

void TestProgressPane::linesAreNoRichText()
{
    QTextEdit edit;
    quorlin::ProgressPane pane(&edit);
    const QString line = QStringLiteral("/x/a<b>&amp;  c  .pdf ");
    pane.addLine(line);
    pane.addLine(QStringLiteral("<html><body>x</body></html>"));
    QCOMPARE(linesOf(edit).first(), line);
    QCOMPARE(linesOf(edit).last(), QStringLiteral("<html><body>x</body></html>"));
}

void TestProgressPane::theViewFollowsTheEnd()
{
    QTextEdit edit;
    edit.resize(400, 120);
    edit.show();
    quorlin::ProgressPane pane(&edit);
    for (int i = 0; i < 100; ++i) {
        pane.addLine(QString::number(i));
    }
    QTRY_VERIFY(edit.viewport()->updatesEnabled());
    const QScrollBar *bar = edit.verticalScrollBar();
    QVERIFY(bar->maximum() > 0);
    QCOMPARE(bar->value(), bar->maximum());
}

void TestProgressPane::aViewScrolledUpStays()
{
    QTextEdit edit;
    edit.resize(400, 120);
    edit.show();
    quorlin::ProgressPane pane(&edit);
    for (int i = 0; i < 100; ++i) {
        pane.addLine(QString::number(i));
    }
    QTRY_VERIFY(edit.viewport()->updatesEnabled());
    edit.verticalScrollBar()->setValue(17);
    pane.addLine(QStringLiteral("new"));
    QTRY_VERIFY(edit.viewport()->updatesEnabled());
    QCOMPARE(edit.verticalScrollBar()->value(), 17);
}

void TestProgressPane::theScreenFollows()
{
    QTextEdit edit;
    edit.resize(400, 120);
    edit.show();
    QVERIFY(QTest::qWaitForWindowExposed(&edit));
    const QImage empty = edit.viewport()->grab().toImage();
    quorlin::ProgressPane pane(&edit);
    pane.addLine(QStringLiteral("a line that shows"));
    QVERIFY(!edit.viewport()->updatesEnabled());
    QTRY_VERIFY(edit.viewport()->updatesEnabled());
    QVERIFY(edit.viewport()->grab().toImage() != empty);
}

void TestProgressPane::aLineCostsTheSameAtAnyLength()
{
    QTextEdit edit;
    edit.resize(800, 120);
    edit.show();
    QVERIFY(QTest::qWaitForWindowExposed(&edit));
    quorlin::ProgressPane pane(&edit);
    constexpr int count = 20000;
    constexpr int part = 5000;
    std::vector<double> seconds;
    for (int first = 0; first < count; first += part) {
        const double begin = processorSeconds();
        for (int i = first; i < first + part; ++i) {
            pane.addLine(
                QStringLiteral("Generating /home/someone/output/batch/%1 text.pdf").arg(i));
            QCoreApplication::processEvents();
        }
        seconds.push_back(processorSeconds() - begin);
    }
    const QStringList lines = linesOf(edit);
    QCOMPARE(lines.size(), count);
    QVERIFY(lines.first().endsWith(QLatin1String("/0 text.pdf")));
    QVERIFY(lines.last().endsWith(QLatin1String("/19999 text.pdf")));
    // Lines that cost more the more there are would make the last part seven times as slow.
    QVERIFY2(
        seconds.back() < 3 * seconds.front(),
        qPrintable(QStringLiteral("%1 s, then %2 s").arg(seconds.front()).arg(seconds.back())));
}

QUORLIN_TEST(TestProgressPane)
#include "test_progress_pane.moc"
