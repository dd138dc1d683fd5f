#include "batch/rule_modes.h"

#include "batch/advice.h"
#include "batch/page_request.h"
#include "batch/program.h"
#include "batch/rule_changes.h"
#include "batch/rule_lookup.h"
#include "batch/run_plan.h"
#include "batch/session.h"
#include "batch/shown_text.h"
#include "pipeline/page_file_text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace quorlin::batch {

namespace {

QString rulesAsJson(const QList<NamedRule> &rules)
{
    QJsonArray entries;
    for (const NamedRule &rule : rules) {
        entries.append(QJsonObject{{"name", rule.name},
                                   {"left", rule.item.left},
                                   {"top", rule.item.top},
                                   {"width", rule.item.width},
                                   {"height", rule.item.height},
                                   {"text", plainText(rule.item.text)}});
    }
    return QString::fromUtf8(
        QJsonDocument(QJsonObject{{"version", 1}, {"rules", entries}}).toJson());
}

QString rulesAsLines(const QList<NamedRule> &rules)
{
    QString lines;
    for (const NamedRule &rule : rules) {
        lines += printable(rule.name) + u'\t' + QString::number(rule.item.left) + u',' +
                 QString::number(rule.item.top) + u'\t' + printable(plainText(rule.item.text)) +
                 u'\n';
    }
    return lines;
}

/// Reads the items of the page that the arguments name.
/// @returns the exit status of a failure; everythingDone when @p items holds them
int readPageItems(Session &session, const QString &file, QList<Subtext> &items)
{
    if (const QString refusal = refusalOf(file); !refusal.isEmpty()) {
        return session.complain(file + QStringLiteral(": ") + refusal, somethingFailed);
    }
    if (const QString fault = session.toolFault(); !fault.isEmpty()) {
        return session.complain(fault, somethingFailed);
    }
    const Arguments &arguments = session.arguments;
    PageRequest request(session.toolFolder(), file, arguments.page, arguments.timeoutSeconds,
                        session.passwords);
    if (const int signal = request.run(session.console, arguments.verbose); signal != 0) {
        return 128 + signal;
    }
    if (!request.fault().isEmpty()) {
        return session.complain(file + QStringLiteral(": ") + advisedReason(request.fault()),
                                somethingFailed);
    }
    items = request.items();
    return everythingDone;
}

int saveNewRule(Session &session)
{
    const Arguments &arguments = session.arguments;
    FoundItem found;
    if (arguments.position) {
        found.item.left = arguments.position->x();
        found.item.top = arguments.position->y();
    } else {
        QList<Subtext> items;
        const QString file = session.callerPath(arguments.files.constFirst());
        if (const int status = readPageItems(session, file, items); status != everythingDone) {
            return status;
        }
        found = findItem(items, arguments.itemText);
        if (!found.fault.isEmpty()) {
            return session.complain(file + QStringLiteral(": ") + found.fault, somethingFailed);
        }
    }
    if (const QString fault = addRule(arguments.ruleName, found.item, session.settings());
        !fault.isEmpty()) {
        return session.complain(fault, wrongUsage);
    }
    session.console.writeLine(rulesAsLines({{arguments.ruleName, found.item}}).chopped(1));
    return everythingDone;
}

} // namespace

int listRules(Session &session)
{
    const RuleLookup lookup(session.settings(), session.hasNamedSettings());
    if (const QString fault = lookup.fault(); !fault.isEmpty()) {
        return session.complain(fault, session.hasNamedSettings() ? wrongUsage : somethingFailed);
    }
    const QList<NamedRule> rules = lookup.listedRules();
    const QString list = session.arguments.json ? rulesAsJson(rules) : rulesAsLines(rules);
    if (!list.isEmpty()) {
        session.console.writeLine(list.chopped(1));
    }
    return everythingDone;
}

int listItems(Session &session)
{
    QList<Subtext> items;
    const QString file = session.callerPath(session.arguments.files.constFirst());
    if (const int status = readPageItems(session, file, items); status != everythingDone) {
        return status;
    }
    const QString list = session.arguments.json ? itemsAsJson(items, file, session.arguments.page)
                                                : itemTable(items);
    session.console.writeLine(list.chopped(1));
    return everythingDone;
}

int changeRules(Session &session)
{
    const Arguments &arguments = session.arguments;
    const QString settings = session.settings();
    QString fault = RuleLookup(settings, session.hasNamedSettings()).fault();
    if (!fault.isEmpty()) {
        return session.complain(fault, wrongUsage);
    }
    switch (arguments.mode) {
    case Mode::SaveRule:
        return saveNewRule(session);
    case Mode::RemoveRule:
        fault = dropRule(arguments.ruleName, settings);
        break;
    case Mode::RenameRule:
        fault = changeRuleName(arguments.ruleName, arguments.files.constFirst(), settings);
        break;
    case Mode::ExportRules:
        fault = exportRules(settings, session.callerPath(arguments.files.constFirst()));
        break;
    default:
        fault = importRules(session.callerPath(arguments.files.constFirst()), settings);
        break;
    }
    return fault.isEmpty() ? everythingDone : session.complain(fault, wrongUsage);
}

} // namespace quorlin::batch
