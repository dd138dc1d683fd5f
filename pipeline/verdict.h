#pragma once

#include "pipeline/split_result.h"
#include "pipeline/split_settings.h"

namespace quorlin {

/// Judges a file by what is known of it: it succeeded when every page was read, at least one has
/// text at the place or the run says what to do with such pages, and every output is there, whole
/// and as this run wrote it.
Verdict judge(const SplitFacts &facts, const SplitSettings &settings);

/// How a file's turn ended.
enum class SplitOutcome {
    Succeeded,
    Failed,
    Planned, ///< nothing was to be written
    Skipped  ///< all its outputs were there before and are left as they are
};
SplitOutcome outcomeOf(const SplitResult &result, const SplitSettings &settings);

/// Why a file with these page texts is not split at all; empty when it is. Pages that could not be
/// read are no reason: their place is known, and the outputs have a stand-in for them.
QString faultOfPages(const SplitFacts &facts, const SplitSettings &settings);

/// Looks at the disk and notes in every output what lies at its path: one that is not there, or is
/// not as long as it was written, has failed.
void inspectOutputs(QList<OutputResult> &outputs);

/// Notes which outputs are no longer those that inspectOutputs() found.
void noteReplacedOutputs(SplitFacts &facts);

/// Removes the outputs that were written, where they still lie as they were written.
void removeOutputs(QList<OutputResult> &outputs);

} // namespace quorlin
