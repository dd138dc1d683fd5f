#include "pipeline/name_pattern.h"

#include <QSet>
#include <QStringList>

#include <algorithm>
#include <array>
#include <utility>

namespace quorlin {

namespace {

constexpr int widestNumber = 9;
constexpr QChar cutMark = u'~';

QString ending()
{
    return QStringLiteral(".pdf");
}

bool isRefused(QChar character)
{
    return character.category() == QChar::Other_Control ||
           QStringLiteral("<>:\"/\\|?*").contains(character);
}

/// Names that mean a device on Windows, whatever ending they have.
bool isDeviceName(const QString &stem)
{
    static const QSet<QString> plain = {QStringLiteral("con"), QStringLiteral("prn"),
                                        QStringLiteral("aux"), QStringLiteral("nul")};
    const QString name = stem.section(u'.', 0, 0).trimmed().toLower();
    const bool isNumbered =
        name.size() == 4 && name.back() >= u'1' && name.back() <= u'9' &&
        (name.startsWith(QLatin1String("com")) || name.startsWith(QLatin1String("lpt")));
    return isNumbered || plain.contains(name);
}

qsizetype bytesOf(const QString &text)
{
    return text.toUtf8().size();
}

/// The beginning of @p text that has at most @p limit bytes, no character cut in two.
QString cutTo(const QString &text, qsizetype limit)
{
    QByteArray bytes = text.toUtf8();
    if (bytes.size() <= limit) {
        return text;
    }
    qsizetype length = std::max<qsizetype>(limit, 0);
    while (length > 0 && (static_cast<unsigned char>(bytes.at(length)) & 0xc0U) == 0x80U) {
        --length;
    }
    return QString::fromUtf8(bytes.first(length));
}

QString withoutBlankEnds(QString text)
{
    while (!text.isEmpty() && (text.back().isSpace() || text.back() == u'.')) {
        text.chop(1);
    }
    return text.trimmed();
}

/// @p stem without what disks refuse, of whatever length.
QString safeStem(const QString &stem)
{
    QString safe = stem;
    std::replace_if(safe.begin(), safe.end(), isRefused, u'-');
    safe = withoutBlankEnds(safe);
    if (safe.startsWith(u'.')) {
        safe.front() = u'_'; // it would be hidden
    }
    if (safe.isEmpty()) {
        return QStringLiteral("_");
    }
    return isDeviceName(safe) ? u'_' + safe : safe;
}

} // namespace

NamePattern::NamePattern(const QString &pattern)
{
    read(pattern);
    if (faultText.isEmpty() && pieces.isEmpty()) {
        faultText = QStringLiteral("it is empty");
    }
}

void NamePattern::read(const QString &pattern)
{
    const auto literal = [this](QChar character) {
        if (pieces.isEmpty() || pieces.constLast().field != Field::Literal) {
            pieces.append({Field::Literal, {}, 0});
        }
        pieces.last().literal += character;
    };
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QChar character = pattern.at(i);
        const bool isDouble = i + 1 < pattern.size() && pattern.at(i + 1) == character;
        if (character == u'/') {
            faultText = QStringLiteral("\"/\" cannot be used in a file name");
            return;
        }
        if (character != u'{' && character != u'}') {
            literal(character);
        } else if (isDouble) {
            literal(character);
            ++i;
        } else {
            const qsizetype end = character == u'{' ? pattern.indexOf(u'}', i) : -1;
            if (end < 0) {
                faultText = QStringLiteral("the brace at character ") + QString::number(i + 1) +
                            QStringLiteral(" has no counterpart");
                return;
            }
            if (!readField(pattern.sliced(i + 1, end - i - 1))) {
                return;
            }
            i = end;
        }
    }
}

