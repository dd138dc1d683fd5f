#include "batch/program.h"

#include "batch/arguments.h"
#include "batch/batch_run.h"
#include "batch/console.h"
#include "batch/item_listing.h"
#include "batch/page_request.h"
#include "batch/rule_lookup.h"
#include "batch/run_plan.h"
#include "batch/settings_location.h"
#include "batch/shown_text.h"
#include "common/folders.h"
#include "pipeline/page_file_text.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QThread>

#include <algorithm>
#include <array>
#include <csignal>
#include <utility>

namespace quorlin::batch {

namespace {

/// What every mode needs: the arguments, the folders and the console.
struct Session
{
    explicit Session(const Arguments &read)
        : arguments(read), callerFolder(QDir::currentPath()), programFolder(applicationFolder()),
          console(read.quiet)
    {
    }

    int complain(const QString &line, int status)
    {
        console.complain(line);
        return status;
    }

    QString settings() const
    {
        const SettingsPlaces places{arguments.settingsFile.isEmpty()
                                        ? QString()
                                        : absolutePath(arguments.settingsFile, callerFolder),
                                    programFolder, QString::fromLatin1(systemSettingsFolder)};
        return settingsLocation(places,
                                [](const QString &path) { return QFileInfo::exists(path); });
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
};

/// What keeps the tools from being run; empty when both are there.
QString toolFault(const QString &toolFolder)
{
    for (const char *name : {"/pagexport", "/pagebinder"}) {
        const QFileInfo tool(toolFolder + QLatin1String(name));
        if (!tool.isFile() || !tool.isExecutable()) {
            return QStringLiteral("the tool is missing or cannot be run: ") + tool.filePath();
        }
    }
    return {};
}

int listRules(Session &session)
{
    const RuleLookup lookup(session.settings());
    if (!lookup.fault().isEmpty()) {
        return session.complain(lookup.fault(), somethingFailed);
    }
    for (const NamedRule &rule : lookup.listedRules()) {
        session.console.writeLine(printable(rule.name) + u'\t' + QString::number(rule.item.left) +
                                  u',' + QString::number(rule.item.top) + u'\t' +
                                  printable(plainText(rule.item.text)));
    }
    return everythingDone;
}

int listItems(Session &session)
{
    const QString file = absolutePath(session.arguments.files.constFirst(), session.callerFolder);
    if (const QString refusal = refusalOf(file); !refusal.isEmpty()) {
        return session.complain(file + QStringLiteral(": ") + refusal, somethingFailed);
    }
    if (const QString fault = toolFault(session.toolFolder()); !fault.isEmpty()) {
        return session.complain(fault, somethingFailed);
    }
    PageRequest request(session.toolFolder(), file, session.arguments.page,
                        session.arguments.timeoutSeconds);
    if (const int signal = request.run(session.console); signal != 0) {
        return 128 + signal;
    }
    if (!request.fault().isEmpty()) {
        return session.complain(file + QStringLiteral(": ") + request.fault(), somethingFailed);
    }
    session.console.writeLine(itemTable(request.items()).chopped(1));
    return everythingDone;
}

/// The position to split by; a fault where the rule gives none.
RuleLookup::Position choosePosition(const Session &session)
{
    if (session.arguments.position) {
        return {*session.arguments.position, {}};
    }
    const RuleLookup lookup(session.settings());
    const QString fault = lookup.fault();
    return fault.isEmpty() ? lookup.find(session.arguments.rule) : RuleLookup::Position{{}, fault};
}

int split(Session &session)
{
    const Arguments &arguments = session.arguments;
    RunPlan plan = planRun(arguments, session.callerFolder);
    const QString folderFault =
        prepareOutputFolder(plan.outputFolder, arguments.createOutputFolder);
    if (!folderFault.isEmpty()) {
        return session.complain(folderFault, wrongUsage);
    }
    const RuleLookup::Position chosen = choosePosition(session);
    if (!chosen.fault.isEmpty()) {
        return session.complain(chosen.fault, wrongUsage);
    }
    if (const QString fault = toolFault(session.toolFolder()); !fault.isEmpty()) {
        return session.complain(fault, somethingFailed);
    }
    SplitSettings settings;
    settings.toolFolder = session.toolFolder();
    settings.outputFolder = plan.outputFolder;
    settings.position = chosen.position;
    settings.method = arguments.method - 1;
    settings.blankPages = arguments.blankPages;
    settings.blankPagesFail = arguments.blankPagesFail;
    settings.timeoutSeconds = arguments.timeoutSeconds;
    const int jobs = arguments.jobs > 0 ? arguments.jobs : std::max(1, QThread::idealThreadCount());
    return BatchRun(std::move(plan), settings, jobs, session.console).run();
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
    if (console.hasLostReader()) {
        return 128 + SIGPIPE;
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
    // The words are ours alone; the application object would take some for its own.
    int count = 1;
    std::array<char *, 2> name = {program, nullptr};
    const QCoreApplication application(count, name.data());
    Session session(parsed.arguments);
    const int status = runMode(session);
    return finish(session.console, status);
}

} // namespace quorlin::batch
