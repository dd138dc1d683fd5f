#include "widgets/caption_fit.h"

#include <QFontMetrics>

#include <algorithm>
#include <array>

namespace quorlin {

namespace {

constexpr int narrowestStretch = 70; // percent
constexpr int smallestSize = 50;     // percent
constexpr std::array pictureSides = {24, 16};
constexpr int pictureGap = 4;   // between a button's picture and its caption
constexpr int buttonMargin = 4; // beside both, on either side

int widest(const QFont &font, const QStringList &texts)
{
    const QFontMetrics metrics(font);
    int width = 0;
    for (const QString &text : texts) {
        width = std::max(width, metrics.horizontalAdvance(text));
    }
    return width;
}

QFont stretched(QFont font, int percent)
{
    font.setStretch(percent);
    return font;
}

QFont resized(QFont font, int percent)
{
    if (font.pointSizeF() > 0) {
        font.setPointSizeF(font.pointSizeF() * percent / 100);
    } else {
        font.setPixelSize(std::max(1, font.pixelSize() * percent / 100));
    }
    return font;
}

/// Percentage at which @p needed pixels become @p width, as a first guess.
int percentOf(int width, int needed)
{
    return needed <= width || needed <= 0 ? 100 : 100 * width / needed;
}

bool hasSameSize(const QFont &one, const QFont &other)
{
    return one.pointSizeF() == other.pointSizeF() && one.pixelSize() == other.pixelSize();
}

} // namespace

QFont fittingFont(const QFont &font, const QStringList &texts, int width)
{
    int needed = widest(font, texts);
    if (needed <= width) {
        return font;
    }
    int percent = std::max(percentOf(width, needed), narrowestStretch);
    QFont fitted = stretched(font, percent);
    while (percent > narrowestStretch && widest(fitted, texts) > width) {
        fitted = stretched(font, --percent);
    }
    needed = widest(fitted, texts);
    if (needed <= width) {
        return fitted;
    }
    percent = std::max(percentOf(width, needed), smallestSize);
    QFont smaller = resized(fitted, percent);
    while (percent > smallestSize && widest(smaller, texts) > width) {
        smaller = resized(fitted, --percent);
    }
    return smaller;
}

ButtonFit fittingButtons(const QFont &font, const QStringList &captions, int width)
{
    for (const int side : pictureSides) {
        const int room = width - 2 * buttonMargin - side - pictureGap;
        const QFont fitted = fittingFont(font, captions, room);
        // Narrower letters are better than a smaller picture, and that better than none.
        if (hasSameSize(fitted, font)) {
            return {fitted, side};
        }
    }
    return {fittingFont(font, captions, width - 2 * buttonMargin), 0};
}

} // namespace quorlin
