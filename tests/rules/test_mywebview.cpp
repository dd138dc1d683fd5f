#include "rules/mywebview.h"
#include "tests/support/room.h"

#include <QCoreApplication>
#include <QTest>
#include <QWheelEvent>
#include <QtTest/qtestspontaneevent.h>

namespace {

/// Turns the wheel over the innermost widget of @p view, as the window system does.
void turnWheel(QWidget &view, int delta)
{
    const QPoint centre = view.rect().center();
    QWidget *target = view.childAt(centre);
    target = target != nullptr ? target : &view;
    const QPoint place = target->mapFrom(&view, centre);
    QWheelEvent event(place, target->mapToGlobal(place), QPoint(), QPoint(0, delta), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    QCoreApplication::instance()->notify(target, &event);
}

} // namespace

/// The wheel factor of the web view, and that the page's own zoom knows nothing of it.
class TestMyWebview : public QObject
{
    Q_OBJECT

private slots:
    void factorStartsAtOne();
    void wheelMultipliesTheFactor();
    void settingTheZoomFactorChangesNothing();
};

void TestMyWebview::factorStartsAtOne()
{
    const myWebview view;
    QCOMPARE(view.wheelFactor(), 1.0F);
}

void TestMyWebview::wheelMultipliesTheFactor()
{
    myWebview view;
    view.resize(300, 300);
    view.setHtml(QStringLiteral("<p>text</p>"));
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QTRY_VERIFY(view.childAt(150, 150) != nullptr);
    turnWheel(view, 120);
    QCOMPARE(view.wheelFactor(), 1.1F);
    turnWheel(view, -120);
    QCOMPARE(view.wheelFactor(), 1.1F * 0.9F);
    turnWheel(view, 0);
    QCOMPARE(view.wheelFactor(), 1.1F * 0.9F * 0.9F);
    QCOMPARE(view.QWebEngineView::zoomFactor(), 1.0);
}

void TestMyWebview::settingTheZoomFactorChangesNothing()
{
    myWebview view;
    view.setZoomFactor(3.0F);
    QCOMPARE(view.wheelFactor(), 1.0F);
    QCOMPARE(view.QWebEngineView::zoomFactor(), 1.0);
}

// The page is drawn by a process of its own, whose sandbox needs rights that tests may lack.
[[maybe_unused]] static const bool sandboxIsOff = qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");

QUORLIN_TEST(TestMyWebview)
#include "test_mywebview.moc"
