#pragma once

#include <QString>
#include <QUrl>

namespace quorlin {

/// Page file of page @p page (counted from 1) of the file being split, in @p temporaryFolder.
QString pageFilePath(const QString &temporaryFolder, int page);

/// Address under which the file @p path, which starts with a slash, is read. Characters that mean
/// something in an address ("#", "?", "%") stand for themselves.
QUrl pageFileUrl(const QString &path);

} // namespace quorlin
