#include "mainwindow/process.h"
#include "ui_process.h"

#include <QDir>
#include <QFile>
#include <QMessageBox>

void Process::convertbegin()
{
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
    judgePreviousRow();
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

void Process::judgePreviousRow()
{
    if (currentRow == 0) {
        return;
    }
    const int row = currentRow - 1;
    const bool succeeded = QFile::exists(outputFile) && !cellText(row, 1).isEmpty();
    setCellText(row, 3, succeeded ? QStringLiteral("Succeed") : QStringLiteral("Failed"));
}
