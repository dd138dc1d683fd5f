#include "rules/rule_store.h"

#include <QSettings>

namespace quorlin {

QStringList ruleNames(const QString &settingsPath)
{
    QSettings settings(settingsPath, QSettings::IniFormat);
    settings.beginGroup(QStringLiteral("orbi"));
    QStringList names = settings.childKeys();
    settings.endGroup();
    return names;
}

bool isRuleNameTaken(const QString &name, const QString &settingsPath)
{
    const QSettings settings(settingsPath, QSettings::IniFormat);
    return settingsText(settings, QStringLiteral("orbi/") + name, QStringLiteral("0")) ==
           QLatin1String("1");
}

Subtext readRule(const QString &name, const QString &settingsPath)
{
    const QSettings settings(settingsPath, QSettings::IniFormat);
    const auto number = [&](const char *key) {
        return settingsText(settings, name + QLatin1String(key), QStringLiteral("0")).toInt();
    };
    Subtext rule;
    rule.left = number("/xpos");
    rule.top = number("/ypos");
    rule.width = number("/wid");
    rule.height = number("/hei");
    rule.text = settingsText(settings, name + QStringLiteral("/text"));
    return rule;
}

void saveRule(const QString &name, const Subtext &item)
{
    QSettings settings(settingsFileName(), QSettings::IniFormat);
    settings.setValue(QStringLiteral("orbi/") + name, QStringLiteral("1"));
    settings.setValue(QStringLiteral("currule/rule"), name);
    settings.setValue(name + QStringLiteral("/xpos"), QString::number(item.left));
    settings.setValue(name + QStringLiteral("/ypos"), QString::number(item.top));
    settings.setValue(name + QStringLiteral("/wid"), QString::number(item.width));
    settings.setValue(name + QStringLiteral("/hei"), QString::number(item.height));
    settings.setValue(name + QStringLiteral("/text"), item.text);
}

QString currentRuleName()
{
    const QSettings settings(settingsFileName(), QSettings::IniFormat);
    return settingsText(settings, QStringLiteral("currule/rule"), QString());
}

} // namespace quorlin
