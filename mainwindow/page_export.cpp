#include "common/folders.h"
#include "common/tool_commands.h"
#include "mainwindow/process.h"
#include "pipeline/output_path.h"
#include "rules/rule_store.h"
#include "ui_process.h"

#include <QDir>

QStringList Process::splitPage()
{
    ++turns;
    pageTexts.clear();
    splitInput = cellText(currentRow, 0);
    takePageCount(currentRow);
    // Until a tool writes, the output named last is an earlier one's.
    outputBefore = quorlin::identifyFile(outputFile);
    // Should the folder vanish, the system names another, where someone else's pages may lie.
    pageFolder = quorlin::temporaryFolder();
    const Subtext rule = quorlin::readRule(ui->comboBox_rule->currentText());
    ruleX = rule.left;
    ruleY = rule.top;
    ruleWidth = rule.width;
    ruleHeight = rule.height;
    ruleText = rule.text;
    const QString command = quorlin::splitExportCommand(quorlin::applicationFolder(), splitInput,
                                                        pageFolder + QStringLiteral("/split.xml"));
    startSplitTool(command, SLOT(setlink()));
    return {};
}

void Process::setlink()
{
    const QDir outputFolder(ui->outputfolderEdit->text());
    outputFolder.mkdir(quorlin::inputBaseName(currentInput()));
    getAlltheText();
}
