#pragma once

#include "export_run.h"

namespace quorlin::test {

/// Runs pagexport inside the test's own process where the tool has no sandbox, which is so under
/// the sanitizers: a start takes longer there than most exports. They find the same, but what leaks
/// is reported when all tests are over. Elsewhere it is an ExportRun.
class ExportHere : public ExportRun
{
public:
    int call(const QStringList &arguments) override;
};

} // namespace quorlin::test
