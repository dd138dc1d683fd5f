#pragma once

#include <QEventLoop>
#include <QTimer>

#include <functional>

namespace quorlin::test {

/// Serves events until @p holds, for @p milliseconds at most.
///
/// QTest::qWaitFor() sleeps after every round of events. A run is a chain of short processes, so
/// those sleeps would take longer than its work; this one wakes up for every event.
/// @returns whether @p holds
inline bool waitUntil(const std::function<bool()> &holds, int milliseconds)
{
    constexpr int period = 5; // milliseconds
    QEventLoop loop;
    QTimer looks;
    QObject::connect(&looks, &QTimer::timeout, &loop, [&] {
        if (holds()) {
            loop.quit();
        }
    });
    looks.start(period);
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    if (!holds()) {
        loop.exec();
    }
    return holds();
}

} // namespace quorlin::test
