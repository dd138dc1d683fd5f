#pragma once

#include "analysis/grouping.h"
#include "batch/option_table.h"
#include "pipeline/existing_outputs.h"
#include "pipeline/name_pattern.h"

#include <QPoint>
#include <QRect>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <optional>

namespace quorlin::batch {

/// The command line, read. Paths stand as the caller typed them. In the order of the help.
struct Arguments // NOLINT(clang-analyzer-optin.performance.Padding): there is one
{
    Mode mode = Mode::Split;

    /// Name of the rule to split by; empty when another place is given.
    QString rule;
    /// Left and top of the items to split by, or of the rule to save, in page export units.
    std::optional<QPoint> position;
    /// The rectangle with the texts to split by, in page export units.
    std::optional<QRect> region;
    /// The words before the text to split by; empty when another place is given.
    QString label;
    /// How far left and top of the rule or position may be off.
    int tolerance = 0;
    /// What of the text counts; an empty pattern takes all of it.
    QRegularExpression match;

    /// Split method as users count it: 1, 2 or 3.
    int method = 1;
    /// What becomes of pages without text, where the caller says so.
    std::optional<BlankPages> blankPages;
    /// Whether a page without text fails its file.
    bool blankPagesFail = false;
    /// Whether nothing is written but the plan.
    bool dryRun = false;

    QString outputFolder;
    /// Whether a missing output folder is made.
    bool createOutputFolder = false;
    /// Whether all outputs go into the output folder itself.
    bool flat = false;
    /// How outputs are named; empty for the window's names.
    NamePattern names;
    ExistingOutputs existing = ExistingOutputs::Replace;
    /// File of the report, "-" for standard output; empty for none.
    QString report;

    /// How many files are split at the same time; 0 for as many as there are processors.
    int jobs = 0;
    /// Whether the progress lines are left out.
    bool quiet = false;
    /// Whether the log's messages, every tool command among them, and the tools' own messages go to
    /// the error stream.
    bool verbose = false;
    /// Seconds without any progress after which a tool counts as hung.
    int timeoutSeconds = 600;

    /// Settings file that holds the rules; empty for the one beside the executable.
    QString settingsFile;
    /// Folder of the two tools; empty for the executable's own.
    QString toolFolder;
    /// File of the passwords; empty for none.
    QString passwordFile;
    /// File with the names of further inputs, "-" for standard input; empty for none.
    QString fileList;
    /// Whether the names in it end with a NUL instead of a line feed.
    bool fileListHasNul = false;

    /// Page whose items are listed or looked at, counted from 1.
    int page = 1;
    /// Whether a list is printed as JSON.
    bool json = false;
    /// The rule to save, remove or rename.
    QString ruleName;
    /// The text of the item that a rule is made from.
    QString itemText;
    /// The files to split, or the one that the mode works on.
    QStringList files;
};

/// Arguments, or one line that says what is wrong with them.
struct ParsedArguments
{
    Arguments arguments;
    QString error;
};

/// Reads the command line @p words (without the program's name). Options may stand anywhere, as
/// "--name VALUE" or "--name=VALUE"; after "--" every word is a file.
ParsedArguments parseArguments(const QStringList &words);

} // namespace quorlin::batch
