#include "tools/common/sanitized_run.h"

#include "tools/common/sanitizers.h"

#if TOOLS_ADDRESS_SANITIZED

#include <cstddef>

extern "C" {

// The sanitizers' own interface; not every compiler brings its header.
std::size_t __sanitizer_get_current_allocated_bytes();
int __lsan_is_turned_off();
const char *__asan_default_options();

} // extern "C"

namespace {

std::size_t bytesAtStart = 0;

} // namespace

// Asked when the search for leaks is about to begin, after all destructors.
extern "C" int __lsan_is_turned_off()
{
    return __sanitizer_get_current_allocated_bytes() == bytesAtStart;
}

// Undefined behaviour ends a tool by an illegal instruction (cmake/QuorlinSettings.cmake); this
// names its place.
extern "C" const char *__asan_default_options()
{
    return "handle_sigill=1";
}

namespace tools {

void noteMemoryAtStart() noexcept
{
    bytesAtStart = __sanitizer_get_current_allocated_bytes();
}

} // namespace tools

#else

namespace tools {

void noteMemoryAtStart() noexcept {}

} // namespace tools

#endif
