#include "widgets/screen_fit.h"

#include <QLayout>
#include <QScreen>
#include <QStyle>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace quorlin {

namespace {

QMargins frameOf(const QWidget &window)
{
    const QWindow *handle = window.windowHandle();
    const QMargins frame = handle == nullptr ? QMargins() : handle->frameMargins();
    if (!frame.isNull()) {
        return frame;
    }
    return {0, window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window), 0, 0};
}

int insideOf(int first, int length, int roomFirst, int roomLength)
{
    return std::clamp(first, roomFirst, roomFirst + roomLength - length);
}

} // namespace

QRect placedInside(const QRect &window, const QRect &available, const QMargins &frame)
{
    const QRect room = available.marginsRemoved(frame);
    if (!room.isValid() || (window.width() <= room.width() && window.height() <= room.height())) {
        return window;
    }
    const QSize size = window.size().boundedTo(room.size());
    return {insideOf(window.x(), size.width(), room.x(), room.width()),
            insideOf(window.y(), size.height(), room.y(), room.height()), size.width(),
            size.height()};
}

QSize roomFor(const QWidget &window)
{
    return window.screen()->availableGeometry().marginsRemoved(frameOf(window)).size();
}

void fitOnScreen(QWidget &window)
{
    if ((window.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)) != 0) {
        return;
    }
    if (window.layout() != nullptr) {
        window.layout()->activate(); // its smallest size may have changed
    }
    const QRect place =
        placedInside(window.geometry(), window.screen()->availableGeometry(), frameOf(window));
    if (place != window.geometry()) {
        window.setGeometry(place);
    }
}

} // namespace quorlin
