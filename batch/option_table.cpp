#include "batch/option_table.h"

#include <array>

namespace quorlin::batch {

namespace {

constexpr int helpColumn = 23; ///< in which the help of an option begins

constexpr int inSplit = static_cast<int>(Mode::Split);
constexpr int inListRules = static_cast<int>(Mode::ListRules);
constexpr int inListItems = static_cast<int>(Mode::ListItems);
constexpr int inSaveRule = static_cast<int>(Mode::SaveRule);
constexpr int inRemoveRule = static_cast<int>(Mode::RemoveRule);
constexpr int inRenameRule = static_cast<int>(Mode::RenameRule);
constexpr int inExportRules = static_cast<int>(Mode::ExportRules);
constexpr int inImportRules = static_cast<int>(Mode::ImportRules);
constexpr int inChangeRules =
    inSaveRule | inRemoveRule | inRenameRule | inExportRules | inImportRules;
constexpr int inEverything = inSplit | inListRules | inListItems | inChangeRules;

constexpr std::array placeOptions = {
    Option{"rule", "NAME", inSplit, "split by the text at the position of this rule"},
    Option{"position", "LEFT,TOP", inSplit | inSaveRule,
           "split by the text at this position instead"},
    Option{"region", "LEFT,TOP,WIDTH,HEIGHT", inSplit,
           "split by all texts that begin in this rectangle, joined\nin reading order"},
    Option{"after", "LABEL", inSplit,
           "split by the text after these words on the same line\n"
           "or, if the line ends there, by the text below them"},
    Option{"tolerance", "UNITS", inSplit,
           "take the nearest text whose left and top are at most\n"
           "UNITS from --rule or --position (default 0)"},
    Option{"match", "REGEX", inSplit,
           "use only part of the text: what the first group\n"
           "matches or, without a group, the whole match"},
};

constexpr std::array splitOptions = {
    Option{"method", "N", inSplit,
           "1: split where the text differs from the page before (default)\n"
           "2: split at every page that has text there\n"
           "3: as 1, then put pages with the same text together"},
    Option{"pages-without-text", "WHAT", inSplit,
           "what to do with pages that have no text there:\n"
           "join: add them to the output of the page before (default)\n"
           "separate: put them into outputs of their own\n"
           "drop: leave them out of the outputs\n"
           "fail: do not split a file that has such a page\n"
           "A file without any text there fails, unless you choose join or\n"
           "separate."},
    Option{"dry-run", nullptr, inSplit, "print the plan of the outputs without writing them"},
};

constexpr std::array inputOptions = {
    Option{"files-from", "FILE", inSplit,
           "also split the files listed in FILE, one a line;\n"
           "\"-\" reads the list from standard input"},
    Option{"null", nullptr, inSplit, "names in that list end with a NUL, as from find -print0"},
    Option{"password-file", "FILE", inSplit | inListItems | inSaveRule,
           "try the lines of FILE as passwords of encrypted files"},
};

constexpr std::array outputOptions = {
    Option{"output", "DIR", inSplit, "folder of the outputs; each input gets a folder in it"},
    Option{"create", nullptr, inSplit, "create DIR if it does not exist"},
    Option{"flat", nullptr, inSplit, "write all outputs directly into DIR"},
    Option{"name", "PATTERN", inSplit,
           "name the outputs by PATTERN, not as the window does:\n"
           "text with {number}, {text}, {base}, {pages}, {first},\n"
           "{last} (page) and {count} (of pages); {number:04} adds\n"
           "leading zeros"},
    Option{"existing", "WHAT", inSplit,
           "what to do with outputs that already exist:\n"
           "replace: replace them (default)\n"
           "skip: keep them\n"
           "fail: do not split a file that has such an output"},
    Option{"report", "FILE", inSplit,
           "write what became of every input and output to FILE, as\n"
           "JSON (.json) or CSV (.csv); \"-\" writes JSON to standard\n"
           "output, and nothing else is printed there"},
};

constexpr std::array runOptions = {
    Option{"jobs", "N", inSplit,
           "split up to N files at the same time, a long one with up to N\n"
           "threads or processes (default: one per processor)"},
    Option{"timeout", "SECONDS", inSplit | inListItems | inSaveRule,
           "end a tool that makes no progress for so long (default 600)"},
    Option{"quiet", nullptr, inEverything, "print only the results"},
    Option{"verbose", nullptr, inEverything,
           "print the log and the tools' messages on the error stream"},
};

constexpr std::array findOptions = {
    Option{"list-rules", nullptr, inListRules, "print the saved rules: name, position, text"},
    Option{"list-items", "FILE", inListItems,
           "print the text items of a page: left, top, width, height, text"},
    Option{"page", "N", inListItems | inSaveRule, "the page with the items (default 1)"},
    Option{"json", nullptr, inListRules | inListItems, "print the list as JSON"},
};

constexpr std::array ruleOptions = {
    Option{"save-rule", "NAME", inSaveRule,
           "save a rule at --position, or at the position of the\n"
           "item that --from and --text name"},
    Option{"from", "FILE", inSaveRule, "the file with the item; --page names the page"},
    Option{"text", "TEXT", inSaveRule, "the text of the item"},
    Option{"remove-rule", "NAME", inRemoveRule, "remove a saved rule"},
    Option{"rename-rule", "OLD NEW", inRenameRule, "give a saved rule another name"},
    Option{"export-rules", "FILE", inExportRules, "write the saved rules to a settings file"},
    Option{"import-rules", "FILE", inImportRules,
           "add the rules of a settings file to the saved ones"},
};

constexpr std::array folderOptions = {
    Option{"settings", "FILE", inSplit | inListRules | inChangeRules,
           "take the rules from FILE (default: setting.ini beside this program\n"
           "or, if there is none, /etc/quorlin/setting.ini)"},
    Option{"tools", "DIR", inSplit | inListItems | inSaveRule,
           "take pagexport and pagebinder from DIR (default: beside this program)"},
};

constexpr std::array otherOptions = {
    Option{"help", nullptr, inEverything, "print this text and end"},
    Option{"version", nullptr, inEverything, "print the version and end"},
};

constexpr std::array groups = {
    OptionGroup{"Where the text stands (one of the first four)", placeOptions},
    OptionGroup{"Splitting", splitOptions},
    OptionGroup{"Inputs", inputOptions},
    OptionGroup{"Outputs", outputOptions},
    OptionGroup{"The run", runOptions},
    OptionGroup{"Finding a place", findOptions},
    OptionGroup{"Saving rules", ruleOptions},
    OptionGroup{"Folders", folderOptions},
    OptionGroup{"Others", otherOptions},
};

constexpr char usage[] =
    "Splits PDF files by their content, without a window.\n"
    "\n"
    "Usage:\n"
    "  quorlin-batch --rule NAME [--method 1|2|3] --output DIR FILE...\n"
    "  quorlin-batch --position LEFT,TOP [--method 1|2|3] --output DIR FILE...\n"
    "  quorlin-batch --list-rules\n"
    "  quorlin-batch --list-items FILE [--page N]\n"
    "  quorlin-batch --save-rule NAME --position LEFT,TOP\n";

constexpr char examples[] =
    "\n"
    "Examples:\n"
    "  quorlin-batch --rule \"Customer number\" --create --output out in/*.pdf\n"
    "  quorlin-batch --after \"Customer number\" --dry-run --output out statements.pdf\n"
    "  quorlin-batch --region 560,140,200,40 --match '\\d{2}-\\d{5}' --output out statements.pdf\n"
    "  quorlin-batch --rule Account --flat --name '{text} {number:04}' --output out in/*.pdf\n"
    "  find in -name '*.pdf' -print0 | quorlin-batch --rule Account --existing skip \\\n"
    "      --report out/report.csv --output out --files-from - --null\n"
    "  quorlin-batch --save-rule Account --from statements.pdf --text 10-44710\n"
    "\n"
    "All arguments after \"--\" are files. Exit status: 0 if every file was split, 1 if one was\n"
    "not, 2 if the command line or the rule is wrong.\n";

QString optionHelp(const Option &option)
{
    QString head = QStringLiteral("  --") + QLatin1String(option.name);
    if (option.value != nullptr) {
        head += u' ' + QLatin1String(option.value);
    }
    const QString indent = QString(helpColumn, u' ');
    const QString lines = QString::fromUtf8(option.help).replace(u'\n', u'\n' + indent) + u'\n';
    return head.size() + 1 < helpColumn ? head.leftJustified(helpColumn) + lines
                                        : head + u'\n' + indent + lines;
}

} // namespace

std::span<const OptionGroup> optionGroups()
{
    return groups;
}

QString modeText(Mode mode)
{
    for (const OptionGroup &group : groups) {
        for (const Option &option : group.options) {
            // The option that asks for a mode is the first one that goes with it alone.
            if (mode != Mode::Split && option.modes == static_cast<int>(mode)) {
                return QStringLiteral("--") + QLatin1String(option.name);
            }
        }
    }
    return QStringLiteral("a split");
}

QString helpText()
{
    QString text = QLatin1String(usage);
    for (const OptionGroup &group : groups) {
        text += u'\n' + QLatin1String(group.heading) + QStringLiteral(":\n");
        for (const Option &option : group.options) {
            text += optionHelp(option);
        }
    }
    return text + QLatin1String(examples);
}

} // namespace quorlin::batch
