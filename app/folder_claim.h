#pragma once

#include <QString>

namespace quorlin {

/// A claim on a folder that one process at a time can hold. The system takes it back when the
/// process ends, however it ends: nothing that is left behind ever stands in a later process's way.
class FolderClaim
{
public:
    enum class State {
        Held,       ///< this process has the folder to itself, as far as others ask
        Refused,    ///< another process, or another user, has it
        Unavailable ///< the folder takes no claims (missing, read-only, no locks there)
    };

    FolderClaim() = default;
    ~FolderClaim();
    FolderClaim(const FolderClaim &) = delete;
    FolderClaim &operator=(const FolderClaim &) = delete;

    /// Claims @p folder itself. It need not be writable and nothing is put into it.
    State claimFolder(const QString &folder);

    /// Claims @p file, which is made for its owner only and removed with the claim. For folders
    /// that other programs lock, or clean up unless they are locked. A file of another user, and
    /// anything that is no plain file, refuses.
    State claimFile(const QString &file);

    /// Gives the claim up, if there is one.
    void release();

private:
    State openClaimFile();
    bool isStillNamed() const;

    int descriptor = -1;
    QByteArray fileName;
};

} // namespace quorlin
