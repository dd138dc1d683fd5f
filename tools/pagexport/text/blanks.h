#pragma once

#include "tools/pagexport/text/text_run.h"

#include <vector>

namespace tools {

/// Decides which gaps of a run are blanks that the file draws by moving the pen. A gap is one where
/// it exceeds the distance at which the run's own letters stand by about half the width of the
/// font's blank; letters set apart make no words.
class BlankDecision
{
public:
    /// Sets blankBefore at the letters of @p run before which a blank is read.
    void decide(TextRun &run);
    /// The run had no gap worth a look: its letters stand close.
    void noteCloseRun() noexcept { m_carried = 0; }

    /// The narrowest gap, in ems, that may be a blank in a font whose blank is @p blank ems wide
    /// (0: not known).
    static double narrowest(double blank) noexcept;

private:
    double usualGap(const TextRun &run);

    std::vector<float> m_gaps;
    double m_carried = 0; ///< usual gap of the run before, in ems: for runs of few letters
};

} // namespace tools
