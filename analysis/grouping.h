#pragma once

#include <QString>
#include <QStringList>

namespace quorlin {

/// Recorded for a page without an item at the rule's position.
inline QString noTextMarker()
{
    return QStringLiteral(" ");
}

/// Output documents of one input: parallel lists of page ranges ("7", "3-6", "1-2 5-6 9", pages
/// counted from 1) and of the texts that name them.
struct PageGroups
{
    QStringList ranges;
    QStringList texts;

    friend bool operator==(const PageGroups &, const PageGroups &) = default;
};

/// What becomes of pages without text.
enum class BlankPages {
    Join,     ///< they belong to the group before them
    Separate, ///< those that follow one another are a group of their own, named by the marker
    Drop      ///< they belong to no group
};

/// Divides pages into groups by the text found on each (@p pageTexts, one entry a page).
/// @p method 0: a page with another text starts a group; 1: a page with any text starts one;
/// 2: as 0, then groups of equal text become one, in order of first occurrence. Any other method
/// gives no groups.
PageGroups groupPages(const QStringList &pageTexts, int method,
                      BlankPages blankPages = BlankPages::Join);

} // namespace quorlin
