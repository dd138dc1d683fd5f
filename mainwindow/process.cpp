#include "mainwindow/process.h"

Process::Process() = default;
Process::~Process() = default;
void Process::setdefaultpreview() {}
void Process::convertbegin() {}
void Process::enteroption() {}
void Process::setopenfile() {}
void Process::setremove() {}
void Process::setopenselected() {}
void Process::setremoveall() {}
void Process::setoutputfile() {}
void Process::setabout() {}
void Process::setabout1() {}
void Process::dragEnterEvent(QDragEnterEvent *) {}
void Process::dropEvent(QDropEvent *) {}
void Process::keyReleaseEvent(QKeyEvent *) {}
void Process::dopreview() {}
void Process::setpreview() {}
void Process::getpdfpage() {}
QStringList Process::splitPage()
{
    return {};
}
void Process::getAlltheText() {}
void Process::gethtm() {}
void Process::getTextPosition(QString) {}
Subtext Process::getSubtextInfo(QString)
{
    return {};
}
int Process::getpos(QString, QString)
{
    return {};
}
QString Process::gettext(QString)
{
    return {};
}
void Process::splitpdffile() {}
void Process::setlink() {}
void Process::setrowup() {}
void Process::setrowdown() {}
void Process::setpdfpage() {}
