#pragma once

#include "analysis/subtext.h"

#include <QList>
#include <QString>

namespace quorlin::batch {

/// The items of one page, or what kept them from being read.
struct PageItems
{
    QList<Subtext> items;
    QString fault;
    /// The signal that asked the program to end meanwhile; 0 when there was none.
    int stopSignal = 0;
};

/// Exports page @p page (counted from 1) of @p file and reads its text items. The private folders
/// must have been entered. The tool's complaints go to the error stream.
PageItems readPageItems(const QString &file, int page, int timeoutSeconds);

} // namespace quorlin::batch
