#include "batch/program.h"

#include <QString>
#include <QStringList>

#include <cstdio>
#include <cstdlib>

namespace {

bool showsLog = false;

/// Keeps the log off the error stream, which belongs to the results.
void handleMessage(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (showsLog || type == QtFatalMsg) {
        std::fprintf(stderr, "%s\n", message.toLocal8Bit().constData());
    }
    if (type == QtFatalMsg) {
        std::abort();
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QStringList words;
    for (int index = 1; index < argc; ++index) {
        words.append(QString::fromLocal8Bit(argv[index]));
    }
    showsLog = words.contains(QStringLiteral("--verbose"));
    qInstallMessageHandler(handleMessage);
    if (showsLog && qEnvironmentVariableIsEmpty("QUORLIN_SANDBOX")) {
        qputenv("QUORLIN_SANDBOX", "report");
    }
    // The desktop's event loop would only cost: its turns are dearer than the system's own.
    qputenv("QT_NO_GLIB", "1");
    return quorlin::batch::runProgram(words, argv[0]);
}
