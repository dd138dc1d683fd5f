#pragma once

#include "pipeline/page_items.h"

#include <QByteArray>
#include <QList>
#include <QPoint>
#include <QRect>
#include <QString>

namespace quorlin {

// Rules for texts that do not stand at exactly one position on every page.

/// The text of the item nearest to a position, left and top each at most so many units away from
/// it. Of several at the same distance the first one counts.
class NearestRule : public TextRule
{
public:
    NearestRule(QPoint position, int tolerance);
    void takeItem(ItemFields fields) override;
    std::optional<QString> endPage() override;

private:
    QPoint position;
    qint64 tolerance;
    qint64 bestDistance = 0; ///< square of the distance of the item found
    std::optional<QString> found;
};

/// An item of a page with its text as it came.
struct PlacedItem
{
    QRect frame;
    QByteArray text;
};

/// Whether two frames stand on one line: their baselines, as far as frames tell, are at most half
/// of the smaller font size apart.
bool isOnSameLine(const QRect &one, const QRect &other);

/// The texts of all items whose top left corner lies in a rectangle (its right and lower edges do
/// not belong to it), joined by a blank in reading order: line by line, a line from its left, or
/// from its right where most of its letters are read that way.
class RegionRule : public TextRule
{
public:
    explicit RegionRule(QRect region);
    void takeItem(ItemFields fields) override;
    std::optional<QString> endPage() override;

private:
    QRect region;
    QList<PlacedItem> items; ///< of the page, in the region
};

/// The text that follows a label: the rest of the label's own item, or the nearest item behind it
/// on its line, or, where nothing follows there, the item below it on the next line. Colons and
/// dotted leaders between label and text do not count.
///
/// A label that is an item of its own, or ends in a colon, counts before one that begins a longer
/// text, and that before one within a text. Of several equal ones the nearest to its text counts.
class LabelRule : public TextRule
{
public:
    /// @param label words separated by blanks; upper and lower case differ
    explicit LabelRule(const QString &label);
    void takeItem(ItemFields fields) override;
    std::optional<QString> endPage() override;

private:
    struct Hit
    {
        QString text;
        int rank = 0; ///< how much the label looks like one, 0 most
        qint64 distance = 0;
    };
    void findIn(const PlacedItem &item, std::optional<Hit> &best) const;
    std::optional<Hit> follower(const PlacedItem &labelItem) const;
    std::optional<Hit> nextOnLine(const PlacedItem &labelItem) const;
    std::optional<Hit> nextBelow(const PlacedItem &labelItem) const;

    QString label;
    QByteArray labelBytes;
    bool isRightToLeft;
    bool isOnPage = false;   ///< whether an item of the page holds the label's bytes
    QList<PlacedItem> items; ///< of the page
};

} // namespace quorlin
