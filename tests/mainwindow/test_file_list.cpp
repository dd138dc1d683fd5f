#include "tests/support/process_state.h"
#include "tests/support/room.h"
#include "tests/support/window_bench.h"

#include <QAction>
#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QTest>
#include <QTextBrowser>
#include <QTextEdit>
#include <QTimer>

using quorlin::test::WindowBench;

namespace {

const QString textA = QStringLiteral("A");

QString setting(const WindowBench &bench, const char *key)
{
    const QSettings settings(bench.folders.settingsFile(), QSettings::IniFormat);
    return settings.value(QLatin1String(key), QStringLiteral("absent")).toString();
}

} // namespace

/// Takes the files that the window hands to the desktop's viewer.
class Viewer : public QObject
{
    Q_OBJECT

public:
    Viewer() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "view"); }
    ~Viewer() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }

    QList<QUrl> viewed;

public slots:
    void view(const QUrl &url) { viewed.append(url); }
};

class TestFileList : public QObject
{
    Q_OBJECT

private slots:
    void shortcutsDoWhatTheButtonsDo();
    void shortcutsAreOffWhileTheButtonsAre();
    void theDeleteKeyWorksInTheListAlone();
    void theManualOpensByKey();
    void thePathColumnKeepsTheUsersWidth();
    void addedFilesAreListedAndCounted();
    void theAddDialogRemembersItsFolder();
    void aCancelledAddDialogChangesNothing();
    void duplicatesAreAllowed();
    void theFirstRowIsSelectedAfterAdding();
    void controlsAreOffWhileCounting();
    void filesWithoutSizeShowNone();
    void theActionsDoWhatTheButtonsDo();

    void dragsNeedFilesAndAnEnabledAddButton();
    void droppedPdfsAreListed();
    void aDropThroughTheWindowSystemIsTaken();
    void aDropWithoutUrlsDoesNothingMore();
    void aPdfBehindASkippedFileIsNotShown();
    void aUrlWithoutLocalNameEndsTheExamination();
    void aFolderEndsTheWholeDrop();
    void aDropThatQueuesNothingLeavesTheControlsOff();

    void removeTakesTheSelectedRows();
    void removeWithoutSelectionTakesNothing();
    void clearTakesAllRows();
    void emptyingTheTableStartsNoPreview_data();
    void emptyingTheTableStartsNoPreview();
    void clearReconnectsThePreview();
    void selectingStartsThePreviewTimer();

    void aDoubleClickOpensTheFile();
    void viewWithoutCurrentRowOpensNothing();
    void theOutputFolderIsRemembered();
    void aCancelledFolderDialogEmptiesTheFolder();
    void keyReleasesAreSwallowed();
};

void TestFileList::addedFilesAreListedAndCounted()
{
    WindowBench bench;
    const QString b = bench.addBatch(QStringLiteral("b.pdf"), {textA, textA, textA});
    const QString a = bench.addBatch(QStringLiteral("a b.pdf"), {textA});
    bench.addFiles({b, a});
    QCOMPARE(bench.column(0), QStringList({b, a}));
    QCOMPARE(bench.column(1), QStringList({QStringLiteral("3"), QStringLiteral("1")}));
    const double size = double(QFile(b).size()) / 1000.0;
    QCOMPARE(bench.cell(0, 2), QString::asprintf("%14.3f KB", size));
    QVERIFY(bench.table()->item(0, 3) == nullptr);
    QCOMPARE(bench.paneLines(),
             QStringList({QStringLiteral("Loading ") + b, QStringLiteral("Loading ") + a,
                          QStringLiteral("Finished.")}));
    const QString c = bench.addBatch(QStringLiteral("c.PDF"), {textA, textA});
    bench.addFiles({c});
    QCOMPARE(bench.column(0), QStringList({b, a, c}));
    QCOMPARE(bench.cell(2, 1), QStringLiteral("2"));
}

