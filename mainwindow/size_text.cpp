#include "mainwindow/size_text.h"

namespace quorlin {

QString sizeText(qint64 bytes)
{
    const auto size = static_cast<qint32>(bytes);
    if (size <= 0) {
        return {};
    }
    // QString::asprintf, unlike printf, writes a point whatever the locale.
    return size < 1048577 ? QString::asprintf("%14.3f KB", size / 1000.0)
                          : QString::asprintf("%14.3f MB", size / 1000000.0);
}

} // namespace quorlin
