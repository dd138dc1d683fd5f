#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/// Translation of every "class: text" of the catalogue @p path; unfinished ones are empty.
QHash<QString, QString> entriesOf(const QString &path);

/// "class: text" of every text in the sources, as Qt's own collector finds them; it writes its
/// catalogue to @p scratch.
QStringList collectedTexts(const QString &scratch);
