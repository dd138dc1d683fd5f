#include "mainwindow/progress_pane.h"

#include <QScrollBar>
#include <QTextCursor>
#include <QTextEdit>

namespace quorlin {

namespace {

constexpr int refreshMilliseconds = 100;

} // namespace

ProgressPane::ProgressPane(QTextEdit *textEdit) : edit(textEdit)
{
    edit->setUndoRedoEnabled(false);
    refreshTimer.setSingleShot(true);
    refreshTimer.setInterval(refreshMilliseconds);
    QObject::connect(&refreshTimer, &QTimer::timeout, edit, [this] { refreshScreen(); });
}

void ProgressPane::addLine(const QString &line)
{
    holdScreen();
    // QTextEdit::append() would take a path with "<" or "&" for rich text.
    QTextCursor cursor(edit->document());
    // Outside an edit block every move lays the line out, which costs more memory than its text.
    cursor.beginEditBlock();
    cursor.movePosition(QTextCursor::End);
    if (!edit->document()->isEmpty()) {
        cursor.insertBlock();
    }
    cursor.insertText(line);
    cursor.endEditBlock();
}

void ProgressPane::holdScreen()
{
    if (refreshTimer.isActive()) {
        return;
    }
    const QScrollBar *bar = edit->verticalScrollBar();
    followsEnd = bar->value() >= bar->maximum();
    // The scroll bars too: their range changes with every line.
    edit->setUpdatesEnabled(false);
    refreshTimer.start();
}

void ProgressPane::refreshScreen()
{
    if (followsEnd) {
        QScrollBar *bar = edit->verticalScrollBar();
        bar->setValue(bar->maximum());
    }
    edit->setUpdatesEnabled(true);
    // At once: the next line holds the screen again before a posted update would be served.
    edit->repaint();
}

} // namespace quorlin
