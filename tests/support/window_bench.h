#pragma once

#include "tests/support/fake_batch.h"
#include "tests/support/modal_answer.h"
#include "tests/support/scratch_folders.h"

#include "mainwindow/process.h"

#include <QTableWidget>
#include <QUrl>

#include <memory>

class QPushButton;

namespace quorlin::test {

/// A main window in folders of its own, with stand-ins for the tools, handled as a user would.
/// Settings that the window reads while it is made are written before window() is first called.
class WindowBench
{
public:
    WindowBench();

    ScratchFolders folders;
    ModalAnswer modals;

    Process &window();
    /// Closes the window; the next call of window() makes a new one.
    void closeWindow() { made.reset(); }

    template <class Widget> Widget *widget(const char *name)
    {
        return window().findChild<Widget *>(QLatin1String(name));
    }
    QTableWidget *table() { return widget<QTableWidget>("inputfiletableWidget"); }
    void click(const char *button);

    /// An input with these texts at the rule's position.
    QString addBatch(const QString &name, const PageTexts &texts) const;
    /// Adds files through the dialog and waits for their page counts.
    void addFiles(const QStringList &files);
    /// Drops @p urls onto the window.
    void drop(const QList<QUrl> &urls);
    void dropFiles(const QStringList &files);
    /// Whether the seven buttons are on and the table has its context menu.
    bool controlsEnabled();
    /// Whether all of them are off.
    bool controlsDisabled();

    void setOutputFolder(const QString &folder);
    /// Presses "Split" and waits for the end of the run.
    void split();

    QString cell(int row, int column);
    QStringList column(int column);
    /// Lines of the progress pane, in which no line feed can stand.
    QStringList paneLines();
    void selectRows(const QList<int> &rows);
    QList<int> selectedRows();

private:
    std::unique_ptr<Process> made;
};

} // namespace quorlin::test
