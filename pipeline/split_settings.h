#pragma once

#include "analysis/grouping.h"

#include <QPoint>
#include <QString>

#include <optional>

namespace quorlin {

/// What the files of a run have in common.
struct SplitSettings
{
    /// Folder of pagexport and pagebinder.
    QString toolFolder;
    QString outputFolder;
    /// Left and top of the items to split by, in page export units.
    QPoint position;
    /// Index of the method, 0 to 2.
    int method = 0;
    /// What becomes of pages without text. A file none of whose pages has text fails where the run
    /// does not say; otherwise they join the group before them then.
    std::optional<BlankPages> blankPages;
    /// Whether a page without text fails its file.
    bool blankPagesFail = false;
    /// Seconds without progress after which a tool counts as hung.
    int timeoutSeconds = 600;
};

} // namespace quorlin