void TestFileList::theAddDialogRemembersItsFolder()
{
    WindowBench bench;
    const QString file = bench.addBatch(QStringLiteral("a.pdf"), {textA});
    QString title;
    QString firstFolder;
    QStringList filters;
    bench.modals.inspectFileDialog([&](QFileDialog *dialog) {
        title = dialog->windowTitle();
        firstFolder = dialog->directory().absolutePath();
        filters = dialog->nameFilters();
    });
    bench.addFiles({file});
    QCOMPARE(title, QStringLiteral("Add File"));
    QCOMPARE(filters,
             QStringList({QStringLiteral("PDF File(*.pdf)"), QStringLiteral("ALL files(*.*)")}));
    QCOMPARE(firstFolder, bench.folders.application()); // "." by default
    QCOMPARE(setting(bench, "dir/input"), bench.folders.inputs());

    QString secondFolder;
    bench.modals.inspectFileDialog(
        [&](QFileDialog *dialog) { secondFolder = dialog->directory().absolutePath(); });
    bench.addFiles({file});
    QCOMPARE(secondFolder, bench.folders.inputs());

    // Of files from several folders, the first one's is remembered.
    const QString inner = bench.folders.inputs() + QStringLiteral("/inner");
    QVERIFY(QDir().mkpath(inner));
    bench.addFiles({bench.addBatch(QStringLiteral("inner/b.pdf"), {textA}), file});
    QCOMPARE(setting(bench, "dir/input"), inner);
}

void TestFileList::aCancelledAddDialogChangesNothing()
{
    WindowBench bench;
    bench.addFiles({bench.addBatch(QStringLiteral("a.pdf"), {textA})});
    const QStringList lines = bench.paneLines();
    const QString folder = setting(bench, "dir/input");
    bench.modals.cancelNext();
    bench.click("openfileButton");
    QCOMPARE(bench.table()->rowCount(), 1);
    QCOMPARE(bench.paneLines(), lines);
    QCOMPARE(setting(bench, "dir/input"), folder);
    QVERIFY(bench.controlsEnabled());
    QVERIFY(ProcessState::infoQueueFiles(bench.window()).isEmpty());
}

void TestFileList::duplicatesAreAllowed()
{
    WindowBench bench;
    const QString file = bench.addBatch(QStringLiteral("a.pdf"), {textA});
    bench.addFiles({file});
    bench.addFiles({file});
    QCOMPARE(bench.column(0), QStringList({file, file}));
    QCOMPARE(bench.column(1), QStringList({QStringLiteral("1"), QStringLiteral("1")}));
}

void TestFileList::theFirstRowIsSelectedAfterAdding()
{
    WindowBench bench;
    bench.addFiles({bench.addBatch(QStringLiteral("a.pdf"), {textA}),
                    bench.addBatch(QStringLiteral("b.pdf"), {textA})});
    QCOMPARE(bench.selectedRows(), QList<int>({0}));
    bench.selectRows({1});
    bench.addFiles({bench.addBatch(QStringLiteral("c.pdf"), {textA})});
    QCOMPARE(bench.table()->currentRow(), 0);
    QCOMPARE(bench.table()->currentColumn(), 0);
    QCOMPARE(bench.selectedRows(), QList<int>({0, 1})); // what was selected stays so
}

void TestFileList::controlsAreOffWhileCounting()
{
    WindowBench bench;
    const QString gate = bench.folders.temporary() + QStringLiteral("/gate");
    const QString file = bench.folders.addInput(
        QStringLiteral("a.pdf"), "info NumberOfPages: 1\nwait " + gate.toUtf8() + "\n");
    QVERIFY(bench.controlsEnabled());
    bench.dropFiles({file});
    QVERIFY(bench.controlsDisabled());
    QVERIFY(bench.widget<QPushButton>("aboutpushButton")->isEnabled());
    QVERIFY(bench.widget<QPushButton>("outputButton")->isEnabled());
    quorlin::test::writeFile(gate, "");
    QTRY_VERIFY(bench.controlsEnabled());
    QCOMPARE(bench.cell(0, 1), QStringLiteral("1"));
}

