#include "mainwindow/process.h"

#include "common/folders.h"
#include "mainwindow/plain_tip.h"
#include "rules/rule_store.h"
#include "rules/rules.h"
#include "ui_process.h"

#include <QAction>
#include <QGuiApplication>
#include <QNetworkAccessManager>
#include <QPixmap>
#include <QScreen>

Process::Process() : ui(std::make_unique<Ui_process>())
{
    ui->setupUi(this);
    // The header sorts by no column until the user clicks it.
    ui->inputfiletableWidget->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    placeOnScreen();
    createHelpers();
    connectControls();
    ui->inputfiletableWidget->setSelectionBehavior(QAbstractItemView::SelectRows);
    ui->inputfiletableWidget->setEditTriggers(QAbstractItemView::NoEditTriggers);
    ui->outputfolderEdit->setPalette(QPalette(Qt::white));
    fillRuleList();
    setabout();
    previewTimer = new QTimer(this);
    connect(previewTimer, SIGNAL(timeout()), this, SLOT(dopreview()));
    fitCaptions();
    darkenCaptions();
    styleTable();
    createTableActions();
    setBackground();
    setAcceptDrops(true);
    ui->textEdit_process->clear();
}

Process::~Process()
{
    tools.endAll();
}

void Process::placeOnScreen()
{
    setGeometry(0, 0, 840, 490);
    const QList<QScreen *> screens = QGuiApplication::screens();
    if (screens.isEmpty()) {
        return;
    }
    const QRect screen = screens.first()->geometry();
    move((screen.left() + screen.right()) / 2 - (width() - 1) / 2,
         (screen.top() + screen.bottom()) / 2 - (height() - 1) / 2);
}

void Process::createHelpers()
{
    infoProcess = tools.create();
    infoProcess->setProcessChannelMode(QProcess::SeparateChannels);
    idleProcess = std::make_unique<QProcess>();
    rules = std::make_unique<Rules>();
    networkManager = new QNetworkAccessManager(this);
    pageTurn.setSingleShot(true);
    connect(&pageTurn, &QTimer::timeout, this, [this] { readRequestedPages(); });
    progressPane = std::make_unique<quorlin::ProgressPane>(ui->textEdit_process);
}

void Process::connectControls()
{
    QTableWidget *table = ui->inputfiletableWidget;
    connect(ui->runButton, SIGNAL(clicked(bool)), this, SLOT(convertbegin()));
    connect(ui->pushButton_option, SIGNAL(clicked(bool)), this, SLOT(enteroption()));
    connect(ui->openfileButton, SIGNAL(clicked()), this, SLOT(setopenfile()));
    connect(table, SIGNAL(itemDoubleClicked(QTableWidgetItem *)), this, SLOT(setopenselected()));
    connect(ui->removeButton, SIGNAL(clicked()), this, SLOT(setremove()));
    connect(ui->removeallButton, SIGNAL(clicked()), this, SLOT(setremoveall()));
    connect(table, SIGNAL(itemClicked(QTableWidgetItem *)), this, SLOT(setpreview()));
    connectPreview();
    connect(ui->outputButton, SIGNAL(clicked()), this, SLOT(setoutputfile()));
    connect(ui->aboutpushButton, SIGNAL(clicked()), this, SLOT(setabout1()));
    connect(ui->pushButton_up, SIGNAL(clicked()), this, SLOT(setrowup()));
    connect(ui->pushButton_down, SIGNAL(clicked()), this, SLOT(setrowdown()));
}

void Process::fillRuleList()
{
    ui->comboBox_rule->clear();
    ui->comboBox_rule->addItems(quorlin::ruleNames());
}

void Process::fitCaptions()
{
    // The captions have fixed widths; a font that runs wide is condensed instead of cut.
    for (QLabel *caption : {ui->label_2, ui->outputfolderlabel, ui->label_4}) {
        QFont font = caption->font();
        int stretch = QFont::Unstretched;
        while (stretch > QFont::ExtraCondensed &&
               QFontMetrics(font).horizontalAdvance(caption->text()) > caption->maximumWidth()) {
            font.setStretch(--stretch);
        }
        caption->setFont(font);
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
        caption->setPalette(colours);
    }
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
    // No such property: the table ends without a style sheet in effect, and the headers keep
    // theirs.
    table->setStyleSheet(QStringLiteral("backgrouond-color:rgb(122,122,122)"));
}

