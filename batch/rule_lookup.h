#pragma once

#include "analysis/subtext.h"

#include <QList>
#include <QString>

#include <optional>

namespace quorlin::batch {

/// A saved rule with its name.
struct NamedRule
{
    QString name;
    Subtext item;
};

/// The saved rules of a settings file.
class RuleLookup
{
public:
    /// @param settings path of the settings file; one that is missing holds no rules. It is copied
    /// into a folder of its own first, because rules are always read by the file's relative name,
    /// and never changed.
    /// @param scratch existing folder for that copy
    RuleLookup(const QString &settings, const QString &scratch);

    /// What kept the file from being read; empty when all is well.
    QString fault() const { return faultText; }
    /// The rules that the main window offers, in its order.
    QList<NamedRule> listedRules() const;
    /// The rule of that name, also one whose name keeps it from being listed.
    std::optional<NamedRule> find(const QString &name) const;

private:
    QString folder;
    QString faultText;
};

} // namespace quorlin::batch
