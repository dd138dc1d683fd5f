#pragma once

#include "app/folder_claim.h"

#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace quorlin {

/// Sees to it that no two windows write the same scratch files: the exported pages have fixed names
/// in the temporary folder, the information file has one in the application folder. The first
/// window uses these folders as they are. While it lives, a further window gets private ones,
/// readable by its owner only and removed when this object goes; so does a window that finds the
/// pages of another user in the temporary folder, because it could not replace them. The settings
/// and the current folder stay common to all windows.
///
/// Everything is also taken back when the program ends by exit(), as it does when the desktop goes
/// away under it.
///
/// Where no claim can be made or no private folder be had, the window goes on with the common
/// folders. Made once per process, before the window, and kept until the window is gone.
class WindowFolders
{
public:
    WindowFolders();
    ~WindowFolders();
    WindowFolders(const WindowFolders &) = delete;
    WindowFolders &operator=(const WindowFolders &) = delete;

    bool hasPrivatePages() const { return pages != nullptr; }
    bool hasPrivateTools() const { return tools != nullptr; }

private:
    static void takeBackAtExit();
    void takeBack();
    void usePrivatePages(const QString &temporary);
    void usePrivateTools(const QString &application, const QString &temporary);

    FolderClaim temporaryClaim;
    FolderClaim applicationClaim;
    std::unique_ptr<QTemporaryDir> pages;
    std::unique_ptr<QTemporaryDir> tools;
    QByteArray commonTemporary;
    QString commonApplication;
};

} // namespace quorlin
