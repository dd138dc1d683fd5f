#pragma once

#include "pipeline/split_result.h"

#include <QList>
#include <QString>

namespace quorlin::batch {

/// The planned outputs as lines for a reader: number, pages, text and name in columns as wide as
/// they need to be, with a heading. Names stand behind the folder that all outputs share. Outputs
/// that are skipped are marked as such.
QString planTable(const QList<OutputResult> &outputs);

} // namespace quorlin::batch
