#pragma once

#include <mupdf/fitz.h>

#include <ctime>

#include <chrono>
#include <mutex>

namespace tools {

/// Watches over one worker: bounds the time of each step by the library's abort flag, and notices
/// when even that does not end it (a font or a table that the library reads without looking up).
/// The time that counts is the processor's, where the platform tells it, so that a busy machine
/// costs no page its text; the clock on the wall allows a multiple of it.
class PageWatch
{
public:
    using Duration = std::chrono::nanoseconds;
    enum class Outcome {
        inTime,
        expired,  ///< ended early, by the flag
        abandoned ///< given up; the worker must end without touching anything shared
    };

    /// Worker: starts the time of a step. @p cookie is cleared; it must live until end().
    void begin(fz_cookie &cookie, Duration limit);
    /// Worker: the step is over.
    Outcome end();
    /// The time of the step that ended or was abandoned last, as it is held against its limit.
    Duration lastUsed();
    /// Supervisor: aborts a step that is over its time.
    /// @return true when that did not help and the step is now abandoned; said once
    bool check();

private:
    /// Time a step has taken, weighed so that it can be held against its limit.
    Duration used() const noexcept;

    std::mutex m_mutex;
    fz_cookie *m_cookie = nullptr; ///< set while a step runs
    Duration m_limit{};
    Duration m_lastUsed{};
    Duration m_wallStart{};
    Duration m_processorStart{};
    clockid_t m_clock{}; ///< processor time of the worker's thread
    bool m_hasClock = false;
    bool m_expired = false;
    bool m_abandoned = false;
};

} // namespace tools
