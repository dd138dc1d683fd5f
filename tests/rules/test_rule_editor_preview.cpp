#include "editor_scene.h"
#include "tests/support/quiet.h"
#include "tests/support/room.h"

#include <QApplication>
#include <QCursor>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFrame>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>
#include <QtTest/qtestspontaneevent.h>

namespace {

QStringList messages;

void noteMessage(QtMsgType, const QMessageLogContext &, const QString &text)
{
    messages.append(text);
}

/// Turns the wheel over @p widget as the window system does, the cursor on @p place of it.
void turnWheel(QWidget *widget, QPoint place, QPoint delta,
               Qt::ScrollPhase phase = Qt::NoScrollPhase)
{
    const QPoint global = widget->mapToGlobal(place);
    QCursor::setPos(global);
    QWheelEvent event(place, global, QPoint(), delta, Qt::NoButton, Qt::NoModifier, phase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    QCoreApplication::instance()->notify(widget, &event);
}

} // namespace

class TestRuleEditorPreview : public QObject
{
    Q_OBJECT

private slots:
    void noPagesSwitchEverythingOff_data();
    void noPagesSwitchEverythingOff();
    void noPagesKeepTheEarlierPictureWithoutFrames();
    void documentAfterNoneBringsTheControlsBack();
    void firstPageIsExportedAndShown();
    void exportCommandIsLogged();
    void pageZeroLeavesThePageBoundsOut();
    void framesFollowThePicture();
    void missingDocumentIsNotExported();
    void missingDocumentKeepsThePictureWithoutFrames();
    void pageChangeExportsThatPageOnce();
    void setUpExportsOnce();
    void turningPagesKeepsThePickedPlaceInSight();
    void zoomingKeepsThePickedPlaceInSight();
    void zoomingKeepsTheMiddleWhereNothingIsPicked();
    void typedPageIsExported();
    void pageButtonsStopAtTheEnds();
    void onlyPageHasNoNeighbours();
    void pageWithoutPictureKeepsTheOldOne();
    void zoomScalesPictureAndFrames();
    void threeShrinksGiveHalfAndABit();
    void zoomDoesNotExport();
    void zoomOutlivesPagesAndOpenings();
    void picturesOfOneSecondAndSizeAreToldApart();
    void wheelAboveTheFrameZooms();
    void wheelOverThePictureOnlyScrolls();
    void touchpadGesturesDoNotZoomByTheirEdges();
    void zoomingTakesTheFocusOffAFrame();
    void scratchFolderMayHoldAnyCharacter();
};

void TestRuleEditorPreview::noPagesSwitchEverythingOff_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("pages");
    QTest::newRow("empty list") << "Empty input"
                                << "0";
    QTest::newRow("unknown page count") << "sample.pdf"
                                        << "";
    QTest::newRow("no number") << "sample.pdf"
                               << "many";
    QTest::newRow("less than none") << "sample.pdf"
                                    << "-3";
}

void TestRuleEditorPreview::noPagesSwitchEverythingOff()
{
    QFETCH(QString, file);
    QFETCH(QString, pages);
    EditorScene scene;
    scene.storeSample(file, pages);
    scene.open();
    QCOMPARE(scene.pageBox()->minimum(), 0);
    QCOMPARE(scene.pageBox()->maximum(), 0);
    QCOMPARE(scene.pageBox()->value(), 0);
    for (const char *name : {"pushButton_down", "pushButton_up", "pushButton_zoomin",
                             "pushButton_zoomout", "pushButton_save"}) {
        QVERIFY2(!scene.button(name)->isEnabled(), name);
    }
    QVERIFY(!scene.field("lineEdit_rule")->isEnabled());
    QVERIFY(!scene.field("lineEdit_rulebefore")->isEnabled());
    QCOMPARE(scene.calls(), QStringList());
    QVERIFY(scene.picture()->pixmap().isNull());
}

