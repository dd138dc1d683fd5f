#pragma once

#include "analysis/subtext.h"
#include "mainwindow/aboutdialog.h"
#include "options/opdialog.h"

#include <QString>
#include <QStringList>
#include <QWidget>

#include <array>
#include <functional>

class QDragEnterEvent;
class QDropEvent;
class QKeyEvent;
class QNetworkAccessManager;
class QNetworkReply;
class QProcess;
class QTimer;
class QXmlStreamReader;
class Rules;
class Ui_process;

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
    /// then, the window stays silent, but a caller without a window must not wait for ever.
    std::function<void(const QString &command)> toolFailureObserver;

public slots:
    // Declared in this order on purpose: it fixes the indices of the meta-object. The event
    // handlers among them override QWidget's.
    void convertbegin();                                  // pipeline/driver.cpp
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
    void getpdfpage();                                    // pipeline/page_count.cpp
    QStringList splitPage();                              // pipeline/page_export.cpp
    void getAlltheText();                                 // analysis/region_text.cpp
    void gethtm();                                        // analysis/region_text.cpp
    void getTextPosition(QString sxml);                   // analysis/region_text.cpp
    Subtext getSubtextInfo(QString sRow);                 // analysis/region_text.cpp
    int getpos(QString sPos, QString sRow);               // analysis/region_text.cpp
    QString gettext(QString sRow);                        // analysis/region_text.cpp
    void splitpdffile();                                  // pipeline/output_assembly.cpp
    void setlink();                                       // pipeline/page_export.cpp
    void setrowup();                                      // mainwindow/file_list.cpp
    void setrowdown();                                    // mainwindow/file_list.cpp
    void setpdfpage();                                    // pipeline/page_count.cpp
};
