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
};

/// Runs pagebinder with @p arguments, at most a minute.
ToolRun runBinder(const QStringList &arguments);

/// Merges @p ranges ("1-2 4") of @p input into @p output.
ToolRun merge(const QString &input, const QString &ranges, const QString &output);

/// The path of the program.
QString binderPath();
