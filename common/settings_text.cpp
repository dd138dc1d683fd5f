#include "common/settings_text.h"

#include <QSettings>
#include <QStringList>

namespace quorlin {

QString settingsText(const QSettings &settings, const QString &key, const QString &fallback)
{
    const QVariant value = settings.value(key, fallback);
    if (value.typeId() == QMetaType::QStringList || value.typeId() == QMetaType::QVariantList) {
        return value.toStringList().join(QStringLiteral(", "));
    }
    return value.toString();
}

} // namespace quorlin
