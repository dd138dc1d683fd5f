#include "tools/pagexport/pages/time_budget.h"

#include <algorithm>

namespace tools {

namespace {

using namespace std::chrono_literals;

constexpr TimeBudget::Duration usual = 20ms; // far more than nearly all pages take
constexpr TimeBudget::Duration forAnyFile = 1750ms;
constexpr TimeBudget::Duration openingAnyFile = 3s;
constexpr TimeBudget::Duration longestText = 5s;
constexpr TimeBudget::Duration longestPicture = 10s;
constexpr TimeBudget::Duration little = 50ms; // for a page, once the store is used up
constexpr TimeBudget::Duration least = 5ms;   // and after that has been taken for a while
constexpr TimeBudget::Duration mostByLittle = 500ms;
constexpr TimeBudget::Duration mostByLeast = 1500ms;
constexpr std::uint64_t mebibyte = std::uint64_t{1} << 20U;
constexpr std::uint64_t mostMebibytes = 3600;

/// A second for each mebibyte.
TimeBudget::Duration forSize(std::uint64_t bytes)
{
    return std::chrono::seconds(std::min(bytes / mebibyte, mostMebibytes));
}

} // namespace

TimeBudget::TimeBudget(std::uint64_t inputBytes)
    : m_opening(openingAnyFile + forSize(inputBytes) / 2), m_left(forAnyFile + forSize(inputBytes))
{
}

void TimeBudget::shareAmong(std::size_t readers)
{
    const std::lock_guard lock(m_mutex);
    m_readers = std::max<std::size_t>(1, readers);
}

TimeBudget::Duration TimeBudget::forStep(Duration longest) const
{
    const std::lock_guard lock(m_mutex);
    if (m_left > -mostByLittle) {
        return std::clamp(m_left / static_cast<std::int64_t>(m_readers), little, longest);
    }
    return m_left > -mostByLittle - mostByLeast ? least : Duration::zero();
}

TimeBudget::Duration TimeBudget::forText() const
{
    return forStep(longestText);
}

TimeBudget::Duration TimeBudget::forPicture() const
{
    return forStep(longestPicture);
}

TimeBudget::Duration TimeBudget::tick() const
{
    return std::clamp(forText() / 2, least / 2, little);
}

void TimeBudget::charge(Duration used, bool isGivenUp)
{
    const std::lock_guard lock(m_mutex);
    m_left -= isGivenUp ? used : std::max(used - usual, Duration::zero());
}

} // namespace tools
