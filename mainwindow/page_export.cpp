#include "common/folders.h"
#include "common/tool_commands.h"
#include "mainwindow/process.h"
#include "pipeline/output_path.h"
#include "rules/rule_store.h"
#include "ui_process.h"

#include <QDir>

QStringList Process::splitPage()
{
    pageTexts.clear();
    splitInput = cellText(currentRow, 0);
    splitPageText = cellText(currentRow, 1);
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
    startTool(command, SLOT(setlink()));
    return {};
}

void Process::setlink()
{
    const QDir outputFolder(ui->outputfolderEdit->text());
    outputFolder.mkdir(quorlin::inputBaseName(currentInput()));
    getAlltheText();
}
