#include "catalogue.h"

#include <QFile>
#include <QProcess>
#include <QXmlStreamReader>

QHash<QString, QString> entriesOf(const QString &path)
{
    QHash<QString, QString> entries;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return entries;
    }
    QString context;
    QString source;
    QXmlStreamReader reader(&file);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (reader.name() == QLatin1String("name")) {
            context = reader.readElementText();
        } else if (reader.name() == QLatin1String("source")) {
            source = reader.readElementText();
        } else if (reader.name() == QLatin1String("translation")) {
            const bool unfinished = reader.attributes().hasAttribute(QLatin1String("type"));
            const QString text = reader.readElementText();
            entries.insert(context + ": " + source, unfinished ? QString() : text);
        }
    }
    return entries;
}

QStringList collectedTexts(const QString &scratch)
{
    QStringList arguments = {QStringLiteral("-silent")};
    for (const char *room : {"analysis", "app", "batch", "common", "mainwindow", "options",
                             "pipeline", "resources", "rules", "widgets"}) {
        arguments << QStringLiteral(QUORLIN_SOURCE_DIR "/") + QLatin1String(room);
    }
    QProcess collector;
    collector.start(QStringLiteral(QUORLIN_LUPDATE), arguments << QStringLiteral("-ts") << scratch);
    collector.waitForFinished(-1);
    return entriesOf(scratch).keys();
}
