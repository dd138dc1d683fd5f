#include "tools/pagexport/text/item_builder.h"

#include "tools/pagexport/text/reading_order.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tools {

namespace {

// All in ems. A blank is about 0.25 wide, 0.6 in a fixed-width font.
constexpr double itemGap = 0.8; // a new item beyond
constexpr double closeGap = 0.1;
constexpr double blanksBetweenItems = 2.2;
constexpr double sameBaseline = 0.5;
constexpr double repeatedShift = 0.12;
constexpr double overlap = 0.1;
constexpr double rightToLeftOverlap = 0.3;
constexpr double droppedMark = 0.15;
constexpr double widestLetterGap = 1.25; // between letters set apart
constexpr double equalLetterGaps = 0.05;
constexpr std::size_t fewestChained = 4;
constexpr std::size_t repeatedLookBack = 4;
constexpr double sameDirection = 0.99;

// Letters of one byte, which are most, go through a buffer: a string takes single ones slowly.
void appendAsDrawn(std::string &text, const TextRun &run)
{
    std::array<char, 256> buffer;
    std::size_t used = 0;
    for (const RunCharacter &character : run.characters) {
        if (used + 2 > buffer.size()) {
            text.append(buffer.data(), used);
            used = 0;
        }
        if (character.blankBefore) {
            buffer[used++] = ' ';
        }
        if (isAscii(character.code)) {
            buffer[used++] = static_cast<char>(character.code);
        } else {
            text.append(buffer.data(), used);
            used = 0;
            appendCode(text, character.code);
        }
    }
    text.append(buffer.data(), used);
}

} // namespace

ItemBuilder::ItemBuilder(TextItems &result, double pageWidth, double pageHeight)
    : m_result(result), m_pageWidth(pageWidth), m_pageHeight(pageHeight)
{
}

void ItemBuilder::setStyle(const TextStyle &style) noexcept
{
    m_isSteady = m_isSteady && style.em == m_style.em && style.size == m_style.size &&
                 style.alongX == m_style.alongX && style.alongY == m_style.alongY;
    m_style = style;
    if (m_isSteady) {
        return;
    }
    const TextStyle &run = m_run.style;
    m_hasRunsDirection = style.alongX * run.alongX + style.alongY * run.alongY > sameDirection;
}

RunCharacter ItemBuilder::characterOf(const Glyph &glyph, int code, Position position,
                                      double gap) const noexcept
{
    RunCharacter character;
    character.code = code;
    character.gap = static_cast<float>(gap);
    character.along = static_cast<float>(position.along);
    character.across = static_cast<float>(position.across);
    character.end = static_cast<float>(position.along + glyph.advance);
    character.spaced = glyph.letters->spaced;
    return character;
}

// Most letters stand right behind the one before: they need none of the questions below.
bool ItemBuilder::addSteadily(const Glyph &glyph)
{
    const Position position{m_run.along(glyph.x, glyph.y), m_run.across(glyph.x, glyph.y)};
    const double forward = position.along - m_lastEnd;
    if (!(forward >= -overlap * m_lastEm && forward <= itemGap * m_lastEm &&
          std::abs(position.across) <= sameBaseline * m_run.largestSize)) {
        return false;
    }
    const double gap = forward * m_perEm;
    m_lastAlong = position.along;
    m_lastEnd = position.along + glyph.advance;
    m_run.characters.push_back(characterOf(glyph, glyph.letters->codes[0], position, gap));
    m_run.hasWideGap = m_run.hasWideGap || gap > closeGap;
    m_run.minimumAlong = std::min(m_run.minimumAlong, position.along);
    m_run.maximumAlong = std::max(m_run.maximumAlong, m_lastEnd);
    return true;
}

void ItemBuilder::addAnyhow(const Glyph &glyph)
{
    const Letters &letters = *glyph.letters;
    if (letters.count == 0) {
        return;
    }
    switch (letters.kind) {
    case CodeKind::dropped:
        passDropped(glyph);
        break;
    case CodeKind::blank:
        noteBlank(glyph);
        break;
    case CodeKind::visible:
        if (!place(glyph, letters.codes[0])) {
            return;
        }
        break;
    }
    if (letters.count > 1) {
        addFurtherLetters(glyph);
    }
}