void TestFileList::filesWithoutSizeShowNone()
{
    WindowBench bench;
    const QString empty = bench.folders.addInput(QStringLiteral("empty.pdf"), "");
    bench.addFiles({empty});
    QVERIFY(bench.table()->item(0, 2) == nullptr);
    QVERIFY(bench.table()->item(0, 1) != nullptr);
    QCOMPARE(bench.cell(0, 1), QString());
}

void TestFileList::theActionsDoWhatTheButtonsDo()
{
    WindowBench bench;
    const Viewer viewer;
    const QString a = bench.addBatch(QStringLiteral("a.pdf"), {textA});
    const QString b = bench.addBatch(QStringLiteral("b.pdf"), {textA});
    const QString c = bench.addBatch(QStringLiteral("c.pdf"), {textA});
    const QList<QAction *> actions = bench.table()->actions();
    bench.modals.chooseFiles({a, b, c});
    actions.at(0)->trigger();
    QTRY_COMPARE(bench.column(0), QStringList({a, b, c}));
    QTRY_VERIFY(bench.controlsEnabled());
    bench.selectRows({1});
    actions.at(1)->trigger();
    QCOMPARE(viewer.viewed, QList<QUrl>({QUrl::fromLocalFile(b)}));
    actions.at(2)->trigger();
    QCOMPARE(bench.column(0), QStringList({a, c}));
    actions.at(3)->trigger();
    QCOMPARE(bench.table()->rowCount(), 0);
}

void TestFileList::dragsNeedFilesAndAnEnabledAddButton()
{
    WindowBench bench;
    const auto accepted = [&](const QMimeData &data) {
        QDragEnterEvent event(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        event.ignore();
        QApplication::sendEvent(&bench.window(), &event);
        return event.isAccepted();
    };
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(QStringLiteral("/x.pdf"))});
    QMimeData text;
    text.setText(QStringLiteral("/x.pdf"));
    QVERIFY(accepted(files));
    QVERIFY(!accepted(text));
    bench.widget<QPushButton>("openfileButton")->setEnabled(false);
    QVERIFY(!accepted(files));
    bench.widget<QPushButton>("openfileButton")->setEnabled(true);

    // A split refuses nothing.
    bench.addFiles({bench.addBatch(QStringLiteral("a.pdf"), {textA})});
    bench.setOutputFolder(bench.folders.outputs());
    QList<bool> duringSplit;
    bench.window().progressObserver = [&](const QString &) {
        duringSplit.append(accepted(files) && !accepted(text));
    };
    bench.split();
    QCOMPARE(duringSplit, QList<bool>(5, true));
}

void TestFileList::droppedPdfsAreListed()
{
    WindowBench bench;
    const QString a = bench.addBatch(QStringLiteral("a.pdf"), {textA});
    const QString b = bench.addBatch(QStringLiteral("b.PDF"), {textA, textA});
    bench.dropFiles({b, a});
    QTRY_VERIFY(bench.controlsEnabled());
    QCOMPARE(bench.column(0), QStringList({b, a}));
    QCOMPARE(bench.column(1), QStringList({QStringLiteral("2"), QStringLiteral("1")}));
    QCOMPARE(bench.selectedRows(), QList<int>({0}));
    QCOMPARE(setting(bench, "dir/input"), QStringLiteral("absent"));
}

void TestFileList::aDropThroughTheWindowSystemIsTaken()
{
    WindowBench bench;
    const QString a = bench.addBatch(QStringLiteral("a.pdf"), {textA});
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(a)});
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&bench.window(), &enter);
    QDropEvent event(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&bench.window(), &event);
    QVERIFY(event.isAccepted());
    QTRY_VERIFY(bench.controlsEnabled());
    QCOMPARE(bench.column(0), QStringList({a}));
}

void TestFileList::aDropWithoutUrlsDoesNothingMore()
{
    WindowBench bench;
    bench.drop({});
    QVERIFY(bench.controlsEnabled());
    QVERIFY(bench.paneLines().isEmpty());
}

