#include "batch/rule_lookup.h"

#include "common/settings_text.h"
#include "rules/rule_store.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace quorlin::batch {

namespace {

/// Makes a folder the current one for as long as this object lives.
class CurrentFolder
{
public:
    explicit CurrentFolder(const QString &folder) : before(QDir::currentPath())
    {
        QDir::setCurrent(folder);
    }
    ~CurrentFolder() { QDir::setCurrent(before); }
    CurrentFolder(const CurrentFolder &) = delete;
    CurrentFolder &operator=(const CurrentFolder &) = delete;

private:
    QString before;
};

} // namespace

RuleLookup::RuleLookup(const QString &settings, const QString &scratch)
    : folder(scratch + QStringLiteral("/rules"))
{
    QDir().mkdir(folder);
    if (QFileInfo::exists(settings) && !QFile::copy(settings, folder + u'/' + settingsFileName())) {
        faultText = QStringLiteral("the settings cannot be read: ") + settings;
    }
}

QList<NamedRule> RuleLookup::listedRules() const
{
    const CurrentFolder current(folder);
    QList<NamedRule> rules;
    for (const QString &name : ruleNames()) {
        rules.append({name, readRule(name)});
    }
    return rules;
}

std::optional<NamedRule> RuleLookup::find(const QString &name) const
{
    const CurrentFolder current(folder);
    if (!isRuleNameTaken(name) && !ruleNames().contains(name)) {
        return std::nullopt;
    }
    return NamedRule{name, readRule(name)};
}

} // namespace quorlin::batch
