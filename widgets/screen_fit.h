#pragma once

#include <QMargins>
#include <QRect>

class QWidget;

namespace quorlin {

/// Where a window of geometry @p window, without its frame, stands on a screen of which @p
/// available is free: as it is where it fits with its frame, else as large as there is room and
/// inside it.
/// @param frame what the desktop draws round the window
QRect placedInside(const QRect &window, const QRect &available, const QMargins &frame);

/// Room for the inside of @p window on its screen, in its own units. Where the desktop tells the
/// window's frame only after the window is shown, a title bar is allowed for.
QSize roomFor(const QWidget &window);

/// Places @p window by placedInside() on its screen. Called when the window is shown and its
/// contents are small enough; a maximised window is left to the desktop.
void fitOnScreen(QWidget &window);

} // namespace quorlin
