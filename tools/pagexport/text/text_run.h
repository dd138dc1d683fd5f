#pragma once

#include "tools/pagexport/text/text_items.h"

#include <vector>

namespace tools {

/// How the glyphs of one string lie on the page as shown (points, y downwards).
struct TextStyle
{
    double alongX = 1; ///< unit vector in which the text runs
    double alongY = 0;
    double upX = 0; ///< unit vector from the baseline to the top of the glyphs
    double upY = -1;
    double em = 0;         ///< font size along the text
    double size = 0;       ///< font size across the text
    bool vertical = false; ///< glyphs hang centred below the pen, one under the other
    double blank = 0;      ///< width of the font's blank in ems; 0: not known

    /// The style that the glyph matrix a, b, c, d gives (one em is the unit square).
    static TextStyle fromMatrix(double a, double b, double c, double d, bool vertical) noexcept;

    /// False for text without extent, which no page shows.
    bool isVisible() const noexcept { return em > 0.001 && size > 0.001 && em < 1e6 && size < 1e6; }
};

/// One letter of a run. Places are in points from the run's origin.
struct RunCharacter
{
    int code = 0;
    float gap = 0;   ///< from the end of the glyph before, in ems; see noGap
    float along = 0; ///< origin on the run's axis
    float across = 0;
    float end = 0; ///< where the glyph ends on the axis
    bool blankBefore = false;
    bool ownGlyph = true; ///< false for the further letters of a glyph
    bool spaced = false;  ///< a letter or digit, which belongs close to its like

    static constexpr float noGap = -100.0F; ///< the first of a run, or no glyph of its own
};

/// A drawn blank on a run's axis, in points from the run's origin.
struct DrawnBlank
{
    float along = 0;
    float end = 0;
};

/// Letters on one baseline that make one item, in the order in which the file draws them.
struct TextRun
{
    std::vector<RunCharacter> characters;
    std::vector<DrawnBlank> blanks;
    TextStyle style;
    double originX = 0; ///< of the first letter drawn, in points of the page
    double originY = 0;
    double minimumAlong = 0; ///< how far the run reaches on its axis
    double maximumAlong = 0;
    double largestSize = 0;
    bool hasWideGap = false;     ///< a gap that may be a blank
    bool hasRightToLeft = false; ///< letters that are read from right to left

    /// Empties the run, keeping its memory.
    void clear() noexcept;
    /// Where x, y lies on the run's axis.
    double along(double x, double y) const noexcept
    {
        return (x - originX) * style.alongX + (y - originY) * style.alongY;
    }
    /// How far above the run's baseline x, y lies.
    double across(double x, double y) const noexcept
    {
        return (x - originX) * style.upX + (y - originY) * style.upY;
    }
    /// Adds the letters of @p other, which stands on the same baseline.
    void append(const TextRun &other);
    /// The item that the run becomes, without its text.
    TextItem frame() const noexcept;
};

} // namespace tools
