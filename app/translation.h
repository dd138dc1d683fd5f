#pragma once

#include <QLocale>
#include <QString>

namespace quorlin {

/// Installs the catalogues that fit @p locale best, for the life of the application object:
/// "quorlin-cleaver_LANGUAGE.qm" of the application folder @p folder, which users may lay there;
/// for texts that it leaves open the one of the same name in the folder "translations" below; and
/// from there "qtbase_LANGUAGE.qm" for the texts of Qt itself. A text that none knows stays as it
/// is.
/// @return whether a catalogue of the program was found
bool installTranslation(const QString &folder, const QLocale &locale = QLocale::system());

} // namespace quorlin
