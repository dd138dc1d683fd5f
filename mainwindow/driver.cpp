#include "mainwindow/process.h"
#include "ui_process.h"
#include "widgets/plain_tip.h"

#include <QDir>
#include <QFile>
#include <QMessageBox>

#include <algorithm>
#include <utility>

void Process::convertbegin()
{
    if (refuseEmptyList()) {
        resumeSortingAfterStop();
        return;
    }
    fileCount = ui->inputfiletableWidget->rowCount();
    if (refuseMissingOutputFolder()) {
        resumeSortingAfterStop();
        return;
    }
    disconnect(idleProcess.get(), SIGNAL(finished(int, QProcess::ExitStatus)), this,
               SLOT(convertbegin()));
    suspendSorting();
    judgeSplitFile();
    if (currentRow < fileCount) {
        if (currentRow == 0) {
            judgedInput.clear();
            addProgressLine(QStringLiteral("Conversion Start:"));
        }
        addProgressLine(cellText(currentRow, 0));
        splitPage();
        return;
    }
    currentRow = 0;
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

void Process::judgeSplitFile()
{
    if (currentRow == 0 || judgedInput.isEmpty()) {
        return;
    }
    // The row before the current one, unless rows were moved or removed meanwhile.
    const int previous = currentRow - 1;
    const int row = cellText(previous, 0) == judgedInput ? previous : rowOfFile(judgedInput);
    const bool succeeded =
        QFile::exists(outputFile) && !cellText(row, 1).isEmpty() && !judgedInputChanged;
    auto result = std::make_unique<QTableWidgetItem>(succeeded ? QStringLiteral("Succeed")
                                                               : QStringLiteral("Failed"));
    if (judgedInputChanged) {
        result->setToolTip(quorlin::plainTip(
            tr("The file changed after its pages were counted. Remove it from the list, then "
               "add it again.")));
    }
    setCell(row, 3, std::move(result));
}

void Process::endTurn()
{
    judgedInput = std::exchange(splitInput, QString());
    const bool changed = !splitIdentity.isEmpty() && identityTextOf(judgedInput) != splitIdentity;
    // A tool that wrote the last output found the input unchanged when it had done so.
    const std::optional<quorlin::FileIdentity> output = quorlin::identifyFile(outputFile);
    const bool writtenNow = output && output != outputBefore;
    judgedInputChanged = changed && !writtenNow;
    turns = std::max(0, turns - 1);
}

void Process::abandonTurn()
{
    turns = std::max(0, turns - 1);
    resumeSortingAfterStop();
}

void Process::resumeSortingAfterStop()
{
    // Where nothing was suspended, the user's own order and its mark stay.
    if (!ui->inputfiletableWidget->isSortingEnabled()) {
        resumeSorting();
    }
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
        takePageCount(currentRow);
    }
    return splitPageText;
}

void Process::takePageCount(int row)
{
    const QTableWidgetItem *count = ui->inputfiletableWidget->item(row, 1);
    splitPageText = cellText(row, 1);
    splitIdentity = count == nullptr ? QByteArray() : count->data(identityRole).toByteArray();
}
