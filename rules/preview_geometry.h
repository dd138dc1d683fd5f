#pragma once

#include "analysis/subtext.h"

#include <QPointF>
#include <QRect>
#include <QSize>

#include <optional>
#include <span>

namespace quorlin {

// Geometry of the page preview. Items and rules are kept in page units (see Subtext); the picture
// has one pixel per unit at zoom 1.0, so a place on the screen is unit x zoom, truncated. Products
// are computed in single precision: in double, 25 x 0.64f truncates to 15 instead of 16.

/// Zoom after one step of enlarging: x 1.25 in single precision. There is no upper limit.
float enlargedZoom(float zoom);

/// Zoom after one step of shrinking: x 0.8 in double precision, rounded to float afterwards. There
/// is no lower limit.
float shrunkZoom(float zoom);

/// Box, in pixels, into which a picture of @p width x @p height pixels is scaled. Empty when
/// nothing is left of the picture, and when it would be too large to be held: a side above 32767 or
/// more than 2^28 pixels.
QSize previewSize(float width, float height, float zoom);

/// Place of the frame over @p item, in pixels of the shown picture. Numbers that no picture reaches
/// are cut to the largest size of a widget.
QRect itemFrame(const Subtext &item, float zoom);

/// Whether the frame over @p item covers no more than the start of its text, as over text that runs
/// up or to the left: it is no wider than high, and three letters hardly fit.
bool coversTheStartOnly(const Subtext &item);

/// Index of the last of @p frames that contains @p point. The left, top and bottom edges belong to
/// a frame, the right edge does not. Nothing when no frame contains it.
std::optional<qsizetype> frameAt(std::span<const QRect> frames, QPointF point);

/// Place of the confirming button, 141 x 28, on a preview of @p preview pixels: right of @p frame
/// and aligned with its top. Where it would reach past the right edge it ends there and stands
/// below the frame, above it at the lower edge. An empty @p frame stands for no frame and gives the
/// top left corner.
QRect confirmGeometry(const QRect &frame, QSize preview);

/// Position of a scroll bar that keeps a place of the page where it is in the view while the zoom
/// changes.
/// @param place the place in page units, @param inView its distance from the view's edge in pixels
int scrollKeeping(float place, int inView, float zoom);

} // namespace quorlin
