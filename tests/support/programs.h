#pragma once

#include <QString>

namespace quorlin::test {

/// Folder of the tools and the runner for tests that look at something else. Sanitized tools take
/// eight times as long to start as released ones, and the tests of the tools run those; so ./test
/// names the folder of the release build here, and any other run takes its own build's.
inline QString startedPrograms()
{
    return qEnvironmentVariable("QUORLIN_TEST_PROGRAMS", QStringLiteral(QUORLIN_BIN_DIR));
}

} // namespace quorlin::test
