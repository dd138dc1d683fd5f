#include "rules/preview_geometry.h"

#include "pipeline/page_file_text.h"

#include <algorithm>
#include <cmath>

namespace quorlin {

namespace {

constexpr float largestSide = 32767.0F;
constexpr double largestArea = 268435456.0; // 2^28 pixels, one gigabyte
constexpr float largestCoordinate = 16777215.0F;
constexpr int narrowText = 2; // letters that one em holds
constexpr int confirmWidth = 141;
constexpr int confirmHeight = 28;

int scaled(qint32 value, float zoom)
{
    const float product = static_cast<float>(value) * zoom;
    if (std::isnan(product)) {
        return 0;
    }
    return static_cast<int>(std::clamp(product, 0.0F, largestCoordinate));
}

} // namespace

float enlargedZoom(float zoom)
{
    return zoom * 1.25F;
}

float shrunkZoom(float zoom)
{
    return static_cast<float>(static_cast<double>(zoom) * 0.8);
}

QSize previewSize(float width, float height, float zoom)
{
    const float scaledWidth = width * zoom;
    const float scaledHeight = height * zoom;
    // Written so that a NaN is refused too.
    const bool held = scaledWidth >= 1.0F && scaledWidth <= largestSide && scaledHeight >= 1.0F &&
                      scaledHeight <= largestSide &&
                      double(scaledWidth) * double(scaledHeight) <= largestArea;
    if (!held) {
        return {};
    }
    return {static_cast<int>(scaledWidth), static_cast<int>(scaledHeight)};
}

QRect itemFrame(const Subtext &item, float zoom)
{
    return {scaled(item.left, zoom), scaled(item.top, zoom), scaled(item.width, zoom),
            scaled(item.height, zoom)};
}

bool coversTheStartOnly(const Subtext &item)
{
    return item.width <= item.height && plainText(item.text).size() > narrowText;
}

std::optional<qsizetype> frameAt(std::span<const QRect> frames, QPointF point)
{
    std::optional<qsizetype> found;
    for (std::size_t i = 0; i < frames.size(); ++i) {
        const QRect &frame = frames[i];
        const bool across = frame.x() <= point.x() && point.x() < frame.x() + frame.width();
        const bool down = frame.y() <= point.y() && point.y() <= frame.y() + frame.height();
        if (across && down) {
            found = static_cast<qsizetype>(i);
        }
    }
    return found;
}

QRect confirmGeometry(const QRect &frame, QSize preview)
{
    const QRect beside(frame.x() + frame.width(), frame.y(), confirmWidth, confirmHeight);
    const int lastLeft = std::max(0, preview.width() - confirmWidth);
    const int lastTop = std::max(0, preview.height() - confirmHeight);
    if (beside.x() <= lastLeft) {
        return {beside.x(), std::min(beside.y(), lastTop), confirmWidth, confirmHeight};
    }
    const int below = frame.y() + frame.height();
    const int above = std::clamp(frame.y() - confirmHeight, 0, lastTop);
    return {lastLeft, below <= lastTop ? below : above, confirmWidth, confirmHeight};
}

int scrollKeeping(float place, int inView, float zoom)
{
    return scaled(static_cast<qint32>(std::clamp(place, 0.0F, largestCoordinate)), zoom) - inView;
}

} // namespace quorlin
