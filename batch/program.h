#pragma once

#include <QStringList>

namespace quorlin::batch {

// Exit statuses of the program.
inline constexpr int everythingDone = 0;
inline constexpr int somethingFailed = 1;
inline constexpr int wrongUsage = 2;

/// Does what the command line @p words (without the program's name) asks for. Makes the application
/// object itself, under the name @p program.
/// @returns the exit status: one of the above, or 128 and a signal's number
int runProgram(const QStringList &words, char *program);

} // namespace quorlin::batch
