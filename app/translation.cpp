#include "app/translation.h"

#include <QCoreApplication>
#include <QTranslator>

#include <memory>

namespace quorlin {

namespace {

bool install(const QLocale &locale, const QString &name, const QString &folder)
{
    auto translator = std::make_unique<QTranslator>(QCoreApplication::instance());
    if (!translator->load(locale, name, QStringLiteral("_"), folder)) {
        return false;
    }
    // The application object owns it from here on.
    return QCoreApplication::installTranslator(translator.release());
}

} // namespace

bool installTranslation(const QString &folder, const QLocale &locale)
{
    const QString shipped = folder + QStringLiteral("/translations");
    const QString name = QStringLiteral("quorlin-cleaver");
    // The last one that knows a text gives it.
    install(locale, QStringLiteral("qtbase"), shipped);
    const bool hasShipped = install(locale, name, shipped);
    return install(locale, name, folder) || hasShipped;
}

} // namespace quorlin
