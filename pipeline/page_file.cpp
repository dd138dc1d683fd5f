#include "pipeline/page_file.h"

namespace quorlin {

QString pageFilePath(const QString &temporaryFolder, int page)
{
    return temporaryFolder + QString::asprintf("/split_pg_%04d.htm", page);
}

QUrl pageFileUrl(const QString &path)
{
    QUrl url;
    url.setScheme(QStringLiteral("file"));
    url.setHost(QStringLiteral("")); // present and empty: the path itself starts with a slash
    url.setPath(QLatin1Char('/') + path, QUrl::DecodedMode);
    return url;
}

} // namespace quorlin
