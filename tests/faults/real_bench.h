#pragma once

#include "tests/support/window_bench.h"

#include <QMap>

namespace quorlin::test {

/// A main window with the real tools, in folders of its own, and a rule for statementPdf(). A tool
/// can be replaced by a script that comes to harm at a stage of its choice.
class RealBench : public WindowBench
{
public:
    RealBench();

    /// Puts a shell script in the place of @p tool. In it, REAL is the real program's path; what is
    /// in "$@" are its arguments.
    void replaceTool(const QString &tool, const QByteArray &script) const;
    /// Puts the real tool back.
    void restoreTool(const QString &tool) const;

    /// An input of statementPdf(); its content is remembered.
    QString addStatements(const QString &name, const QStringList &texts);
    /// Whether every input made by addStatements() still is what it was. Inputs that a test damages
    /// itself are forgotten with forget().
    bool inputsAreUntouched() const;
    void forget(const QString &path) { inputs.remove(path); }

    /// Adds files without a dialog, whose field cannot take every name, and waits for their counts.
    void list(const QStringList &files);
    /// Whether every PDF among the outputs opens, and no other file lies there.
    bool outputsAreWhole() const;

private:
    QMap<QString, QByteArray> inputs;
};

} // namespace quorlin::test
