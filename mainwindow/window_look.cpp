#include "mainwindow/number_delegate.h"
#include "mainwindow/process.h"
#include "widgets/caption_fit.h"
#include "widgets/desktop_colours.h"
#include "widgets/screen_fit.h"

#include "ui_process.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPixmap>

#include <algorithm>
#include <utility>

namespace {

constexpr int buttonWidth = 90;
constexpr int buttonCount = 8;
constexpr int ruleChoiceWidth = 200;
constexpr int paneHeight = 120;
constexpr int rowHeight = 18;
constexpr int besideColumns = 60; // margins of the window, row numbers, scroll bar
constexpr int cellMargins = 10;
const QString widestSize = QStringLiteral("9999.999 MB");
constexpr int smallestPane = 40;
constexpr int formSpacing = 6;
constexpr int formMargin = 11;
constexpr QColor disabledCaption(0x5c, 0x5c, 0x5c); // 5 to 1 on the row's own colour
constexpr QSize pictureSize(840, 490);              // what the window opens at

} // namespace

void Process::showEvent(QShowEvent *event)
{
    fitToScreen();
    QWidget::showEvent(event);
}

void Process::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    // Also sent while the form is being made.
    if (previewTimer == nullptr) {
        return;
    }
    if (event->type() == QEvent::ApplicationPaletteChange) {
        setBackground();
        darkenCaptions();
    } else if (event->type() == QEvent::ApplicationFontChange) {
        fitCaptions();
    }
}

void Process::fitCaptions()
{
    // The captions have fixed widths and stand below each other: one font for all.
    const QList<QLabel *> captions = {ui->label_2, ui->label_4, ui->outputfolderlabel};
    QFont narrowest = ui->label->font();
    for (const QLabel *caption : captions) {
        narrowest = quorlin::fittingFont(narrowest, {caption->text()}, caption->maximumWidth());
    }
    for (QLabel *caption : captions) {
        caption->setFont(narrowest);
    }
    fitButtons(buttonWidth);
    // 18 pixels, unless the font of the rows needs more.
    QTableWidget *table = ui->inputfiletableWidget;
    table->verticalHeader()->setDefaultSectionSize(
        std::max(rowHeight, table->fontMetrics().height() + 1));
}

void Process::fitButtons(int width)
{
    const QList<QPushButton *> buttons = ui->frame->findChildren<QPushButton *>();
    QStringList captions;
    for (const QPushButton *button : buttons) {
        captions.append(button->text());
    }
    const quorlin::ButtonFit fit =
        quorlin::fittingButtons(QApplication::font(buttons.first()), captions, width);
    for (QPushButton *button : buttons) {
        button->setFixedWidth(width);
        button->setFont(fit.font);
        button->setIconSize(QSize(fit.pictureSide, fit.pictureSide));
    }
}

void Process::darkenCaptions()
{
    // Their backgrounds are light on every desktop, so the texts must not follow a dark one.
    QWidgetList captions = {ui->label, ui->label_2, ui->outputfolderlabel, ui->label_4,
                            ui->label_3};
    for (QPushButton *button : ui->frame->findChildren<QPushButton *>()) {
        captions.append(button);
    }
    for (QWidget *caption : captions) {
        QPalette colours = caption->palette();
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
            colours.setColor(group, QPalette::WindowText, Qt::black);
            colours.setColor(group, QPalette::ButtonText, Qt::black);
        }
        colours.setColor(QPalette::Disabled, QPalette::ButtonText, disabledCaption);
        caption->setPalette(colours);
    }
}

void Process::alignNumbers()
{
    QTableWidget *table = ui->inputfiletableWidget;
    table->setItemDelegateForColumn(1, new NumberDelegate({}, table));
    table->setItemDelegateForColumn(
        2, new NumberDelegate({QStringLiteral(" KB"), QStringLiteral(" MB")}, table));
}

