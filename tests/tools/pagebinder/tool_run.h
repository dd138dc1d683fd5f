#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// How a run of the tool ended.
struct ToolRun
{
    int status = -1; ///< -1: crashed, hung or did not start
    QByteArray output;
    QByteArray errors;

    /// Whether it ended with an output, with stand-ins for unreadable pages perhaps.
    bool hasWritten() const { return status == 0 || status == 3; }
};

/// Runs pagebinder with @p arguments, at most a minute.
/// @param input what it reads from standard input
/// @param identity the value of QUORLIN_INPUT_IDENTITY, which is not set when this is null
ToolRun runBinder(const QStringList &arguments, const QByteArray &input = {},
                  const QString &identity = {});

/// Merges @p ranges ("1-2 4") of @p input into @p output.
ToolRun merge(const QString &input, const QString &ranges, const QString &output);

/// The pages of @p ranges, one by one.
QList<int> pagesOf(const QString &ranges);

/// The path of the program.
QString binderPath();
