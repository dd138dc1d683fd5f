#include "mainwindow/progress_pane.h"
#include "tests/support/room.h"

#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextEdit>

#include <ctime>
#include <vector>

/// Counts how often a widget is painted.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget *widget) : QObject(widget) { widget->installEventFilter(this); }

    int count() const { return paintings; }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        paintings += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

private:
    int paintings = 0;
};

class TestProgressPane : public QObject
{
    Q_OBJECT

private slots:
    void linesStandAtOnce();
    void linesAreNoRichText();
    void theViewFollowsTheEnd();
    void aViewScrolledUpStays();
    void aViewScrolledUpBetweenTwoLinesStays();
    void theViewFollowsTheEndWhileItIsResized();
    void manyLinesWrapOnceTheWidthIsAtRest();
    void theScreenFollows();
    void itCanBePaintedAtAnyTime();
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
    const QScrollBar *bar = edit.verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
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
    QTRY_VERIFY(edit.verticalScrollBar()->maximum() > 0);
    const int maximum = edit.verticalScrollBar()->maximum();
    edit.verticalScrollBar()->setValue(17);
    pane.addLine(QStringLiteral("new"));
    QTRY_VERIFY(edit.verticalScrollBar()->maximum() > maximum);
    QCOMPARE(edit.verticalScrollBar()->value(), 17);
}

void TestProgressPane::aViewScrolledUpBetweenTwoLinesStays()
{
    QTextEdit edit;
    edit.resize(400, 120);
    edit.show();
    QVERIFY(QTest::qWaitForWindowExposed(&edit));
    quorlin::ProgressPane pane(&edit);
    for (int i = 0; i < 100; ++i) {
        pane.addLine(QString::number(i));
    }
    QScrollBar *bar = edit.verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
    QCOMPARE(bar->value(), bar->maximum());
    // The screen waits for more lines when the user turns the wheel.
    pane.addLine(QStringLiteral("new"));
    bar->triggerAction(QAbstractSlider::SliderPageStepSub);
    const int chosen = bar->value();
    const int maximum = bar->maximum();
    QVERIFY(chosen < maximum);
    QTRY_VERIFY(bar->maximum() > maximum);
    for (int i = 0; i < 50; ++i) {
        pane.addLine(QString::number(i));
        QCoreApplication::processEvents();
    }
    QCOMPARE(bar->value(), chosen);
    // Back at the end, the view follows again.
    bar->triggerAction(QAbstractSlider::SliderToMaximum);
    pane.addLine(QStringLiteral("last"));
    QTRY_COMPARE(bar->value(), bar->maximum());
}

void TestProgressPane::theViewFollowsTheEndWhileItIsResized()
{
    QTextEdit edit;
    edit.resize(800, 120);
    edit.show();
    quorlin::ProgressPane pane(&edit);
    const QString line(80, QLatin1Char('m'));
    for (int i = 0; i < 200; ++i) {
        pane.addLine(line);
        edit.resize(800 - 2 * i, 120);
        QCoreApplication::processEvents();
    }
    const QScrollBar *bar = edit.verticalScrollBar();
    QVERIFY(bar->maximum() > 0);
    QCOMPARE(bar->value(), bar->maximum());
}

void TestProgressPane::manyLinesWrapOnceTheWidthIsAtRest()
{
    // Thousands of lines take half a second to wrap: a window that did so at every step of the
    // user's hand would not follow it.
    QTextEdit edit;
    edit.resize(800, 120);
    edit.show();
    quorlin::ProgressPane pane(&edit);
    const QString line(90, QLatin1Char('m'));
    pane.addLine(line);
    edit.resize(700, 120);
    QCOMPARE(edit.lineWrapColumnOrWidth(), edit.viewport()->width());
    for (int i = 0; i < 1000; ++i) {
        pane.addLine(line);
    }
    QScrollBar *bar = edit.verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
    QTRY_COMPARE(edit.lineWrapColumnOrWidth(), edit.viewport()->width());
    const int before = edit.lineWrapColumnOrWidth();
    for (int width = 700; width > 300; width -= 20) {
        edit.resize(width, 120);
        QCOMPARE(edit.lineWrapColumnOrWidth(), before);
    }
    QTRY_COMPARE(edit.lineWrapColumnOrWidth(), edit.viewport()->width());
    QTRY_COMPARE(bar->value(), bar->maximum());
    QVERIFY(!edit.horizontalScrollBar()->isVisible());
}

void TestProgressPane::theScreenFollows()
{
    QTextEdit edit;
    edit.resize(400, 120);
    edit.show();
    QVERIFY(QTest::qWaitForWindowExposed(&edit));
    PaintCounter painted(edit.viewport());
    quorlin::ProgressPane pane(&edit);
    pane.addLine(QStringLiteral("a line that shows"));
    QCOMPARE(painted.count(), 0);
    QTRY_COMPARE(painted.count(), 1);
    // Many lines, few paintings: the screen follows ten times a second.
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 2000; ++i) {
        pane.addLine(QStringLiteral("another line"));
        QCoreApplication::processEvents();
    }
    QVERIFY(painted.count() <= 3 + timer.elapsed() / 100);
}

void TestProgressPane::itCanBePaintedAtAnyTime()
{
    QWidget window;
    auto *edit = new QTextEdit(&window);
    window.resize(400, 120);
    edit->setGeometry(0, 0, 400, 120);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    quorlin::ProgressPane pane(edit);
    const QRgb paper = edit->palette().color(QPalette::Base).rgb();
    for (int i = 0; i < 60; ++i) {
        pane.addLine(QString::number(i));
        // The window grows while the screen waits for more lines.
        window.resize(400 + 10 * i, 120);
        edit->resize(window.size());
        const QImage seen = window.grab().toImage();
        QCOMPARE(seen.pixel(window.width() / 2, 60), paper);
        QCOMPARE(seen.pixel(window.width() - 40, 60), paper);
        QVERIFY(edit->updatesEnabled());
        QVERIFY(edit->viewport()->updatesEnabled());
    }
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
