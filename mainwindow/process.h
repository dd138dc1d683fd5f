#pragma once

#include "analysis/line_parser.h"
#include "analysis/subtext.h"
#include "mainwindow/aboutdialog.h"
#include "mainwindow/progress_pane.h"
#include "options/opdialog.h"
#include "pipeline/tool_process.h"

#include <QNetworkReply>
#include <QPointer>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QWidget>
#include <QXmlStreamReader>

#include <array>
#include <functional>
#include <memory>

class QDragEnterEvent;
class QDropEvent;
class QKeyEvent;
class QNetworkAccessManager;
class Rules;
class Ui_process;
namespace quorlin {
enum class RowMove;
}

/// The main window, and the object on which a split runs: every step of the pipeline is a slot of
/// it, chained through signals on the GUI thread. No slot waits for a tool.
class Process : public QWidget
{
    Q_OBJECT

public:
    Process();
    ~Process() override;

    /// Kept for a preview that this version does not show.
    void setdefaultpreview();

    /// Called with every line that is added to the progress pane.
    std::function<void(const QString &line)> progressObserver;
    /// Called with the command of a tool that could not be started. Where a split stands still
    /// then, the window stays silent.
    std::function<void(const QString &command)> toolFailureObserver;

    /// Adds @p files to the list, whatever their suffix, and counts their pages.
    void addFiles(const QStringList &files); // mainwindow/file_list.cpp

public slots:
    // Declared in this order on purpose: it fixes the indices of the meta-object. The event
    // handlers among them override QWidget's.
    void convertbegin();                                  // mainwindow/driver.cpp
    void enteroption();                                   // mainwindow/rule_choice.cpp
    void setopenfile();                                   // mainwindow/file_list.cpp
    void setremove();                                     // mainwindow/file_list.cpp
    void setopenselected();                               // mainwindow/file_list.cpp
    void setremoveall();                                  // mainwindow/file_list.cpp
    void setoutputfile();                                 // mainwindow/file_list.cpp
    void setabout();                                      // mainwindow/process.cpp
    void setabout1();                                     // mainwindow/process.cpp
    void dragEnterEvent(QDragEnterEvent *event) override; // mainwindow/file_list.cpp
    void dropEvent(QDropEvent *event) override;           // mainwindow/file_list.cpp
    void keyReleaseEvent(QKeyEvent *event) override;      // mainwindow/file_list.cpp
    void dopreview();                                     // mainwindow/file_list.cpp
    void setpreview();                                    // mainwindow/file_list.cpp
    void getpdfpage();                                    // mainwindow/page_count.cpp
    QStringList splitPage();                              // mainwindow/page_export.cpp
    void getAlltheText();                                 // mainwindow/region_text.cpp
    void gethtm();                                        // mainwindow/region_text.cpp
    void getTextPosition(const QString &sxml);            // mainwindow/region_text.cpp
    Subtext getSubtextInfo(const QString &sRow);          // mainwindow/region_text.cpp
    int getpos(const QString &sPos, const QString &sRow); // mainwindow/region_text.cpp
    QString gettext(const QString &sRow);                 // mainwindow/region_text.cpp
    void splitpdffile();                                  // mainwindow/output_assembly.cpp
    void setlink();                                       // mainwindow/page_export.cpp
    void setrowup();                                      // mainwindow/file_list.cpp
    void setrowdown();                                    // mainwindow/file_list.cpp
    void setpdfpage();                                    // mainwindow/page_count.cpp

private:
    /// Tests read the state of a run, which the window shows nowhere.
    friend struct ProcessState;

    // ---- mainwindow/process.cpp: construction and what every step uses
    void placeOnScreen();
    void createHelpers();
    void connectControls();
    void fillRuleList();
    void fitCaptions();
    void darkenCaptions();
    void styleTable();
    void addTableAction(const QString &text, const char *slot);
    void createTableActions();
    void setBackground();

