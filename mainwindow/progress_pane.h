#pragma once

#include <QString>
#include <QTimer>

class QTextEdit;

namespace quorlin {

/// Lines of a run in a text edit. A line stands in the document at once, exactly as it is; the
/// screen follows ten times a second, because a repaint per line would cost more than the page the
/// line tells about.
class ProgressPane
{
public:
    /// @param edit the text edit, which must outlive the pane
    explicit ProgressPane(QTextEdit *edit);

    /// Adds @p line behind the last one. A view that shows the end keeps showing it.
    void addLine(const QString &line);

private:
    void holdScreen();
    void refreshScreen();

    QTextEdit *edit;
    QTimer refreshTimer;
    bool followsEnd = true;
};

} // namespace quorlin
