#pragma once

#include "analysis/subtext.h"
#include "common/settings_text.h"

#include <QString>
#include <QStringList>

namespace quorlin {

// Rules live in the settings file: a marker per rule in the group "orbi", and the values in a
// section named after the rule. Every call opens the file; nothing is cached, so a value
// changed by hand is seen by the next action. A missing or unreadable file is an empty one.
// Functions that read take the file's path; by default it is the one in the current folder.

/// Names of the saved rules, in the order in which the settings class returns them.
QStringList ruleNames(const QString &settingsPath = settingsFileName());

/// Whether a rule of that name was saved.
bool isRuleNameTaken(const QString &name, const QString &settingsPath = settingsFileName());

/// The rule's position, size and sample text; zeros and an empty text where nothing is stored.
/// The name is used as it stands: one with a slash reads nested keys.
Subtext readRule(const QString &name, const QString &settingsPath = settingsFileName());

/// Stores @p item under @p name and makes it the rule saved last. All values are written as text.
/// Names are neither trimmed nor checked. A file that cannot be written gives no message.
void saveRule(const QString &name, const Subtext &item);

// Changes without the editor. Whatever else stands in the file keeps its value; the rule saved last
// is still the same, under its new name perhaps. They return false when the file cannot be written.

/// Stores @p item under @p name, in place of an older rule of that name.
bool storeRule(const QString &name, const Subtext &item, const QString &settingsPath);

/// Removes the rule, but no value of that section that belongs to no rule.
bool removeRule(const QString &name, const QString &settingsPath);

/// Gives the rule @p name the name @p newName.
bool renameRule(const QString &name, const QString &newName, const QString &settingsPath);

/// Name of the rule saved last, empty when there is none.
QString currentRuleName();

} // namespace quorlin
