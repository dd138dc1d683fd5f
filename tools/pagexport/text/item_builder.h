#pragma once

#include "tools/pagexport/text/blanks.h"
#include "tools/pagexport/text/drawn_items.h"
#include "tools/pagexport/text/text_codes.h"
#include "tools/pagexport/text/text_items.h"
#include "tools/pagexport/text/text_run.h"

namespace tools {

/// One glyph as drawn, with the letters it stands for.
struct Glyph
{
    double x = 0; ///< origin on the page as shown, in points
    double y = 0;
    double advance = 0; ///< own width along the text, in points
    double spacing = 0; ///< character spacing asked for behind the glyph before, in points
    const Letters *letters = nullptr;
};

/// Makes text items out of glyphs. Glyphs on one baseline belong to one item until a gap clearly
/// wider than a blank, or a step back; where they stand on the page decides, however the pen got
/// there. Text drawn twice at the same place counts once.
class ItemBuilder
{
public:
    /// @param result receives the items
    ItemBuilder(TextItems &result, double pageWidth, double pageHeight);

    /// Sets the style of the glyphs that follow.
    void setStyle(const TextStyle &style) noexcept;
    void add(const Glyph &glyph)
    {
        if (!m_isSteady || !glyph.letters->plain || !addSteadily(glyph)) {
            addAnyhow(glyph);
        }
    }
    /// Ends the open item: what follows belongs to another one.
    void endItem();

private:
    struct Position
    {
        double along;
        double across;
    };
    enum class Join { yes, no, repeated };

    /// Items of one letter each, set apart by character spacing, which may turn out to be one.
    struct Chain
    {
        std::size_t first = 0; ///< index of the first item
        std::size_t count = 0;
        double gap = 0; ///< in ems
        TextRun run;    ///< of the first item, its reach that of all
    };

    bool addSteadily(const Glyph &glyph);
    void addAnyhow(const Glyph &glyph);
    bool place(const Glyph &glyph, int code);
    void startRun(const Glyph &glyph, int code);
    void extendRun(const Glyph &glyph, int code, Position position, double gap);
    Join joinOf(const Glyph &glyph, int code, Position position, double &gap) const noexcept;
    bool isRepeated(int code, Position position, double em) const noexcept;
    double widestGap(Position position, double em) const noexcept;
    void noteBlank(const Glyph &glyph);
    void passDropped(const Glyph &glyph) noexcept;
    void addFurtherLetters(const Glyph &glyph);
    void addFurtherLetter(int code);
    RunCharacter characterOf(const Glyph &glyph, int code, Position position,
                             double gap) const noexcept;

    void leaveRun(const Glyph &glyph);
    bool continuesToTheLeft(const Glyph &glyph, Position position) const noexcept;
    bool joinsPending() const noexcept;
    void endRun();
    bool write(TextRun &run);
    bool carriesOnChain() const noexcept;
    void chainLetter();
    void endChain();

    TextItems &m_result;
    DrawnItems m_drawn;
    BlankDecision m_blankDecision;
    double m_pageWidth;
    double m_pageHeight;
    TextStyle m_style;

    TextRun m_run;
    TextRun m_pending; ///< a run of right-to-left text that the open one may carry on
    Chain m_chain;
    double m_chainGap = 0; ///< to the letter before, when the open run may carry on the chain

    bool m_hasRunsDirection = false; ///< whether m_style runs as the open run does
    bool m_isSteady = false; ///< whether the last letter has m_style, too, and no blank behind
    double m_perEm = 0;      ///< of m_style, while the run is steady
    double m_lastAlong = 0;
    double m_lastEnd = 0;
    double m_lastEm = 0;
    bool m_lastIsRightToLeft = false;
    int m_blanks = 0; ///< drawn since the last letter
    double m_blankAdvance = 0;
    double m_blankBegin = 0;
    double m_blankEnd = 0;
};

} // namespace tools
