#include "pipeline/text_place.h"

#include "pipeline/text_rules.h"

#include <utility>

namespace quorlin {

namespace {

/// Takes of another rule's text what a pattern matches.
class MatchedRule : public TextRule
{
public:
    MatchedRule(std::unique_ptr<TextRule> textRule, QRegularExpression pattern)
        : rule(std::move(textRule)), match(std::move(pattern))
    {
    }

    void takeItem(ItemFields fields) override { rule->takeItem(fields); }

    std::optional<QString> endPage() override
    {
        const std::optional<QString> text = rule->endPage();
        if (!text) {
            return std::nullopt;
        }
        // Neighbouring pages often have the same text.
        if (text != lastText) {
            lastText = text;
            lastMatch = matchedText(match, *text);
        }
        return lastMatch;
    }

private:
    std::unique_ptr<TextRule> rule;
    QRegularExpression match;
    std::optional<QString> lastText;
    std::optional<QString> lastMatch;
};

std::unique_ptr<TextRule> makePlaceRule(const TextPlace &place)
{
    switch (place.kind) {
    case TextPlace::Kind::Region:
        return std::make_unique<RegionRule>(place.region);
    case TextPlace::Kind::Label:
        return std::make_unique<LabelRule>(place.label);
    case TextPlace::Kind::Position:
        break;
    }
    if (place.tolerance > 0) {
        return std::make_unique<NearestRule>(place.position, place.tolerance);
    }
    return std::make_unique<PositionRule>(place.position);
}

QString pointText(QPoint point)
{
    return QString::number(point.x()) + u',' + QString::number(point.y());
}

QString describeSpot(const TextPlace &place)
{
    switch (place.kind) {
    case TextPlace::Kind::Region:
        return QStringLiteral("in ") + pointText(place.region.topLeft()) + u',' +
               QString::number(place.region.width()) + u',' +
               QString::number(place.region.height());
    case TextPlace::Kind::Label:
        return QStringLiteral("after \"") + place.label + u'"';
    case TextPlace::Kind::Position:
        break;
    }
    if (place.tolerance > 0) {
        return QStringLiteral("within ") + QString::number(place.tolerance) +
               QStringLiteral(" units of ") + pointText(place.position);
    }
    return QStringLiteral("at ") + pointText(place.position);
}

} // namespace

std::unique_ptr<TextRule> makeTextRule(const TextPlace &place)
{
    std::unique_ptr<TextRule> rule = makePlaceRule(place);
    if (place.match.pattern().isEmpty()) {
        return rule;
    }
    return std::make_unique<MatchedRule>(std::move(rule), place.match);
}

QString describePlace(const TextPlace &place)
{
    const QString spot = describeSpot(place);
    return place.match.pattern().isEmpty()
               ? spot
               : spot + QStringLiteral(" that matches ") + place.match.pattern();
}

std::optional<QString> matchedText(const QRegularExpression &match, const QString &text)
{
    const QRegularExpressionMatch found = match.match(text);
    if (!found.hasMatch()) {
        return std::nullopt;
    }
    const QString taken = found.captured(match.captureCount() > 0 ? 1 : 0).trimmed();
    return taken.isEmpty() ? std::nullopt : std::optional(taken);
}

} // namespace quorlin
