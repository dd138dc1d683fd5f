#pragma once

#include "analysis/subtext.h"

#include <QString>
#include <QStringList>

namespace quorlin {

// The page files are read line by line, by plain scanning: an item is one line, its style holds
// "left:72;top:104;width:210;height:12" with bare integers, and its text stands in front of the
// line's first "</span>".

/// Most items kept of one page; further lines are still compared but not stored.
inline constexpr qsizetype maximumPageItems = 10000;

/// Value that follows the first occurrence of @p key in @p line, one separator character later, up
/// to ";" or a double quote or the line's end. 0 when the key is missing, when the value is no
/// whole number ("72px") and when it is below 1. The key matches as a bare substring anywhere in
/// the line.
qint32 styleValue(const QString &key, const QString &line);

/// Text between the first "</span>" of @p line and the last ">" before it; when there is no such
/// ">", everything from the second character on. Empty without "</span>".
QString itemText(const QString &line);

/// The whole item of a line; zeros and an empty text where the line holds none.
Subtext parseItem(const QString &line);

/// The lines of a page file: split at line feeds, empty lines dropped.
QStringList pageFileLines(const QString &html);

/// The same lines without copying them: they share the memory of @p html, which has to stay as it
/// is for as long as they are used. A long file has millions of lines.
QStringList pageFileLinesWithin(const QString &html);

} // namespace quorlin
