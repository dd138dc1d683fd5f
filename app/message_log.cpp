#include "app/message_log.h"

#include "common/folders.h"

#include <QCoreApplication>
#include <QFile>
#include <QStringConverter>
#include <QTextStream>

#include <cstdlib>

namespace quorlin {

QString formattedMessage(QtMsgType type, const QString &message)
{
    switch (type) {
    case QtWarningMsg:
        return QStringLiteral("Warning: %1").arg(message);
    case QtCriticalMsg:
        return QStringLiteral("Critical: %1").arg(message);
    case QtFatalMsg:
        return QStringLiteral("Fatal: %1").arg(message);
    case QtDebugMsg:
    case QtInfoMsg:
        break;
    }
    return QStringLiteral("Debug: %1").arg(message);
}

} // namespace quorlin

void customMessageHandler(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    const QString line = quorlin::formattedMessage(type, message);
    if (type == QtFatalMsg) {
        std::abort();
    }
    // The data folder is named after the program, which only the application object knows.
    if (QCoreApplication::instance() == nullptr) {
        return;
    }
    QFile log(quorlin::logFilePath());
    if (!log.open(QIODevice::WriteOnly | QIODevice::Append)) {
        return;
    }
    QTextStream stream(&log);
    stream.setEncoding(QStringConverter::System);
    stream << line << Qt::endl;
}