void TestFileList::aPdfBehindASkippedFileIsNotShown()
{
    WindowBench bench;
    const QString a = bench.addBatch(QStringLiteral("a.pdf"), {textA});
    const QString text = bench.folders.addInput(QStringLiteral("a.txt"), "x");
    const QString b = bench.addBatch(QStringLiteral("b.pdf"), {textA});
    bench.addFiles({a});
    bench.dropFiles({text, b});
    QCOMPARE(ProcessState::infoQueueRows(bench.window()), QStringList({QStringLiteral("2")}));
    QTRY_VERIFY(bench.controlsEnabled());
    QCOMPARE(bench.column(0), QStringList({a}));
    QVERIFY(bench.paneLines().contains(QStringLiteral("Loading ") + b));
}

void TestFileList::aUrlWithoutLocalNameEndsTheExamination()
{
    WindowBench bench;
    const QString a = bench.addBatch(QStringLiteral("a.pdf"), {textA});
    const QString b = bench.addBatch(QStringLiteral("b.pdf"), {textA});
    bench.drop({QUrl::fromLocalFile(a), QUrl(QStringLiteral("http://example.org/x.pdf")),
                QUrl::fromLocalFile(b)});
    QTRY_VERIFY(bench.controlsEnabled());
    QCOMPARE(bench.column(0), QStringList({a}));
    QCOMPARE(bench.column(1), QStringList({QStringLiteral("1")}));
    QCOMPARE(bench.paneLines(),
             QStringList({QStringLiteral("Loading ") + a, QStringLiteral("Finished.")}));
}

void TestFileList::aFolderEndsTheWholeDrop()
{
    WindowBench bench;
    const QString a = bench.addBatch(QStringLiteral("a.pdf"), {textA});
    const QString b = bench.addBatch(QStringLiteral("b.pdf"), {textA});
    bench.dropFiles({a, bench.folders.outputs(), b});
    QVERIFY(bench.controlsEnabled());
    QCOMPARE(bench.column(0), QStringList({a}));
    QVERIFY(bench.table()->item(0, 1) == nullptr);
    QVERIFY(bench.paneLines().isEmpty());
    QVERIFY(bench.table()->isSortingEnabled());
    QVERIFY(quorlin::test::toolCalls(bench.folders.application()).isEmpty());
}

void TestFileList::aDropThatQueuesNothingLeavesTheControlsOff()
{
    WindowBench bench;
    bench.dropFiles({bench.folders.addInput(QStringLiteral("a.txt"), "x")});
    QCOMPARE(bench.paneLines(), QStringList({QStringLiteral("Finished.")}));
    QVERIFY(bench.controlsDisabled());
}

void TestFileList::removeTakesTheSelectedRows()
{
    WindowBench bench;
    QStringList files;
    for (const char *name : {"a.pdf", "b.pdf", "c.pdf", "d.pdf"}) {
        files.append(bench.addBatch(QLatin1String(name), {textA}));
    }
    bench.addFiles(files);
    bench.selectRows({3, 1});
    bench.click("removeButton");
    QCOMPARE(bench.column(0), QStringList({files.at(0), files.at(2)}));
}

void TestFileList::removeWithoutSelectionTakesNothing()
{
    WindowBench bench;
    bench.addFiles({bench.addBatch(QStringLiteral("a.pdf"), {textA})});
    bench.table()->clearSelection();
    bench.click("removeButton");
    QCOMPARE(bench.table()->rowCount(), 1);
}

void TestFileList::clearTakesAllRows()
{
    WindowBench bench;
    bench.click("removeallButton");
    bench.addFiles({bench.addBatch(QStringLiteral("a.pdf"), {textA}),
                    bench.addBatch(QStringLiteral("b.pdf"), {textA})});
    bench.click("removeallButton");
    QCOMPARE(bench.table()->rowCount(), 0);
}

void TestFileList::emptyingTheTableStartsNoPreview_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("remove") << "removeButton";
    QTest::newRow("clear") << "removeallButton";
}

void TestFileList::emptyingTheTableStartsNoPreview()
{
    QFETCH(QString, button);
    WindowBench bench;
    bench.addFiles({bench.addBatch(QStringLiteral("a.pdf"), {textA})});
    QTimer *timer = ProcessState::previewTimer(bench.window());
    timer->stop();
    bench.click(button.toLatin1());
    QCOMPARE(bench.table()->rowCount(), 0);
    QVERIFY(!timer->isActive());
}

