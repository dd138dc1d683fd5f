#include "common/settings_text.h"
#include "mainwindow/number_item.h"
#include "mainwindow/process.h"
#include "mainwindow/row_moves.h"
#include "mainwindow/size_text.h"
#include "ui_process.h"
#include "widgets/plain_tip.h"

#include <QDesktopServices>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMimeData>
#include <QSettings>
#include <QTimer>
#include <QUrl>

#include <functional>
#include <set>

namespace {

constexpr int previewMilliseconds = 300;

QString rememberedFolder(const QString &key)
{
    const QSettings settings(quorlin::settingsFileName(), QSettings::IniFormat);
    return quorlin::settingsText(settings, key, QStringLiteral("."));
}

void rememberFolder(const QString &key, const QString &folder)
{
    QSettings settings(quorlin::settingsFileName(), QSettings::IniFormat);
    settings.setValue(key, folder);
}

} // namespace

// ---- Adding files

void Process::setopenfile()
{
    connectPreview();
    clearInfoQueue();
    const QStringList files = QFileDialog::getOpenFileNames(
        this, tr("Add File"), rememberedFolder(QStringLiteral("dir/input")),
        tr("PDF File(*.pdf);;ALL files(*.*)"));
    if (files.isEmpty()) {
        return;
    }
    rememberFolder(QStringLiteral("dir/input"), QFileInfo(files.first()).absolutePath());
    addFiles(files);
}

void Process::addFiles(const QStringList &files)
{
    clearInfoQueue();
    suspendSorting();
    int row = ui->inputfiletableWidget->rowCount();
    for (const QString &file : files) {
        addFileRow(row++, file);
    }
    startInfoQueue();
}

void Process::dragEnterEvent(QDragEnterEvent *event)
{
    if (event != nullptr && ui->openfileButton->isEnabled() &&
        event->mimeData()->hasFormat(QStringLiteral("text/uri-list"))) {
        event->acceptProposedAction();
    }
}

void Process::dropEvent(QDropEvent *event)
{
    clearInfoQueue();
    if (event == nullptr || event->mimeData()->urls().isEmpty()) {
        return;
    }
    event->acceptProposedAction();
    suspendSorting();
    const QList<QUrl> urls = event->mimeData()->urls();
    // Entries that are skipped count in the position too, so that a file behind one gets a row
    // beyond the table's end and is not shown.
    int row = ui->inputfiletableWidget->rowCount();
    for (const QUrl &url : urls) {
        const QString file = url.toLocalFile();
        if (file.isEmpty()) {
            break;
        }
        const QFileInfo information(file);
        if (information.isDir()) {
            resumeSorting();
            return;
        }
        if (information.suffix().toLower() == QLatin1String("pdf")) {
            addFileRow(row, file);
        }
        ++row;
    }
    startInfoQueue();
}

void Process::clearInfoQueue()
{
    infoQueueFiles.clear();
    infoQueueRows.clear();
    infoQueueIndex = 0;
}

void Process::addFileRow(int row, const QString &path)
{
    ui->inputfiletableWidget->insertRow(row);
    auto file = std::make_unique<QTableWidgetItem>(path);
    file->setToolTip(quorlin::plainTip(path)); // the column is too narrow for most paths
    setCell(row, 0, std::move(file));
    infoQueueFiles.append(path);
    infoQueueRows.append(QString::number(row));
    const qint64 bytes = QFileInfo(path).size();
    const QString size = quorlin::sizeText(bytes);
    if (!size.isEmpty()) {
        setCell(row, 2, std::make_unique<NumberItem>(size, bytes));
    }
}

