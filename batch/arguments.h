#pragma once

#include "analysis/grouping.h"

#include <QPoint>
#include <QString>
#include <QStringList>

#include <optional>

namespace quorlin::batch {

/// What the command line asks for.
enum class Mode { Split, ListRules, ListItems, Help, Version };

/// The command line, read. Paths stand as the caller typed them.
struct Arguments
{
    Mode mode = Mode::Split;
    /// Name of the rule to split by; empty when a position is given instead.
    QString rule;
    /// Left and top of the items to split by, in page export units.
    std::optional<QPoint> position;
    /// Split method as users count it: 1, 2 or 3.
    int method = 1;
    /// What becomes of pages without text, where the caller says so.
    std::optional<BlankPages> blankPages;
    /// Whether a page without text fails its file.
    bool blankPagesFail = false;
    QString outputFolder;
    /// Whether a missing output folder is made.
    bool createOutputFolder = false;
    /// How many tools run at the same time; 0 for as many as there are processors.
    int jobs = 0;
    /// Whether the progress lines are left out.
    bool quiet = false;
    /// Whether the log's messages, every tool command among them, go to the error stream.
    bool verbose = false;
    /// Seconds without any progress after which a tool counts as hung.
    int timeoutSeconds = 600;
    /// Settings file that holds the rules; empty for the one beside the executable.
    QString settingsFile;
    /// Folder of the two tools; empty for the executable's own.
    QString toolFolder;
    /// Page whose items are listed, counted from 1.
    int page = 1;
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

/// The position written as "LEFT,TOP": two whole numbers, not negative and not both 0 (which would
/// match lines that are no items). Nothing when @p text is anything else.
std::optional<QPoint> parsePosition(const QString &text);

/// The text of "--help".
QString helpText();

} // namespace quorlin::batch
