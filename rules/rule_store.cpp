#include "rules/rule_store.h"

#include <QSettings>

namespace quorlin {

namespace {

QString currentRuleKey()
{
    return QStringLiteral("currule/rule");
}

QString markerKey(const QString &name)
{
    return QStringLiteral("orbi/") + name;
}

void putRule(QSettings &settings, const QString &name, const Subtext &item)
{
    settings.setValue(markerKey(name), QStringLiteral("1"));
    settings.setValue(name + QStringLiteral("/xpos"), QString::number(item.left));
    settings.setValue(name + QStringLiteral("/ypos"), QString::number(item.top));
    settings.setValue(name + QStringLiteral("/wid"), QString::number(item.width));
    settings.setValue(name + QStringLiteral("/hei"), QString::number(item.height));
    settings.setValue(name + QStringLiteral("/text"), item.text);
}

void dropRule(QSettings &settings, const QString &name)
{
    settings.remove(markerKey(name));
    for (const char *key : {"/xpos", "/ypos", "/wid", "/hei", "/text"}) {
        settings.remove(name + QLatin1String(key));
    }
}

bool isSaved(QSettings &settings)
{
    settings.sync();
    return settings.status() == QSettings::NoError;
}

} // namespace

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
    return settingsText(settings, markerKey(name), QStringLiteral("0")) == QLatin1String("1");
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
    putRule(settings, name, item);
    settings.setValue(currentRuleKey(), name);
}

bool storeRule(const QString &name, const Subtext &item, const QString &settingsPath)
{
    QSettings settings(settingsPath, QSettings::IniFormat);
    putRule(settings, name, item);
    return isSaved(settings);
}

bool removeRule(const QString &name, const QString &settingsPath)
{
    QSettings settings(settingsPath, QSettings::IniFormat);
    dropRule(settings, name);
    if (settingsText(settings, currentRuleKey()) == name) {
        settings.remove(currentRuleKey());
    }
    return isSaved(settings);
}

bool renameRule(const QString &name, const QString &newName, const QString &settingsPath)
{
    const Subtext item = readRule(name, settingsPath);
    QSettings settings(settingsPath, QSettings::IniFormat);
    dropRule(settings, name);
    putRule(settings, newName, item);
    if (settingsText(settings, currentRuleKey()) == name) {
        settings.setValue(currentRuleKey(), newName);
    }
    return isSaved(settings);
}

QString currentRuleName()
{
    const QSettings settings(settingsFileName(), QSettings::IniFormat);
    return settingsText(settings, currentRuleKey());
}

} // namespace quorlin
