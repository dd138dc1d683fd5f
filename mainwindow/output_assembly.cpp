#include "common/folders.h"
#include "common/tool_commands.h"
#include "mainwindow/process.h"
#include "pipeline/output_path.h"
#include "ui_process.h"

void Process::splitpdffile()
{
    if (groupIndex >= pageRanges.size()) {
        groupIndex = 0;
        pageRanges.clear();
        rangeTexts.clear();
        pageTexts.clear();
        endTurn();
        ++currentRow;
        convertbegin();
        return;
    }
    const QString input = currentInput();
    const QString range = pageRanges.at(groupIndex);
    outputFile = quorlin::outputPath(ui->outputfolderEdit->text(), input, groupIndex,
                                     rangeTexts.value(groupIndex), range,
                                     ui->comboBox_method->currentIndex());
    outputBefore = quorlin::identifyFile(outputFile);
    addProgressLine(QStringLiteral("Generating ") + outputFile);
    ++groupIndex;
    startSplitTool(quorlin::mergeCommand(quorlin::applicationFolder(), input, range, outputFile),
                   SLOT(splitpdffile()));
}
