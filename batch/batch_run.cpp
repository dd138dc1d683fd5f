#include "batch/batch_run.h"

#include "batch/console.h"
#include "batch/scratch_folder.h"
#include "common/folders.h"
#include "common/stop_signals.h"
#include "mainwindow/process.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QTableWidget>
#include <QTextEdit>

#include <utility>

namespace quorlin::batch {

namespace {

constexpr int watchMilliseconds = 250;
/// After so many hung tools the run is given up: the fault is not in one file.
constexpr int maximumStalls = 3;
constexpr int pageColumn = 1;
constexpr int resultColumn = 3;

/// Written last by the export, so that its presence says that the page files are whole.
QString exportIndexPath(const QString &pagesFolder)
{
    return pagesFolder + QStringLiteral("/split.xml");
}

DiskView realDisk(const QString &pagesFolder)
{
    return {identifyFile, [pagesFolder] { return QFile::exists(exportIndexPath(pagesFolder)); }};
}

/// A widget of the main window by its object name, which is part of the window's design.
template <typename Widget> Widget &widgetOf(const Process &window, const char *name)
{
    return *window.findChild<Widget *>(QLatin1String(name));
}

QStringList columnTexts(const QTableWidget &table, int column)
{
    QStringList texts;
    for (int row = 0; row < table.rowCount(); ++row) {
        const QTableWidgetItem *item = table.item(row, column);
        texts.append(item == nullptr ? QString() : item->text());
    }
    return texts;
}

} // namespace

BatchRun::BatchRun(RunPlan runPlan, Console &runConsole)
    : plan(std::move(runPlan)), console(runConsole), pagesFolder(temporaryFolder()),
      record(plan.files, realDisk(pagesFolder))
{
    watchTimer.setInterval(watchMilliseconds);
    connect(&watchTimer, &QTimer::timeout, this, &BatchRun::watchProgress);
}

BatchRun::~BatchRun() = default;

int BatchRun::run()
{
    for (const QString &warning : plan.warnings) {
        console.complain(QStringLiteral("warning: ") + warning);
    }
    if (!plan.files.isEmpty()) {
        const StopSignals stopSignals([this](int signal) { stop(signal); });
        QCoreApplication::instance()->installEventFilter(this);
        prepareWindow();
        sinceProgress.start();
        watchTimer.start();
        window->addFiles(plan.files);
        if (!ended) {
            loop.exec();
        }
        watchTimer.stop();
        readResults();
        // Ends what still runs.
        window.reset();
        QCoreApplication::instance()->removeEventFilter(this);
    }
    const int status = printResults();
    return stopSignal != 0 ? 128 + stopSignal : status;
}

void BatchRun::prepareWindow()
{
    window = std::make_unique<Process>();
    window->progressObserver = [this](const QString &line) { followLine(line); };
    window->toolFailureObserver = [this](const QString &command) { toolCannotStart(command); };
    window->toolObserver = [this](QProcess &tool) { followTool(tool); };
    auto &rules = widgetOf<QComboBox>(*window, "comboBox_rule");
    rules.setCurrentIndex(rules.findText(ScratchFolder::ruleName()));
    widgetOf<QLineEdit>(*window, "outputfolderEdit").setText(plan.outputFolder);
    widgetOf<QComboBox>(*window, "comboBox_method").setCurrentIndex(plan.method);
}

void BatchRun::followLine(const QString &line)
{
    sinceProgress.start();
    console.writeProgress(line);
    auto &methods = widgetOf<QComboBox>(*window, "comboBox_method");
    switch (record.take(line)) {
    case Step::None:
        break;
    case Step::Split:
        // The window is still ending its queue.
        QMetaObject::invokeMethod(this, &BatchRun::startSplit, Qt::QueuedConnection);
        break;
    case Step::FileBegins:
        // Without it the system would name a folder that others use too.
        QDir().mkpath(pagesFolder);
        QFile::remove(exportIndexPath(pagesFolder));
        // Nobody reads the pane, which would grow with the list.
        widgetOf<QTextEdit>(*window, "textEdit_process").clear();
        methods.setCurrentIndex(plan.method);
        break;
    case Step::SkipFile:
        // No method makes no groups, so that no output claims to be the pages that are missing.
        methods.setCurrentIndex(-1);
        break;
    case Step::RunDone:
        end({});
        break;
    }
    if (console.isLiveDue()) {
        showLive();
    }
}

void BatchRun::followTool(QProcess &tool)
{
    currentTool = &tool;
    sinceProgress.start();
    tool.setProcessChannelMode(QProcess::SeparateChannels);
    connect(&tool, &QProcess::readyReadStandardError, this, [this, &tool] { hearTool(tool); });
    connect(&tool, &QProcess::errorOccurred, this, [this, &tool](QProcess::ProcessError error) {
        if (error == QProcess::Crashed) {
            tellCrash(QFileInfo(tool.program()).fileName());
        }
    });
}

void BatchRun::tellCrash(const QString &tool)
{
    const QString complaint = tool + QStringLiteral(" ended abruptly");
    console.complain(complaint);
    record.addToolMessages(complaint);
}

void BatchRun::hearTool(QProcess &tool)
{
    const QByteArray said = tool.readAllStandardError();
    console.passOn(said);
    record.addToolMessages(QString::fromUtf8(said));
}

void BatchRun::toolCannotStart(const QString &command)
{
    const QString complaint = QStringLiteral("a tool cannot be started: ") + command;
    record.addToolMessages(complaint);
    if (splitting) {
        // The split stands still at this file.
        end(complaint);
    } else {
        console.complain(complaint);
    }
}

void BatchRun::startSplit()
{
    if (ended || splitting) {
        return;
    }
    splitting = true;
    auto &table = widgetOf<QTableWidget>(*window, "inputfiletableWidget");
    const QStringList counts = columnTexts(table, pageColumn);
    record.setPageCounts(counts);
    for (int row = table.rowCount() - 1; row >= 0; --row) {
        if (counts.at(row).isEmpty()) {
            table.removeRow(row);
        }
    }
    if (table.rowCount() == 0) {
        end({});
    } else {
        window->convertbegin();
    }
}

void BatchRun::readResults()
{
    if (splitting) {
        const auto &table = widgetOf<QTableWidget>(*window, "inputfiletableWidget");
        record.setResults(columnTexts(table, resultColumn));
    }
}

void BatchRun::watchProgress()
{
    console.flush();
    if (ended || sinceProgress.elapsed() < qint64(plan.timeoutSeconds) * 1000) {
        return;
    }
    record.noteStall();
    sinceProgress.start();
    if (currentTool.isNull() || currentTool->state() == QProcess::NotRunning ||
        ++stalls >= maximumStalls) {
        end(QStringLiteral("nothing moved for ") + QString::number(plan.timeoutSeconds) +
            QStringLiteral(" seconds, the run is given up"));
        return;
    }
    console.complain(QStringLiteral("a tool made no progress for ") +
                     QString::number(plan.timeoutSeconds) +
                     QStringLiteral(" seconds and is ended"));
    currentTool->kill();
}

void BatchRun::end(const QString &complaint)
{
    if (ended) {
        return;
    }
    ended = true;
    if (!complaint.isEmpty()) {
        console.complain(complaint);
    }
    // From the event loop: the window may be in the middle of a step.
    QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
}

void BatchRun::stop(int signal)
{
    stopSignal = signal;
    end(QStringLiteral("asked to end"));
}

bool BatchRun::eventFilter(QObject *watched, QEvent *event)
{
    auto *box = event->type() == QEvent::Show ? qobject_cast<QMessageBox *>(watched) : nullptr;
    if (box != nullptr) {
        QMetaObject::invokeMethod(box, &QDialog::reject, Qt::QueuedConnection);
        end(box->windowTitle() + QStringLiteral(": ") + box->text());
    }
    return QObject::eventFilter(watched, event);
}

void BatchRun::showLive()
{
    const FileRecord *file = record.currentFile();
    if (file == nullptr) {
        return;
    }
    QString what = QStringLiteral("counting pages");
    if (record.lastLine().kind == LineKind::PageRead) {
        what = QStringLiteral("analysing page ") + QString::number(record.lastLine().page) +
               QStringLiteral(" of ") + file->pageCount;
    } else if (record.lastLine().kind == LineKind::Output) {
        what = QStringLiteral("writing output ") + QString::number(file->outputs);
    } else if (splitting) {
        what = QStringLiteral("exporting pages");
    }
    console.showLive(liveText(record.currentNumber(), record.turnCount(),
                              QFileInfo(file->path).fileName(), what, console.columns()));
}

void BatchRun::printFailure(const QString &path, const QString &reason)
{
    console.complain(path + QStringLiteral(": ") + reason);
    console.writeLine(QStringLiteral("Failed   ") + printable(path));
}

void BatchRun::printRefused(qsizetype filesBefore)
{
    for (const RefusedFile &file : std::as_const(plan.refusedFiles)) {
        if (file.filesBefore == filesBefore) {
            printFailure(file.path, file.reason);
        }
    }
}

int BatchRun::printResults()
{
    qsizetype split = 0;
    for (qsizetype index = 0; index < record.files().size(); ++index) {
        printRefused(index);
        const FileRecord &file = record.files().at(index);
        const Verdict verdict = judge(file);
        if (!verdict.succeeded) {
            printFailure(file.path, verdict.reason);
            continue;
        }
        ++split;
        QString numbers = file.pageCount + QStringLiteral(" pages, ") +
                          QString::number(file.outputs) + QStringLiteral(" outputs");
        if (const qsizetype warnings = pageWarnings(file); warnings > 0) {
            numbers += QStringLiteral(", page warnings: ") + QString::number(warnings);
        }
        console.writeLine(QStringLiteral("Succeed  ") + printable(file.path) +
                          QStringLiteral(" (") + numbers + u')');
    }
    printRefused(record.files().size());
    const qsizetype total = plan.refusedFiles.size() + record.files().size();
    console.writeLine(QString::number(split) + QStringLiteral(" of ") + QString::number(total) +
                      QStringLiteral(" files split."));
    return split == total ? 0 : 1;
}

} // namespace quorlin::batch
