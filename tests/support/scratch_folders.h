#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace quorlin::test {

/// Folders of one test: the application folder, which is also the current one, the folder of the
/// exported pages, one for inputs and one for outputs. Everything is taken back at the end.
class ScratchFolders
{
public:
    ScratchFolders();
    ~ScratchFolders();
    ScratchFolders(const ScratchFolders &) = delete;
    ScratchFolders &operator=(const ScratchFolders &) = delete;

    QString application() const { return path(QStringLiteral("application")); }
    QString temporary() const { return path(QStringLiteral("temporary")); }
    QString inputs() const { return path(QStringLiteral("inputs")); }
    QString outputs() const { return path(QStringLiteral("outputs")); }

    /// Writes an input file and returns its path.
    QString addInput(const QString &name, const QByteArray &content) const;
    /// The settings file of the application folder.
    QString settingsFile() const;
    /// Saves a rule as the rule editor does.
    void saveRule(const QString &name, int left, int top) const;
    /// Files below the output folder, relative to it, sorted.
    QStringList outputFiles() const;

private:
    QString path(const QString &name) const;

    QTemporaryDir root;
    QByteArray earlierTemporary;
    QString earlierCurrent;
};

} // namespace quorlin::test
