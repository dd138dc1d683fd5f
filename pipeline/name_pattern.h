#pragma once

#include <QHash>
#include <QList>
#include <QString>

namespace quorlin {

/// Longest file name that a pattern gives, in bytes of UTF-8, where the disk does not say less.
inline constexpr qsizetype usualNameLimit = 255;

/// What is put into a pattern for one output.
struct NameValues
{
    qsizetype number = 0; ///< of the output, counted from 1
    QString text;         ///< plain; empty where the pages have none
    QString base;         ///< base name of the input
    QString pages;        ///< "7", "3-6", "1-2 5-6 9"
};

/// How outputs are named: text with fields in braces, "{number:04} {text}". The fields are number,
/// text, base, pages, first, last (page) and count (of pages). A colon and a width behind number,
/// first, last or count fill it up with zeros. "{{" and "}}" stand for braces.
class NamePattern
{
public:
    NamePattern() = default;
    explicit NamePattern(const QString &pattern);

    /// What is wrong with the pattern; empty when all is well.
    QString fault() const { return faultText; }
    /// Whether there is no pattern.
    bool isEmpty() const { return pieces.isEmpty(); }

    /// The file name for an output, with ".pdf" at its end, made safe: see safeFileName(). Of a
    /// name that would be too long the text is cut first.
    /// @param limit most bytes of UTF-8 that the name may have
    QString fileName(const NameValues &values, qsizetype limit = usualNameLimit) const;

private:
    enum class Field { Literal, Number, Text, Base, Pages, First, Last, Count };
    struct Piece
    {
        Field field = Field::Literal;
        QString literal;
        int width = 0;
    };

    void read(const QString &pattern);
    bool readField(const QString &name);
    static QString valueOf(const Piece &piece, const NameValues &values);
    QString filled(const NameValues &values) const;

    QList<Piece> pieces;
    QString faultText;
};

/// @p stem as a file name with ".pdf" at its end that every usual disk and network folder takes:
/// characters that some refuse become "-", and nothing is hidden, reserved, empty or longer than
/// @p limit bytes of UTF-8.
QString safeFileName(const QString &stem, qsizetype limit = usualNameLimit);

/// Gives every name of a folder away once.
class UniqueNames
{
public:
    /// @p name, or, where a disk might take an earlier one for the same, a numbered form of it:
    /// "name (2).pdf". No longer than @p limit bytes of UTF-8.
    QString claim(const QString &name, qsizetype limit = usualNameLimit);

private:
    QHash<QString, int> uses;
};

/// @p name in the one form that all spellings have which some disk takes for the same.
QString nameKey(const QString &name);

/// The pages of a range: 1, 2 and 5 for "1-2 5".
QList<int> pagesOfRange(const QString &range);

} // namespace quorlin
