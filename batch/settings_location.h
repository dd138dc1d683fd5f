#pragma once

#include <QString>

#include <functional>

namespace quorlin::batch {

/// Folder of the settings that an administrator lays down for every account of the machine.
inline constexpr char systemSettingsFolder[] = "/etc/quorlin";

/// Where a run may find its settings.
struct SettingsPlaces
{
    QString named;         ///< absolute path of the file that the caller named; empty for none
    QString programFolder; ///< the program's own folder, where the window keeps its settings
    QString systemFolder;  ///< the machine's folder, for accounts that have no window and no home
};

/// The settings file of a run: the one that the caller named, else the first of the program's own
/// and the machine's that @p exists, else the program's own, which a message can then name.
/// @param exists tells of an absolute path whether there is a file
QString settingsLocation(const SettingsPlaces &places,
                         const std::function<bool(const QString &)> &exists);

} // namespace quorlin::batch
