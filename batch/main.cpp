#include "batch/program.h"

#include <QString>
#include <QStringList>

#include <cstdio>
#include <cstdlib>

namespace {

bool showsLog = false;

/// Keeps the window's log off the error stream, which belongs to the results.
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
    // The window is made but never shown, and the caller may have no display. What would draw it
    // like the desktop's other windows is not even looked for.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qunsetenv("QT_QPA_PLATFORMTHEME");
    qunsetenv("QT_STYLE_OVERRIDE");
    // Nor is the desktop's event loop, whose turns cost more.
    qputenv("QT_NO_GLIB", "1");
    // Named, the time zone's file is read once, and not looked at for every page.
    if (!qEnvironmentVariableIsSet("TZ")) {
        qputenv("TZ", ":/etc/localtime");
    }
    return quorlin::batch::runProgram(words, argv[0]);
}
