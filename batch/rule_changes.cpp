#include "batch/rule_changes.h"

#include "batch/rule_lookup.h"
#include "pipeline/page_file_text.h"
#include "rules/rule_store.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>

namespace quorlin::batch {

namespace {

QString shownRule(const QString &name)
{
    return QStringLiteral("the rule \"") + name + u'"';
}

QString unwritable(const QString &settings)
{
    return QStringLiteral("the settings cannot be written: ") + settings;
}

/// What keeps a rule from being saved under @p name in @p settings.
QString newNameFault(const QString &name, const QString &settings)
{
    if (QString fault = ruleNameFault(name); !fault.isEmpty()) {
        return fault;
    }
    return RuleLookup(settings).knows(name)
               ? shownRule(name) + QStringLiteral(" already exists; choose another name")
               : QString();
}

/// What keeps the rules of @p settings from being written to @p target, which they would replace.
QString targetFault(const QString &target, const QString &settings)
{
    const QFileInfo info(target);
    if (info.exists() && info.canonicalFilePath() == QFileInfo(settings).canonicalFilePath()) {
        return QStringLiteral("this is the settings file with the rules: ") + target;
    }
    return info.exists() && !info.isFile() ? QStringLiteral("this is not a regular file: ") + target
                                           : QString();
}

/// The rules of @p settings that are listed, each with a usable position, or what is wrong.
QString checkedRules(const QString &settings, QList<NamedRule> &rules)
{
    const RuleLookup lookup(settings, true);
    if (QString fault = lookup.fault(); !fault.isEmpty()) {
        return fault;
    }
    rules = lookup.listedRules();
    for (const NamedRule &rule : std::as_const(rules)) {
        for (const QString &fault : {ruleNameFault(rule.name), lookup.find(rule.name).fault}) {
            if (!fault.isEmpty()) {
                return fault;
            }
        }
    }
    return rules.isEmpty() ? QStringLiteral("there are no rules in ") + settings : QString();
}

} // namespace

QString ruleNameFault(const QString &name)
{
    if (name.isEmpty()) {
        return QStringLiteral("a rule needs a name");
    }
    if (name.contains(u'/') || name.contains(u'\\')) {
        return shownRule(name) + QStringLiteral(" could not be chosen: its name has a slash");
    }
    // Sections of the settings file that are read otherwise.
    for (const char *section : {"general", "orbi", "currule"}) {
        if (name.compare(QLatin1String(section), Qt::CaseInsensitive) == 0) {
            return shownRule(name) + QStringLiteral(" would be mixed up with the settings; choose "
                                                    "another name");
        }
    }
    return {};
}

QString addRule(const QString &name, const Subtext &item, const QString &settings)
{
    if (QString fault = newNameFault(name, settings); !fault.isEmpty()) {
        return fault;
    }
    return storeRule(name, item, settings) ? QString() : unwritable(settings);
}

QString dropRule(const QString &name, const QString &settings)
{
    if (!RuleLookup(settings).knows(name)) {
        return QStringLiteral("there is no rule \"") + name + QStringLiteral("\" in ") + settings;
    }
    return removeRule(name, settings) ? QString() : unwritable(settings);
}

QString changeRuleName(const QString &name, const QString &newName, const QString &settings)
{
    if (!RuleLookup(settings).knows(name)) {
        return QStringLiteral("there is no rule \"") + name + QStringLiteral("\" in ") + settings;
    }
    if (QString fault = newNameFault(newName, settings); !fault.isEmpty()) {
        return fault;
    }
    return renameRule(name, newName, settings) ? QString() : unwritable(settings);
}

QString exportRules(const QString &settings, const QString &target)
{
    QList<NamedRule> rules;
    if (QString fault = checkedRules(settings, rules); !fault.isEmpty()) {
        return fault;
    }
    if (QString fault = targetFault(target, settings); !fault.isEmpty()) {
        return fault;
    }
    // Built beside the target, so that it appears whole.
    const QTemporaryDir scratch(QFileInfo(target).absolutePath() +
                                QStringLiteral("/.rules-XXXXXX"));
    const QString made = scratch.filePath(QStringLiteral("rules.ini"));
    for (const NamedRule &rule : std::as_const(rules)) {
        if (!scratch.isValid() || !storeRule(rule.name, rule.item, made)) {
            return unwritable(target);
        }
    }
    if (std::rename(QFile::encodeName(made).constData(), QFile::encodeName(target).constData()) !=
        0) {
        return unwritable(target);
    }
    return {};
}

QString importRules(const QString &source, const QString &settings)
{
    QList<NamedRule> rules;
    if (QString fault = checkedRules(source, rules); !fault.isEmpty()) {
        return fault;
    }
    const RuleLookup known(settings);
    for (const NamedRule &rule : std::as_const(rules)) {
        if (known.knows(rule.name) && readRule(rule.name, settings) != rule.item) {
            return shownRule(rule.name) +
                   QStringLiteral(" already exists with other values (--remove-rule or "
                                  "--rename-rule first)");
        }
    }
    for (const NamedRule &rule : std::as_const(rules)) {
        if (!known.knows(rule.name) && !storeRule(rule.name, rule.item, settings)) {
            return unwritable(settings);
        }
    }
    return {};
}

FoundItem findItem(const QList<Subtext> &items, const QString &text)
{
    FoundItem found;
    QStringList places;
    for (const Subtext &item : items) {
        if (item.text == text) {
            places.append(QString::number(item.left) + u',' + QString::number(item.top));
            found.item = item;
        }
    }
    if (places.isEmpty()) {
        found.fault = QStringLiteral("no item of the page has the text \"") + text +
                      QStringLiteral("\" (--list-items shows them)");
    } else if (places.size() > 1) {
        found.fault = QStringLiteral("the text occurs at several places: ") +
                      places.join(QStringLiteral(" and ")) +
                      QStringLiteral(" (choose one with --position)");
    }
    // Rules keep their text as page files do.
    found.item.text = pageFileText(found.item.text);
    return found;
}

} // namespace quorlin::batch
