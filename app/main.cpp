#include "app/startup.h"
#include "mainwindow/process.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    quorlin::installMessageLog();
    QApplication application(argc, argv);
    quorlin::prepareApplication();
    Process window;
    window.show();
    return QApplication::exec();
}
