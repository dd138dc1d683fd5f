#pragma once

#include <QLocale>
#include <QString>

namespace quorlin {

/// Installs the catalogue "quorlin-cleaver_LANGUAGE.qm" of @p folder that fits @p locale best, for
/// the life of the application object. None is shipped: without one every text stays as it is.
/// @return whether a catalogue was found
bool installTranslation(const QString &folder, const QLocale &locale = QLocale::system());

} // namespace quorlin
