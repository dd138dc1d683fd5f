#pragma once

#include <QElapsedTimer>
#include <QProcess>

#include <csignal>
#include <functional>

/// Sends @p signal to @p process while it runs, and to nobody else: the id of a process that has
/// ended is 0, which kill() takes for the caller's whole group.
/// @returns whether the signal was sent
inline bool sendSignal(const QProcess &process, int signal)
{
    const qint64 id = process.processId();
    return process.state() == QProcess::Running && id > 0 && ::kill(pid_t(id), signal) == 0;
}

/// Waits until @p condition holds or @p process has ended, looking again every millisecond, a
/// minute at most. @returns whether the condition held while the process was running
inline bool reachedWhileRunning(QProcess &process, const std::function<bool()> &condition)
{
    QElapsedTimer clock;
    clock.start();
    while (process.state() == QProcess::Running && clock.elapsed() < 60'000) {
        if (condition()) {
            return true;
        }
        process.waitForFinished(1);
    }
    return false;
}
