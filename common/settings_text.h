#pragma once

#include <QString>

class QSettings;

namespace quorlin {

/// Name of the settings file. It is always opened by this relative name in ini format; start-up
/// makes the application folder the current folder, so it lies beside the executable.
inline QString settingsFileName()
{
    return QStringLiteral("setting.ini");
}

/// The text stored under @p key, @p fallback when it is absent. A value that was written by hand
/// with bare commas reads as a list; its pieces are joined by ", " again.
QString settingsText(const QSettings &settings, const QString &key,
                     const QString &fallback = QString());

} // namespace quorlin
