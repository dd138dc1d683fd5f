#pragma once

#include <QList>
#include <QPointer>
#include <QProcess>

namespace quorlin {

/// The child processes of one window. Each is released once it has ended; those that still run when
/// the window goes away are ended with it.
class ToolProcesses
{
public:
    ToolProcesses() = default;
    ~ToolProcesses();
    ToolProcesses(const ToolProcesses &) = delete;
    ToolProcesses &operator=(const ToolProcesses &) = delete;

    /// A new process, not started. Its standard error is ours; its standard output is dropped, so
    /// that a talkative tool never waits for a reader.
    QProcess *create();

    /// Ends every process, none of which reports any more. A tool is asked first, so that it can
    /// take its unfinished output away, and killed after a second.
    void endAll();

private:
    QList<QPointer<QProcess>> processes;
};

} // namespace quorlin
