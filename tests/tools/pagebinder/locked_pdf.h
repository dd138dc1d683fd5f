#pragma once

#include <QByteArray>

#include <string>

/// How a one-page file is encrypted by the standard security handler with RC4.
struct Lock
{
    int revision =
        4; ///< 2, 3 or 4: by the dictionary's own key, long or short, or by crypt filters
    QByteArray user = "user"; ///< the passwords, at most 32 bytes
    QByteArray owner = "";
    int permissions = -4; ///< all of them; -20 without the permission to copy
    /// Revision 4: the crypt filters of streams and strings, "StdCF" or "Identity", for none.
    QByteArray streams = "StdCF";
    QByteArray strings = "StdCF";
    bool encryptsMetadata = true; ///< revision 4
    bool hasMissingPage = false;  ///< a second page whose object is not in the file
};

/// A file whose page shows "Secret" with the Title "Hidden title" and the metadata "<x>Hidden
/// metadata</x>", encrypted as @p lock says. @p comment stands in the page's content, in front of
/// what draws the text.
std::string lockedFile(const Lock &lock, const QByteArray &comment = {});