void TestFileList::clearReconnectsThePreview()
{
    WindowBench bench;
    const QString a = bench.addBatch(QStringLiteral("a.pdf"), {textA});
    QTimer *timer = ProcessState::previewTimer(bench.window());
    bench.addFiles({a});
    bench.click("removeallButton");
    timer->stop();
    bench.dropFiles({a}); // selects row 0
    QTRY_VERIFY(bench.controlsEnabled());
    QVERIFY(timer->isActive());

    // A table emptied row by row is connected again by the next dialog, not by "Clear", which has
    // nothing to do, and not by a drop.
    bench.click("removeButton");
    timer->stop();
    bench.click("removeallButton");
    bench.dropFiles({a});
    QTRY_VERIFY(bench.controlsEnabled());
    QVERIFY(!timer->isActive());
    bench.modals.cancelNext();
    bench.click("openfileButton");
    bench.table()->clearSelection();
    QVERIFY(timer->isActive());

    // Or by the next "Romove", which finds nothing to take.
    bench.selectRows({0});
    bench.click("removeButton");
    timer->stop();
    bench.click("removeButton");
    bench.dropFiles({a});
    QTRY_VERIFY(bench.controlsEnabled());
    QVERIFY(timer->isActive());
}

void TestFileList::selectingStartsThePreviewTimer()
{
    WindowBench bench;
    bench.addFiles({bench.addBatch(QStringLiteral("a.pdf"), {textA}),
                    bench.addBatch(QStringLiteral("b.pdf"), {textA})});
    QTimer *timer = ProcessState::previewTimer(bench.window());
    timer->stop();
    bench.selectRows({1});
    QVERIFY(timer->isActive());
    QCOMPARE(timer->interval(), 300);
    QVERIFY(!timer->isSingleShot());
    timer->stop();
    bench.selectRows({1}); // a click on what is selected already
    QVERIFY(timer->isActive());
}

