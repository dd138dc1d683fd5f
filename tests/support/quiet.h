#pragma once

#include "tests/support/waiting.h"

#include <QCoreApplication>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
#include <QUrl>

#include <cerrno>
#include <functional>

#include <sys/wait.h>

/// Lets every event, every page read and every timer without a delay that is under way come to its
/// end: they are served in order, so what begins now ends after them.
/// @returns whether they did within five seconds
inline bool settled()
{
    QNetworkAccessManager manager;
    const QUrl file = QUrl::fromLocalFile(QCoreApplication::applicationFilePath());
    QNetworkReply *reply = manager.get(QNetworkRequest(file));
    bool turned = false;
    QObject::connect(reply, &QNetworkReply::finished, reply, [&turned, reply] {
        QTimer::singleShot(0, reply, [&turned] { turned = true; });
    });
    return quorlin::test::waitUntil([&turned] { return turned; }, 5000);
}

/// Whether a process that this one has started still runs, or has ended and nobody has noticed.
inline bool hasChildProcesses()
{
    int options = WEXITED | WNOHANG | WNOWAIT;
#ifdef __WALL
    options |= __WALL; // children that end without a signal
#endif
    siginfo_t information = {};
    return ::waitid(P_ALL, 0, &information, options) == 0 || errno != ECHILD;
}

/// Whether nothing goes on any more: no tool runs, none of their ends is still to be dealt with,
/// and
/// @p progress, which counts what has been done so far, stands still. Steps that only follow one
/// another in the event loop are seen by the last.
inline bool isQuiet(const std::function<qsizetype()> &progress = [] { return qsizetype(0); })
{
    const qsizetype before = progress();
    return !hasChildProcesses() && settled() && settled() && !hasChildProcesses() &&
           progress() == before;
}
