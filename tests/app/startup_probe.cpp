// Starts as the program does, sends the messages given as arguments ("warning=abc"), reads the
// pictures given as arguments ("picture=FILE"), sends one before there is an application ("early")
// and tells what start-up left behind on standard output.
#include "app/startup.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QImage>
#include <QImageReader>
#include <QLoggingCategory>
#include <QTextStream>

#include "common/folders.h"

#include <cstring>

int main(int argc, char *argv[])
{
    quorlin::installMessageLog();
    for (int index = 1; index < argc; ++index) {
        if (std::strcmp(argv[index], "early") == 0) {
            qWarning("before the application");
        }
    }
    QCoreApplication application(argc, argv);
    quorlin::prepareApplication();
    QTextStream out(stdout);
    out << "current=" << QDir::currentPath() << "\n";
    out << "plugins=" << QCoreApplication::libraryPaths().join(u'|') << "\n";
    out << "log=" << quorlin::logFilePath() << "\n";
    out << "organisation=" << QCoreApplication::organizationName() << "\n";
    out.flush();
    const QStringList arguments = QCoreApplication::arguments().sliced(1);
    for (const QString &argument : arguments) {
        const QString kind = argument.section(u'=', 0, 0);
        const QByteArray text = argument.section(u'=', 1).toUtf8();
        if (kind == QLatin1String("debug")) {
            qDebug("%s", text.constData());
        } else if (kind == QLatin1String("info")) {
            qInfo("%s", text.constData());
        } else if (kind == QLatin1String("warning")) {
            qWarning("%s", text.constData());
        } else if (kind == QLatin1String("critical")) {
            qCritical("%s", text.constData());
        } else if (kind == QLatin1String("picture")) {
            const QImage picture = QImageReader(QFile::decodeName(text)).read();
            out << text << (picture.isNull() ? " cannot be read" : " is read") << "\n";
        } else if (kind == QLatin1String("remove")) {
            QFile::remove(quorlin::logFilePath());
        } else if (kind == QLatin1String("fatal")) {
            qFatal("%s", text.constData());
        }
    }
    out << "identity=" << qgetenv("QUORLIN_INPUT_IDENTITY") << "\n";
    return 0;
}
