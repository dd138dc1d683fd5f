#include "mainwindow/focusbutton.h"

#include <QStyleOptionFocusRect>
#include <QStylePainter>

FocusButton::FocusButton(QWidget *parent) : QPushButton(parent) {}

void FocusButton::paintEvent(QPaintEvent *event)
{
    QPushButton::paintEvent(event);
    QStyleOptionFocusRect option;
    option.initFrom(this);
    if ((option.state & QStyle::State_HasFocus) == 0 ||
        (option.state & QStyle::State_KeyboardFocusChange) == 0) {
        return;
    }
    option.backgroundColor = palette().color(QPalette::Button);
    QStylePainter painter(this);
    painter.drawPrimitive(QStyle::PE_FrameFocusRect, option);
}
