#pragma once

#include <QCommandLineParser>
#include <QPoint>
#include <QRect>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <optional>
#include <utility>

namespace quorlin::batch {

/// The position written as "LEFT,TOP": two whole numbers, not negative and not both 0 (which would
/// match lines that are no items). Nothing when @p text is anything else.
std::optional<QPoint> parsePosition(const QString &text);

/// The rectangle written as "LEFT,TOP,WIDTH,HEIGHT": four whole numbers, the first two not
/// negative, the others at least 1. Nothing when @p text is anything else.
std::optional<QRect> parseRegion(const QString &text);

/// What is wrong with @p pattern, and where; empty when it is in order.
QString patternFault(const QRegularExpression &pattern);

/// Takes the options' values off the command line and remembers the first fault.
class ValueReader
{
public:
    explicit ValueReader(const QCommandLineParser &commandLine) : parser(commandLine) {}

    /// What is wrong, in one line; empty as long as all is well.
    QString fault() const { return faultText; }
    void complain(const QString &what);

    bool has(const char *option) const { return parser.isSet(QLatin1String(option)); }

    /// The value of @p option, which may not be empty; an empty text where it is not given.
    QString text(const char *option);

    /// @param rule what values there are, for the complaint
    int number(const char *option, int fallback, int lowest, int highest, const char *rule);

    /// The value that goes with one of the words in @p choices, @p fallback where the option is not
    /// given. @param rule the words, for the complaint
    template <typename Value, size_t Count>
    Value choice(const char *option, Value fallback,
                 const std::pair<const char *, Value> (&choices)[Count], const char *rule)
    {
        if (!has(option)) {
            return fallback;
        }
        const QString word = parser.value(QLatin1String(option));
        for (const auto &[name, value] : choices) {
            if (word == QLatin1String(name)) {
                return value;
            }
        }
        complain(takes(option, rule));
        return fallback;
    }

private:
    static QString takes(const char *option, const char *rule);

    const QCommandLineParser &parser;
    QString faultText;
};

} // namespace quorlin::batch