void TestRuleEditorPreview::noPagesKeepTheEarlierPictureWithoutFrames()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.storeDocument(1);
    scene.openWithFrames(2);
    scene.editor().close();
    scene.storeSample("Empty input", "0");
    scene.open();
    QCOMPARE(scene.pictureSize(), narrowSheet);
    QCOMPARE(scene.frames().size(), 0);
    QCOMPARE(scene.calls().size(), 1);
}

void TestRuleEditorPreview::documentAfterNoneBringsTheControlsBack()
{
    EditorScene scene;
    scene.storeSample("Empty input", "0");
    scene.open();
    scene.editor().close();
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.addPage(2, narrowSheet, oneItem, Qt::cyan);
    scene.storeDocument(2);
    scene.openWithFrames(2);
    QVERIFY(scene.button("pushButton_zoomin")->isEnabled());
    QVERIFY(scene.button("pushButton_zoomout")->isEnabled());
    QVERIFY(scene.button("pushButton_up")->isEnabled());
    QVERIFY(!scene.button("pushButton_save")->isEnabled()); // not before an item is confirmed
    scene.click("pushButton_up");
    QTRY_COMPARE(scene.frames().size(), 1);
    scene.click("pushButton_down");
    QTRY_COMPARE(scene.frames().size(), 2);
    QCOMPARE(scene.calls().size(), 3);
}

void TestRuleEditorPreview::firstPageIsExportedAndShown()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.storeDocument(12);
    scene.openWithFrames(2);
    QCOMPARE(scene.calls(), QStringList{"-htmlformat -f 1 -l 1 " + scene.document() + ' ' +
                                        scene.scratchPath() + "/text.xml"});
    QCOMPARE(scene.pictureSize(), narrowSheet);
    QCOMPARE(scene.pictureColour(), QColor(Qt::yellow));
    QCOMPARE(scene.frameRects(), (QList<QRect>{{72, 104, 210, 12}, {72, 200, 60, 20}}));
    QCOMPARE(scene.pageBox()->minimum(), 1);
    QCOMPARE(scene.pageBox()->maximum(), 12);
    QCOMPARE(scene.pageBox()->value(), 1);
    QCOMPARE(scene.find<QLabel>("label_pagenumber")->text(), QStringLiteral("/12"));
    QVERIFY(scene.button("pushButton_zoomin")->isEnabled());
    QVERIFY(scene.button("pushButton_zoomout")->isEnabled());
    QVERIFY(!scene.button("pushButton_down")->isEnabled());
    QVERIFY(scene.button("pushButton_up")->isEnabled());
}

void TestRuleEditorPreview::exportCommandIsLogged()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.storeDocument(1);
    messages.clear();
    const auto former = qInstallMessageHandler(noteMessage);
    scene.editor().setIniImage();
    qInstallMessageHandler(former);
    const QString command = "\"\"" + scene.applicationPath() +
                            "/pagexport\" -htmlformat -f 1 -l 1 \"" + scene.document() + "\" \"" +
                            scene.scratchPath() + "/text.xml\"\" ";
    QVERIFY2(messages.contains(command), qPrintable(messages.join('\n')));
}

void TestRuleEditorPreview::pageZeroLeavesThePageBoundsOut()
{
    EditorScene scene;
    scene.editor().generatePNGfile("a b.pdf", 0, scene.scratchPath() + "/text.xml");
    QCOMPARE(scene.calls(),
             QStringList{"-htmlformat a b.pdf " + scene.scratchPath() + "/text.xml"});
}

void TestRuleEditorPreview::framesFollowThePicture()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.storeDocument(1);
    scene.editor().setIniImage();
    QCOMPARE(scene.pictureSize(), narrowSheet);
    QCOMPARE(scene.frames().size(), 0);
    QTRY_COMPARE(scene.frames().size(), 2);
    for (const QPushButton *frame : scene.frames()) {
        QVERIFY(!frame->isHidden());
    }
}

