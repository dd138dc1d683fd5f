#include "pipeline/unfinished_outputs.h"

#include <QDir>

namespace quorlin {

QStringList unfinishedOutputs(const QString &folder)
{
    return QDir(folder).entryList({QStringLiteral(".pagebinder-*.part")},
                                  QDir::Files | QDir::Hidden);
}

void removeUnfinishedOutputs(const QString &folder, const QStringList &others)
{
    QDir directory(folder);
    for (const QString &name : unfinishedOutputs(folder)) {
        if (!others.contains(name)) {
            directory.remove(name);
        }
    }
}

} // namespace quorlin
