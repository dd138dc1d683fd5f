#include "pipeline/page_file_text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quorlin {

namespace {

constexpr std::array<std::pair<QLatin1String, QChar>, 4> references = {{
    {QLatin1String("&lt;"), u'<'},
    {QLatin1String("&gt;"), u'>'},
    {QLatin1String("&quot;"), u'"'},
    {QLatin1String("&amp;"), u'&'},
}};

bool isAsciiLetterOrDigit(QChar character)
{
    return (character >= u'0' && character <= u'9') || (character >= u'a' && character <= u'z') ||
           (character >= u'A' && character <= u'Z');
}

/// Whether the "&" that @p text begins with reads as a reference: "&amp;", "&#38;" and "&#x26;" do,
/// "& Co" does not.
bool readsAsReference(QStringView text)
{
    qsizetype i = text.size() > 1 && text.at(1) == u'#' ? 2 : 1;
    const qsizetype first = i;
    while (i < text.size() && isAsciiLetterOrDigit(text.at(i))) {
        ++i;
    }
    return i > first && i < text.size() && text.at(i) == u';';
}

bool isMarkup(QChar character)
{
    return character == u'<' || character == u'>' || character == u'"' || character == u'&';
}

QLatin1String referenceFor(QChar character)
{
    for (const auto &[reference, plain] : references) {
        if (plain == character) {
            return reference;
        }
    }
    return {};
}

} // namespace

QString pageFileText(const QString &text)
{
    if (std::none_of(text.begin(), text.end(), [](QChar c) { return isMarkup(c); })) {
        return text;
    }
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar character = text.at(i);
        if (!isMarkup(character) ||
            (character == u'&' && !readsAsReference(QStringView(text).sliced(i)))) {
            result += character;
        } else {
            result += referenceFor(character);
        }
    }
    return result;
}

QString plainText(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size();) {
        const QStringView rest = QStringView(text).sliced(i);
        QChar character = rest.front();
        qsizetype length = 1;
        for (const auto &[reference, plain] : references) {
            if (character == u'&' && rest.startsWith(reference)) {
                character = plain;
                length = reference.size();
                break;
            }
        }
        result += character;
        i += length;
    }
    return result;
}

} // namespace quorlin
