#include "tools/pagexport/text/item_builder.h"

#include "tools/pagexport/text/geometry.h"
#include "tools/pagexport/text/text_codes.h"

#include <algorithm>
#include <cmath>

namespace tools {

namespace {

// All in ems. A blank is about 0.25 wide, 0.6 in a fixed-width font.
constexpr double gluedGap = 0.15; // no blank up to here
constexpr double itemGap = 0.8;   // a new item beyond
constexpr double blanksBetweenItems = 2.2;
constexpr double sameBaseline = 0.5;
constexpr double repeatedShift = 0.12;
constexpr double overlap = 0.1;
constexpr double rightToLeftOverlap = 0.3;
constexpr double spacedOutGap = 0.1; // a usual gap beyond is character spacing
constexpr double equalGaps = 0.08;
constexpr int fewestSpacedGaps = 3;
constexpr std::size_t repeatedLookBack = 4;
constexpr double axisSnap = 1e-3;
constexpr double sameDirection = 0.99;
constexpr float noGap = -1.0F;

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
    style.em = std::hypot(a, b);
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

ItemBuilder::ItemBuilder(PageItems &result, double pageWidth, double pageHeight)
    : m_result(result), m_pageWidth(pageWidth), m_pageHeight(pageHeight)
{
}

ItemBuilder::Position ItemBuilder::positionOf(const Glyph &glyph) const noexcept
{
    const double x = glyph.x - m_originX;
    const double y = glyph.y - m_originY;
    return {x * m_runStyle.alongX + y * m_runStyle.alongY, x * m_runStyle.upX + y * m_runStyle.upY};
}

bool ItemBuilder::isOnPage(const Glyph &glyph) const noexcept
{
    constexpr double slack = 0.005; // what rounding makes of a position on the very edge
    return glyph.x >= -slack && glyph.y >= -slack && glyph.x <= m_pageWidth + slack &&
           glyph.y <= m_pageHeight + slack;
}

void ItemBuilder::add(const Glyph &glyph)
{
    bool placed = false;
    for (int i = 0; i < glyph.codeCount; ++i) {
        const int code = glyph.codes[i];
        switch (codeKind(code)) {
        case CodeKind::dropped:
            passDropped(glyph);
            break;
        case CodeKind::blank:
            noteBlank(glyph);
            break;
        case CodeKind::visible:
            if (placed) {
                m_run.push_back({code, m_blanks != 0, false, noGap, 0, 0});
                m_blanks = 0;
            } else if (place(glyph, code)) {
                placed = true;
            } else {
                return;
            }
            break;
        }
    }
}

void ItemBuilder::noteBlank(const Glyph &glyph) noexcept
{
    ++m_blanks;
    m_blankAdvance = std::max(m_blankAdvance, glyph.advance);
}

// A mark that is left out leaves no gap: the next letter stands behind its width.
void ItemBuilder::passDropped(const Glyph &glyph) noexcept
{
    if (!m_run.empty() && m_blanks == 0) {
        const double along = positionOf(glyph).along;
        if (std::abs(along - m_lastEnd) < gluedGap * m_style.em) {
            m_lastEnd = along + glyph.advance;
        }
    }
}

bool ItemBuilder::place(const Glyph &glyph, int code)
{
    if (!m_run.empty()) {
        const double direction =
            m_style.alongX * m_runStyle.alongX + m_style.alongY * m_runStyle.alongY;
        if (direction > sameDirection) {
            const Position position = positionOf(glyph);
            double gap = 0;
            switch (joinOf(glyph, code, position, gap)) {
            case Join::repeated:
                return false;
            case Join::backward:
            case Join::forward: {
                const bool blank = m_blanks != 0;
                m_run.push_back({code, blank, true, static_cast<float>(gap),
                                 static_cast<float>(position.along),
                                 static_cast<float>(position.across)});
                m_hasWideGap = m_hasWideGap || (!blank && gap > gluedGap);
                extendRun(glyph, code, position);
                return true;
            }
            case Join::none:
                break;
            }
        }
        endItem();
    }
    if (!m_style.isVisible() || !isOnPage(glyph)) {
        return false;
    }
    startRun(glyph, code);
    return true;
}

void ItemBuilder::startRun(const Glyph &glyph, int code)
{
    m_runStyle = m_style;
    m_originX = glyph.x;
    m_originY = glyph.y;
    m_minimumAlong = 0;
    m_maximumAlong = 0;
    m_largestSize = 0;
    m_hasWideGap = false;
    m_run.push_back({code, false, true, noGap, 0, 0});
    extendRun(glyph, code, {0, 0});
}

void ItemBuilder::extendRun(const Glyph &glyph, int code, Position position)
{
    m_lastAlong = position.along;
    m_lastEnd = position.along + glyph.advance;
    m_lastSpacing = glyph.spacing;
    m_lastEm = m_style.em;
    m_lastIsRightToLeft = isRightToLeft(code);
    m_minimumAlong = std::min(m_minimumAlong, position.along);
    m_maximumAlong = std::max(m_maximumAlong, m_lastEnd);
    m_largestSize = std::max(m_largestSize, m_style.size);
    m_blanks = 0;
    m_blankAdvance = 0;
}

double ItemBuilder::widestGap(double em) const noexcept
{
    if (m_blanks == 0) {
        return itemGap * em;
    }
    // One blank may be stretched by justification; several are a column's distance.
    return m_blanks == 1 ? itemGap * em + m_blankAdvance
                         : std::max(itemGap * em, blanksBetweenItems * m_blankAdvance);
}

ItemBuilder::Join ItemBuilder::joinOf(const Glyph &glyph, int code, Position position,
                                      double &gap) const noexcept
{
    const double em = std::min(m_lastEm, m_style.em);
    if (!(std::abs(position.across) <= sameBaseline * std::max(m_largestSize, m_style.size))) {
        return Join::none;
    }
    double forward = position.along - m_lastEnd;
    if (forward < -overlap * em && isRepeated(code, position, em)) {
        return Join::repeated;
    }
    if (glyph.continues && m_lastSpacing > 0) {
        forward -= m_lastSpacing;
    }
    const double widest = widestGap(em);
    if (forward > -itemGap * em && forward <= widest) {
        gap = forward / em;
        return Join::forward;
    }
    if (m_lastIsRightToLeft || isRightToLeft(code)) {
        const double backward = m_lastAlong - (position.along + glyph.advance);
        if (backward > -rightToLeftOverlap * em && backward <= widest) {
            gap = backward / em;
            return Join::backward;
        }
    }
    return Join::none;
}

bool ItemBuilder::isRepeated(int code, Position position, double em) const noexcept
{
    const std::size_t first = m_run.size() > repeatedLookBack ? m_run.size() - repeatedLookBack : 0;
    for (std::size_t i = m_run.size(); i > first; --i) {
        const RunCharacter &earlier = m_run[i - 1];
        if (earlier.ownGlyph && earlier.code == code &&
            std::abs(earlier.along - position.along) <= repeatedShift * em &&
            std::abs(earlier.across - position.across) <= repeatedShift * em) {
            return true;
        }
    }
    return false;
}

double ItemBuilder::usualGap()
{
    m_gaps.clear();
    for (const RunCharacter &character : m_run) {
        if (character.ownGlyph && !character.blankBefore && character.gap != noGap) {
            m_gaps.push_back(character.gap);
        }
    }
    if (m_gaps.size() < fewestSpacedGaps) {
        return m_carriedGap;
    }
    const auto quarter = m_gaps.begin() + static_cast<std::ptrdiff_t>(m_gaps.size() / 4);
    std::nth_element(m_gaps.begin(), quarter, m_gaps.end());
    return *quarter;
}

// A gap beyond the glued one is a blank that the file draws by moving the pen, unless the letters
// of the whole run stand apart: then only what exceeds their usual distance is one.
void ItemBuilder::decideBlanks()
{
    const double usual = usualGap();
    const double widestGlued = usual > spacedOutGap ? usual + gluedGap : gluedGap;
    m_carriedGap = usual > spacedOutGap ? usual : 0;
    if (usual <= spacedOutGap) {
        glueEqualGaps();
    }
    for (RunCharacter &character : m_run) {
        if (character.ownGlyph && character.gap > widestGlued) {
            character.blankBefore = true;
        }
    }
}

// Letters set apart inside a run of ordinary text show as three equal gaps or more in a row.
void ItemBuilder::glueEqualGaps()
{
    std::size_t first = 0;
    while (first < m_run.size()) {
        std::size_t last = first;
        while (last < m_run.size() && m_run[last].ownGlyph && !m_run[last].blankBefore &&
               m_run[last].gap > gluedGap &&
               std::abs(m_run[last].gap - m_run[first].gap) < equalGaps) {
            ++last;
        }
        if (last - first >= static_cast<std::size_t>(fewestSpacedGaps)) {
            std::for_each(m_run.begin() + static_cast<std::ptrdiff_t>(first),
                          m_run.begin() + static_cast<std::ptrdiff_t>(last),
                          [](RunCharacter &character) { character.gap = 0; });
        }
        first = std::max(last, first + 1);
    }
}

PageItem ItemBuilder::frame() const noexcept
{
    const TextStyle &style = m_runStyle;
    const double above = (style.vertical ? 0.5 : ascentRatio) * style.size;
    const double below = (style.vertical ? 0.5 : descentRatio) * style.size;
    const double deepest = std::max(below, (style.vertical ? 0.5 : descentRatio) * m_largestSize);
    const double start = std::min(0.0, m_minimumAlong);
    const double length = m_maximumAlong - start;
    const auto low = [&](double origin, double along, double up) {
        return origin + std::min(above * up, -below * up) + along * start +
               std::min(0.0, along * style.em);
    };
    const auto high = [&](double origin, double along, double up) {
        return origin + std::max(above * up, -deepest * up) + along * start +
               std::max(0.0, along * length);
    };
    const int left = toUnits(low(m_originX, style.alongX, style.upX));
    const int top = toUnits(low(m_originY, style.alongY, style.upY));
    PageItem item;
    item.left = std::max(1, left);
    item.top = std::max(1, top);
    item.width = std::max(1, toUnits(high(m_originX, style.alongX, style.upX)) - left);
    item.height = std::max(1, toUnits(high(m_originY, style.alongY, style.upY)) - top);
    return item;
}

void ItemBuilder::endItem()
{
    if (!m_run.empty()) {
        if (m_hasWideGap) {
            decideBlanks();
        } else {
            m_carriedGap = 0;
        }
        const std::size_t begin = m_result.texts.size();
        for (const RunCharacter &character : m_run) {
            if (character.blankBefore) {
                m_result.texts += ' ';
            }
            appendCode(m_result.texts, character.code);
        }
        m_run.clear();
        const std::string_view text = std::string_view(m_result.texts).substr(begin);
        if (m_drawn.isRepeated(text, m_originX, m_originY, m_runStyle.em)) {
            m_result.texts.resize(begin);
        } else {
            PageItem item = frame();
            item.textBegin = static_cast<std::uint32_t>(begin);
            item.textLength = static_cast<std::uint32_t>(text.size());
            m_result.items.push_back(item);
        }
    }
    m_blanks = 0;
    m_blankAdvance = 0;
}

} // namespace tools
