#pragma once

namespace tools {

/// Must be called first in main(). In a build with the address sanitizer it remembers how many
/// bytes are allocated. If exactly as many are at the end, nothing leaked, and the search for
/// leaks, which takes longer than the start of a tool, is left out. Any other build does nothing.
void noteMemoryAtStart() noexcept;

} // namespace tools