void Process::addTableAction(const QString &text, const char *slot)
{
    auto *action = new QAction(text, ui->inputfiletableWidget);
    connect(action, SIGNAL(triggered()), this, slot);
    ui->inputfiletableWidget->addAction(action);
}

void Process::createTableActions()
{
    addTableAction(tr("Add File(s)"), SLOT(setopenfile()));
    addTableAction(tr("View PDF File"), SLOT(setopenselected()));
    addTableAction(tr("Delete Selected Item(s)"), SLOT(setremove()));
    addTableAction(tr("Delete All Item(s)"), SLOT(setremoveall()));
}

void Process::setBackground()
{
    setAutoFillBackground(true);
    const QPixmap picture(QStringLiteral(":/iconoption/icons/stock-ved.jpg"));
    if (picture.isNull()) {
        return; // a brush without picture would paint the window black
    }
    QPalette background = palette();
    background.setBrush(QPalette::Window,
                        picture.scaled(size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    setPalette(background);
}

void Process::setabout()
{
    dataFolderPath = quorlin::dataFolder();
    ui->aboutpushButton->setIcon(QIcon(QStringLiteral(":/iconoption/icons/about.png")));
    ui->aboutpushButton->setText(tr("About"));
    setWindowTitle(tr("Quorlin Cleaver"));
}

void Process::setabout1()
{
    aboutDialog.exec();
}

void Process::setdefaultpreview() {}

QString Process::cellText(int row, int column) const
{
    const QTableWidgetItem *item = ui->inputfiletableWidget->item(row, column);
    return item == nullptr ? QString() : item->text();
}

void Process::setCellText(int row, int column, const QString &text)
{
    QTableWidget *table = ui->inputfiletableWidget;
    if (row < 0 || row >= table->rowCount()) {
        return;
    }
    auto *item = new QTableWidgetItem(text);
    if (column == 0) {
        item->setToolTip(quorlin::plainTip(text)); // the column is too narrow for most paths
    }
    table->setItem(row, column, item);
}

void Process::suspendSorting()
{
    QTableWidget *table = ui->inputfiletableWidget;
    table->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    table->setSortingEnabled(false);
}

void Process::resumeSorting()
{
    if (running || counting) {
        return;
    }
    QTableWidget *table = ui->inputfiletableWidget;
    // A click on a header moved the indicator while it was hidden.
    table->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    table->setSortingEnabled(true);
}

void Process::enableJobControls(bool enabled)
{
    QPushButton *const buttons[] = {
        ui->openfileButton,  ui->removeButton,      ui->removeallButton, ui->pushButton_up,
        ui->pushButton_down, ui->pushButton_option, ui->runButton,
    };
    for (QPushButton *button : buttons) {
        button->setEnabled(enabled);
    }
    ui->inputfiletableWidget->setContextMenuPolicy(enabled ? Qt::ActionsContextMenu
                                                           : Qt::NoContextMenu);
}

void Process::addProgressLine(const QString &line)
{
    progressPane->addLine(line);
    if (progressObserver) {
        progressObserver(line);
    }
}

QProcess *Process::prepareTool(const QString &command, const char *finishedSlot)
{
    QProcess *process = tools.create();
    connect(process, SIGNAL(finished(int, QProcess::ExitStatus)), this, finishedSlot);
    // Queued: the caller goes on first, as with a tool that starts and ends.
    connect(
        process, &QProcess::errorOccurred, this,
        [this, command](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart && toolFailureObserver) {
                toolFailureObserver(command);
            }
        },
        Qt::QueuedConnection);
    return process;
}

void Process::startTool(const QString &command, const char *finishedSlot)
{
    prepareTool(command, finishedSlot)->startCommand(command, QIODevice::ReadWrite);
}