void Process::startInfoQueue()
{
    QTableWidget *table = ui->inputfiletableWidget;
    table->selectionModel()->setCurrentIndex(
        table->model()->index(0, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    counting = true;
    getpdfpage();
    enableJobControls(false);
}

// ---- Removing files

void Process::setremove()
{
    connectPreview();
    QTableWidget *table = ui->inputfiletableWidget;
    std::set<int, std::greater<>> rows;
    const QModelIndexList indexes = table->selectionModel()->selectedIndexes();
    for (const QModelIndex &index : indexes) {
        rows.insert(index.row());
    }
    for (const int row : rows) {
        if (table->rowCount() == 1) {
            disconnectPreview();
        }
        table->removeRow(row);
    }
}

void Process::setremoveall()
{
    QTableWidget *table = ui->inputfiletableWidget;
    if (table->rowCount() == 0) {
        return;
    }
    for (int row = table->rowCount() - 1; row >= 0; --row) {
        if (row == 0) {
            disconnectPreview();
        }
        table->removeRow(row);
    }
    connectPreview();
}

// ---- Moving rows

void Process::setrowup()
{
    moveSelectedRows(quorlin::RowMove::Up);
}

void Process::setrowdown()
{
    moveSelectedRows(quorlin::RowMove::Down);
}

void Process::moveSelectedRows(quorlin::RowMove direction)
{
    QTableWidget *table = ui->inputfiletableWidget;
    suspendSorting();
    QList<int> itemRows;
    const QList<QTableWidgetItem *> items = table->selectedItems();
    for (const QTableWidgetItem *item : items) {
        itemRows.append(item->row());
    }
    const int step = direction == quorlin::RowMove::Up ? -1 : 1;
    QList<int> moved;
    const QList<int> exchanges =
        quorlin::rowExchanges(direction, itemRows, table->columnCount(), table->rowCount());
    for (const int row : exchanges) {
        swapRows(row, row + step);
        moved.append(row + step);
    }
    selectRows(moved); // nothing moved: the selection stays
    resumeSorting();
}

void Process::swapRows(int row, int other)
{
    QTableWidget *table = ui->inputfiletableWidget;
    for (int column = 0; column < table->columnCount(); ++column) {
        QTableWidgetItem *item = table->takeItem(row, column);
        QTableWidgetItem *otherItem = table->takeItem(other, column);
        table->setItem(row, column, otherItem);
        table->setItem(other, column, item);
    }
}

void Process::selectRows(const QList<int> &moved)
{
    QTableWidget *table = ui->inputfiletableWidget;
    QItemSelectionModel::SelectionFlags flags =
        QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
    for (const int row : moved) {
        table->selectionModel()->setCurrentIndex(table->model()->index(row, 0), flags);
        flags = QItemSelectionModel::Select | QItemSelectionModel::Rows;
    }
}

// ---- Opening a file, choosing the output folder

void Process::setopenselected()
{
    const int row = ui->inputfiletableWidget->currentRow();
    if (row < 0 || row >= ui->inputfiletableWidget->rowCount()) {
        return;
    }
    QDesktopServices::openUrl(QUrl::fromLocalFile(cellText(row, 0)));
}

void Process::setoutputfile()
{
    // A cancelled dialog gives an empty text, which empties the field and the setting.
    const QString folder = QFileDialog::getExistingDirectory(
        this, tr("Save"), rememberedFolder(QStringLiteral("dir/output")),
        QFileDialog::ShowDirsOnly | QFileDialog::DontResolveSymlinks);
    ui->outputfolderEdit->setText(folder);
    rememberFolder(QStringLiteral("dir/output"), folder);
}

// ---- Preview hook and keys

void Process::connectPreview()
{
    connect(ui->inputfiletableWidget, SIGNAL(itemSelectionChanged()), this, SLOT(setpreview()));
}

void Process::disconnectPreview()
{
    disconnect(ui->inputfiletableWidget, SIGNAL(itemSelectionChanged()), this, SLOT(setpreview()));
}

void Process::setpreview()
{
    previewTimer->start(previewMilliseconds);
}

void Process::dopreview() {}

void Process::keyReleaseEvent(QKeyEvent *) {}
