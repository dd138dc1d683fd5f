#pragma once

#include "analysis/subtext.h"

#include <QList>
#include <QString>

namespace quorlin::batch {

/// The text items of a page file, in its order; lines that hold none are left out.
QList<Subtext> itemsOfPage(const QString &html);

/// The items as lines for a reader and for scripts: left, top, width, height in columns of seven
/// characters, two blanks, the text to the line's end. A heading comes first.
QString itemTable(const QList<Subtext> &items);

} // namespace quorlin::batch
