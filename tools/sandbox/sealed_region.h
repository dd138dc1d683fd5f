#pragma once

#include <cstdint>

namespace tools {

/// Where sealed text lies. The system call filter is compiled with these addresses in it, so that
/// it can tell a sealed name from any other by the pointer alone: paths have the 64 MiB from
/// sealedPaths on, names the next 64 MiB.
///
/// The place is far below the one where Linux puts mappings of its own choice, and far above a
/// program at a fixed address and its heap. The filter refuses every change of mappings up to
/// sealedTextEnd.
constexpr std::uint64_t sealedPaths = 0x20'0000'0000;
constexpr std::uint64_t sealedNames = 0x20'0400'0000;
constexpr std::uint64_t sealedTextEnd = 0x21'0000'0000;
/// The bits of a pointer that tell one kind from another.
constexpr std::uint64_t sealedTextMask = ~std::uint64_t{0x3ff'ffff};

/// Stands in the compiled filter for the process's own number, which is known when it starts.
constexpr std::uint32_t ownProcessPlaceholder = 0x51a7c0de;

} // namespace tools
