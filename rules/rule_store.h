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

/// Name of the rule saved last, empty when there is none.
QString currentRuleName();

} // namespace quorlin
