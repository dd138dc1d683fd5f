#include "batch/arguments.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QSet>

namespace quorlin::batch {

namespace {

// Names of the options, as the parser wants them.
const QString ruleOption = QStringLiteral("rule");
const QString positionOption = QStringLiteral("position");
const QString methodOption = QStringLiteral("method");
const QString blankPagesOption = QStringLiteral("pages-without-text");
const QString outputOption = QStringLiteral("output");
const QString createOption = QStringLiteral("create");
const QString jobsOption = QStringLiteral("jobs");
const QString timeoutOption = QStringLiteral("timeout");
const QString quietOption = QStringLiteral("quiet");
const QString verboseOption = QStringLiteral("verbose");
const QString listRulesOption = QStringLiteral("list-rules");
const QString listItemsOption = QStringLiteral("list-items");
const QString pageOption = QStringLiteral("page");
const QString settingsOption = QStringLiteral("settings");
const QString toolsOption = QStringLiteral("tools");
const QString helpOption = QStringLiteral("help");
const QString versionOption = QStringLiteral("version");

constexpr int mostJobs = 1024;
constexpr int longestTimeout = 24 * 3600;
constexpr int lastPage = 99999999;

void declareOptions(QCommandLineParser &parser)
{
    for (const QString &name :
         {ruleOption, positionOption, methodOption, blankPagesOption, outputOption, jobsOption,
          timeoutOption, listItemsOption, pageOption, settingsOption, toolsOption}) {
        parser.addOption(QCommandLineOption(name, {}, QStringLiteral("value")));
    }
    for (const QString &name :
         {createOption, quietOption, verboseOption, listRulesOption, versionOption}) {
        parser.addOption(QCommandLineOption(name));
    }
    parser.addOption(QCommandLineOption(QStringList{QStringLiteral("h"), helpOption}));
}

std::optional<int> numberWithin(const QString &text, int lowest, int highest)
{
    bool whole = false;
    const int number = text.toInt(&whole);
    if (!whole || number < lowest || number > highest) {
        return std::nullopt;
    }
    return number;
}

/// Takes the options' values into arguments and remembers the first fault.
class ValueReader
{
public:
    explicit ValueReader(const QCommandLineParser &commandLine) : parser(commandLine) {}

    QString fault() const { return faultText; }

    bool has(const QString &option) const { return parser.isSet(option); }

    QString text(const QString &option)
    {
        const QString value = parser.value(option);
        if (has(option) && value.isEmpty()) {
            complain(QStringLiteral("--") + option + QStringLiteral(" an empty value"));
        }
        return value;
    }

    int number(const QString &option, int fallback, int lowest, int highest, const QString &rule)
    {
        if (!has(option)) {
            return fallback;
        }
        const std::optional<int> value = numberWithin(parser.value(option), lowest, highest);
        if (!value) {
            complain(QStringLiteral("--") + option + QStringLiteral(" takes ") + rule);
        }
        return value.value_or(fallback);
    }

