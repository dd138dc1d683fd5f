#pragma once

#include "tools/pagexport/text/drawn_items.h"
#include "tools/pagexport/text/page_items.h"

#include <array>
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

    /// The style that the glyph matrix a, b, c, d gives (one em is the unit square).
    static TextStyle fromMatrix(double a, double b, double c, double d, bool vertical) noexcept;

    /// False for text without extent, which no page shows.
    bool isVisible() const noexcept { return em > 0.001 && size > 0.001 && em < 1e6 && size < 1e6; }
};

/// One glyph as drawn, with the code points it stands for.
struct Glyph
{
    double x = 0; ///< origin on the page as shown, in points
    double y = 0;
    double advance = 0;     ///< own width along the text, in points
    double spacing = 0;     ///< character spacing asked for behind it, in points
    bool continues = false; ///< the pen was not moved since the glyph before
    const int *codes = nullptr;
    int codeCount = 0;
};

/// Makes text items out of glyphs. Glyphs on one baseline belong to one item until a gap clearly
/// wider than a blank, or a step back; text drawn twice at the same place counts once.
class ItemBuilder
{
public:
    /// @param result receives the items
    ItemBuilder(PageItems &result, double pageWidth, double pageHeight);

    /// Sets the style of the glyphs that follow.
    void setStyle(const TextStyle &style) noexcept { m_style = style; }
    void add(const Glyph &glyph);
    /// Ends the open item: what follows belongs to another one.
    void endItem();

private:
    struct RunCharacter
    {
        int code;
        bool blankBefore; ///< white space stood in front of it
        bool ownGlyph;    ///< false for the further characters of a glyph
        float gap;        ///< from the end of the glyph before, in ems
        float along;      ///< origin on the run's axis, in points
        float across;
    };
    struct Position
    {
        double along;
        double across;
    };
    enum class Join { forward, backward, none, repeated };

    Position positionOf(const Glyph &glyph) const noexcept;
    bool isOnPage(const Glyph &glyph) const noexcept;
    bool place(const Glyph &glyph, int code);
    void startRun(const Glyph &glyph, int code);
    Join joinOf(const Glyph &glyph, int code, Position position, double &gap) const noexcept;
    bool isRepeated(int code, Position position, double em) const noexcept;
    double widestGap(double em) const noexcept;
    void extendRun(const Glyph &glyph, int code, Position position);
    void noteBlank(const Glyph &glyph) noexcept;
    void passDropped(const Glyph &glyph) noexcept;
    double usualGap();
    void decideBlanks();
    void glueEqualGaps();
    PageItem frame() const noexcept;

    PageItems &m_result;
    DrawnItems m_drawn;
    double m_pageWidth;
    double m_pageHeight;
    TextStyle m_style;

    std::vector<RunCharacter> m_run;
    std::vector<float> m_gaps;
    TextStyle m_runStyle;
    double m_originX = 0;
    double m_originY = 0;
    double m_minimumAlong = 0;
    double m_maximumAlong = 0;
    double m_largestSize = 0;
    double m_lastAlong = 0;
    double m_lastEnd = 0;
    double m_lastSpacing = 0;
    double m_lastEm = 0;
    bool m_lastIsRightToLeft = false;
    bool m_hasWideGap = false;
    int m_blanks = 0;
    double m_blankAdvance = 0;
    double m_carriedGap = 0; ///< usual gap of the run before, in ems
};

} // namespace tools
