#pragma once

#include <string>

namespace tools {

/// Refuses every system call from now on but those that tools/sandbox/make_filter.cpp lists for
/// this kind of work. Needs "no new privileges".
/// @returns empty when the filter is in force, otherwise why not
std::string filterSystemCalls(bool hasNewFiles, bool hasThreads);

} // namespace tools
