#include "rules/item_frame.h"

#include "widgets/desktop_colours.h"

#include <QHelpEvent>
#include <QImage>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <array>

namespace {

constexpr int borderWidth = 2;         // pixels, of the style sheet
constexpr double visibleLine = 3;      // contrast asked of a line, as accessibility guidelines do
constexpr int samplesPerEdge = 50;     // at most
constexpr double vanishingShare = 0.2; // of the border, above which it is outlined

/// Whether the border's green can hardly be told from @p ground.
bool vanishesOn(QRgb ground)
{
    return quorlin::contrastOf(QColor(Qt::darkGreen), QColor(ground)) < visibleLine;
}

std::array<QRect, 4> edgesOf(const QRect &frame)
{
    const QRect inner = frame.adjusted(borderWidth, borderWidth, -borderWidth, -borderWidth);
    return {QRect(frame.left(), frame.top(), frame.width(), borderWidth),
            QRect(frame.left(), inner.bottom() + 1, frame.width(), borderWidth),
            QRect(frame.left(), frame.top(), borderWidth, frame.height()),
            QRect(inner.right() + 1, frame.top(), borderWidth, frame.height())};
}

} // namespace

ItemFrame::ItemFrame(QWidget *parent) : QPushButton(parent) {}

void ItemFrame::adaptTo(const QImage &picture)
{
    int seen = 0;
    int vanishing = 0;
    for (const QRect &edge : edgesOf(geometry())) {
        const QRect inside = edge.intersected(picture.rect());
        const int step =
            std::max({1, inside.width() / samplesPerEdge, inside.height() / samplesPerEdge});
        for (int y = inside.top(); y <= inside.bottom(); y += inside.height() > 2 ? step : 1) {
            for (int x = inside.left(); x <= inside.right(); x += inside.width() > 2 ? step : 1) {
                ++seen;
                vanishing += vanishesOn(picture.pixel(x, y)) ? 1 : 0;
            }
        }
    }
    outlined = vanishing > seen * vanishingShare;
    update();
}

bool ItemFrame::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip || toolTip().isEmpty()) {
        return QPushButton::event(event);
    }
    // Without a widget: it would lend the tip its style sheet.
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), toolTip());
    return true;
}

void ItemFrame::paintEvent(QPaintEvent *event)
{
    if (outlined) {
        QPainter painter(this);
        for (const QRect &edge : edgesOf(rect())) {
            painter.fillRect(edge, Qt::white);
        }
    }
    QPushButton::paintEvent(event);
}
