#include "tools/pagexport/text/text_run.h"

#include "tools/pagexport/text/geometry.h"

#include <algorithm>
#include <cmath>

namespace tools {

namespace {

constexpr double axisSnap = 1e-3;

void snapToAxes(double &x, double &y)
{
    if (std::abs(x) < axisSnap) {
        x = 0;
        y = y < 0 ? -1 : 1;
    } else if (std::abs(y) < axisSnap) {
        y = 0;
        x = x < 0 ? -1 : 1;
    }
}

} // namespace

TextStyle TextStyle::fromMatrix(double a, double b, double c, double d, bool vertical) noexcept
{
    TextStyle style;
    style.vertical = vertical;
    if (vertical) { // the text runs against the glyphs' own "up"
        const double acrossX = a;
        const double acrossY = b;
        a = -c;
        b = -d;
        c = acrossX;
        d = acrossY;
    }
    style.em = b == 0 ? std::abs(a) : std::hypot(a, b);
    if (!(style.em > 0)) {
        style.em = 0;
        return style;
    }
    style.alongX = a / style.em;
    style.alongY = b / style.em;
    snapToAxes(style.alongX, style.alongY);
    const double determinant = a * d - b * c;
    style.size = std::abs(determinant) / style.em;
    const double side = determinant < 0 ? -1 : 1;
    style.upX = -style.alongY * side;
    style.upY = style.alongX * side;
    return style;
}

void TextRun::clear() noexcept
{
    characters.clear();
    blanks.clear();
    minimumAlong = 0;
    maximumAlong = 0;
    largestSize = 0;
    hasWideGap = false;
    hasRightToLeft = false;
}

void TextRun::append(const TextRun &other)
{
    const double shift = along(other.originX, other.originY);
    const auto moved = [shift](float place) { return static_cast<float>(place + shift); };
    for (RunCharacter character : other.characters) {
        character.along = moved(character.along);
        character.end = moved(character.end);
        characters.push_back(character);
    }
    for (const DrawnBlank &blank : other.blanks) {
        blanks.push_back({moved(blank.along), moved(blank.end)});
    }
    minimumAlong = std::min(minimumAlong, shift + other.minimumAlong);
    maximumAlong = std::max(maximumAlong, shift + other.maximumAlong);
    largestSize = std::max(largestSize, other.largestSize);
    hasWideGap = hasWideGap || other.hasWideGap;
    hasRightToLeft = hasRightToLeft || other.hasRightToLeft;
}

TextItem TextRun::frame() const noexcept
{
    const double above = (style.vertical ? 0.5 : ascentRatio) * style.size;
    const double below = (style.vertical ? 0.5 : descentRatio) * style.size;
    const double deepest = std::max(below, (style.vertical ? 0.5 : descentRatio) * largestSize);
    const double start = std::min(0.0, minimumAlong);
    const double length = maximumAlong - start;
    const auto low = [&](double origin, double along, double up) {
        return origin + std::min(above * up, -below * up) + along * start +
               std::min(0.0, along * style.em);
    };
    const auto high = [&](double origin, double along, double up) {
        return origin + std::max(above * up, -deepest * up) + along * start +
               std::max(0.0, along * length);
    };
    const int left = toUnits(low(originX, style.alongX, style.upX));
    const int top = toUnits(low(originY, style.alongY, style.upY));
    TextItem item;
    item.left = std::max(1, left);
    item.top = std::max(1, top);
    item.width = std::max(1, toUnits(high(originX, style.alongX, style.upX)) - left);
    item.height = std::max(1, toUnits(high(originY, style.alongY, style.upY)) - top);
    return item;
}

} // namespace tools
