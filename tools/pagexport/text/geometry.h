#pragma once

namespace tools {

/// The unit of every number in a page file: 1/108 inch, so 1.5 units make a point and a page
/// picture has one pixel per unit. Positions are counted from the top left corner of the page as
/// shown (crop box, rotation and user unit applied), x to the right and y downwards. A text whose
/// baseline starts 1 inch from the left and 2 inches from the top, at 10 points, has
/// left = 108 and top = 216 - 0.9 * 15 = 202.5, rounded to 203.
constexpr double unitsPerPoint = 1.5;

/// How far a text item's frame reaches above and below the baseline, in font sizes. Fixed ratios,
/// never the font's own: a page on which the font differs must give the same numbers.
constexpr double ascentRatio = 0.9;
constexpr double descentRatio = 0.25;

/// @p points as whole units, halves rounded up. Points are first rounded to 0.01, because odd
/// points are exact halves of a unit and would otherwise flip on the noise of the calculation.
/// Values beyond +-10,000,000 points are cut there.
int toUnits(double points) noexcept;

} // namespace tools
