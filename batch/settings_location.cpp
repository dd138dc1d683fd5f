#include "batch/settings_location.h"

#include "common/settings_text.h"

namespace quorlin::batch {

QString settingsLocation(const SettingsPlaces &places,
                         const std::function<bool(const QString &)> &exists)
{
    if (!places.named.isEmpty()) {
        return places.named;
    }
    const QString own = places.programFolder + u'/' + settingsFileName();
    const QString system = places.systemFolder + u'/' + settingsFileName();
    return !exists(own) && exists(system) ? system : own;
}

} // namespace quorlin::batch
