#include "batch/program.h"

#include "batch/batch_run.h"
#include "batch/file_list.h"
#include "batch/report.h"
#include "batch/rule_lookup.h"
#include "batch/rule_modes.h"
#include "batch/run_plan.h"
#include "batch/session.h"

#include <QCoreApplication>
#include <QThread>

#include <algorithm>
#include <array>
#include <csignal>
#include <optional>
#include <utility>

namespace quorlin::batch {

namespace {

/// The position of the rule that the caller names, or what is wrong with it.
RuleLookup::Position findRule(const Session &session)
{
    const RuleLookup lookup(session.settings(), session.hasNamedSettings());
    const QString fault = lookup.fault();
    return fault.isEmpty() ? lookup.find(session.arguments.rule) : RuleLookup::Position{{}, fault};
}

/// Where the text stands. @p fault says what is wrong with it.
TextPlace choosePlace(const Session &session, QString &fault)
{
    const Arguments &arguments = session.arguments;
    TextPlace place;
    place.tolerance = arguments.tolerance;
    place.match = arguments.match;
    if (arguments.region) {
        place.kind = TextPlace::Kind::Region;
        place.region = *arguments.region;
    } else if (!arguments.label.isEmpty()) {
        place.kind = TextPlace::Kind::Label;
        place.label = arguments.label;
    } else if (arguments.position) {
        place.position = *arguments.position;
    } else {
        const RuleLookup::Position found = findRule(session);
        place.position = found.position;
        fault = found.fault;
    }
    return place;
}

SplitSettings makeSettings(const Session &session, const QString &outputFolder,
                           const TextPlace &place)
{
    const Arguments &arguments = session.arguments;
    SplitSettings settings;
    settings.toolFolder = session.toolFolder();
    settings.outputFolder = outputFolder;
    settings.place = place;
    settings.method = arguments.method - 1;
    settings.blankPages = arguments.blankPages;
    settings.blankPagesFail = arguments.blankPagesFail;
    settings.names = arguments.names;
    settings.flat = arguments.flat;
    settings.existing = arguments.existing;
    settings.dryRun = arguments.dryRun;
    settings.passwords = session.passwords;
    settings.timeoutSeconds = arguments.timeoutSeconds;
    return settings;
}

/// The names in the caller's list of files. @p fault says what is wrong with it.
QStringList listedFiles(const Session &session, QString &fault)
{
    if (session.arguments.fileList.isEmpty()) {
        return {};
    }
    const FileContent list = readWhole(session.callerPath(session.arguments.fileList));
    fault = list.fault;
    return namesIn(list.bytes, session.arguments.fileListHasNul);
}

/// Runs the plan with the report that the caller wants, if any.
int runPlan(Session &session, RunPlan plan, const SplitSettings &settings)
{
    const Arguments &arguments = session.arguments;
    std::optional<Report> report;
    if (!arguments.report.isEmpty()) {
        report.emplace(session.callerPath(arguments.report));
        if (const QString fault = report->begin(); !fault.isEmpty()) {
            return session.complain(fault, wrongUsage);
        }
        if (arguments.report == QLatin1String("-")) {
            session.console.giveAwayOutput();
        }
    }
    const int jobs = arguments.jobs > 0 ? arguments.jobs : std::max(1, QThread::idealThreadCount());
    BatchRun run(std::move(plan), settings, jobs, session.console, report ? &*report : nullptr);
    if (arguments.verbose) {
        run.showToolMessages();
    }
    const int status = run.run();
    if (const QString fault = report ? report->finish() : QString(); !fault.isEmpty()) {
        return session.complain(fault, status == everythingDone ? somethingFailed : status);
    }
    return status;
}

int splitInputs(Session &session)
{
    const Arguments &arguments = session.arguments;
    QString fault;
    const QStringList listed = listedFiles(session, fault);
    if (!fault.isEmpty()) {
        return session.complain(fault, wrongUsage);
    }
    RunPlan plan = planRun(arguments, session.callerFolder, listed);
    const TextPlace place = choosePlace(session, fault);
    if (!fault.isEmpty()) {
        return session.complain(fault, wrongUsage);
    }
    fault = prepareOutputFolder(plan.outputFolder, arguments.createOutputFolder, arguments.dryRun);
    if (!fault.isEmpty()) {
        return session.complain(fault, wrongUsage);
    }
    fault = session.toolFault();
    if (!fault.isEmpty()) {
        return session.complain(fault, somethingFailed);
    }
    const SplitSettings settings = makeSettings(session, plan.outputFolder, place);
    return runPlan(session, std::move(plan), settings);
}

int runMode(Session &session)
{
    if (!session.arguments.passwordFile.isEmpty()) {
        const FileContent passwords =
            readPasswordFile(session.callerPath(session.arguments.passwordFile));
        if (!passwords.fault.isEmpty()) {
            return session.complain(passwords.fault, wrongUsage);
        }
        session.passwords = passwords.bytes;
    }
    switch (session.arguments.mode) {
    case Mode::ListRules:
        return listRules(session);
    case Mode::ListItems:
        return listItems(session);
    case Mode::SaveRule:
    case Mode::RemoveRule:
    case Mode::RenameRule:
    case Mode::ExportRules:
    case Mode::ImportRules:
        return changeRules(session);
    case Mode::Split:
    case Mode::Help:
    case Mode::Version:
        break;
    }
    return splitInputs(session);
}

int finish(Console &console, int status)
{
    if (console.flush()) {
        return status;
    }
    if (console.hasLostReader()) {
        return 128 + SIGPIPE;
    }
    if (!console.isOutputGivenAway()) {
        console.complain(QStringLiteral("standard output could not be written"));
    }
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
