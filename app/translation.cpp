#include "app/translation.h"

#include <QCoreApplication>
#include <QTranslator>

#include <memory>

namespace quorlin {

bool installTranslation(const QString &folder, const QLocale &locale)
{
    auto translator = std::make_unique<QTranslator>(QCoreApplication::instance());
    if (!translator->load(locale, QStringLiteral("quorlin-cleaver"), QStringLiteral("_"), folder)) {
        return false;
    }
    // The application object owns it from here on.
    return QCoreApplication::installTranslator(translator.release());
}

} // namespace quorlin