void TestFileList::aDoubleClickOpensTheFile()
{
    WindowBench bench;
    const Viewer viewer;
    const QString a = bench.addBatch(QStringLiteral("a.pdf"), {textA});
    const QString b = bench.addBatch(QStringLiteral("b #1 %41.pdf"), {textA});
    bench.addFiles({a, b});
    bench.selectRows({1});
    const QPoint place = bench.table()->visualItemRect(bench.table()->item(1, 0)).center();
    QTest::mouseDClick(bench.table()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QCOMPARE(viewer.viewed.size(), 1);
    QCOMPARE(viewer.viewed.first().toLocalFile(), b);
}

void TestFileList::viewWithoutCurrentRowOpensNothing()
{
    WindowBench bench;
    const Viewer viewer;
    bench.window().setopenselected();
    bench.addFiles({bench.addBatch(QStringLiteral("a.pdf"), {textA})});
    bench.table()->setCurrentItem(nullptr);
    bench.window().setopenselected();
    QVERIFY(viewer.viewed.isEmpty());
}

void TestFileList::theOutputFolderIsRemembered()
{
    WindowBench bench;
    QString title;
    QString firstFolder;
    QFileDialog::Options options;
    bench.modals.inspectFileDialog([&](QFileDialog *dialog) {
        title = dialog->windowTitle();
        firstFolder = dialog->directory().absolutePath();
        options = dialog->options();
    });
    bench.modals.chooseFolder(bench.folders.outputs());
    bench.click("outputButton");
    QCOMPARE(title, QStringLiteral("Save"));
    QCOMPARE(firstFolder, bench.folders.application()); // "." by default
    QVERIFY(options.testFlag(QFileDialog::ShowDirsOnly));
    QVERIFY(options.testFlag(QFileDialog::DontResolveSymlinks));
    QCOMPARE(bench.widget<QLineEdit>("outputfolderEdit")->text(), bench.folders.outputs());
    QCOMPARE(setting(bench, "dir/output"), bench.folders.outputs());

    QString secondFolder;
    bench.modals.inspectFileDialog(
        [&](QFileDialog *dialog) { secondFolder = dialog->directory().absolutePath(); });
    bench.modals.cancelNext();
    bench.click("outputButton");
    QCOMPARE(secondFolder, bench.folders.outputs());
}

void TestFileList::aCancelledFolderDialogEmptiesTheFolder()
{
    WindowBench bench;
    bench.modals.chooseFolder(bench.folders.outputs());
    bench.click("outputButton");
    bench.modals.cancelNext();
    bench.click("outputButton");
    QCOMPARE(bench.widget<QLineEdit>("outputfolderEdit")->text(), QString());
    QCOMPARE(setting(bench, "dir/output"), QString());
}

void TestFileList::keyReleasesAreSwallowed()
{
    WindowBench bench;
    QKeyEvent event(QEvent::KeyRelease, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
    QApplication::sendEvent(&bench.window(), &event);
    QVERIFY(event.isAccepted());
}

void TestFileList::shortcutsDoWhatTheButtonsDo()
{
    WindowBench bench;
    const QString a = bench.addBatch(QStringLiteral("a.pdf"), {QStringLiteral("A")});
    const QString b = bench.addBatch(QStringLiteral("b.pdf"), {QStringLiteral("B")});
    bench.modals.chooseFiles({a, b});
    bench.window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&bench.window()));
    QTest::keyClick(bench.table(), Qt::Key_O, Qt::ControlModifier);
    QTRY_COMPARE(bench.column(0), QStringList({a, b}));
    QTRY_VERIFY(bench.controlsEnabled());
    bench.window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&bench.window()));
    bench.table()->clearSelection();
    bench.selectRows({0});
    QTest::keyClick(bench.table(), Qt::Key_Delete);
    QCOMPARE(bench.column(0), QStringList({b}));
    bench.setOutputFolder(bench.folders.outputs());
    QTest::keyClick(bench.widget<QLineEdit>("outputfolderEdit"), Qt::Key_Return,
                    Qt::ControlModifier);
    QTRY_COMPARE(bench.column(3), QStringList({QStringLiteral("Succeed")}));
    // Captions are as they were; the tips tell the keys.
    QCOMPARE(bench.widget<QPushButton>("openfileButton")->text(), QStringLiteral("Add"));
    QCOMPARE(bench.widget<QPushButton>("removeButton")->text(), QStringLiteral("Romove"));
    QCOMPARE(bench.widget<QPushButton>("runButton")->text(), QStringLiteral("Split"));
    QCOMPARE(bench.widget<QPushButton>("openfileButton")->toolTip(),
             QStringLiteral("Add files to the list (Ctrl+O)"));
    QCOMPARE(bench.widget<QPushButton>("removeButton")->toolTip(),
             QStringLiteral("Remove the selected files from the list (Del)"));
    QCOMPARE(bench.widget<QPushButton>("runButton")->toolTip(),
             QStringLiteral("Split the files in the list (Ctrl+Return)"));
    QCOMPARE(bench.widget<QPushButton>("aboutpushButton")->toolTip(),
             QStringLiteral("About this program. F1 opens the manual."));
}

void TestFileList::shortcutsAreOffWhileTheButtonsAre()
{
    WindowBench bench;
    const QString gate = bench.folders.temporary() + QStringLiteral("/gate");
    const QString file = bench.folders.addInput(
        QStringLiteral("a.pdf"), "info NumberOfPages: 1\nwait " + gate.toUtf8() + "\n");
    bench.setOutputFolder(bench.folders.outputs());
    bench.window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&bench.window()));
    bench.dropFiles({file});
    QVERIFY(bench.controlsDisabled());
    bench.selectRows({0});
    QTest::keyClick(bench.table(), Qt::Key_Delete);
    QTest::keyClick(bench.table(), Qt::Key_O, Qt::ControlModifier);
    QTest::keyClick(bench.table(), Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(bench.column(0), QStringList({file}));
    QVERIFY(!bench.paneLines().contains(QStringLiteral("Conversion Start:")));
    quorlin::test::writeFile(gate, "");
    QTRY_VERIFY(bench.controlsEnabled());
}