// A glyph stands in one place, whatever it is spelt as: its first letter has it, the others follow.
void ItemBuilder::addFurtherLetters(const Glyph &glyph)
{
    const Letters &letters = *glyph.letters;
    bool placed = letters.kind == CodeKind::visible;
    for (int i = 1; i < letters.count; ++i) {
        const int code = letters.codes[static_cast<std::size_t>(i)];
        switch (codeKind(code)) {
        case CodeKind::dropped:
            passDropped(glyph);
            break;
        case CodeKind::blank:
            noteBlank(glyph);
            break;
        case CodeKind::visible:
            if (placed) {
                addFurtherLetter(code);
            } else if (!place(glyph, code)) {
                return;
            }
            placed = true;
            break;
        }
    }
}

void ItemBuilder::addFurtherLetter(int code)
{
    RunCharacter character;
    character.code = code;
    character.gap = RunCharacter::noGap;
    character.along = static_cast<float>(m_lastEnd);
    character.end = character.along;
    character.blankBefore = m_blanks != 0;
    character.ownGlyph = false;
    m_run.characters.push_back(character);
    m_blanks = 0;
}

void ItemBuilder::noteBlank(const Glyph &glyph)
{
    if (!m_run.characters.empty()) {
        const double along = m_run.along(glyph.x, glyph.y);
        if (m_blanks == 0) {
            m_blankBegin = along;
        }
        m_blankEnd = along + glyph.advance;
        m_run.blanks.push_back({static_cast<float>(along), static_cast<float>(m_blankEnd)});
    }
    m_isSteady = false;
    ++m_blanks;
    m_blankAdvance = std::max(m_blankAdvance, glyph.advance);
}

// A mark that is left out leaves no gap: the next letter stands behind its width.
void ItemBuilder::passDropped(const Glyph &glyph) noexcept
{
    if (!m_run.characters.empty() && m_blanks == 0) {
        const double along = m_run.along(glyph.x, glyph.y);
        if (std::abs(along - m_lastEnd) < droppedMark * m_style.em) {
            m_lastEnd = along + glyph.advance;
        }
    }
}

bool ItemBuilder::place(const Glyph &glyph, int code)
{
    if (!m_run.characters.empty()) {
        if (m_hasRunsDirection) {
            const Position position{m_run.along(glyph.x, glyph.y), m_run.across(glyph.x, glyph.y)};
            double gap = 0;
            switch (joinOf(glyph, code, position, gap)) {
            case Join::repeated:
                return false;
            case Join::yes:
                extendRun(glyph, code, position, gap);
                return true;
            case Join::no:
                break;
            }
        }
        leaveRun(glyph);
    }
    constexpr double slack = 0.005; // what rounding makes of a position on the very edge
    const bool isOnPage = glyph.x >= -slack && glyph.y >= -slack &&
                          glyph.x <= m_pageWidth + slack && glyph.y <= m_pageHeight + slack;
    if (!m_style.isVisible() || !isOnPage) {
        return false;
    }
    startRun(glyph, code);
    return true;
}

void ItemBuilder::startRun(const Glyph &glyph, int code)
{
    m_run.style = m_style;
    m_run.originX = glyph.x;
    m_run.originY = glyph.y;
    m_hasRunsDirection = true;
    m_blanks = 0;
    extendRun(glyph, code, {0, 0}, RunCharacter::noGap);
}

void ItemBuilder::extendRun(const Glyph &glyph, int code, Position position, double gap)
{
    const Letters &letters = *glyph.letters;
    m_lastAlong = position.along;
    m_lastEnd = position.along + glyph.advance;
    m_lastEm = m_style.em;
    m_lastIsRightToLeft = letters.rightToLeft;
    m_perEm = 1 / m_lastEm;
    m_isSteady = letters.plain;
    m_run.characters.push_back(characterOf(glyph, code, position, gap));
    m_run.characters.back().blankBefore = m_blanks != 0;
    m_run.hasWideGap = m_run.hasWideGap || (gap > closeGap && m_blanks == 0);
    m_run.hasRightToLeft = m_run.hasRightToLeft || letters.rightToLeft;
    m_run.minimumAlong = std::min(m_run.minimumAlong, position.along);
    m_run.maximumAlong = std::max(m_run.maximumAlong, m_lastEnd);
    m_run.largestSize = std::max(m_run.largestSize, m_style.size);
    m_blanks = 0;
    m_blankAdvance = 0;
}