void TestRuleEditorPreview::missingDocumentIsNotExported()
{
    EditorScene scene;
    scene.storeSample("/nowhere/gone.pdf", "5");
    scene.open();
    QCOMPARE(scene.pageBox()->maximum(), 5);
    QCOMPARE(scene.pageBox()->value(), 1);
    QCOMPARE(scene.find<QLabel>("label_pagenumber")->text(), QStringLiteral("/5"));
    scene.pageBox()->setValue(3);
    QCOMPARE(scene.calls(), QStringList());
}

void TestRuleEditorPreview::missingDocumentKeepsThePictureWithoutFrames()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.storeDocument(1);
    scene.openWithFrames(2);
    QVERIFY(QFile::remove(scene.document()));
    scene.editor().close();
    scene.open();
    QCOMPARE(scene.pictureSize(), narrowSheet);
    QCOMPARE(scene.frames().size(), 0);
    QCOMPARE(scene.calls().size(), 1);
}

void TestRuleEditorPreview::pageChangeExportsThatPageOnce()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.addPage(2, QSize(500, 400), oneItem, Qt::cyan);
    scene.storeDocument(2);
    scene.openWithFrames(2);
    scene.click("pushButton_up");
    QCOMPARE(scene.pageBox()->value(), 2);
    QTRY_COMPARE(scene.frameRects(), (QList<QRect>{{300, 40, 80, 10}}));
    QCOMPARE(scene.pictureSize(), QSize(500, 400));
    QCOMPARE(scene.pictureColour(), QColor(Qt::cyan));
    QCOMPARE(scene.calls().size(), 2);
    QVERIFY(scene.calls().last().startsWith("-htmlformat -f 2 -l 2 "));
    scene.click("pushButton_down");
    QCOMPARE(scene.pageBox()->value(), 1);
    QTRY_COMPARE(scene.frames().size(), 2);
    QCOMPARE(scene.calls().size(), 3);
}

void TestRuleEditorPreview::setUpExportsOnce()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.addPage(4, narrowSheet, oneItem, Qt::cyan);
    scene.storeDocument(9);
    scene.openWithFrames(2);
    scene.pageBox()->setValue(4);
    QCOMPARE(scene.calls().size(), 2);
    // The page box goes from 4 of 9 to 1 of 2 without an export of its own.
    scene.storeDocument(2);
    scene.editor().close();
    scene.openWithFrames(2);
    QCOMPARE(scene.calls().size(), 3);
    QCOMPARE(scene.pageBox()->value(), 1);
    QVERIFY(scene.button("pushButton_up")->isEnabled());
    QVERIFY(!scene.button("pushButton_down")->isEnabled());
}

namespace {

const Subtext lowItem{900, 1200, 80, 14, QStringLiteral("item")};

void openLarge(EditorScene &scene)
{
    scene.addPage(1, largeSheet, {{5, 5, 60, 12, "first"}, lowItem}, Qt::yellow);
    scene.addPage(2, largeSheet, {{5, 5, 60, 12, "first"}, {1100, 1580, 60, 12, "last"}}, Qt::cyan);
    scene.storeDocument(2);
    scene.openWithFrames(2);
}

/// Whether @p item's place can be seen as a whole at zoom @p zoom.
bool isInSight(EditorScene &scene, const Subtext &item, double zoom)
{
    const auto *viewport = scene.find<QScrollArea>("scrollArea")->viewport();
    const QRect place(int(item.left * zoom), int(item.top * zoom), int(item.width * zoom),
                      int(item.height * zoom));
    return viewport->rect().contains(place.translated(scene.picture()->pos()));
}

} // namespace

void TestRuleEditorPreview::turningPagesKeepsThePickedPlaceInSight()
{
    EditorScene scene;
    openLarge(scene);
    scene.find<QScrollArea>("scrollArea")->ensureVisible(940, 1207);
    scene.clickFrame(1);
    // Reached by Tab, the item has the focus; the frames of the next page must not take it over.
    scene.frames().at(1)->setFocus(Qt::TabFocusReason);
    QVERIFY(isInSight(scene, lowItem, 1));
    const QPoint before = scene.picture()->pos();
    for (const int page : {2, 1, 2}) {
        scene.pageBox()->setValue(page);
        QTRY_COMPARE(scene.frames().size(), 2);
        QCOMPARE(scene.picture()->pos(), before);
        QVERIFY(isInSight(scene, lowItem, 1));
    }
}

