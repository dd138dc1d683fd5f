#include "rules/preview_geometry.h"
#include "rules/rules.h"

#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>

using namespace quorlin;

QRect Rules::pickedFrame() const
{
    return picked ? itemFrame(currentItem, frameZoom) : QRect();
}

QRect Rules::visiblePart() const
{
    return {QPoint(scrollArea->horizontalScrollBar()->value(),
                   scrollArea->verticalScrollBar()->value()),
            scrollArea->viewport()->size()};
}

void Rules::bringIntoView(const QRect &part)
{
    const QPoint middle = part.center();
    scrollArea->ensureVisible(middle.x(), middle.y(), part.width() / 2 + 1, part.height() / 2 + 1);
}

Rules::Anchor Rules::currentAnchor() const
{
    const QRect seen = visiblePart();
    const QRect frame = pickedFrame();
    const bool pickedInSight = !frame.isEmpty() && seen.intersects(frame);
    const QPoint point = pickedInSight ? frame.center() : seen.center();
    return {QPointF(point) / frameZoom, point - seen.topLeft(), pickedInSight};
}

void Rules::returnTo(const Anchor &anchor)
{
    scrollArea->horizontalScrollBar()->setValue(
        scrollKeeping(float(anchor.place.x()), anchor.inView.x(), frameZoom));
    scrollArea->verticalScrollBar()->setValue(
        scrollKeeping(float(anchor.place.y()), anchor.inView.y(), frameZoom));
    if (anchor.isPicked) {
        bringIntoView(pickedFrame());
    }
}
