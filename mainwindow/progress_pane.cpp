#include "mainwindow/progress_pane.h"

#include <QAbstractTextDocumentLayout>
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
    QObject::connect(&refreshTimer, &QTimer::timeout, &connections, [this] { refreshScreen(); });
    const QScrollBar *bar = edit->verticalScrollBar();
    QObject::connect(bar, &QScrollBar::valueChanged, &connections, [this] { noteScrolling(); });
    // A narrower pane wraps its lines anew, and the end moves.
    QObject::connect(bar, &QScrollBar::rangeChanged, &connections, [this] {
        if (followsEnd) {
            showEnd();
        }
    });
}

ProgressPane::~ProgressPane()
{
    if (heldLayout) {
        heldLayout->blockSignals(false);
    }
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
    heldLayout = edit->document()->documentLayout();
    heldLayout->blockSignals(true);
    refreshTimer.start();
}

void ProgressPane::refreshScreen()
{
    if (!heldLayout) {
        return;
    }
    heldLayout->blockSignals(false);
    emit heldLayout->documentSizeChanged(heldLayout->documentSize());
    heldLayout.clear();
    if (followsEnd) {
        showEnd();
    }
    // At once: where lines come without a pause, a posted update waits for the pause.
    edit->viewport()->repaint();
}

void ProgressPane::showEnd()
{
    scrolling = true;
    QScrollBar *bar = edit->verticalScrollBar();
    bar->setValue(bar->maximum());
    scrolling = false;
}

void ProgressPane::noteScrolling()
{
    const QScrollBar *bar = edit->verticalScrollBar();
    if (!scrolling) {
        followsEnd = bar->value() >= bar->maximum();
    }
}

} // namespace quorlin