    /// Text of a cell, empty where the table holds no item or no such row.
    QString cellText(int row, int column) const;
    /// Puts @p text into a new item of the cell; nothing happens where the table has no such row.
    void setCellText(int row, int column, const QString &text);
    /// Stops the table from sorting, so that row numbers keep their files. The order shown stays.
    void suspendSorting();
    /// Lets the user sort again, unless a page count queue or a run still counts on row numbers.
    /// The order shown stays until a header is clicked.
    void resumeSorting();
    /// Switches the controls that would change the list while page counts are read.
    void enableJobControls(bool enabled);
    /// Adds one line to the progress pane, exactly as it stands.
    void addProgressLine(const QString &line);
    /// A process for @p command, not started, that calls @p finishedSlot (a SLOT() text) once it
    /// has ended, however it ended. A tool that cannot start never ends; it is told to the
    /// observer.
    QProcess *prepareTool(const QString &command, const char *finishedSlot);
    void startTool(const QString &command, const char *finishedSlot);

    std::unique_ptr<Ui_process> ui;
    AboutDialog aboutDialog;
    OpDialog optionsDialog;
    std::unique_ptr<Rules> rules;
    std::unique_ptr<quorlin::ProgressPane> progressPane;
    quorlin::ToolProcesses tools;
    QTimer *previewTimer = nullptr;
    QNetworkAccessManager *networkManager = nullptr;
    QString dataFolderPath;

    // ---- mainwindow/file_list.cpp
    void connectPreview();
    void disconnectPreview();
    void clearInfoQueue();
    void addFileRow(int row, const QString &path);
    void startInfoQueue();
    void moveSelectedRows(quorlin::RowMove direction);
    void swapRows(int row, int other);
    void selectRows(const QList<int> &moved);

    // ---- mainwindow/driver.cpp
    bool refuseEmptyList();
    bool refuseMissingOutputFolder();
    /// @param finished the file that was split last, if this is the end of its turn
    void judgePreviousRow(const QString &finished);
    int rowOfFile(const QString &path) const;
    /// The file being split. Its row may have been moved or removed meanwhile; the pages that are
    /// read and merged stay its own.
    QString currentInput() const;
    /// The "Page" text of the file being split.
    QString currentPageText();

    int currentRow = 0;    ///< row of the file being split; not the table's current row
    int fileCount = 0;     ///< rows to split, read anew for every file
    QString outputFile;    ///< output started last
    QString splitInput;    ///< file being split, empty between files
    QString splitPageText; ///< its "Page" text as it was seen last
    QString pageFolder;    ///< where the pages of the file being split were exported to
    QString finishedInput; ///< file whose turn has just ended
    bool running = false;  ///< a run counts on the table's row numbers
    std::unique_ptr<QProcess> idleProcess; ///< never started

    // ---- mainwindow/page_count.cpp
    QStringList infoQueueFiles;     ///< files that wait for their page count
    QStringList infoQueueRows;      ///< row of each of them, as decimal text
    int infoQueueIndex = 0;         ///< the one being counted
    QPointer<QProcess> infoProcess; ///< its query
    int pageCount = 1;              ///< read last; during a split that of the file being split
    bool counting = false;          ///< a queue counts on the table's row numbers

    // ---- mainwindow/page_export.cpp: the chosen rule
    int ruleX = 0;
    int ruleY = 0;
    int ruleWidth = 0;
    int ruleHeight = 0;
    QString ruleText;

    // ---- mainwindow/region_text.cpp
    void requestPage(int page);
    void readRequestedPages();

    int currentPage = 1;               ///< next page to read, counted from 1
    QList<int> requestedPages;         ///< pages to read in the next turn of the event loop
    QTimer pageTurn;                   ///< lets the user's clicks in between two pages
    QString pageHtml;                  ///< page file being parsed; its lines share its memory
    QStringList pageLines;             ///< lines of the page being parsed
    QStringList pageTexts;             ///< text at the rule's position, one entry a page
    QStringList pageRanges;            ///< pages of each output
    QStringList rangeTexts;            ///< text that names each output
    QPointer<QNetworkReply> pageReply; ///< pending read of a page file
    QXmlStreamReader pageReader;       ///< over the page read last; nothing reads it yet
    std::array<Subtext, quorlin::maximumPageItems> pageItems; ///< items of the page being parsed

    // ---- mainwindow/output_assembly.cpp
    int groupIndex = 0; ///< next group to write
};
