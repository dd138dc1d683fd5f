#include "mainwindow/process.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    Process window;
    window.show();
    return QApplication::exec();
}
