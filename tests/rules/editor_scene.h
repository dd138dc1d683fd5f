#pragma once

#include "rules/rules.h"
#include "tests/support/scratch_folders.h"

#include <QColor>
#include <QLabel>
#include <QLineEdit>
#include <QList>
#include <QPoint>
#include <QPushButton>
#include <QRect>
#include <QSize>
#include <QSpinBox>
#include <QStringList>

#include <memory>

/// Sizes of page pictures, in pixels.
inline constexpr QSize narrowSheet(400, 500);
inline constexpr QSize squareSheet(500, 500);
inline constexpr QSize largeSheet(1200, 1600);

/// Items of a first page, on a narrow sheet and larger ones.
inline const QList<Subtext> twoItems{{72, 104, 210, 12, QStringLiteral("INV-1")},
                                     {72, 200, 60, 20, QStringLiteral("Total 5")}};
/// The item of another page.
inline const QList<Subtext> oneItem{{300, 40, 80, 10, QStringLiteral("Page two")}};

/// Fresh folders with a page export tool that copies prepared pages and notes every call.
class ToolBench
{
public:
    ToolBench();

    // ---- the document
    /// Prepares page @p page: a picture of @p size in one colour and one line per item.
    void addPage(int page, QSize size, const QList<Subtext> &items, const QColor &colour);
    /// Prepares page @p page from a picture of @p size and the page file's text as it stands.
    void addPageText(int page, QSize size, const QByteArray &text, const QColor &colour);
    /// Takes the prepared picture or the prepared items away, so that the tool writes none.
    void removePicture(int page);
    void removeItems(int page);
    /// Writes "file/file" and "file/page" as the main window does.
    void storeSample(const QString &file, const QString &pageCount);
    /// storeSample() with the document itself.
    void storeDocument(int pageCount);
    /// Path of the sample document, which exists.
    QString document() const { return applicationPath() + QStringLiteral("/sample.pdf"); }

    // ---- the tool
    /// Lets the tool end without writing anything.
    void failExports(bool fail);
    /// Holds every export up until releaseExports().
    void holdExports();
    void releaseExports();
    /// Runs the tools of folder @p folder from now on.
    void useRealTools(const QString &folder);
    /// Takes the tool away.
    void removeTool();
    /// Puts an executable script named @p tool into the application folder.
    void writeTool(const QString &tool, const QByteArray &script);
    /// Arguments of every export so far.
    QStringList calls() const;

    /// A text of the settings file, read by a fresh settings object.
    static QString setting(const QString &key);
    /// The settings file as it stands on disk.
    QByteArray settingsFile() const;
    QString applicationPath() const { return folders.application(); }
    QString scratchPath() const { return folders.temporary(); }

private:
    QString canned(const QString &name) const { return applicationPath() + "/canned/" + name; }

    quorlin::test::ScratchFolders folders;
};

/// A rule editor as a user sees and handles it: widgets by name, frames by place, clicks.
class EditorView
{
public:
    explicit EditorView(Rules &shown) : rules(&shown) {}

    Rules &editor() { return *rules; }
    template <typename Widget> Widget *find(const char *name) const
    {
        return rules->findChild<Widget *>(QString::fromLatin1(name));
    }
    QPushButton *button(const char *name) const { return find<QPushButton>(name); }
    QLineEdit *field(const char *name) const { return find<QLineEdit>(name); }
    QSpinBox *pageBox() const { return find<QSpinBox>("spinBox_pagenumber"); }
    QLabel *picture() const { return find<QLabel>("imageLabel"); }
    QPushButton *ruleButton() const { return find<QPushButton>("ruleButton"); }
    /// Frames over the picture in the order in which they were made.
    QList<QPushButton *> frames() const;
    QList<QRect> frameRects() const;
    QSize pictureSize() const { return picture()->pixmap().size(); }
    QColor pictureColour() const;
    /// Clicks a button of the editor with the mouse.
    void click(const char *name);
    /// Puts the cursor on @p point of the picture and clicks there, on whatever lies there.
    void clickPicture(QPoint point);
    /// Clicks the middle of frame @p index.
    void clickFrame(int index);
    /// Types a new rule name.
    void typeName(const QString &name);

private:
    Rules *rules;
};

/// A rule editor of its own over a ToolBench.
class EditorScene : public ToolBench, public EditorView
{
public:
    EditorScene();

    /// Prepares and shows the editor as the main window does, without its event loop.
    void open();
    /// open() and wait until @p frames frames stand.
    void openWithFrames(int frames);

private:
    explicit EditorScene(std::unique_ptr<Rules> made);

    std::unique_ptr<Rules> owned;
};

/// A page file line of @p item.
QByteArray itemLine(const Subtext &item);
