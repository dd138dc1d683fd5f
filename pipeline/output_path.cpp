#include "pipeline/output_path.h"

#include <QFileInfo>

namespace quorlin {

QString inputBaseName(const QString &inputPath)
{
    return QFileInfo(inputPath).baseName();
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