bool NamePattern::readField(const QString &name)
{
    static const QHash<QString, Field> fields = {
        {QStringLiteral("number"), Field::Number}, {QStringLiteral("text"), Field::Text},
        {QStringLiteral("base"), Field::Base},     {QStringLiteral("pages"), Field::Pages},
        {QStringLiteral("first"), Field::First},   {QStringLiteral("last"), Field::Last},
        {QStringLiteral("count"), Field::Count}};
    const auto field = fields.constFind(name.section(u':', 0, 0));
    if (field == fields.constEnd()) {
        faultText = QStringLiteral("there is no field {") + name +
                    QStringLiteral("}, but {number}, {text}, {base}, {pages}, {first}, {last} and "
                                   "{count}");
        return false;
    }
    Piece piece{*field, {}, 0};
    if (name.contains(u':')) {
        const bool isNumber =
            *field != Field::Text && *field != Field::Base && *field != Field::Pages;
        bool whole = false;
        piece.width = name.section(u':', 1).toInt(&whole);
        if (!isNumber || !whole || piece.width < 1 || piece.width > widestNumber) {
            faultText = QLatin1Char('{') + name +
                        QStringLiteral("} is not understood; a width looks like {number:04}");
            return false;
        }
    }
    pieces.append(piece);
    return true;
}

QString NamePattern::valueOf(const Piece &piece, const NameValues &values)
{
    const auto number = [&piece](qsizetype value) {
        return QString::number(value).rightJustified(piece.width, u'0');
    };
    switch (piece.field) {
    case Field::Literal:
        return piece.literal;
    case Field::Number:
        return number(values.number);
    case Field::Text:
        return values.text;
    case Field::Base:
        return values.base;
    case Field::Pages:
        return values.pages;
    case Field::First:
        return number(pagesOfRange(values.pages).value(0));
    case Field::Last:
        return number(
            pagesOfRange(values.pages).isEmpty() ? 0 : pagesOfRange(values.pages).constLast());
    case Field::Count:
        return number(pagesOfRange(values.pages).size());
    }
    return {};
}

QString NamePattern::filled(const NameValues &values) const
{
    QString name;
    for (const Piece &piece : pieces) {
        name += valueOf(piece, values);
    }
    if (name.endsWith(ending(), Qt::CaseInsensitive)) {
        name.chop(ending().size());
    }
    return name;
}

QString NamePattern::fileName(const NameValues &values, qsizetype limit) const
{
    const QString stem = safeStem(filled(values));
    const qsizetype excess = bytesOf(stem) + ending().size() - limit;
    if (excess <= 0 || values.text.isEmpty()) {
        return safeFileName(stem, limit);
    }
    NameValues shorter = values;
    const qsizetype uses = std::count_if(pieces.begin(), pieces.end(), [](const Piece &piece) {
        return piece.field == Field::Text;
    });
    const qsizetype room = bytesOf(values.text) - excess / std::max<qsizetype>(uses, 1) - uses - 1;
    shorter.text = cutTo(values.text, room).trimmed() + cutMark;
    return safeFileName(filled(shorter), limit);
}

QString safeFileName(const QString &stem, qsizetype limit)
{
    QString safe = safeStem(stem);
    const qsizetype room = limit - ending().size();
    if (bytesOf(safe) > room) {
        safe = withoutBlankEnds(cutTo(safe, room - 1)) + cutMark;
    }
    return safe + ending();
}

QString UniqueNames::claim(const QString &name, qsizetype limit)
{
    int &count = uses[nameKey(name)];
    if (++count == 1) {
        return name;
    }
    const QString stem = name.endsWith(ending()) ? name.chopped(ending().size()) : name;
    for (int number = count;; ++number) {
        const QString tail = QStringLiteral(" (") + QString::number(number) + u')' + ending();
        QString numbered = cutTo(stem, limit - tail.size()) + tail;
        if (const QString key = nameKey(numbered); !uses.contains(key)) {
            uses[nameKey(name)] = number;
            uses.insert(key, 1);
            return numbered;
        }
    }
}

QString nameKey(const QString &name)
{
    return name.normalized(QString::NormalizationForm_KC).toCaseFolded();
}

QList<int> pagesOfRange(const QString &range)
{
    QList<int> pages;
    for (const QString &piece : range.split(u' ', Qt::SkipEmptyParts)) {
        const int first = piece.section(u'-', 0, 0).toInt();
        const int last = piece.section(u'-', -1).toInt();
        for (int page = first; page <= last; ++page) {
            pages.append(page);
        }
    }
    return pages;
}

} // namespace quorlin