void Process::styleTable()
{
    QTableWidget *table = ui->inputfiletableWidget;
    table->setStyleSheet(QStringLiteral(
        "background-color:transparent;border:1px solid #6c6c6c;border-radius: 2px;"));
    table->horizontalHeader()->setStyleSheet(
        QStringLiteral("QHeaderView::section {background-color:CornflowerBlue;color: black;"
                       "padding-left: 0px;border: 0px solid #6c6c6c;}"));
    table->verticalHeader()->setStyleSheet(
        QStringLiteral("QHeaderView::section {background-color:GhostWhite;color: black;"
                       "padding-left: 2px;border: 0px solid #6c6c6c;}"));
    table->setContextMenuPolicy(Qt::ActionsContextMenu);
    alignNumbers();
    // No such property: the table ends without a style sheet in effect, and the headers keep
    // theirs.
    table->setStyleSheet(QStringLiteral("backgrouond-color:rgb(122,122,122)"));
}

void Process::setBackground()
{
    setAutoFillBackground(true);
    QPalette colours =
        quorlin::withReadableDisabledTexts(quorlin::windowColours(QApplication::palette(this)));
    // Widgets with a style sheet of their own do not take the window's colours over.
    const QPalette listColours = quorlin::isDark(QApplication::palette()) ? colours : QPalette();
    QTableWidget *table = ui->inputfiletableWidget;
    QWidgetList surfaces = {table, table->horizontalHeader(), table->verticalHeader()};
    for (const QWidget *part : QWidgetList(surfaces)) {
        surfaces.append(static_cast<const QAbstractScrollArea *>(part)->viewport());
    }
    surfaces.append(table->findChild<QAbstractButton *>()); // between the two headers
    for (QWidget *surface : std::as_const(surfaces)) {
        surface->ensurePolished(); // which would put the desktop's colours back later
        surface->setPalette(listColours);
    }
    const QPixmap picture(QStringLiteral(":/iconoption/icons/stock-ved.jpg"));
    // A brush without picture would paint the window black.
    if (!picture.isNull()) {
        colours.setBrush(QPalette::Window, picture.scaled(pictureSize, Qt::IgnoreAspectRatio,
                                                          Qt::SmoothTransformation));
    }
    setPalette(colours);
}

void Process::narrowColumns()
{
    QTableWidget *table = ui->inputfiletableWidget;
    const QHeaderView *header = table->horizontalHeader();
    const int needed = 3 * header->defaultSectionSize() + header->minimumSectionSize();
    if (needed <= quorlin::roomFor(*this).width() - besideColumns) {
        return;
    }
    table->setColumnWidth(1, header->minimumSectionSize());
    table->setColumnWidth(2, table->fontMetrics().horizontalAdvance(widestSize) + cellMargins);
}

void Process::fitToScreen()
{
    // What the form asks for, unless the screen has no room for it.
    showButtonRow({formMargin, formSpacing, buttonWidth});
    ui->comboBox_rule->setMinimumWidth(ruleChoiceWidth);
    ui->textEdit_process->setMinimumHeight(paneHeight);
    const QSize room = quorlin::roomFor(*this);
    // Empty space goes first, then the width of the buttons, and last that of the rule choice.
    const auto lack = [&] { return std::max(0, minimumSizeHint().width() - room.width()); };
    if (lack() > 0) {
        showButtonRow({std::max(0, formMargin - (lack() + 1) / 2), formSpacing, buttonWidth});
        narrowColumns();
    }
    if (lack() > 0) {
        showButtonRow({0, 0, buttonWidth});
    }
    if (lack() > 0) {
        showButtonRow({0, 0, std::max(1, buttonWidth - (lack() + buttonCount - 1) / buttonCount)});
    }
    if (lack() > 0) {
        ui->comboBox_rule->setMinimumWidth(std::max(1, ruleChoiceWidth - lack()));
    }
    const int low = minimumSizeHint().height() - room.height();
    if (low > 0) {
        ui->textEdit_process->setMinimumHeight(std::max(smallestPane, paneHeight - low));
    }
    quorlin::fitOnScreen(*this);
}

void Process::showButtonRow(const ButtonRow &row)
{
    ui->horizontalLayout_2->setSpacing(row.spacing);
    ui->horizontalLayout_2->setContentsMargins(row.margin, formMargin, row.margin, formMargin);
    fitButtons(row.buttonWidth);
    ui->horizontalLayout_2->activate(); // and through it the window's, which asks how small it is
    layout()->activate();
}