void TestRuleEditorPreview::zoomingKeepsThePickedPlaceInSight()
{
    EditorScene scene;
    openLarge(scene);
    scene.find<QScrollArea>("scrollArea")->ensureVisible(940, 1207);
    scene.clickFrame(1);
    double zoom = 1;
    for (int step = 0; step < 5; ++step) {
        scene.click("pushButton_zoomout");
        zoom *= 1.25;
        QVERIFY(isInSight(scene, lowItem, zoom));
    }
    for (int step = 0; step < 8; ++step) {
        scene.click("pushButton_zoomin");
        zoom *= 0.8;
        QTRY_COMPARE(scene.frames().size(), 2);
        QVERIFY(isInSight(scene, lowItem, zoom));
    }
}

void TestRuleEditorPreview::zoomingKeepsTheMiddleWhereNothingIsPicked()
{
    EditorScene scene;
    openLarge(scene);
    const auto *area = scene.find<QScrollArea>("scrollArea");
    area->horizontalScrollBar()->setValue(300);
    area->verticalScrollBar()->setValue(600);
    const auto middle = [&] {
        return QPointF(area->viewport()->rect().center() - scene.picture()->pos());
    };
    const QPointF before = middle();
    scene.click("pushButton_zoomout");
    const QPointF shift = middle() / 1.25 - before;
    QVERIFY2(shift.manhattanLength() <= 2, qPrintable(QString::number(shift.manhattanLength())));
}

void TestRuleEditorPreview::typedPageIsExported()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.addPage(3, narrowSheet, oneItem, Qt::cyan);
    scene.storeDocument(5);
    scene.openWithFrames(2);
    scene.pageBox()->setFocus();
    scene.pageBox()->selectAll();
    QTest::keyClicks(scene.pageBox(), "3");
    QTRY_COMPARE(scene.frames().size(), 1);
    QVERIFY(scene.calls().last().startsWith("-htmlformat -f 3 -l 3 "));
    QCOMPARE(scene.calls().size(), 2);
    // Return neither zooms nor turns the page.
    QTest::keyClick(scene.pageBox(), Qt::Key_Return);
    QCOMPARE(scene.pictureSize(), narrowSheet);
    QCOMPARE(scene.pageBox()->value(), 3);
    QVERIFY(scene.calls().last().startsWith("-htmlformat -f 3 -l 3 "));
}

void TestRuleEditorPreview::pageButtonsStopAtTheEnds()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.addPage(5, narrowSheet, oneItem, Qt::cyan);
    scene.storeDocument(5);
    scene.openWithFrames(2);
    scene.editor().setpagedown();
    QCOMPARE(scene.pageBox()->value(), 1);
    QCOMPARE(scene.calls().size(), 1);
    scene.pageBox()->setValue(5);
    QVERIFY(!scene.button("pushButton_up")->isEnabled());
    QVERIFY(scene.button("pushButton_down")->isEnabled());
    scene.editor().setpageup();
    QCOMPARE(scene.pageBox()->value(), 5);
    QCOMPARE(scene.calls().size(), 2);
}

void TestRuleEditorPreview::onlyPageHasNoNeighbours()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.storeDocument(1);
    scene.openWithFrames(2);
    QVERIFY(!scene.button("pushButton_up")->isEnabled());
    QVERIFY(!scene.button("pushButton_down")->isEnabled());
}

void TestRuleEditorPreview::pageWithoutPictureKeepsTheOldOne()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.addPage(2, narrowSheet, oneItem, Qt::cyan);
    scene.removePicture(2);
    scene.storeDocument(2);
    scene.openWithFrames(2);
    scene.click("pushButton_up");
    QCOMPARE(scene.pictureColour(), QColor(Qt::yellow));
    QVERIFY(settled());
    QCOMPARE(scene.frames().size(), 0);
    QTest::mouseClick(scene.picture(), Qt::LeftButton, {}, QPoint(300, 300));
}

