#include "app/startup.h"
#include "app/window_folders.h"
#include "common/stop_signals.h"
#include "mainwindow/process.h"

#include <QApplication>

#include <csignal>

namespace {

/// Runs the program until its last window is closed or a signal asks it to end.
/// @return the exit status, or minus the signal's number
int run(int argc, char *argv[])
{
    QApplication application(argc, argv);
    quorlin::prepareApplication();
    int signalled = 0;
    // Dialogs that wait for an answer end with it. Made before what it protects.
    const quorlin::StopSignals stop([&signalled](int signal) {
        signalled = signal;
        QCoreApplication::exit();
    });
    const quorlin::WindowFolders folders;
    Process window;
    window.show();
    const int status = QApplication::exec();
    return signalled == 0 ? status : -signalled;
}

} // namespace

int main(int argc, char *argv[])
{
    quorlin::installMessageLog();
    const int status = run(argc, argv);
    if (status < 0) {
        // Nothing is left behind; now the signal ends the program as it would have at once.
        raise(-status);
    }
    return status;
}
