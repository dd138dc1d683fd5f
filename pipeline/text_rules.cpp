#include "pipeline/text_rules.h"

#include <QRegularExpression>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <utility>

namespace quorlin {

namespace {

// A frame reaches from 0.9 of the font size above the baseline to 0.25 below it.
constexpr qint64 frameHeight = 115;
constexpr qint64 frameAscent = 90;
constexpr qint64 fontSize = 100;
/// The line below a label begins at most so many of its heights further down.
constexpr qint64 highestLine = 3;

qint64 baselineOf(const QRect &frame)
{
    return frame.y() + qint64{frame.height()} * frameAscent / frameHeight;
}

qint64 fontSizeOf(const QRect &frame)
{
    return qint64{frame.height()} * fontSize / frameHeight;
}

qint64 rightOf(const QRect &frame)
{
    return qint64{frame.x()} + frame.width();
}

/// More letters read from right to left than from left to right.
bool readsFromRight(const QString &text)
{
    qsizetype balance = 0;
    for (const QChar character : text) {
        const QChar::Direction direction = character.direction();
        if (direction == QChar::DirR || direction == QChar::DirAL) {
            ++balance;
        } else if (direction == QChar::DirL) {
            --balance;
        }
    }
    return balance > 0;
}

bool isWordCharacter(QChar character)
{
    return character.isLetterOrNumber() || character.isMark() || character.isSurrogate() ||
           character == u'_';
}

/// Whether the @p length characters of @p text from @p begin on are whole words.
bool areWholeWords(const QString &text, qsizetype begin, qsizetype length)
{
    const qsizetype end = begin + length;
    const bool cutsBefore =
        begin > 0 && isWordCharacter(text.at(begin)) && isWordCharacter(text.at(begin - 1));
    const bool cutsBehind =
        end < text.size() && isWordCharacter(text.at(end - 1)) && isWordCharacter(text.at(end));
    return !cutsBefore && !cutsBehind;
}

/// What stands between a label and its text: colons, and leaders of two dots or more.
const QRegularExpression &separators()
{
    static const QRegularExpression expression(
        QStringLiteral("^[\\s:\\x{ff1a}]*(?:(?:[.\\x{b7}_]\\s?){2,}|\\x{2026}+)?[\\s:\\x{ff1a}]*"),
        QRegularExpression::UseUnicodePropertiesOption);
    return expression;
}

QString withoutSeparators(const QString &text)
{
    return text.sliced(separators().match(text).capturedLength());
}

bool beginsWithColon(const QString &text)
{
    const QString rest = text.trimmed();
    return rest.startsWith(u':') || rest.startsWith(QChar(0xff1a));
}

QString joinedLine(QList<PlacedItem> line)
{
    QString all;
    for (const PlacedItem &item : std::as_const(line)) {
        all += decodedText(item.text);
    }
    const bool fromRight = readsFromRight(all);
    std::stable_sort(
        line.begin(), line.end(), [fromRight](const PlacedItem &a, const PlacedItem &b) {
            return fromRight ? rightOf(a.frame) > rightOf(b.frame) : a.frame.x() < b.frame.x();
        });
    QStringList texts;
    for (const PlacedItem &item : std::as_const(line)) {
        texts.append(decodedText(item.text));
    }
    return texts.join(u' ');
}

/// The items' texts in reading order.
QString joinedText(QList<PlacedItem> items)
{
    std::stable_sort(items.begin(), items.end(), [](const PlacedItem &a, const PlacedItem &b) {
        return baselineOf(a.frame) < baselineOf(b.frame);
    });
    QStringList lines;
    QList<PlacedItem> line;
    for (const PlacedItem &item : std::as_const(items)) {
        if (!line.isEmpty() && !isOnSameLine(line.constFirst().frame, item.frame)) {
            lines.append(joinedLine(std::exchange(line, {})));
        }
        line.append(item);
    }
    lines.append(joinedLine(line));
    return lines.join(u' ');
}

} // namespace

bool isOnSameLine(const QRect &one, const QRect &other)
{
    return 2 * std::abs(baselineOf(one) - baselineOf(other)) <=
           std::min(fontSizeOf(one), fontSizeOf(other));
}

NearestRule::NearestRule(QPoint place, int units) : position(place), tolerance(units) {}

void NearestRule::takeItem(ItemFields fields)
{
    QByteArrayView text;
    const std::optional<QRect> frame = readFrame(fields, text);
    if (!frame) {
        return;
    }
    const qint64 across = std::abs(qint64{frame->x()} - position.x());
    const qint64 down = std::abs(qint64{frame->y()} - position.y());
    const qint64 distance = across * across + down * down;
    if (across <= tolerance && down <= tolerance && (!found || distance < bestDistance)) {
        bestDistance = distance;
        found = decodedText(text);
    }
}

std::optional<QString> NearestRule::endPage()
{
    return std::exchange(found, std::nullopt);
}

RegionRule::RegionRule(QRect rectangle) : region(rectangle) {}

void RegionRule::takeItem(ItemFields fields)
{
    QByteArrayView text;
    const std::optional<QRect> frame = readFrame(fields, text);
    if (!frame) {
        return;
    }
    const qint64 across = qint64{frame->x()} - region.x();
    const qint64 down = qint64{frame->y()} - region.y();
    if (across >= 0 && across < region.width() && down >= 0 && down < region.height()) {
        items.append({*frame, text.toByteArray()});
    }
}

std::optional<QString> RegionRule::endPage()
{
    const QList<PlacedItem> found = std::exchange(items, {});
    return found.isEmpty() ? std::nullopt : std::optional(joinedText(found));
}

LabelRule::LabelRule(const QString &words)
    : label(words.simplified()), labelBytes(label.toUtf8()), isRightToLeft(readsFromRight(label))
{
}

void LabelRule::takeItem(ItemFields fields)
{
    QByteArrayView text;
    if (const std::optional<QRect> frame = readFrame(fields, text)) {
        items.append({*frame, text.toByteArray()});
        isOnPage = isOnPage || text.contains(labelBytes);
    }
}

std::optional<QString> LabelRule::endPage()
{
    std::optional<Hit> best;
    if (std::exchange(isOnPage, false)) {
        for (const PlacedItem &item : std::as_const(items)) {
            if (item.text.contains(labelBytes)) {
                findIn(item, best);
            }
        }
    }
    items.clear();
    return best ? std::optional(best->text) : std::nullopt;
}

void LabelRule::findIn(const PlacedItem &item, std::optional<Hit> &best) const
{
    const QString text = decodedText(item.text);
    for (qsizetype begin = text.indexOf(label); begin >= 0;
         begin = text.indexOf(label, begin + 1)) {
        if (!areWholeWords(text, begin, label.size())) {
            continue;
        }
        const QString behind = text.sliced(begin + label.size());
        const QString rest = withoutSeparators(behind);
        const std::optional<Hit> hit =
            rest.isEmpty() ? follower(item) : std::optional(Hit{rest, 0, 0});
        if (!hit) {
            continue;
        }
        const bool standsAlone = rest.isEmpty() || beginsWithColon(behind);
        const int rank = begin > 0 ? 2 : standsAlone ? 0 : 1;
        if (!best || std::pair(rank, hit->distance) < std::pair(best->rank, best->distance)) {
            best = Hit{hit->text, rank, hit->distance};
        }
    }
}

std::optional<LabelRule::Hit> LabelRule::follower(const PlacedItem &labelItem) const
{
    std::optional<Hit> hit = nextOnLine(labelItem);
    return hit ? hit : nextBelow(labelItem);
}

std::optional<LabelRule::Hit> LabelRule::nextOnLine(const PlacedItem &labelItem) const
{
    std::optional<Hit> best;
    const QRect &from = labelItem.frame;
    // Frames of kerned text may overlap a little.
    const qint64 slack = fontSizeOf(from) / 2;
    for (const PlacedItem &item : items) {
        const qint64 gap =
            isRightToLeft ? from.x() - rightOf(item.frame) : item.frame.x() - rightOf(from);
        if (&item == &labelItem || gap < -slack || !isOnSameLine(from, item.frame) ||
            (best && gap >= best->distance)) {
            continue;
        }
        const QString text = withoutSeparators(decodedText(item.text));
        if (!text.isEmpty()) {
            best = Hit{text, 0, gap};
        }
    }
    return best;
}

std::optional<LabelRule::Hit> LabelRule::nextBelow(const PlacedItem &labelItem) const
{
    std::optional<Hit> best;
    const QRect &from = labelItem.frame;
    qint64 bestAcross = std::numeric_limits<qint64>::max();
    for (const PlacedItem &item : items) {
        const qint64 down = baselineOf(item.frame) - baselineOf(from);
        const bool isBelow =
            down > 0 && down <= highestLine * from.height() && !isOnSameLine(from, item.frame);
        const bool isUnder =
            item.frame.x() < rightOf(from) && rightOf(item.frame) > qint64{from.x()};
        const qint64 across = std::abs(qint64{item.frame.x()} - from.x());
        if (!isBelow || !isUnder ||
            (best && std::pair(down, across) >= std::pair(best->distance, bestAcross))) {
            continue;
        }
        const QString text = withoutSeparators(decodedText(item.text));
        if (!text.isEmpty()) {
            best = Hit{text, 0, down};
            bestAcross = across;
        }
    }
    return best;
}

} // namespace quorlin
