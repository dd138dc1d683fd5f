#include "mainwindow/elidedcombobox.h"

#include "widgets/plain_tip.h"

#include <QHelpEvent>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QToolTip>

namespace {

constexpr int textMargin = 4;   // what the styles leave beside the text
constexpr int widestHint = 300; // about 40 letters

QSize bounded(const QSize &hint)
{
    return hint.boundedTo(QSize(widestHint, QWIDGETSIZE_MAX));
}

} // namespace

ElidedComboBox::ElidedComboBox(QWidget *parent) : QComboBox(parent) {}

QString ElidedComboBox::shownText() const
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    return fitting(option);
}

QSize ElidedComboBox::sizeHint() const
{
    return bounded(QComboBox::sizeHint());
}

QSize ElidedComboBox::minimumSizeHint() const
{
    return bounded(QComboBox::minimumSizeHint());
}

QString ElidedComboBox::fitting(const QStyleOptionComboBox &option) const
{
    const QRect field =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    return option.fontMetrics.elidedText(option.currentText, Qt::ElideRight,
                                         field.width() - textMargin);
}

bool ElidedComboBox::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && shownText() != currentText()) {
        const auto *help = static_cast<QHelpEvent *>(event);
        QToolTip::showText(help->globalPos(), quorlin::plainTip(currentText()), this);
        return true;
    }
    return QComboBox::event(event);
}

void ElidedComboBox::paintEvent(QPaintEvent *)
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    option.currentText = fitting(option);
    QStylePainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}
