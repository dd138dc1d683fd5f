#include "batch/argument_values.h"

#include <QList>

#include <limits>

namespace quorlin::batch {

namespace {

constexpr int largest = std::numeric_limits<int>::max();

std::optional<int> numberWithin(const QString &text, int lowest, int highest)
{
    bool whole = false;
    const int number = text.toInt(&whole);
    if (!whole || number < lowest || number > highest) {
        return std::nullopt;
    }
    return number;
}

/// The @p count whole numbers that stand in @p text, separated by commas; none where it is built
/// otherwise.
QList<int> numbersIn(const QString &text, qsizetype count)
{
    QList<int> numbers;
    for (const QString &piece : text.split(u',')) {
        const std::optional<int> number = numberWithin(piece, 0, largest);
        if (!number) {
            return {};
        }
        numbers.append(*number);
    }
    return numbers.size() == count ? numbers : QList<int>();
}

} // namespace

std::optional<QPoint> parsePosition(const QString &text)
{
    const QList<int> numbers = numbersIn(text, 2);
    if (numbers.isEmpty() || (numbers.at(0) == 0 && numbers.at(1) == 0)) {
        return std::nullopt;
    }
    return QPoint(numbers.at(0), numbers.at(1));
}

std::optional<QRect> parseRegion(const QString &text)
{
    const QList<int> numbers = numbersIn(text, 4);
    if (numbers.isEmpty() || numbers.at(2) < 1 || numbers.at(3) < 1 ||
        numbers.at(0) > largest - numbers.at(2) || numbers.at(1) > largest - numbers.at(3)) {
        return std::nullopt;
    }
    return QRect(numbers.at(0), numbers.at(1), numbers.at(2), numbers.at(3));
}

QString patternFault(const QRegularExpression &pattern)
{
    if (pattern.isValid()) {
        return {};
    }
    const qsizetype place = pattern.patternErrorOffset();
    return pattern.errorString() + QStringLiteral(" at character ") + QString::number(place + 1) +
           QStringLiteral(": ") + pattern.pattern().left(place) + QStringLiteral(" <-- here ") +
           pattern.pattern().mid(place);
}

void ValueReader::complain(const QString &what)
{
    if (faultText.isEmpty()) {
        faultText = what;
    }
}

QString ValueReader::text(const char *option)
{
    QString value = parser.value(QLatin1String(option));
    if (has(option) && value.isEmpty()) {
        complain(QStringLiteral("--") + QLatin1String(option) + QStringLiteral(" an empty value"));
    }
    return value;
}

int ValueReader::number(const char *option, int fallback, int lowest, int highest, const char *rule)
{
    if (!has(option)) {
        return fallback;
    }
    const std::optional<int> value =
        numberWithin(parser.value(QLatin1String(option)), lowest, highest);
    if (!value) {
        complain(takes(option, rule));
    }
    return value.value_or(fallback);
}

QString ValueReader::takes(const char *option, const char *rule)
{
    return QStringLiteral("--") + QLatin1String(option) + QStringLiteral(" takes ") +
           QLatin1String(rule);
}

} // namespace quorlin::batch
