#include "mainwindow/process.h"

#include "common/folders.h"
#include "mainwindow/manual_window.h"
#include "rules/rule_store.h"
#include "rules/rules.h"
#include "ui_process.h"

#include <QAction>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QNetworkAccessManager>
#include <QProcessEnvironment>
#include <QScreen>
#include <QShortcut>
#include <QToolTip>

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
    styleTable();
    createTableActions();
    createShortcuts();
    setBackground();
    fitCaptions();
    darkenCaptions();
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

bool Process::eventFilter(QObject *watched, QEvent *event)
{
    const auto *widget = qobject_cast<QWidget *>(watched);
    if (event->type() != QEvent::ToolTip || widget == nullptr) {
        return QWidget::eventFilter(watched, event);
    }
    // Without a widget: the button row would lend the tip its style sheet.
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), widget->toolTip());
    return true;
}

void Process::addTip(QPushButton *button, const QString &tip, const QKeySequence &keys)
{
    button->setToolTip(tip.arg(keys.toString(QKeySequence::NativeText)));
    button->installEventFilter(this);
}

void Process::showManual()
{
    if (!manual) {
        manual = std::make_unique<ManualWindow>();
    }
    manual->show();
    manual->raise();
    manual->activateWindow();
}

void Process::createShortcuts()
{
    QTableWidget *table = ui->inputfiletableWidget;
    const QKeySequence split(Qt::CTRL | Qt::Key_Return);
    ui->openfileButton->setShortcut(QKeySequence::Open);
    ui->runButton->setShortcut(split);
    // In the list alone: in the fields the key deletes letters. The button knows when it is off.
    auto *remove = new QShortcut(QKeySequence::Delete, table, nullptr, nullptr,
                                 Qt::WidgetWithChildrenShortcut);
    connect(remove, &QShortcut::activated, ui->removeButton, [this] { ui->removeButton->click(); });
    auto *help = new QShortcut(QKeySequence::HelpContents, this);
    connect(help, &QShortcut::activated, this, [this] { showManual(); });
    addTip(ui->openfileButton, tr("Add files to the list (%1)"), QKeySequence::Open);
    addTip(ui->removeButton, tr("Remove the selected files from the list (%1)"),
           QKeySequence::Delete);
    addTip(ui->runButton, tr("Split the files in the list (%1)"), split);
    addTip(ui->aboutpushButton, tr("About this program. %1 opens the manual."),
           QKeySequence::HelpContents);
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

void Process::setCell(int row, int column, std::unique_ptr<QTableWidgetItem> item)
{
    QTableWidget *table = ui->inputfiletableWidget;
    if (row >= 0 && row < table->rowCount()) {
        table->setItem(row, column, item.release());
    }
}

void Process::suspendSorting()
{
    QTableWidget *table = ui->inputfiletableWidget;
    table->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    table->setSortingEnabled(false);
}

void Process::resumeSorting()
{
    if (turns > 0 || counting) {
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

void Process::startSplitTool(const QString &command, const char *finishedSlot)
{
    QProcess *tool = prepareTool(command, finishedSlot);
    if (!splitIdentity.isEmpty()) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QLatin1String(quorlin::inputIdentityVariable),
                           QString::fromLatin1(splitIdentity));
        tool->setProcessEnvironment(environment);
    }
    connect(
        tool, &QProcess::errorOccurred, this,
        [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart) {
                abandonTurn();
            }
        },
        Qt::QueuedConnection);
    tool->startCommand(command, QIODevice::ReadWrite);
}
