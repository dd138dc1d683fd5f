#pragma once

#include "pipeline/page_items.h"

#include <QPoint>
#include <QRect>
#include <QRegularExpression>
#include <QString>

#include <memory>

namespace quorlin {

/// Where on a page the text stands by which a file is split, and what of it counts. All numbers are
/// in page export units.
struct TextPlace
{
    enum class Kind {
        Position, ///< the item at a position, or the nearest one within the tolerance around it
        Region,   ///< all items whose top left corner lies in a rectangle
        Label     ///< the item that follows a label
    };
    Kind kind = Kind::Position;
    QPoint position;   ///< left and top of the item
    int tolerance = 0; ///< how far left and top may each be off, not negative
    QRect region;
    QString label; ///< whole words, separated by single blanks
    /// What of the text counts: the first group, or the whole match where there is none. An empty
    /// pattern takes all of it.
    QRegularExpression match;
};

/// Makes the rule that finds the text at @p place.
std::unique_ptr<TextRule> makeTextRule(const TextPlace &place);

/// The place in a sentence: "at 100,50", "within 3 units of 100,50", "in 10,20,300,40" or "after
/// "Account"", with "that matches PATTERN" behind it where a pattern is given.
QString describePlace(const TextPlace &place);

/// What @p match takes of @p text, without blanks at its ends; nothing when it does not match or
/// takes nothing.
std::optional<QString> matchedText(const QRegularExpression &match, const QString &text);

} // namespace quorlin
