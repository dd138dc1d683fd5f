#include "mainwindow/progress_pane.h"

#include <QAbstractTextDocumentLayout>
#include <QScrollBar>
#include <QTextCursor>
#include <QTextEdit>

namespace quorlin {

namespace {

constexpr int refreshMilliseconds = 100;
constexpr int restMilliseconds = 150;
constexpr int fewLines = 500; // wrapped anew within a few hundredths of a second

} // namespace

ProgressPane::ProgressPane(QTextEdit *textEdit) : edit(textEdit)
{
    edit->setUndoRedoEnabled(false);
    refreshTimer.setSingleShot(true);
    refreshTimer.setInterval(refreshMilliseconds);
    connect(&refreshTimer, &QTimer::timeout, this, [this] { refreshScreen(); });
    wrapTimer.setSingleShot(true);
    wrapTimer.setInterval(restMilliseconds);
    connect(&wrapTimer, &QTimer::timeout, this, [this] { wrapLines(); });
    edit->setLineWrapMode(QTextEdit::FixedPixelWidth);
    edit->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // every line is wrapped
    edit->viewport()->installEventFilter(this);
    wrapLines();
    const QScrollBar *bar = edit->verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, [this] { noteScrolling(); });
    // A narrower pane wraps its lines again, and the end moves.
    connect(bar, &QScrollBar::rangeChanged, this, [this] {
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

bool ProgressPane::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize) {
        if (edit->document()->blockCount() <= fewLines) {
            wrapLines();
        } else {
            wrapTimer.start();
        }
    }
    return QObject::eventFilter(watched, event);
}

void ProgressPane::wrapLines()
{
    edit->setLineWrapColumnOrWidth(edit->viewport()->width());
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
