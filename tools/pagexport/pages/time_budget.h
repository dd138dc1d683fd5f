#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <mutex>

namespace tools {

/// Shares out the processor time that an input of its size deserves. Pages that take the usual few
/// milliseconds cost nothing, so that a long document is never cut short; slow ones draw on a
/// common store, and when that is used up they get little, and at last nothing.
class TimeBudget
{
public:
    using Duration = std::chrono::nanoseconds;

    explicit TimeBudget(std::uint64_t inputBytes);

    /// So many pages are read at the same time; each gets its part of what is left.
    void shareAmong(std::size_t readers);

    Duration forOpening() const { return m_opening; }
    /// For the next page's text; zero when none is left.
    Duration forText() const;
    /// For the next page's picture.
    Duration forPicture() const;
    /// How often steps need to be held against their time.
    Duration tick() const;
    /// What a page's text or picture has taken. What was given up counts in full.
    void charge(Duration used, bool isGivenUp);

private:
    Duration forStep(Duration longest) const;

    Duration m_opening;
    mutable std::mutex m_mutex;
    std::size_t m_readers = 1;
    Duration m_left; ///< below zero as far as pages had little each
};

} // namespace tools