double ItemBuilder::widestGap(Position position, double em) const noexcept
{
    if (m_blanks == 0) {
        return itemGap * em;
    }
    // Where letters are set apart, so is the blank among them, on both sides.
    const double before = m_blankBegin - m_lastEnd;
    const double after = position.along - m_blankEnd;
    const double apart = std::clamp(std::min(before, after), 0.0, itemGap * em);
    // One blank may be stretched by justification; several are a column's distance.
    const double blanks = m_blanks == 1
                              ? itemGap * em + m_blankAdvance
                              : std::max(itemGap * em, blanksBetweenItems * m_blankAdvance);
    return blanks + apart;
}

ItemBuilder::Join ItemBuilder::joinOf(const Glyph &glyph, int code, Position position,
                                      double &gap) const noexcept
{
    const double em = std::min(m_lastEm, m_style.em);
    if (!(std::abs(position.across) <= sameBaseline * std::max(m_run.largestSize, m_style.size))) {
        return Join::no;
    }
    const double forward = position.along - m_lastEnd;
    if (forward < -overlap * em && isRepeated(code, position, em)) {
        return Join::repeated;
    }
    const double widest = widestGap(position, em);
    if (forward > -itemGap * em && forward <= widest) {
        gap = forward / em;
        return Join::yes;
    }
    if (m_lastIsRightToLeft || glyph.letters->rightToLeft) {
        const double backward = m_lastAlong - (position.along + glyph.advance);
        if (backward > -rightToLeftOverlap * em && backward <= widest) {
            gap = backward / em;
            return Join::yes;
        }
    }
    return Join::no;
}

bool ItemBuilder::isRepeated(int code, Position position, double em) const noexcept
{
    const std::vector<RunCharacter> &run = m_run.characters;
    const std::size_t first = run.size() > repeatedLookBack ? run.size() - repeatedLookBack : 0;
    for (std::size_t i = run.size(); i > first; --i) {
        const RunCharacter &earlier = run[i - 1];
        if (earlier.ownGlyph && earlier.code == code &&
            std::abs(earlier.along - position.along) <= repeatedShift * em &&
            std::abs(earlier.across - position.across) <= repeatedShift * em) {
            return true;
        }
    }
    return false;
}

// Ends the open run, because @p glyph is no part of it, and notes what may join them all the same.
void ItemBuilder::leaveRun(const Glyph &glyph)
{
    const Position position{m_run.along(glyph.x, glyph.y), m_run.across(glyph.x, glyph.y)};
    const bool isSingle = m_run.characters.size() == 1 && m_blanks == 0;
    const double gap = (position.along - m_lastEnd) / m_lastEm;
    const bool mayBeChained = isSingle && m_hasRunsDirection && gap > itemGap &&
                              gap <= widestLetterGap &&
                              std::abs(gap - glyph.spacing / m_lastEm) < equalLetterGaps &&
                              std::abs(position.across) < equalLetterGaps * m_lastEm;
    if (continuesToTheLeft(glyph, position)) {
        if (m_pending.characters.empty()) {
            std::swap(m_pending, m_run);
        } else if (joinsPending()) {
            m_pending.append(m_run);
        } else {
            endChain();
            write(m_pending);
            std::swap(m_pending, m_run);
        }
        m_run.clear();
        m_blanks = 0;
        m_blankAdvance = 0;
        m_isSteady = false;
    } else {
        endRun();
    }
    m_chainGap = mayBeChained ? gap : 0;
}

