#include "rules/rules.h"

#include "rules/rule_store.h"

#include "ui_rules.h"

#include <QKeyEvent>
#include <QMessageBox>

using namespace quorlin;

void Rules::keyPressEvent(QKeyEvent *event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    // In the page box it only takes the number over; a dialog would press its default button.
    if (isReturn && focusWidget() != ui->lineEdit_rule) {
        event->accept();
        return;
    }
    QDialog::keyPressEvent(event);
}

void Rules::setsave()
{
    const QString name = ui->lineEdit_rule->text();
    if (name.isEmpty()) {
        QMessageBox::warning(this, tr("Empty Rule Name"), tr("Please input rule name"));
        return;
    }
    if (isRuleNameTaken(name)) {
        QMessageBox::warning(this, tr("Existed Rule Name"),
                             tr("The rule name has been used, Please input another one"));
        return;
    }
    // The item picked last, whatever the content field shows: the field is only a display.
    saveRule(name, currentItem);
    accept();
}
