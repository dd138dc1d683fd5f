#pragma once

#include <mupdf/fitz.h>

#include <cstddef>
#include <cstdint>

namespace tools {

/// Bytes that the PDF library may hold at once for an input of @p inputBytes: enough for everything
/// that a file of this size can need in earnest, so that a small file cannot fill the memory.
std::uint64_t memoryBudgetFor(std::uint64_t inputBytes);

/// Bounds what all contexts of this process may hold together from now on; without a bound until
/// then. What exceeds it fails as if the memory were used up, and the library gives up its caches
/// first and the object or page next.
void setMemoryBudget(std::uint64_t bytes);

/// The bytes that a context may spend on its caches.
std::size_t cacheBudget();

/// The allocator for the library's contexts that keeps to the budget. It may be used by several
/// threads.
fz_alloc_context *budgetedMemory();

} // namespace tools
