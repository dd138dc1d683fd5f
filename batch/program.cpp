#include "batch/program.h"

#include "batch/arguments.h"
#include "batch/batch_run.h"
#include "batch/console.h"
#include "batch/item_listing.h"
#include "batch/page_items.h"
#include "batch/progress_line.h"
#include "batch/rule_lookup.h"
#include "batch/run_plan.h"
#include "batch/scratch_folder.h"
#include "common/folders.h"
#include "common/settings_text.h"

#include <QApplication>
#include <QDir>
#include <QFile>

#include <array>
#include <utility>

namespace quorlin::batch {

namespace {

/// What every mode needs: the arguments, the folders as they were at the start, the console and
/// the private folder.
struct Session
{
    Session(const Arguments &read, ScratchFolder &folder)
        : arguments(read), callerFolder(QDir::currentPath()), programFolder(applicationFolder()),
          console(read.quiet), scratch(folder)
    {
    }

    int complain(const QString &line, int status)
    {
        console.complain(line);
        return status;
    }

    QString settings() const
    {
        return arguments.settingsFile.isEmpty()
                   ? programFolder + u'/' + settingsFileName()
                   : absolutePath(arguments.settingsFile, callerFolder);
    }

    QString toolFolder() const
    {
        return arguments.toolFolder.isEmpty() ? programFolder
                                              : absolutePath(arguments.toolFolder, callerFolder);
    }

    Arguments arguments;
    QString callerFolder;
    QString programFolder;
    Console console;
    ScratchFolder &scratch;
};

int listRules(Session &session)
{
    const RuleLookup lookup(session.settings(), session.scratch.path());
    if (!lookup.fault().isEmpty()) {
        return session.complain(lookup.fault(), somethingFailed);
    }
    for (const NamedRule &rule : lookup.listedRules()) {
        session.console.writeLine(printable(rule.name) + u'\t' + QString::number(rule.item.left) +
                                  u',' + QString::number(rule.item.top) + u'\t' +
                                  printable(rule.item.text));
    }
    return everythingDone;
}

int listItems(Session &session)
{
    const QString file = absolutePath(session.arguments.files.constFirst(), session.callerFolder);
    if (const QString refusal = refusalOf(file); !refusal.isEmpty()) {
        return session.complain(file + QStringLiteral(": ") + refusal, somethingFailed);
    }
    if (const QString fault = session.scratch.linkTools(session.toolFolder()); !fault.isEmpty()) {
        return session.complain(fault, somethingFailed);
    }
    session.scratch.enter();
    const PageItems page =
        readPageItems(file, session.arguments.page, session.arguments.timeoutSeconds);
    if (page.stopSignal != 0) {
        return 128 + page.stopSignal;
    }
    if (!page.fault.isEmpty()) {
        return session.complain(file + QStringLiteral(": ") + page.fault, somethingFailed);
    }
    session.console.writeLine(itemTable(page.items).chopped(1));
    return everythingDone;
}

/// The position to split by; a fault where the rule gives none.
struct ChosenPosition
{
    QPoint position;
    QString fault;
};

ChosenPosition choosePosition(const Session &session)
{
    if (session.arguments.position) {
        return {*session.arguments.position, {}};
    }
    const QString &name = session.arguments.rule;
    const RuleLookup lookup(session.settings(), session.scratch.path());
    if (!lookup.fault().isEmpty()) {
        return {{}, lookup.fault()};
    }
    const std::optional<NamedRule> rule = lookup.find(name);
    if (!rule) {
        return {{},
                QStringLiteral("there is no rule \"") + name + QStringLiteral("\" in ") +
                    session.settings() + QStringLiteral(" (--list-rules shows the rules)")};
    }
    const QPoint position(rule->item.left, rule->item.top);
    if (position.isNull()) {
        return {{}, QStringLiteral("the rule \"") + name + QStringLiteral("\" has no position")};
    }
    return {position, {}};
}

int split(Session &session)
{
    RunPlan plan = planRun(session.arguments, session.callerFolder);
    const QString folderFault =
        prepareOutputFolder(plan.outputFolder, session.arguments.createOutputFolder);
    if (!folderFault.isEmpty()) {
        return session.complain(folderFault, wrongUsage);
    }
    const ChosenPosition chosen = choosePosition(session);
    if (!chosen.fault.isEmpty()) {
        return session.complain(chosen.fault, wrongUsage);
    }
    plan.position = chosen.position;
    if (const QString fault = session.scratch.linkTools(session.toolFolder()); !fault.isEmpty()) {
        return session.complain(fault, somethingFailed);
    }
    session.scratch.enter();
    ScratchFolder::writeRule(plan.position);
    return BatchRun(std::move(plan), session.console).run();
}

int runMode(Session &session)
{
    switch (session.arguments.mode) {
    case Mode::ListRules:
        return listRules(session);
    case Mode::ListItems:
        return listItems(session);
    case Mode::Split:
    case Mode::Help:
    case Mode::Version:
        break;
    }
    return split(session);
}

int finish(Console &console, int status)
{
    if (console.flush()) {
        return status;
    }
    console.complain(QStringLiteral("standard output could not be written"));
    return status == everythingDone ? somethingFailed : status;
}

/// Prints what needs neither files nor folders: a complaint, the help, the version.
int answer(const ParsedArguments &parsed)
{
    Console console(true);
    if (!parsed.error.isEmpty()) {
        console.complain(parsed.error + QStringLiteral(" (see --help)"));
        return wrongUsage;
    }
    console.writeLine(parsed.arguments.mode == Mode::Help
                          ? helpText().chopped(1)
                          : QStringLiteral("quorlin-batch " QUORLIN_VERSION));
    return finish(console, everythingDone);
}

} // namespace

int runProgram(const QStringList &words, char *program)
{
    const ParsedArguments parsed = parseArguments(words);
    if (!parsed.error.isEmpty() || parsed.arguments.mode == Mode::Help ||
        parsed.arguments.mode == Mode::Version) {
        return answer(parsed);
    }
    ScratchFolder scratch;
    if (!scratch.fault().isEmpty()) {
        Console(true).complain(scratch.fault());
        return somethingFailed;
    }
    // Where the caller has none, as under cron, Qt would make one and leave it behind.
    if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR")) {
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(scratch.path()));
    }
    // The words are ours alone; the application object would take some for its own.
    int count = 1;
    std::array<char *, 2> name = {program, nullptr};
    const QApplication application(count, name.data());
    Session session(parsed.arguments, scratch);
    const int status = runMode(session);
    return finish(session.console, status);
}

} // namespace quorlin::batch
