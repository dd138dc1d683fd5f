#include "batch/arguments.h"

#include <array>
#include <functional>
#include <utility>

namespace quorlin::batch {

namespace {

/// Takes the value of an option; gives the fault in it, or an empty text.
using Handler = QString (*)(Arguments &, const QString &);

struct Option
{
    const char *name;
    bool takesValue;
    Handler apply;
};

std::optional<int> numberWithin(const QString &text, int lowest, int highest)
{
    bool whole = false;
    const int number = text.toInt(&whole);
    if (!whole || number < lowest || number > highest) {
        return std::nullopt;
    }
    return number;
}

QString takeMethod(Arguments &arguments, const QString &value)
{
    const std::optional<int> method = numberWithin(value, 1, 3);
    arguments.method = method.value_or(1);
    return method ? QString() : QStringLiteral("--method takes 1, 2 or 3");
}

QString takePosition(Arguments &arguments, const QString &value)
{
    arguments.position = parsePosition(value);
    return arguments.position ? QString()
                              : QStringLiteral("--position takes LEFT,TOP as --list-items shows "
                                               "them, for example 591,72");
}

QString takeTimeout(Arguments &arguments, const QString &value)
{
    const std::optional<int> seconds = numberWithin(value, 1, 24 * 3600);
    arguments.timeoutSeconds = seconds.value_or(0);
    return seconds ? QString() : QStringLiteral("--timeout takes 1 to 86400 seconds");
}

QString takePage(Arguments &arguments, const QString &value)
{
    const std::optional<int> page = numberWithin(value, 1, 99999999);
    arguments.page = page.value_or(1);
    return page ? QString() : QStringLiteral("--page takes a page number, counted from 1");
}

template <Mode mode> QString takeMode(Arguments &arguments, const QString &)
{
    arguments.mode = mode;
    return {};
}

template <bool Arguments::*flag> QString takeFlag(Arguments &arguments, const QString &)
{
    arguments.*flag = true;
    return {};
}

template <QString Arguments::*text> QString takeText(Arguments &arguments, const QString &value)
{
    arguments.*text = value;
    return value.isEmpty() ? QStringLiteral("an empty value") : QString();
}

QString takeItemsFile(Arguments &arguments, const QString &value)
{
    arguments.files.append(value);
    return takeMode<Mode::ListItems>(arguments, value);
}

constexpr std::array options = {
    Option{"--rule", true, takeText<&Arguments::rule>},
    Option{"--position", true, takePosition},
    Option{"--method", true, takeMethod},
    Option{"--output", true, takeText<&Arguments::outputFolder>},
    Option{"--create", false, takeFlag<&Arguments::createOutputFolder>},
    Option{"--quiet", false, takeFlag<&Arguments::quiet>},
    Option{"--verbose", false, takeFlag<&Arguments::verbose>},
    Option{"--timeout", true, takeTimeout},
    Option{"--settings", true, takeText<&Arguments::settingsFile>},
    Option{"--tools", true, takeText<&Arguments::toolFolder>},
    Option{"--list-rules", false, takeMode<Mode::ListRules>},
    Option{"--list-items", true, takeItemsFile},
    Option{"--page", true, takePage},
    Option{"--help", false, takeMode<Mode::Help>},
    Option{"-h", false, takeMode<Mode::Help>},
    Option{"--version", false, takeMode<Mode::Version>},
};

const Option *findOption(const QString &name)
{
    for (const Option &option : options) {
        if (name == QLatin1String(option.name)) {
            return &option;
        }
    }
    return nullptr;
}

/// Reads the option at @p index of @p words and moves @p index to the last word it took.
QString readOption(Arguments &arguments, const QStringList &words, qsizetype &index)
{
    const QString &word = words.at(index);
    const qsizetype equals = word.startsWith(QLatin1String("--")) ? word.indexOf(u'=') : -1;
    const QString name = equals < 0 ? word : word.left(equals);
    const Option *option = findOption(name);
    if (option == nullptr) {
        return QStringLiteral("unknown option ") + name;
    }
    if (!option->takesValue) {
        return equals < 0 ? option->apply(arguments, {}) : name + QStringLiteral(" takes no value");
    }
    if (equals < 0 && ++index >= words.size()) {
        return name + QStringLiteral(" needs a value");
    }
    const QString value = equals < 0 ? words.at(index) : word.mid(equals + 1);
    const QString fault = option->apply(arguments, value);
    return fault.isEmpty() || fault.startsWith(QLatin1String("--")) ? fault : name + u' ' + fault;
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
    if (arguments.mode != Mode::Split) {
        return {};
    }
    if (arguments.rule.isEmpty() == !arguments.position) {
        return QStringLiteral("give either --rule NAME or --position LEFT,TOP");
    }
    if (arguments.outputFolder.isEmpty()) {
        return QStringLiteral("give the output folder: --output DIR");
    }
    return arguments.files.isEmpty() ? QStringLiteral("give the files to split") : QString();
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
    ParsedArguments parsed;
    bool onlyFiles = false;
    for (qsizetype index = 0; index < words.size(); ++index) {
        const QString &word = words.at(index);
        if (onlyFiles || !word.startsWith(u'-') || word == QLatin1String("-")) {
            parsed.arguments.files.append(word);
        } else if (word == QLatin1String("--")) {
            onlyFiles = true;
        } else if (const QString fault = readOption(parsed.arguments, words, index);
                   !fault.isEmpty()) {
            parsed.error = fault;
            return parsed;
        } else if (parsed.arguments.mode == Mode::Help || parsed.arguments.mode == Mode::Version) {
            return parsed;
        }
    }
    parsed.error = findGap(parsed.arguments);
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
        "  --output DIR         folder of the outputs; each input gets a folder in it\n"
        "  --create             make DIR when it does not exist\n"
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
