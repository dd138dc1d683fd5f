#pragma once

#include <QPoint>
#include <QString>
#include <QTemporaryDir>

namespace quorlin::batch {

/// The runner's private folder: readable by its user alone and removed with this object. It holds
/// an application folder of its own (the tools, the settings with the one rule, the information
/// file) and a temporary folder (the exported pages), so that runs side by side, and a run beside
/// an open window, never read one another's files.
class ScratchFolder
{
public:
    ScratchFolder();

    /// What kept the folder from being made; empty when it is there.
    QString fault() const { return faultText; }
    QString path() const { return folder.path(); }
    QString applicationFolder() const;
    QString temporaryFolder() const;

    /// Lays the two tools of @p toolFolder into the application folder. Gives what is wrong with
    /// them, or an empty text.
    QString linkTools(const QString &toolFolder);

    /// Makes this process use the private folders for all that follows.
    void enter() const;

    /// Writes the settings: a single rule of the name ruleName(), at @p position. The private
    /// folders must have been entered.
    static void writeRule(QPoint position);
    static QString ruleName() { return QStringLiteral("batch"); }

private:
    QTemporaryDir folder;
    QString faultText;
};

} // namespace quorlin::batch