void TestFileList::theDeleteKeyWorksInTheListAlone()
{
    WindowBench bench;
    const QString file = bench.addBatch(QStringLiteral("a.pdf"), {QStringLiteral("A")});
    bench.addFiles({file});
    bench.window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&bench.window()));
    auto *field = bench.widget<QLineEdit>("outputfolderEdit");
    field->setText(QStringLiteral("folder"));
    field->setFocus();
    field->setCursorPosition(0);
    QTest::keyClick(field, Qt::Key_Delete);
    QCOMPARE(field->text(), QStringLiteral("older"));
    for (const char *name : {"textEdit_process", "comboBox_rule", "openfileButton"}) {
        auto *widget = bench.widget<QWidget>(name);
        widget->setFocus();
        QTest::keyClick(widget, Qt::Key_Delete);
    }
    QCOMPARE(bench.column(0), QStringList({file}));
}

void TestFileList::theManualOpensByKey()
{
    WindowBench bench;
    bench.window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&bench.window()));
    for (int i = 0; i < 2; ++i) {
        QTest::keyClick(bench.table(), Qt::Key_F1);
        QTextBrowser *manual = nullptr;
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *window : windows) {
            if (window->objectName() == QLatin1String("ManualWindow") && window->isVisible()) {
                QVERIFY(manual == nullptr);
                manual = qobject_cast<QTextBrowser *>(window);
            }
        }
        QVERIFY(manual != nullptr);
        QCOMPARE(manual->source().fileName(), QStringLiteral("manual.md"));
        QVERIFY(manual->toPlainText().contains(QLatin1String("Make a rule")));
        QVERIFY(manual->screen()->availableGeometry().contains(manual->frameGeometry()));
        // A link leads to another page, and every picture is there.
        manual->setSource(QUrl(QStringLiteral("qrc:/manual/rule-editor.md")));
        QVERIFY(manual->toPlainText().contains(QLatin1String("Picking and saving")));
        const QVariant picture = manual->loadResource(
            QTextDocument::ImageResource, QUrl(QStringLiteral("images/rule-editor-selected.png")));
        QVERIFY(!picture.toByteArray().isEmpty());
        manual->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(manual));
        QTest::keyClick(manual, Qt::Key_Escape);
        QVERIFY(!manual->isVisible());
        bench.window().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&bench.window()));
    }
}

void TestFileList::thePathColumnKeepsTheUsersWidth()
{
    WindowBench bench;
    const QString name = QString(120, QLatin1Char('n')) + QStringLiteral(".pdf");
    const QString a = bench.addBatch(name, {QStringLiteral("A")});
    const QString b = bench.addBatch(QStringLiteral("b.pdf"), {QStringLiteral("B")});
    bench.addFiles({a});
    bench.window().resize(1600, 490);
    // The border between the first two headers is dragged.
    QHeaderView *header = bench.table()->horizontalHeader();
    const QPoint border(header->sectionViewportPosition(1) - 1, header->height() / 2);
    QTest::mousePress(header->viewport(), Qt::LeftButton, {}, border);
    QTest::mouseMove(header->viewport(), border + QPoint(300, 0));
    QTest::mouseMove(header->viewport(), border + QPoint(700, 0));
    QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, border + QPoint(700, 0));
    const int width = header->sectionSize(0);
    QVERIFY2(width >= 800, qPrintable(QString::number(width)));
    bench.addFiles({b});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    bench.selectRows({0});
    bench.click("pushButton_down");
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(20, header->height() / 2));
    for (const int windowWidth : {1000, 1900, 900, 1600}) {
        bench.window().resize(windowWidth, 600);
        QCoreApplication::processEvents();
        QCOMPARE(header->sectionSize(0), width);
    }
    bench.window().hide();
    bench.window().show();
    QCOMPARE(header->sectionSize(0), width);
    // What does not fit keeps both ends.
    QCOMPARE(bench.table()->textElideMode(), Qt::ElideMiddle);
    QVERIFY(!bench.table()->wordWrap());
}

QUORLIN_TEST(TestFileList)
#include "test_file_list.moc"
