#include "mainwindow/process.h"
#include "ui_process.h"

#include <QDir>
#include <QFile>
#include <QMessageBox>

#include <utility>

void Process::convertbegin()
{
    const QString finished = std::exchange(finishedInput, QString());
    if (refuseEmptyList()) {
        return;
    }
    fileCount = ui->inputfiletableWidget->rowCount();
    if (refuseMissingOutputFolder()) {
        return;
    }
    disconnect(idleProcess.get(), SIGNAL(finished(int, QProcess::ExitStatus)), this,
               SLOT(convertbegin()));
    suspendSorting();
    judgePreviousRow(finished);
    if (currentRow < fileCount) {
        running = true;
        if (currentRow == 0) {
            addProgressLine(QStringLiteral("Conversion Start:"));
        }
        addProgressLine(cellText(currentRow, 0));
        splitPage();
        return;
    }
    currentRow = 0;
    running = false;
    resumeSorting();
    addProgressLine(QStringLiteral("Conversion Finished."));
}

bool Process::refuseEmptyList()
{
    if (ui->inputfiletableWidget->rowCount() != 0) {
        return false;
    }
    QMessageBox::warning(this, tr("Empty input"), tr("Please choose files to split."));
    return true;
}

bool Process::refuseMissingOutputFolder()
{
    const QString folder = ui->outputfolderEdit->text();
    // The empty path names the current folder, which exists.
    if (QDir(folder).exists() && !folder.isEmpty()) {
        return false;
    }
    QMessageBox::information(this, QStringLiteral("Invalid order"),
                             QStringLiteral("Please specify an output folder."));
    ui->outputfolderEdit->setText(QString());
    return true;
}

void Process::judgePreviousRow(const QString &finished)
{
    if (currentRow == 0) {
        return;
    }
    int row = currentRow - 1;
    if (!finished.isEmpty() && cellText(row, 0) != finished) {
        row = rowOfFile(finished); // it was moved; no row at all when it was removed
    }
    const bool succeeded = QFile::exists(outputFile) && !cellText(row, 1).isEmpty();
    setCellText(row, 3, succeeded ? QStringLiteral("Succeed") : QStringLiteral("Failed"));
}

int Process::rowOfFile(const QString &path) const
{
    for (int row = 0; row < ui->inputfiletableWidget->rowCount(); ++row) {
        if (cellText(row, 0) == path) {
            return row;
        }
    }
    return -1;
}

QString Process::currentInput() const
{
    return splitInput.isEmpty() ? cellText(currentRow, 0) : splitInput;
}

QString Process::currentPageText()
{
    // Read afresh while the row is the file's own: its pages may still be being counted.
    if (splitInput.isEmpty() || cellText(currentRow, 0) == splitInput) {
        splitPageText = cellText(currentRow, 1);
    }
    return splitPageText;
}
