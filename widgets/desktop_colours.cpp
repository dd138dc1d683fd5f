#include "widgets/desktop_colours.h"

#include <algorithm>
#include <cmath>

namespace quorlin {

namespace {

constexpr double readable = 5; // a little more than 4.5, which letters lose at their edges
constexpr int shades = 20;

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &colour)
{
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

QColor mixed(const QColor &one, const QColor &other, double share)
{
    const auto channel = [share](int first, int second) {
        return static_cast<int>(std::lround(first + (second - first) * share));
    };
    return {channel(one.red(), other.red()), channel(one.green(), other.green()),
            channel(one.blue(), other.blue())};
}

/// The colour nearest to @p faint, on the way to @p full, that can be read on @p ground.
QColor strengthened(const QColor &faint, const QColor &full, const QColor &ground)
{
    for (int step = 0; step < shades; ++step) {
        const QColor colour = mixed(faint, full, double(step) / shades);
        if (contrastOf(colour, ground) >= readable) {
            return colour;
        }
    }
    return full;
}

} // namespace

double contrastOf(const QColor &one, const QColor &other)
{
    const double first = luminance(one) + 0.05;
    const double second = luminance(other) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

bool isDark(const QPalette &desktop)
{
    return luminance(desktop.color(QPalette::Window)) <
           luminance(desktop.color(QPalette::WindowText));
}

QPalette windowColours(const QPalette &desktop)
{
    if (!isDark(desktop)) {
        return desktop;
    }
    QPalette light(QColor(0xef, 0xef, 0xef));
    light.setColor(QPalette::Highlight, QColor(0x30, 0x8c, 0xc6).darker(115));
    light.setColor(QPalette::HighlightedText, Qt::white);
    light.setColor(QPalette::PlaceholderText, QColor(0x60, 0x60, 0x60));
    return light;
}

QPalette withReadableDisabledTexts(QPalette colours)
{
    struct Pair
    {
        QPalette::ColorRole text;
        QPalette::ColorRole ground;
    };
    for (const Pair pair :
         {Pair{QPalette::WindowText, QPalette::Window},
          Pair{QPalette::ButtonText, QPalette::Button}, Pair{QPalette::Text, QPalette::Base}}) {
        colours.setColor(QPalette::Disabled, pair.text,
                         strengthened(colours.color(QPalette::Disabled, pair.text),
                                      colours.color(QPalette::Active, pair.text),
                                      colours.color(QPalette::Disabled, pair.ground)));
    }
    return colours;
}

} // namespace quorlin
