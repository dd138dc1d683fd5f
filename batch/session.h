#pragma once

#include "batch/arguments.h"
#include "batch/console.h"

#include <QByteArray>
#include <QString>

namespace quorlin::batch {

/// What every mode of the program needs: the arguments, the folders and the console.
struct Session
{
    explicit Session(const Arguments &read);

    /// Complains and gives the exit status back.
    int complain(const QString &line, int status);

    /// The path of the settings file.
    QString settings() const;
    /// Whether the caller named it.
    bool hasNamedSettings() const { return !arguments.settingsFile.isEmpty(); }
    QString toolFolder() const;
    /// What keeps the tools from being run; empty when both are there.
    QString toolFault() const;
    /// @p path made absolute against the caller's folder; "-" stays.
    QString callerPath(const QString &path) const;

    Arguments arguments;
    QString callerFolder;
    QString programFolder;
    Console console;
    QByteArray passwords; ///< to try on encrypted files, each ended by a line feed
};

} // namespace quorlin::batch
