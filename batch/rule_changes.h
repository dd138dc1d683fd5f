#pragma once

#include "analysis/subtext.h"

#include <QList>
#include <QString>

namespace quorlin::batch {

// The rules of a settings file, changed without the rule editor and under its checks. Every
// function returns what is wrong, in one line; an empty text when it has done its work, and nothing
// is changed otherwise.

/// What keeps @p name from being the name of a new rule.
QString ruleNameFault(const QString &name);

QString addRule(const QString &name, const Subtext &item, const QString &settings);
QString dropRule(const QString &name, const QString &settings);
QString changeRuleName(const QString &name, const QString &newName, const QString &settings);

/// Writes all rules of @p settings, and nothing else of it, to the settings file @p target, which
/// is replaced as a whole.
QString exportRules(const QString &settings, const QString &target);

/// Adds the rules of the settings file @p source. One that is there already with the same values
/// stays; one with other values is a fault.
QString importRules(const QString &source, const QString &settings);

/// The item of a page with exactly this text, or what is wrong.
struct FoundItem
{
    Subtext item;
    QString fault;
};
FoundItem findItem(const QList<Subtext> &items, const QString &text);

} // namespace quorlin::batch
