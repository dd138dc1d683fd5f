#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <functional>

class QDialog;
class QFileDialog;

namespace quorlin::test {

/// What a message box showed before it was answered.
struct ShownBox
{
    QString title;
    QString text;
    int icon = 0; ///< QMessageBox::Icon
    QStringList buttons;
    const QWidget *parent = nullptr;
};

/// Answers modal dialogs while it lives: every message box is recorded and left by a click on its
/// first button; a file dialog or another dialog is handed to the answer set for it, once.
class ModalAnswer : public QObject
{
    Q_OBJECT

public:
    ModalAnswer();

    /// Boxes answered so far.
    const QList<ShownBox> &boxes() const { return shown; }

    /// Types @p files into the next file dialog and opens them.
    void chooseFiles(const QStringList &files);
    /// Types @p folder into the next folder dialog and takes it.
    void chooseFolder(const QString &folder);
    /// Presses Escape in the next dialog.
    void cancelNext();
    /// Calls @p look with the next dialog, which must close it.
    void handleNext(std::function<void(QDialog *)> look);
    /// Calls @p look with the next file dialog before it is answered.
    void inspectFileDialog(std::function<void(QFileDialog *)> look);
    /// Calls @p look with every message box before it is answered.
    void inspectBoxes(std::function<void()> look);

private:
    void answer();

    QTimer timer;
    QList<ShownBox> shown;
    std::function<void(QDialog *)> next;
    std::function<void(QFileDialog *)> inspectDialog;
    std::function<void()> inspectBox;
};

} // namespace quorlin::test
