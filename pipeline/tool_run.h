#pragma once

#include "pipeline/password_pipe.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <functional>

namespace quorlin {

/// A command of one of the tools.
struct ToolCommand
{
    QString program; ///< absolute path
    QStringList arguments;
    /// Value of inputIdentityVariable; empty leaves the variable out.
    QByteArray inputIdentity;
    /// Passwords to try on the input, each ended by a line feed. They reach the tool through a
    /// pipe, so that nobody else can see them.
    QByteArray passwords;
    /// Gives the tool's standard input piece by piece, an empty piece at its end. Without it the
    /// tool has none.
    std::function<QByteArray()> nextInput;
};

/// How a tool's run ended.
struct ToolEnd
{
    enum class Kind {
        Exited,     ///< with the status below
        Crashed,    ///< by a signal
        NotStarted, ///< it is missing or cannot be run
        Stalled,    ///< it was ended because it made no progress
        Cancelled   ///< it was ended because it was no longer wanted
    };
    Kind kind = Kind::Exited;
    int status = 0;
    /// What it wrote on its error stream, a line each, the first hundred.
    QStringList messages;

    bool succeeded() const { return kind == Kind::Exited && status == 0; }
};

/// What @p end says of the run of @p tool on @p input: the reason in its last message that is more
/// than a warning, or else how it ended.
QString reasonOf(const ToolEnd &end, const QString &tool, const QString &input);

/// The reason in a tool's message "TOOL: FILE: REASON"; the whole message when it is built
/// otherwise.
QString messageReason(const QString &message, const QString &file);

/// One run of a tool. Nothing waits for it: signals tell what it writes and that it has ended.
/// Everything that it writes on its standard output counts as progress.
class ToolRun : public QObject
{
    Q_OBJECT

public:
    /// @param timeoutSeconds how long the tool may show no progress
    ToolRun(ToolCommand command, int timeoutSeconds, QObject *parent);
    ~ToolRun() override;

    void start();
    /// Asks the tool to end, so that it can take its unfinished output away, and kills it when it
    /// has not done so after two seconds. ended() still comes.
    void cancel();
    /// Whether the tool had to be killed, so that it may have left an unfinished output.
    bool wasKilled() const { return killed; }

signals:
    /// The tool wrote @p bytes to its standard output.
    void wrote(const QByteArray &bytes);
    /// The tool wrote whole lines @p text to its error stream.
    void said(const QByteArray &text);
    /// Comes once, after everything else.
    void ended(const quorlin::ToolEnd &end);

private:
    void feed();
    bool preparePasswords();
    void hear();
    void readOutput();
    void noteMessages(const QByteArray &lines);
    void watch();
    void endProcess(ToolEnd::Kind why);
    void finish(ToolEnd::Kind kind, int status);

    ToolCommand command;
    int timeoutMilliseconds;
    QProcess process;
    PasswordPipe passwordPipe;
    QTimer stallTimer;
    QTimer killTimer;
    QElapsedTimer sinceProgress;
    QByteArray unfinishedLine;
    QStringList messages;
    ToolEnd::Kind endReason = ToolEnd::Kind::Exited;
    bool killed = false;
    bool done = false;
};

} // namespace quorlin
