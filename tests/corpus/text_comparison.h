#pragma once

#include <QString>

/// A text of a page file with the references that stand for "<", ">", double quote and "&" spelt
/// out.
QString withoutReferences(const QString &text);

/// A text as it is compared: compatibility characters replaced by what they stand for, white space
/// of any kind collapsed, control characters and direction marks dropped.
QString comparableText(const QString &text);

/// Whether two texts say the same. Right-to-left text may stand in reading order or in the order
/// in which it is seen.
bool sameText(const QString &text, const QString &expected);

/// The text that names an output, cut out of its file name "NUMBER TEXT BASE PAGES.pdf" (or
/// "NUMBER TEXT BASE.pdf" when @p pages is empty). Null when the name is built otherwise.
QString keyOfOutput(const QString &fileName, int number, const QString &base, const QString &pages);
