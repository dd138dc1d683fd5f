#include "tools/pdf/memory_budget.h"

#ifdef __APPLE__
#include <malloc/malloc.h>
#else
#include <malloc.h>
#endif

#include <algorithm>
#include <atomic>
#include <cstdlib>

namespace tools {

namespace {

constexpr std::uint64_t mebibyte = std::uint64_t{1} << 20U;
constexpr std::int64_t largestPending = 256 * 1024;

std::atomic<std::int64_t> budget = INT64_MAX;
std::atomic<std::int64_t> held = 0; ///< without what threads have not told yet
thread_local std::int64_t pending = 0;

std::size_t sizeOf(void *memory)
{
#ifdef __APPLE__
    return malloc_size(memory);
#else
    return malloc_usable_size(memory);
#endif
}

void count(std::int64_t bytes)
{
    pending += bytes;
    if (pending > largestPending || pending < -largestPending) {
        held.fetch_add(pending, std::memory_order_relaxed);
        pending = 0;
    }
}

bool hasRoomFor(std::size_t size)
{
    return static_cast<std::int64_t>(size) <=
           budget.load(std::memory_order_relaxed) - held.load(std::memory_order_relaxed) - pending;
}

void *allocate(void * /*user*/, std::size_t size)
{
    void *memory = hasRoomFor(size) ? std::malloc(size) : nullptr;
    if (memory != nullptr) {
        count(static_cast<std::int64_t>(sizeOf(memory)));
    }
    return memory;
}

void release(void * /*user*/, void *memory)
{
    if (memory != nullptr) {
        count(-static_cast<std::int64_t>(sizeOf(memory)));
        std::free(memory);
    }
}

void *resize(void *user, void *memory, std::size_t size)
{
    if (memory == nullptr) {
        return allocate(user, size);
    }
    const std::size_t former = sizeOf(memory);
    if (size > former && !hasRoomFor(size - former)) {
        return nullptr;
    }
    void *resized = std::realloc(memory, size);
    if (resized != nullptr) {
        count(static_cast<std::int64_t>(sizeOf(resized)) - static_cast<std::int64_t>(former));
    }
    return resized;
}

} // namespace

std::uint64_t memoryBudgetFor(std::uint64_t inputBytes)
{
    constexpr std::uint64_t forAnyFile = 192 * mebibyte;
    constexpr std::uint64_t most = 3072 * mebibyte;
    return std::min(forAnyFile + std::min(inputBytes, most) * 8, most);
}

void setMemoryBudget(std::uint64_t bytes)
{
    budget = static_cast<std::int64_t>(std::min<std::uint64_t>(bytes, INT64_MAX));
}

std::size_t cacheBudget()
{
    constexpr std::int64_t share = 8;
    return static_cast<std::size_t>(
        std::min<std::int64_t>(budget.load() / share, FZ_STORE_DEFAULT));
}

fz_alloc_context *budgetedMemory()
{
    static fz_alloc_context memory = {nullptr, allocate, resize, release};
    return &memory;
}

} // namespace tools