void TestRuleEditorPreview::zoomScalesPictureAndFrames()
{
    EditorScene scene;
    scene.addPage(1, QSize(893, 1263), twoItems, Qt::yellow);
    scene.storeDocument(1);
    scene.openWithFrames(2);
    scene.click("pushButton_zoomout");
    QCOMPARE(scene.frames().size(), 0);
    QTRY_COMPARE(scene.frameRects(), (QList<QRect>{{90, 130, 262, 15}, {90, 250, 75, 25}}));
    QCOMPARE(scene.pictureSize(), QSize(893, 1263).scaled(1116, 1578, Qt::KeepAspectRatio));
    scene.click("pushButton_zoomin");
    QTRY_COMPARE(scene.frameRects(), (QList<QRect>{{72, 104, 210, 12}, {72, 200, 60, 20}}));
    QCOMPARE(scene.pictureSize(), QSize(893, 1263));
}

void TestRuleEditorPreview::threeShrinksGiveHalfAndABit()
{
    EditorScene scene;
    scene.addPage(1, QSize(1000, 2000), twoItems, Qt::yellow);
    scene.storeDocument(1);
    scene.openWithFrames(2);
    for (int i = 0; i < 3; ++i) {
        scene.click("pushButton_zoomin");
    }
    // 0.8 three times, rounded to float each time, is a little less than 0.512.
    QCOMPARE(scene.pictureSize(), QSize(511, 1023));
    QTRY_COMPARE(scene.frameRects(), (QList<QRect>{{36, 53, 107, 6}, {36, 102, 30, 10}}));
}

void TestRuleEditorPreview::zoomDoesNotExport()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.storeDocument(1);
    scene.openWithFrames(2);
    scene.click("pushButton_zoomout");
    scene.click("pushButton_zoomin");
    QTRY_COMPARE(scene.frames().size(), 2);
    QCOMPARE(scene.calls().size(), 1);
}

void TestRuleEditorPreview::zoomOutlivesPagesAndOpenings()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.addPage(2, narrowSheet, oneItem, Qt::cyan);
    scene.storeDocument(2);
    scene.openWithFrames(2);
    scene.click("pushButton_zoomout");
    QCOMPARE(scene.pictureSize(), QSize(500, 625));
    scene.click("pushButton_up");
    QCOMPARE(scene.pictureSize(), QSize(500, 625));
    QTRY_COMPARE(scene.frameRects(), (QList<QRect>{{375, 50, 100, 12}}));
    scene.editor().close();
    scene.openWithFrames(2);
    QCOMPARE(scene.pageBox()->value(), 1);
    QCOMPARE(scene.pictureSize(), QSize(500, 625));
    QCOMPARE(scene.frameRects().first(), QRect(90, 130, 262, 15));
}

/// Qt's pixmap cache tells files apart by name, size and second of change: turning a page fast
/// between pictures of equal size showed the page before.
void TestRuleEditorPreview::picturesOfOneSecondAndSizeAreToldApart()
{
    EditorScene scene;
    const QList<Qt::GlobalColor> colours{Qt::red, Qt::green, Qt::red, Qt::green, Qt::red};
    for (int page = 1; page <= colours.size(); ++page) {
        scene.addPage(page, narrowSheet, oneItem, colours.at(page - 1));
    }
    const QDir canned(scene.applicationPath() + "/canned");
    QCOMPARE(QFileInfo(canned, "1.png").size(), QFileInfo(canned, "2.png").size());
    scene.storeDocument(int(colours.size()));
    scene.openWithFrames(1);
    for (int page = 2; page <= colours.size(); ++page) {
        scene.pageBox()->setValue(page);
        QCOMPARE(scene.pictureColour(), QColor(colours.at(page - 1)));
    }
}

