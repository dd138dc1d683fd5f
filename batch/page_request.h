#pragma once

#include "analysis/subtext.h"
#include "batch/item_listing.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace quorlin::batch {

class Console;

/// Asks for the text items of one page.
class PageRequest
{
public:
    /// @param toolFolder folder of pagexport
    /// @param page counted from 1
    /// @param passwords to try on the file, each ended by a line feed
    PageRequest(QString toolFolder, QString file, int page, int timeoutSeconds,
                QByteArray passwords);

    /// Waits for the answer. A page of which a part could not be read is told of on the console.
    /// @param showsMessages whether the tool's messages go to the error stream
    /// @returns the signal that asked the program to end meanwhile; 0 when there was none
    int run(Console &console, bool showsMessages);

    /// What kept the page from being read; empty when it was.
    QString fault() const { return faultText; }
    const QList<Subtext> &items() const { return gatherer.items(); }

private:
    QString toolFolder;
    QString file;
    int page;
    int timeoutSeconds;
    QByteArray passwords;
    ItemGatherer gatherer;
    QString faultText;
};

} // namespace quorlin::batch