    void complain(const QString &what)
    {
        if (faultText.isEmpty()) {
            faultText = what;
        }
    }

private:
    const QCommandLineParser &parser;
    QString faultText;
};

void readBlankPages(ValueReader &values, const QString &choice, Arguments &arguments)
{
    if (!values.has(blankPagesOption)) {
        return;
    }
    if (choice == QLatin1String("join")) {
        arguments.blankPages = BlankPages::Join;
    } else if (choice == QLatin1String("separate")) {
        arguments.blankPages = BlankPages::Separate;
    } else if (choice == QLatin1String("drop")) {
        arguments.blankPages = BlankPages::Drop;
    } else if (choice == QLatin1String("fail")) {
        arguments.blankPagesFail = true;
    } else {
        values.complain(QStringLiteral("--pages-without-text takes join, separate, drop or fail"));
    }
}

void readPosition(ValueReader &values, const QString &text, Arguments &arguments)
{
    if (!values.has(positionOption)) {
        return;
    }
    arguments.position = parsePosition(text);
    if (!arguments.position) {
        values.complain(QStringLiteral("--position takes LEFT,TOP as --list-items shows them, "
                                       "for example 591,72"));
    }
}

void readMode(ValueReader &values, const QString &itemsFile, Arguments &arguments)
{
    if (values.has(listItemsOption)) {
        arguments.mode = Mode::ListItems;
        arguments.files.prepend(itemsFile);
    } else if (values.has(listRulesOption)) {
        arguments.mode = Mode::ListRules;
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

QString readValues(const QCommandLineParser &parser, Arguments &arguments)
{
    ValueReader values(parser);
    if (const QString repeated = repeatedOption(parser); !repeated.isEmpty()) {
        values.complain(QStringLiteral("--") + repeated + QStringLiteral(" is given twice"));
    }
    arguments.files = parser.positionalArguments();
    readMode(values, values.text(listItemsOption), arguments);
    arguments.rule = values.text(ruleOption);
    readPosition(values, parser.value(positionOption), arguments);
    arguments.method = values.number(methodOption, 1, 1, 3, QStringLiteral("1, 2 or 3"));
    readBlankPages(values, parser.value(blankPagesOption), arguments);
    arguments.outputFolder = values.text(outputOption);
    arguments.createOutputFolder = values.has(createOption);
    arguments.jobs = values.number(jobsOption, 0, 1, mostJobs, QStringLiteral("1 to 1024"));
    arguments.timeoutSeconds = values.number(timeoutOption, arguments.timeoutSeconds, 1,
                                             longestTimeout, QStringLiteral("1 to 86400 seconds"));
    arguments.quiet = values.has(quietOption);
    arguments.verbose = values.has(verboseOption);
    arguments.settingsFile = values.text(settingsOption);
    arguments.toolFolder = values.text(toolsOption);
    arguments.page =
        values.number(pageOption, 1, 1, lastPage, QStringLiteral("a page number, counted from 1"));
    return values.fault();
}

/// What is missing or too much once every word was read; empty when all is well.
QString findGap(const Arguments &arguments)
{
    if (arguments.mode == Mode::ListItems) {
        return arguments.files.size() == 1 ? QString()
                                           : QStringLiteral("--list-items takes one file");
    }
    if (arguments.mode == Mode::ListRules) {
        return arguments.files.isEmpty() ? QString() : QStringLiteral("--list-rules takes no file");
    }
    if (arguments.rule.isEmpty() == !arguments.position) {
        return QStringLiteral("give either --rule NAME or --position LEFT,TOP");
    }
    if (arguments.outputFolder.isEmpty()) {
        return QStringLiteral("give the output folder: --output DIR");
    }
    return arguments.files.isEmpty() ? QStringLiteral("give the files to split") : QString();
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

std::optional<QPoint> parsePosition(const QString &text)
{
    const QStringList pieces = text.split(u',');
    if (pieces.size() != 2) {
        return std::nullopt;
    }
    const std::optional<int> left = numberWithin(pieces.at(0), 0, 0x7fffffff);
    const std::optional<int> top = numberWithin(pieces.at(1), 0, 0x7fffffff);
    if (!left || !top || (*left == 0 && *top == 0)) {
        return std::nullopt;
    }
    return QPoint(*left, *top);
}

ParsedArguments parseArguments(const QStringList &words)
{
    QCommandLineParser parser;
    declareOptions(parser);
    // The parser takes the first word for the program's name.
    const bool isUnderstood = parser.parse(QStringList{QString()} + words);
    ParsedArguments parsed;
    if (parser.isSet(helpOption) || parser.isSet(versionOption)) {
        parsed.arguments.mode = parser.isSet(helpOption) ? Mode::Help : Mode::Version;
        return parsed;
    }
    parsed.error = isUnderstood ? readValues(parser, parsed.arguments) : parserFault(parser);
    if (parsed.error.isEmpty()) {
        parsed.error = findGap(parsed.arguments);
    }
    return parsed;
}

QString helpText()
{
    return QStringLiteral(
        "Splits PDF files by their content, without a window.\n"
        "\n"
        "Usage:\n"
        "  quorlin-batch --rule NAME [--method 1|2|3] --output DIR FILE...\n"
        "  quorlin-batch --position LEFT,TOP [--method 1|2|3] --output DIR FILE...\n"
        "  quorlin-batch --list-rules\n"
        "  quorlin-batch --list-items FILE [--page N]\n"
        "\n"
        "Splitting:\n"
        "  --rule NAME          split by the text at the position of this rule\n"
        "  --position LEFT,TOP  split by the text at this position instead\n"
        "  --method N           1: split where the text differs from the page before (default)\n"
        "                       2: split at every page that has text there\n"
        "                       3: as 1, then put pages of the same text together\n"
        "  --pages-without-text WHAT\n"
        "                       what to do with pages that have no text there:\n"
        "                       join: add them to the output of the page before (default)\n"
        "                       separate: put them into outputs of their own\n"
        "                       drop: leave them out of the outputs\n"
        "                       fail: do not split a file that has such a page\n"
        "                       A file without any text there fails, unless you choose join or\n"
        "                       separate here.\n"
        "  --output DIR         folder of the outputs; each input gets a folder in it\n"
        "  --create             make DIR when it does not exist\n"
        "  --jobs N             run up to N tools at the same time (default: one per processor)\n"
        "  --timeout SECONDS    end a tool that shows no progress for so long (default 600)\n"
        "  --quiet              print the results only\n"
        "  --verbose            print the log, every command among it, on the error stream\n"
        "\n"
        "Finding a rule:\n"
        "  --list-rules         print the saved rules: name, position, text\n"
        "  --list-items FILE    print the text items of a page: left, top, width, height, text\n"
        "  --page N             the page whose items are printed (default 1)\n"
        "\n"
        "Folders:\n"
        "  --settings FILE      take the rules from FILE (default: setting.ini beside this "
        "program)\n"
        "  --tools DIR          take pagexport and pagebinder from DIR (default: beside this "
        "program)\n"
        "\n"
        "  --help, --version    print this text, or the version, and stop\n"
        "\n"
        "After \"--\" every word is a file. Exit status: 0 when every file was split, 1 when one\n"
        "was not, 2 when the command line or the rule is at fault.\n");
}

} // namespace quorlin::batch
