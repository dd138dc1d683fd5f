#include "batch/arguments.h"

#include "batch/argument_values.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QSet>

#include <algorithm>

namespace quorlin::batch {

namespace {

constexpr int mostJobs = 1024;
constexpr int longestTimeout = 24 * 3600;
constexpr int lastPage = 99999999;
constexpr int largestTolerance = 100000;

void declareOptions(QCommandLineParser &parser)
{
    for (const OptionGroup &group : optionGroups()) {
        for (const Option &option : group.options) {
            QStringList names = {QLatin1String(option.name)};
            if (names.constFirst() == QLatin1String("help")) {
                names.prepend(QStringLiteral("h"));
            }
            parser.addOption(QCommandLineOption(
                names, {}, option.value != nullptr ? QStringLiteral("value") : QString()));
        }
    }
}

/// The first option that stands there twice, or an empty text.
QString repeatedOption(const QCommandLineParser &parser)
{
    QSet<QString> seen;
    for (const QString &name : parser.optionNames()) {
        if (seen.contains(name)) {
            return name;
        }
        seen.insert(name);
    }
    return {};
}

/// An option that does not go with the mode, or an empty text.
QString foreignOption(const QCommandLineParser &parser, Mode mode)
{
    for (const OptionGroup &group : optionGroups()) {
        for (const Option &option : group.options) {
            if (parser.isSet(QLatin1String(option.name)) &&
                (option.modes & static_cast<int>(mode)) == 0) {
                return QLatin1String(option.name);
            }
        }
    }
    return {};
}

void readPlace(ValueReader &values, const QCommandLineParser &parser, Arguments &arguments)
{
    arguments.rule = values.text("rule");
    if (values.has("position")) {
        arguments.position = parsePosition(parser.value(QStringLiteral("position")));
        if (!arguments.position) {
            values.complain(QStringLiteral("--position takes LEFT,TOP as --list-items shows them, "
                                           "for example 591,72"));
        }
    }
    if (values.has("region")) {
        arguments.region = parseRegion(parser.value(QStringLiteral("region")));
        if (!arguments.region) {
            values.complain(QStringLiteral("--region takes LEFT,TOP,WIDTH,HEIGHT in the units of "
                                           "--list-items, for example 560,60,200,30"));
        }
    }
    arguments.label = values.text("after").simplified();
    if (values.has("after") && arguments.label.isEmpty()) {
        values.complain(QStringLiteral("--after takes the words before the text"));
    }
    arguments.tolerance = values.number("tolerance", 0, 0, largestTolerance, "0 to 100000 units");
    if (values.has("match")) {
        arguments.match = QRegularExpression(values.text("match"),
                                             QRegularExpression::UseUnicodePropertiesOption);
        if (const QString fault = patternFault(arguments.match); !fault.isEmpty()) {
            values.complain(QStringLiteral("--match: ") + fault);
        }
    }
}

void readSplit(ValueReader &values, Arguments &arguments)
{
    arguments.method = values.number("method", 1, 1, 3, "1, 2 or 3");
    using Choice = std::optional<BlankPages>;
    arguments.blankPages = values.choice<Choice>("pages-without-text", std::nullopt,
                                                 {{"join", BlankPages::Join},
                                                  {"separate", BlankPages::Separate},
                                                  {"drop", BlankPages::Drop},
                                                  {"fail", std::nullopt}},
                                                 "join, separate, drop or fail");
    arguments.blankPagesFail =
        values.has("pages-without-text") && !arguments.blankPages && values.fault().isEmpty();
    arguments.dryRun = values.has("dry-run");
    arguments.fileList = values.text("files-from");
    arguments.fileListHasNul = values.has("null");
    arguments.jobs = values.number("jobs", 0, 1, mostJobs, "1 to 1024");
}

void readOutputs(ValueReader &values, Arguments &arguments)
{
    arguments.outputFolder = values.text("output");
    arguments.createOutputFolder = values.has("create");
    arguments.flat = values.has("flat");
    if (values.has("name")) {
        arguments.names = NamePattern(values.text("name"));
        if (const QString fault = arguments.names.fault(); !fault.isEmpty()) {
            values.complain(QStringLiteral("--name: ") + fault);
        }
    }
    arguments.existing = values.choice<ExistingOutputs>("existing", ExistingOutputs::Replace,
                                                        {{"replace", ExistingOutputs::Replace},
                                                         {"skip", ExistingOutputs::Skip},
                                                         {"fail", ExistingOutputs::Fail}},
                                                        "replace, skip or fail");
    arguments.report = values.text("report");
    const bool isKnown = arguments.report == QLatin1String("-") ||
                         arguments.report.endsWith(QLatin1String(".json"), Qt::CaseInsensitive) ||
                         arguments.report.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive);
    if (!arguments.report.isEmpty() && !isKnown) {
        values.complain(QStringLiteral("--report takes a file whose name ends in .json or .csv, or "
                                       "\"-\""));
    }
}

/// The mode that the options ask for, and the rule and the file that come with it.
void readMode(ValueReader &values, Arguments &arguments)
{
    struct Asking
    {
        const char *option;
        Mode mode;
    };
    constexpr Asking askings[] = {
        {"list-items", Mode::ListItems},     {"list-rules", Mode::ListRules},
        {"save-rule", Mode::SaveRule},       {"remove-rule", Mode::RemoveRule},
        {"rename-rule", Mode::RenameRule},   {"export-rules", Mode::ExportRules},
        {"import-rules", Mode::ImportRules},
    };
    for (const auto &[option, mode] : askings) {
        if (!values.has(option)) {
            continue;
        }
        arguments.mode = mode;
        const bool takesFile =
            mode == Mode::ListItems || mode == Mode::ExportRules || mode == Mode::ImportRules;
        if (takesFile) {
            arguments.files.prepend(values.text(option));
        } else if (mode != Mode::ListRules) {
            arguments.ruleName = values.text(option);
        }
        break;
    }
    arguments.itemText = values.text("text");
    if (arguments.mode == Mode::SaveRule && values.has("from")) {
        arguments.files.prepend(values.text("from"));
    }
}

QString readValues(const QCommandLineParser &parser, Arguments &arguments)
{
    ValueReader values(parser);
    if (const QString repeated = repeatedOption(parser); !repeated.isEmpty()) {
        values.complain(QStringLiteral("--") + repeated + QStringLiteral(" is given twice"));
    }
    arguments.files = parser.positionalArguments();
    readMode(values, arguments);
    readPlace(values, parser, arguments);
    readSplit(values, arguments);
    readOutputs(values, arguments);
    arguments.timeoutSeconds =
        values.number("timeout", arguments.timeoutSeconds, 1, longestTimeout, "1 to 86400 seconds");
    arguments.quiet = values.has("quiet");
    arguments.verbose = values.has("verbose");
    arguments.settingsFile = values.text("settings");
    arguments.toolFolder = values.text("tools");
    arguments.passwordFile = values.text("password-file");
    arguments.page = values.number("page", 1, 1, lastPage, "a page number, counted from 1");
    arguments.json = values.has("json");
    if (const QString foreign = foreignOption(parser, arguments.mode); !foreign.isEmpty()) {
        values.complain(QStringLiteral("--") + foreign + QStringLiteral(" cannot be used with ") +
                        modeText(arguments.mode));
    }
    return values.fault();
}

QString splitGap(const Arguments &arguments, bool hasFileList)
{
    const int places = static_cast<int>(!arguments.rule.isEmpty()) +
                       static_cast<int>(arguments.position.has_value()) +
                       static_cast<int>(arguments.region.has_value()) +
                       static_cast<int>(!arguments.label.isEmpty());
    if (places != 1) {
        return QStringLiteral("give either --rule NAME, --position LEFT,TOP, --region "
                              "LEFT,TOP,WIDTH,HEIGHT or --after LABEL");
    }
    if (arguments.tolerance > 0 && (arguments.region || !arguments.label.isEmpty())) {
        return QStringLiteral("--tolerance can only be used with --rule or --position");
    }
    if (arguments.outputFolder.isEmpty()) {
        return QStringLiteral("give the output folder: --output DIR");
    }
    if (arguments.fileListHasNul && !hasFileList) {
        return QStringLiteral("--null can only be used with --files-from");
    }
    if (arguments.fileList == QLatin1String("-") && arguments.passwordFile == arguments.fileList) {
        return QStringLiteral("--files-from and --password-file cannot both read standard input");
    }
    return arguments.files.isEmpty() && !hasFileList ? QStringLiteral("give the files to split")
                                                     : QString();
}

QString saveRuleGap(const Arguments &arguments)
{
    const bool hasItem = arguments.files.size() == 1 && !arguments.itemText.isEmpty();
    if (arguments.position.has_value() == hasItem ||
        (arguments.position && (!arguments.files.isEmpty() || !arguments.itemText.isEmpty()))) {
        return QStringLiteral(
            "--save-rule takes either --position LEFT,TOP or --from FILE --text TEXT");
    }
    if (arguments.position && (arguments.page != 1 || !arguments.passwordFile.isEmpty())) {
        return QStringLiteral("--page and --password-file are about the file of --from");
    }
    return {};
}

/// What is missing or too much once every word was read; empty when all is well.
QString findGap(const Arguments &arguments)
{
    const auto holdFiles = [&arguments](qsizetype count, const char *rule) {
        return arguments.files.size() == count
                   ? QString()
                   : modeText(arguments.mode) + u' ' + QLatin1String(rule);
    };
    switch (arguments.mode) {
    case Mode::ExportRules:
        if (arguments.files == QStringList(QStringLiteral("-"))) {
            return QStringLiteral("--export-rules writes a file, not standard output");
        }
        [[fallthrough]];
    case Mode::ListItems:
    case Mode::ImportRules:
        return holdFiles(1, "takes one file");
    case Mode::ListRules:
    case Mode::RemoveRule:
        return holdFiles(0, "takes no file");
    case Mode::RenameRule:
        return holdFiles(1, "takes the old and the new name");
    case Mode::SaveRule:
        return saveRuleGap(arguments);
    case Mode::Split:
    case Mode::Help:
    case Mode::Version:
        break;
    }
    return splitGap(arguments, !arguments.fileList.isEmpty());
}

/// The parser's complaint as the program's other ones are written.
QString parserFault(const QCommandLineParser &parser)
{
    if (const QStringList unknown = parser.unknownOptionNames(); !unknown.isEmpty()) {
        const QString &name = unknown.constFirst();
        return QStringLiteral("unknown option ") +
               (name.size() == 1 ? QStringLiteral("-") : QStringLiteral("--")) + name;
    }
    QString fault = parser.errorText();
    fault.front() = fault.front().toLower();
    if (fault.endsWith(u'.')) {
        fault.chop(1);
    }
    return fault;
}

} // namespace

ParsedArguments parseArguments(const QStringList &words)
{
    QCommandLineParser parser;
    declareOptions(parser);
    // The parser takes the first word for the program's name.
    const bool isUnderstood = parser.parse(QStringList{QString()} + words);
    ParsedArguments parsed;
    const bool wantsHelp = parser.isSet(QStringLiteral("help"));
    if (wantsHelp || parser.isSet(QStringLiteral("version"))) {
        parsed.arguments.mode = wantsHelp ? Mode::Help : Mode::Version;
        return parsed;
    }
    parsed.error = isUnderstood ? readValues(parser, parsed.arguments) : parserFault(parser);
    if (parsed.error.isEmpty()) {
        parsed.error = findGap(parsed.arguments);
    }
    return parsed;
}

} // namespace quorlin::batch
