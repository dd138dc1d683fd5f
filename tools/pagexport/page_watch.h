#pragma once

#include <mupdf/fitz.h>

#include <chrono>
#include <mutex>

namespace tools {

/// Watches over one worker: bounds the time of each step by the library's abort flag, and notices
/// when even that does not end it (a font or a table that the library reads without looking up).
class PageWatch
{
public:
    using Clock = std::chrono::steady_clock;
    enum class Outcome {
        inTime,
        expired,  ///< ended early, by the flag
        abandoned ///< given up; the worker must end without touching anything shared
    };

    /// Worker: starts the time of a step. @p cookie is cleared; it must live until end().
    void begin(fz_cookie &cookie, Clock::duration limit);
    /// Worker: the step is over.
    Outcome end();
    /// Supervisor: aborts a step that is over its time.
    /// @return true when that did not help and the step is now abandoned; said once
    bool check(Clock::time_point now);

private:
    std::mutex m_mutex;
    fz_cookie *m_cookie = nullptr; ///< set while a step runs
    Clock::time_point m_deadline;
    bool m_expired = false;
    bool m_abandoned = false;
};

} // namespace tools
