#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace quorlin {

/// Turns the signals that ask a program to end into a call from the event loop, so that children
/// are ended and scratch files removed before the program goes. These are all that would end it at
/// once (SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGUSR1 and so on) but SIGKILL and those of a crash.
/// One object at a time.
class StopSignals
{
public:
    /// @param whenAsked is called with the signal's number
    explicit StopSignals(std::function<void(int signal)> whenAsked);

    /// Whether a signal has come in. For code that waits outside the event loop, which the call
    /// does not reach.
    static bool isAsked();

    ~StopSignals();
    StopSignals(const StopSignals &) = delete;
    StopSignals &operator=(const StopSignals &) = delete;

private:
    void readSignal();

    std::function<void(int)> notify;
    std::unique_ptr<QSocketNotifier> notifier;
    int readEnd = -1;
};

} // namespace quorlin
