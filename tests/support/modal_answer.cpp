#include "tests/support/modal_answer.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

namespace quorlin::test {

namespace {

void takePath(QDialog *dialog, const QString &text)
{
    auto *name = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    auto *buttons = dialog->findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"));
    if (name == nullptr || buttons == nullptr) {
        qFatal("This is no file dialog of Qt's own");
    }
    name->setText(text);
    QPushButton *open = buttons->button(QDialogButtonBox::Open);
    QTest::mouseClick(open != nullptr ? open : buttons->button(QDialogButtonBox::Ok),
                      Qt::LeftButton);
}

} // namespace

ModalAnswer::ModalAnswer()
{
    connect(&timer, &QTimer::timeout, this, &ModalAnswer::answer);
    timer.start(5);
}

void ModalAnswer::chooseFiles(const QStringList &files)
{
    next = [files](QDialog *dialog) {
        QString text;
        for (const QString &file : files) {
            text += QLatin1Char('"') + file + QStringLiteral("\" ");
        }
        takePath(dialog, text.trimmed());
    };
}

void ModalAnswer::chooseFolder(const QString &folder)
{
    next = [folder](QDialog *dialog) { takePath(dialog, folder); };
}

void ModalAnswer::cancelNext()
{
    next = [](QDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); };
}

void ModalAnswer::handleNext(std::function<void(QDialog *)> look)
{
    next = std::move(look);
}

void ModalAnswer::inspectFileDialog(std::function<void(QFileDialog *)> look)
{
    inspectDialog = std::move(look);
}

void ModalAnswer::inspectBoxes(std::function<void()> look)
{
    inspectBox = std::move(look);
}

void ModalAnswer::answer()
{
    QWidget *modal = QApplication::activeModalWidget();
    if (auto *box = qobject_cast<QMessageBox *>(modal)) {
        QStringList captions;
        const QList<QAbstractButton *> buttons = box->buttons();
        for (const QAbstractButton *button : buttons) {
            captions.append(button->text().remove(QLatin1Char('&')));
        }
        shown.append({box->windowTitle(), box->text(), box->icon(), captions, box->parentWidget()});
        if (inspectBox) {
            inspectBox();
        }
        QTest::mouseClick(buttons.first(), Qt::LeftButton);
        return;
    }
    auto *dialog = qobject_cast<QDialog *>(modal);
    if (dialog == nullptr || !next) {
        return;
    }
    if (auto *fileDialog = qobject_cast<QFileDialog *>(dialog); fileDialog && inspectDialog) {
        std::exchange(inspectDialog, nullptr)(fileDialog);
    }
    std::exchange(next, nullptr)(dialog);
}

} // namespace quorlin::test
