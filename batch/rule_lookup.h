#pragma once

#include "analysis/subtext.h"

#include <QList>
#include <QPoint>
#include <QString>

#include <optional>

namespace quorlin::batch {

/// A saved rule with its name.
struct NamedRule
{
    QString name;
    Subtext item;
};

/// The saved rules of a settings file, which is read and never changed.
class RuleLookup
{
public:
    /// @param settings path of the settings file
    /// @param mustExist whether a missing file is a fault; otherwise it holds no rules
    explicit RuleLookup(QString settings, bool mustExist = false);

    /// What kept the file from being read; empty when all is well.
    QString fault() const;
    /// Whether there is a rule of that name, listed or not.
    bool knows(const QString &name) const;
    /// The rules that the main window offers, in its order.
    QList<NamedRule> listedRules() const;

    /// The position of a rule, or what is wrong with the rule.
    struct Position
    {
        QPoint position;
        QString fault;
    };
    /// Looks up the rule of that name, also one whose name keeps it from being listed. A rule whose
    /// numbers are not what the editor writes is at fault: whole numbers, not negative, not both 0.
    Position find(const QString &name) const;

private:
    QString settingsPath;
    bool mustExist;
};

} // namespace quorlin::batch
