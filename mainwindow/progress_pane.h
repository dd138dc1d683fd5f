#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

class QAbstractTextDocumentLayout;
class QTextEdit;

namespace quorlin {

/// Lines of a run in a text edit. A line stands in the document at once, exactly as it is; the
/// screen follows ten times a second, because a repaint per line would cost more than the page the
/// line tells about. In between the edit is not told of the new lines, yet it can be painted at any
/// time: nothing is ever shown unpainted. Lines wrap at the edit's width; where there are thousands
/// of them, only once it has come to rest, so that the window follows the user's hand.
class ProgressPane : public QObject
{
public:
    /// @param edit the text edit, which must outlive the pane
    explicit ProgressPane(QTextEdit *edit);
    ~ProgressPane() override;

    /// Adds @p line behind the last one. A view that shows the end keeps showing it; one that the
    /// user scrolled up stays.
    void addLine(const QString &line);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void holdScreen();
    void refreshScreen();
    void showEnd();
    void noteScrolling();
    void wrapLines();

    QTextEdit *edit;
    QTimer refreshTimer;
    QTimer wrapTimer;
    QPointer<QAbstractTextDocumentLayout> heldLayout; ///< does not report its changes for now
    bool followsEnd = true;
    bool scrolling = false; ///< the pane itself moves the scroll bar
};

} // namespace quorlin
