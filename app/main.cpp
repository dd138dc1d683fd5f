#include "app/startup.h"
#include "app/window_folders.h"
#include "mainwindow/process.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    quorlin::installMessageLog();
    QApplication application(argc, argv);
    quorlin::prepareApplication();
    const quorlin::WindowFolders folders;
    Process window;
    window.show();
    return QApplication::exec();
}
