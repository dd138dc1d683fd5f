#include "tools/pagexport/text/blanks.h"

#include <algorithm>
#include <cmath>

namespace tools {

namespace {

// All in ems. Blanks that are drawn by moving the pen begin at about half of the font's blank; what
// is narrower is kerning.
constexpr double shareOfBlank = 0.53;
constexpr double narrowestBlank = 0.1;
constexpr double widestKerning = 0.18;        // in fonts of wide blanks, too
constexpr double narrowestWithoutFont = 0.11; // fonts without a blank are set without kerning
constexpr double spacedOutGap = 0.1;          // a usual gap beyond is character spacing
constexpr double equalGaps = 0.08;
constexpr std::size_t fewestSpacedGaps = 3;

bool isGap(const RunCharacter &character)
{
    return character.ownGlyph && !character.blankBefore && character.gap != RunCharacter::noGap;
}

// Letters and digits set apart tell of character spacing; signs stand apart from their operands,
// and the dots of a leader from one another, by blanks.
bool isBetweenLetters(const std::vector<RunCharacter> &run, std::size_t i)
{
    return run[i - 1].spaced && run[i].spaced;
}

bool isWideGap(const RunCharacter &character, double narrowest)
{
    return character.blankBefore || character.gap > narrowest;
}

// Where the letters from @p first to @p last, each but the first with a gap before it, make a word
// of their own: no letter stands close to it on either side.
bool isWord(const std::vector<RunCharacter> &run, std::size_t first, std::size_t last,
            double narrowest)
{
    return (first == 0 || isWideGap(run[first], narrowest)) &&
           (last == run.size() || isWideGap(run[last], narrowest));
}

// A word set apart letter by letter inside a run of ordinary text: three equal gaps or more in a
// row, most of them between letters.
void glueEqualGaps(std::vector<RunCharacter> &run, double narrowest)
{
    std::size_t first = 1;
    while (first < run.size()) {
        std::size_t last = first;
        std::size_t pairs = 0;
        while (last < run.size() && isGap(run[last]) && run[last].gap > narrowest &&
               std::abs(run[last].gap - run[first].gap) < equalGaps) {
            pairs += isBetweenLetters(run, last) ? 1 : 0;
            ++last;
        }
        if (last - first >= fewestSpacedGaps && 2 * pairs >= last - first &&
            isWord(run, first - 1, last, narrowest)) {
            std::for_each(run.begin() + static_cast<std::ptrdiff_t>(first),
                          run.begin() + static_cast<std::ptrdiff_t>(last),
                          [](RunCharacter &character) { character.gap = 0; });
        }
        first = std::max(last, first + 1);
    }
}

} // namespace

double BlankDecision::narrowest(double blank) noexcept
{
    return blank > 0 ? std::clamp(shareOfBlank * blank, narrowestBlank, widestKerning)
                     : narrowestWithoutFont;
}

double BlankDecision::usualGap(const TextRun &run)
{
    m_gaps.clear();
    for (std::size_t i = 1; i < run.characters.size(); ++i) {
        const RunCharacter &character = run.characters[i];
        if (isGap(character) && isBetweenLetters(run.characters, i)) {
            m_gaps.push_back(character.gap);
        }
    }
    if (m_gaps.size() < fewestSpacedGaps) {
        return m_carried;
    }
    const auto quarter = m_gaps.begin() + static_cast<std::ptrdiff_t>(m_gaps.size() / 4);
    std::nth_element(m_gaps.begin(), quarter, m_gaps.end());
    return *quarter;
}

void BlankDecision::decide(TextRun &run)
{
    const double usual = std::max(0.0, usualGap(run));
    const bool isSpacedOut = usual > spacedOutGap;
    m_carried = isSpacedOut ? usual : 0;
    const double kerning = narrowest(run.style.blank);
    if (!isSpacedOut) {
        glueEqualGaps(run.characters, kerning);
    }
    for (RunCharacter &character : run.characters) {
        if (isGap(character) && character.gap > kerning + usual) {
            character.blankBefore = true;
        }
    }
}

} // namespace tools
