#include "pipeline/output_path.h"

#include "pipeline/name_pattern.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

#include <unistd.h>

namespace quorlin {

QString inputBaseName(const QString &inputPath)
{
    return QFileInfo(inputPath).baseName();
}

QString outputFolderOf(const QString &inputPath, const QString &outputFolder)
{
    const QString name = inputBaseName(inputPath);
    return name.isEmpty() ? outputFolder : outputFolder + u'/' + name;
}

qsizetype nameLimitOf(const QString &folder)
{
    const long longest = pathconf(QFile::encodeName(folder).constData(), _PC_NAME_MAX);
    return longest > 0 ? std::min<qsizetype>(longest, usualNameLimit) : usualNameLimit;
}

QString outputPath(const QString &outputFolder, const QString &inputPath, qsizetype groupIndex,
                   const QString &groupText, const QString &pageRange, int method)
{
    const QString base = inputBaseName(inputPath);
    QString name = groupText;
    name.replace(QLatin1Char('/'), QLatin1Char('-'));
    QString path = outputFolder + QLatin1Char('/') + base + QLatin1Char('/') +
                   QString::number(groupIndex + 1) + QLatin1Char(' ') + name + QLatin1Char(' ') +
                   base;
    // Grouped pages are scattered: their ranges could make the name too long.
    if (method != 2) {
        path += QLatin1Char(' ') + pageRange;
    }
    return path + QStringLiteral(".pdf");
}

} // namespace quorlin
