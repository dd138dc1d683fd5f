#include "common/tool_commands.h"

#include "common/debug_line.h"

namespace quorlin {

// Built by "+" alone: a path may hold "%1", which QString::arg would take for a place-holder.

QString pageCountCommand(const QString &applicationFolder, const QString &pdf,
                         const QString &informationFile)
{
    return quoted(applicationFolder + QStringLiteral("/pagebinder")) + QLatin1Char(' ') +
           quoted(pdf) + QStringLiteral(" -getinfo -outfile ") + quoted(informationFile);
}

QString splitExportCommand(const QString &applicationFolder, const QString &pdf,
                           const QString &outputFile)
{
    return pageExportCommand(applicationFolder, pdf, 0, outputFile);
}

QString pageExportCommand(const QString &applicationFolder, const QString &pdf, int page,
                          const QString &outputFile)
{
    QString command =
        quoted(applicationFolder + QStringLiteral("/pagexport")) + QStringLiteral(" -htmlformat");
    if (page != 0) {
        const QString number = QString::number(page);
        command += QStringLiteral(" -f ") + number + QStringLiteral(" -l ") + number;
    }
    return command + QLatin1Char(' ') + quoted(pdf) + QLatin1Char(' ') + quoted(outputFile);
}

QString mergeCommand(const QString &applicationFolder, const QString &pdf, const QString &ranges,
                     const QString &outputFile)
{
    return quoted(applicationFolder + QStringLiteral("/pagebinder")) + QLatin1Char(' ') +
           quoted(pdf) + QStringLiteral(" -merge ") + ranges + QStringLiteral(" -outfile ") +
           quoted(outputFile);
}

} // namespace quorlin
