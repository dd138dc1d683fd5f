#include "batch/rule_lookup.h"

#include "common/settings_text.h"
#include "rules/rule_store.h"

#include <QFile>
#include <QFileInfo>
#include <QSettings>

#include <utility>

namespace quorlin::batch {

namespace {

/// A coordinate as the rule editor writes it; nothing when @p text is anything else.
std::optional<int> coordinate(const QString &text)
{
    bool whole = false;
    const int number = text.toInt(&whole);
    return whole && number >= 0 ? std::optional(number) : std::nullopt;
}

/// Whether a file that begins like this holds settings: the class that reads them takes any file
/// for one without any.
bool looksLikeSettings(QFile &file)
{
    constexpr qint64 longestLine = 65536;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine(longestLine).trimmed();
        if (!line.isEmpty() && !line.startsWith(';') && !line.startsWith('#')) {
            return !line.contains('\0') && (line.startsWith('[') || line.contains('='));
        }
    }
    return true;
}

} // namespace

RuleLookup::RuleLookup(QString settings, bool isNeeded)
    : settingsPath(std::move(settings)), mustExist(isNeeded)
{
}

QString RuleLookup::fault() const
{
    const QFileInfo file(settingsPath);
    if (!file.exists()) {
        return mustExist ? QStringLiteral("there is no settings file ") + settingsPath : QString();
    }
    if (!file.isFile() || !file.isReadable()) {
        return QStringLiteral("the settings cannot be read: ") + settingsPath;
    }
    QFile text(settingsPath);
    const QSettings settings(settingsPath, QSettings::IniFormat);
    const bool isReadable = text.open(QIODevice::ReadOnly) && looksLikeSettings(text) &&
                            settings.status() == QSettings::NoError;
    return isReadable ? QString() : QStringLiteral("this is not a settings file: ") + settingsPath;
}

bool RuleLookup::knows(const QString &name) const
{
    return isRuleNameTaken(name, settingsPath) || ruleNames(settingsPath).contains(name);
}

QList<NamedRule> RuleLookup::listedRules() const
{
    QList<NamedRule> rules;
    for (const QString &name : ruleNames(settingsPath)) {
        rules.append({name, readRule(name, settingsPath)});
    }
    return rules;
}

RuleLookup::Position RuleLookup::find(const QString &name) const
{
    const QString shownName = QStringLiteral("the rule \"") + name + u'"';
    if (!knows(name)) {
        return {{},
                QStringLiteral("there is no rule \"") + name + QStringLiteral("\" in ") +
                    settingsPath + QStringLiteral(" (--list-rules shows the rules)")};
    }
    const QSettings settings(settingsPath, QSettings::IniFormat);
    QPoint position;
    for (const auto &[key, set] :
         {std::pair{"xpos", &QPoint::setX}, std::pair{"ypos", &QPoint::setY}}) {
        const QString text =
            settingsText(settings, name + u'/' + QLatin1String(key), QStringLiteral("0"));
        const std::optional<int> number = coordinate(text);
        if (!number) {
            return {{},
                    shownName + QStringLiteral(" has no usable position: ") + QLatin1String(key) +
                        QStringLiteral(" is \"") + text + u'"'};
        }
        (position.*set)(*number);
    }
    if (position.isNull()) {
        return {{}, shownName + QStringLiteral(" has no position")};
    }
    return {position, {}};
}

} // namespace quorlin::batch
