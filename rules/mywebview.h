#pragma once

#include <QWebEngineView>

/// A web view with a zoom factor of its own, which the wheel changes and which is not passed on to
/// the page. No window of the program creates one.
class myWebview : public QWebEngineView
{
    Q_OBJECT

public:
    explicit myWebview(QWidget *parent = nullptr);

    /// Ignores @p factor; only asks for a repaint and a new layout. Hides the base class's
    /// function, so that the view's own zoom stays as it is.
    void setZoomFactor(float factor);

    /// The factor: 1.0 at first, x 1.1 for a wheel step up and x 0.9 for any other.
    float wheelFactor() const { return zoomFactor; }

protected:
    void wheelEvent(QWheelEvent *event) override;
    void childEvent(QChildEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    float zoomFactor = 1.0F;
};