void TestRuleEditorPreview::wheelAboveTheFrameZooms()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.storeDocument(1);
    scene.openWithFrames(2);
    auto *toolRow = scene.find<QWidget>("widget");
    const QPoint middle = toolRow->rect().center();
    turnWheel(toolRow, middle, QPoint(0, 120));
    QCOMPARE(scene.pictureSize(), QSize(500, 625));
    turnWheel(toolRow, middle, QPoint(0, -120));
    QCOMPARE(scene.pictureSize(), narrowSheet);
    turnWheel(toolRow, middle, QPoint(0, 0));
    QCOMPARE(scene.pictureSize(), QSize(320, 400));
    turnWheel(toolRow, middle, QPoint(120, 0));
    QCOMPARE(scene.pictureSize(), narrowSheet);
    QTRY_COMPARE(scene.frames().size(), 2);
}

void TestRuleEditorPreview::wheelOverThePictureOnlyScrolls()
{
    EditorScene scene;
    scene.addPage(1, QSize(400, 3000), twoItems, Qt::yellow);
    scene.storeDocument(1);
    scene.openWithFrames(2);
    auto *area = scene.find<QScrollArea>("scrollArea");
    turnWheel(area->viewport(), QPoint(50, 50), QPoint(0, -120));
    QVERIFY(area->verticalScrollBar()->value() > 0);
    QCOMPARE(scene.pictureSize(), QSize(400, 3000));
    // At the end of the scrolling the wheel reaches the dialog, which leaves it alone there.
    area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum());
    turnWheel(area->viewport(), QPoint(50, 50), QPoint(0, -120));
    const QRect frame = scene.find<QFrame>("frame_back")->geometry();
    turnWheel(&scene.editor(), frame.center(), QPoint(0, 120));
    turnWheel(&scene.editor(), frame.topLeft(), QPoint(0, 120));
    QCOMPARE(scene.pictureSize(), QSize(400, 3000));
    turnWheel(&scene.editor(), frame.topLeft() - QPoint(0, 1), QPoint(0, 120));
    QCOMPARE(scene.pictureSize(), QSize(500, 3750));
}

void TestRuleEditorPreview::touchpadGesturesDoNotZoomByTheirEdges()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.storeDocument(1);
    scene.openWithFrames(2);
    auto *toolRow = scene.find<QWidget>("widget");
    const QPoint middle = toolRow->rect().center();
    turnWheel(toolRow, middle, QPoint(), Qt::ScrollBegin);
    turnWheel(toolRow, middle, QPoint(0, 30), Qt::ScrollUpdate);
    turnWheel(toolRow, middle, QPoint(), Qt::ScrollEnd);
    QCOMPARE(scene.pictureSize(), QSize(500, 625));
    // Some announce a gesture together with its first movement.
    turnWheel(toolRow, middle, QPoint(0, -30), Qt::ScrollBegin);
    QCOMPARE(scene.pictureSize(), narrowSheet);
}

void TestRuleEditorPreview::zoomingTakesTheFocusOffAFrame()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.storeDocument(1);
    scene.openWithFrames(2);
    scene.editor().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&scene.editor()));
    scene.frames().at(0)->setFocus();
    QVERIFY(scene.frames().at(0)->hasFocus());
    scene.editor().setZoomout();
    QCOMPARE(QApplication::focusWidget(), scene.find<QWidget>("scrollArea"));
}

void TestRuleEditorPreview::scratchFolderMayHoldAnyCharacter()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.storeDocument(1);
    const QString odd = scene.scratchPath() + "/a#b ?c%41d";
    QVERIFY(QDir().mkpath(odd));
    qputenv("TMPDIR", QFile::encodeName(odd));
    scene.openWithFrames(2);
    QVERIFY(QFile::exists(odd + "/text_pg_0001.htm"));
    QCOMPARE(scene.pictureSize(), narrowSheet);
}

QUORLIN_TEST(TestRuleEditorPreview)
#include "test_rule_editor_preview.moc"
