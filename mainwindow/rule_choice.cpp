#include "mainwindow/process.h"

#include "common/settings_text.h"
#include "rules/rule_store.h"
#include "rules/rules.h"

#include "ui_process.h"

#include <QSettings>

using namespace quorlin;

namespace {

/// Tells the editor which document to show. The settings are closed before the editor opens them.
void storeSample(const QString &file, const QString &pageCount)
{
    QSettings settings(settingsFileName(), QSettings::IniFormat);
    settings.setValue(QStringLiteral("file/file"), file);
    settings.setValue(QStringLiteral("file/page"), pageCount);
}

} // namespace

void Process::enteroption()
{
    // The first row is the sample, whatever row is selected.
    if (ui->inputfiletableWidget->rowCount() == 0) {
        storeSample(QStringLiteral("Empty input"), QStringLiteral("0"));
    } else {
        storeSample(cellText(0, 0), cellText(0, 1));
    }
    rules->setIniImage();
    if (rules->exec() != QDialog::Accepted) {
        ui->comboBox_rule->setCurrentIndex(0);
        return;
    }
    const QString saved = currentRuleName();
    if (!saved.isEmpty()) {
        ui->comboBox_rule->addItem(saved);
        ui->comboBox_rule->setCurrentIndex(ui->comboBox_rule->count() - 1);
    }
}
