#pragma once

#include <cstdint>

namespace tools {

/// What one run of a tool may use at most; a hostile file then ends the tool, never the machine.
struct ResourceLimits
{
    std::uint64_t addressSpaceBytes = 0; ///< 0: unlimited
    std::uint64_t cpuSeconds = 0;        ///< 0: unlimited
    std::uint64_t fileBytes = 0;         ///< largest file that may be written; 0: unlimited
};

/// Sets the limits for this process, and forbids core files. Limits that are already lower stay.
/// Under a sanitizer the address space is left alone, because its shadow memory needs terabytes.
void applyResourceLimits(const ResourceLimits &limits);

} // namespace tools