// A number or a Latin word inside right-to-left text is drawn from its own left end: the pen jumps.
bool ItemBuilder::continuesToTheLeft(const Glyph &glyph, Position position) const noexcept
{
    const bool isRightToLeft =
        m_run.hasRightToLeft || !m_pending.characters.empty() || glyph.letters->rightToLeft;
    return isRightToLeft && m_hasRunsDirection &&
           std::abs(position.across) < equalLetterGaps * m_lastEm &&
           position.along < m_run.minimumAlong;
}

bool ItemBuilder::joinsPending() const noexcept
{
    const double em = std::min(m_pending.style.em, m_run.style.em);
    const double shift = m_pending.along(m_run.originX, m_run.originY);
    const double gap = m_pending.minimumAlong - (shift + m_run.maximumAlong);
    const double across = m_pending.across(m_run.originX, m_run.originY);
    return (m_pending.hasRightToLeft || m_run.hasRightToLeft) &&
           std::abs(across) < equalLetterGaps * em && gap > -rightToLeftOverlap * em &&
           gap <= itemGap * em;
}

void ItemBuilder::endRun()
{
    if (!m_pending.characters.empty()) {
        if (!m_run.characters.empty() && joinsPending()) {
            m_pending.append(m_run);
            m_run.clear();
        }
        endChain();
        write(m_pending);
        m_pending.clear();
    }
    if (!m_run.characters.empty()) {
        const bool isSingle = m_run.characters.size() == 1;
        if (!isSingle || !carriesOnChain()) {
            endChain();
        }
        if (write(m_run) && isSingle) {
            chainLetter();
        } else {
            endChain();
        }
        m_run.clear();
    }
    m_chainGap = 0;
    m_blanks = 0;
    m_blankAdvance = 0;
    m_isSteady = false;
}

bool ItemBuilder::write(TextRun &run)
{
    const std::size_t begin = m_result.texts.size();
    if (run.hasRightToLeft) {
        appendInReadingOrder(m_result.texts, run, BlankDecision::narrowest(run.style.blank));
    } else {
        if (run.hasWideGap) {
            m_blankDecision.decide(run);
        } else {
            m_blankDecision.noteCloseRun();
        }
        appendAsDrawn(m_result.texts, run);
    }
    const std::string_view text = std::string_view(m_result.texts).substr(begin);
    if (m_drawn.isRepeated(text, run.originX, run.originY, run.style.em)) {
        m_result.texts.resize(begin);
        return false;
    }
    TextItem item = run.frame();
    item.textBegin = static_cast<std::uint32_t>(begin);
    item.textLength = static_cast<std::uint32_t>(text.size());
    m_result.items.push_back(item);
    return true;
}

bool ItemBuilder::carriesOnChain() const noexcept
{
    return m_chain.count != 0 && m_chainGap != 0 &&
           (m_chain.count == 1 || std::abs(m_chainGap - m_chain.gap) <= equalLetterGaps);
}

void ItemBuilder::chainLetter()
{
    TextRun &run = m_chain.run;
    if (m_chain.count++ == 0) {
        m_chain.first = m_result.items.size() - 1;
        run.style = m_run.style;
        run.originX = m_run.originX;
        run.originY = m_run.originY;
        run.maximumAlong = m_run.maximumAlong;
        run.largestSize = m_run.largestSize;
        return;
    }
    m_chain.gap = m_chainGap;
    run.maximumAlong = run.along(m_run.originX, m_run.originY) + m_run.maximumAlong;
}

// Letters that the file itself sets apart by more than a blank are one item where there are
// several.
void ItemBuilder::endChain()
{
    if (m_chain.count >= fewestChained) {
        std::uint32_t length = 0;
        for (std::size_t i = 0; i < m_chain.count; ++i) {
            length += m_result.items[m_chain.first + i].textLength;
        }
        TextItem item = m_chain.run.frame();
        item.textBegin = m_result.items[m_chain.first].textBegin;
        item.textLength = length;
        m_result.items.resize(m_chain.first + 1);
        m_result.items.back() = item;
    }
    m_chain.count = 0;
    m_chain.gap = 0;
}

void ItemBuilder::endItem()
{
    endRun();
    endChain();
}

} // namespace tools
