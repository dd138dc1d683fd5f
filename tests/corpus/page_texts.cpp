#include "page_texts.h"

#include <QProcess>

QList<QStringList> pageTexts(const QStringList &paths)
{
    QProcess reader;
    reader.start(QStringLiteral(QUORLIN_PAGE_TEXTS), paths);
    if (!reader.waitForFinished(300000) || reader.exitStatus() != QProcess::NormalExit ||
        reader.exitCode() != 0) {
        return {};
    }
    const QList<QByteArray> words = reader.readAllStandardOutput().split('\0');
    QList<QStringList> files;
    qsizetype next = 0;
    for (qsizetype file = 0; file < paths.size() && next < words.size(); ++file) {
        QStringList texts;
        const qsizetype end = next + 1 + words.at(next).toInt();
        for (++next; next < end; ++next) {
            texts.append(QString::fromUtf8(words.value(next)).simplified());
        }
        files.append(texts);
    }
    return files;
}

QStringList pageTexts(const QString &path)
{
    return pageTexts(QStringList(path)).value(0);
}
