#include "rules/mywebview.h"

#include <QChildEvent>
#include <QWheelEvent>

myWebview::myWebview(QWidget *parent) : QWebEngineView(parent) {}

void myWebview::setZoomFactor(float)
{
    update();
    updateGeometry();
}

void myWebview::wheelEvent(QWheelEvent *event)
{
    zoomFactor *= event->angleDelta().y() > 0 ? 1.1F : 0.9F;
    update();
    updateGeometry();
    event->accept();
}

void myWebview::childEvent(QChildEvent *event)
{
    QWebEngineView::childEvent(event);
    // Wheel events over the page are sent to an inner widget, which keeps them to itself.
    if (event->added() && event->child()->isWidgetType()) {
        event->child()->installEventFilter(this);
    }
}

bool myWebview::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Wheel) {
        wheelEvent(static_cast<QWheelEvent *>(event));
        return true;
    }
    return QWebEngineView::eventFilter(watched, event);
}
