#pragma once

#include "analysis/grouping.h"
#include "pipeline/existing_outputs.h"
#include "pipeline/name_pattern.h"
#include "pipeline/text_place.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace quorlin {

/// What the files of a run have in common.
struct SplitSettings
{
    /// Folder of pagexport and pagebinder.
    QString toolFolder;
    QString outputFolder;
    /// Where the text stands that the files are split by.
    TextPlace place;
    /// Index of the method, 0 to 2.
    int method = 0;
    /// What becomes of pages without text. A file none of whose pages has text fails where the run
    /// does not say; otherwise they join the group before them then.
    std::optional<BlankPages> blankPages;
    /// Whether a page without text fails its file.
    bool blankPagesFail = false;
    /// How outputs are named; an empty pattern gives them the window's names.
    NamePattern names;
    /// Whether all outputs go into the output folder itself, none into a folder of its input.
    bool flat = false;
    ExistingOutputs existing = ExistingOutputs::Replace;
    /// Whether nothing is written.
    bool dryRun = false;
    /// Passwords to try on encrypted files, each ended by a line feed.
    QByteArray passwords;
    /// Seconds without progress after which a tool counts as hung.
    int timeoutSeconds = 600;
};

} // namespace quorlin
