#include "editor_scene.h"
#include "tests/support/quiet.h"
#include "tests/support/room.h"

#include <QApplication>
#include <QCursor>
#include <QFrame>
#include <QHelpEvent>
#include <QImage>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QTextDocument>
#include <QToolTip>

Q_DECLARE_METATYPE(Subtext)

namespace {

int pixelsOf(const QImage &image, bool (*matches)(QRgb))
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += matches(image.pixel(x, y)) ? 1 : 0;
        }
    }
    return count;
}

bool isGreen(QRgb p)
{
    return qGreen(p) > 100 && qRed(p) < 60 && qBlue(p) < 60;
}

bool isRed(QRgb p)
{
    return qRed(p) > 200 && qGreen(p) < 60 && qBlue(p) < 60;
}

} // namespace

/// Frames, clicks on them, the tool tip and the confirming button.
class TestRuleEditorPicking : public QObject
{
    Q_OBJECT

private slots:
    void everyLineHasAFlatFrame();
    void framesAreScaledWithoutTheirItems();
    void emptyItemsCannotBeClicked();
    void framesAreDottedGreenAndRedWhilePressed();
    void clickSelectsTheItemUnderTheCursor();
    void cursorDecidesAtTheEdges_data();
    void cursorDecidesAtTheEdges();
    void laterOfOverlappingItemsIsPicked();
    void cursorOutsideEveryFramePicksTheFirstItem();
    void keyboardActivationFollowsTheCursor();
    void tipShowsUnscaledPosition();
    void pointingAtTurnedTextShowsAllOfIt();
    void confirmingButtonStandsRightOfTheItemAboveTheFrames();
    void confirmingButtonFollowsTheZoom();
    void pressBesideTheItemsHidesTheConfirmingButton_data();
    void pressBesideTheItemsHidesTheConfirmingButton();
    void pressOnAnItemMovesTheConfirmingButton();
    void confirmingShowsTheItemAndAllowsSaving();
    void theConfirmingButtonIsSeenWhole_data();
    void theConfirmingButtonIsSeenWhole();
    void theTipLeavesTheConfirmingButtonFree();
    void confirmingMovesNeitherViewNorFocusToAnotherItem();
    void aPressBesideTheItemsLeavesTheViewWhereItIs();
    void framesStandOutOnDarkPages_data();
    void framesStandOutOnDarkPages();
    void textsStayAsTheyStandInThePageFile();
    void pageFileLinesFollowTheParser();
    void pageWithoutItemsHasNoFrames();
    void unusedSlotsChangeNothing();

private:
    static void open(EditorScene &scene, const QList<Subtext> &items = twoItems)
    {
        scene.addPage(1, squareSheet, items, Qt::white);
        scene.storeDocument(1);
        scene.openWithFrames(int(items.size()));
    }
    /// Confirms the picked item and returns what the content field shows.
    static QString confirm(EditorScene &scene)
    {
        scene.click("ruleButton");
        return scene.field("lineEdit_rulebefore")->text();
    }
};

void TestRuleEditorPicking::everyLineHasAFlatFrame()
{
    EditorScene scene;
    open(scene);
    QCOMPARE(scene.frameRects(), (QList<QRect>{{72, 104, 210, 12}, {72, 200, 60, 20}}));
    for (const QPushButton *frame : scene.frames()) {
        QVERIFY(frame->isFlat());
        QVERIFY(frame->isVisible());
        QVERIFY(!frame->autoDefault());
        QCOMPARE(
            frame->styleSheet(),
            QStringLiteral("border:2px dotted green;} QPushButton:Pressed{border:2px dotted red;"));
    }
}

void TestRuleEditorPicking::framesAreScaledWithoutTheirItems()
{
    EditorScene scene;
    open(scene);
    scene.click("pushButton_zoomout");
    QTRY_COMPARE(scene.frameRects(), (QList<QRect>{{90, 130, 262, 15}, {90, 250, 75, 25}}));
    scene.clickFrame(1);
    QCOMPARE(confirm(scene), QStringLiteral("(72 200 60 20)=Total 5"));
}

void TestRuleEditorPicking::emptyItemsCannotBeClicked()
{
    EditorScene scene;
    scene.addPageText(1, squareSheet,
                      "<html>\n" + itemLine(twoItems.at(0)) + "\n\n" +
                          itemLine({10, 10, 0, 12, "no width"}) + "</html>\n",
                      Qt::white);
    scene.storeDocument(1);
    scene.openWithFrames(4);
    QCOMPARE(scene.frameRects(), (QList<QRect>{QRect(0, 0, 0, 0), QRect(72, 104, 210, 12),
                                               QRect(10, 10, 0, 12), QRect(0, 0, 0, 0)}));
    QCOMPARE(scene.picture()->childAt(0, 0), nullptr);
    QCOMPARE(scene.picture()->childAt(10, 12), nullptr);
}

void TestRuleEditorPicking::framesAreDottedGreenAndRedWhilePressed()
{
    EditorScene scene;
    open(scene, {{50, 50, 100, 30, "Frame"}});
    QPushButton *frame = scene.frames().first();
    const QImage calm = frame->grab().toImage();
    const int green = pixelsOf(calm, isGreen);
    // Dots along an edge of 256 pixels, two pixels wide: more than a quarter, less than all.
    QVERIFY2(green > 120 && green < 500, qPrintable(QString::number(green)));
    QCOMPARE(pixelsOf(calm, isRed), 0);
    QTest::mousePress(frame, Qt::LeftButton);
    const QImage pressed = frame->grab().toImage();
    QVERIFY(pixelsOf(pressed, isRed) > 120);
    QCOMPARE(pixelsOf(pressed, isGreen), 0);
    QTest::mouseRelease(frame, Qt::LeftButton);
    QVERIFY(pixelsOf(frame->grab().toImage(), isGreen) > 120);
}

void TestRuleEditorPicking::clickSelectsTheItemUnderTheCursor()
{
    EditorScene scene;
    open(scene);
    QVERIFY(scene.ruleButton()->isHidden());
    scene.clickFrame(1);
    QVERIFY(scene.ruleButton()->isVisible());
    QCOMPARE(confirm(scene), QStringLiteral("(72 200 60 20)=Total 5"));
    scene.clickFrame(0);
    QCOMPARE(confirm(scene), QStringLiteral("(72 104 210 12)=INV-1"));
}

void TestRuleEditorPicking::cursorDecidesAtTheEdges_data()
{
    QTest::addColumn<QPoint>("cursor");
    QTest::addColumn<bool>("second");
    // The second item lies at 72, 200 and is 60 wide and 20 high.
    QTest::newRow("left edge") << QPoint(72, 210) << true;
    QTest::newRow("left of it") << QPoint(71, 210) << false;
    QTest::newRow("last column") << QPoint(131, 210) << true;
    QTest::newRow("right edge") << QPoint(132, 210) << false;
    QTest::newRow("top edge") << QPoint(80, 200) << true;
    QTest::newRow("above it") << QPoint(80, 199) << false;
    QTest::newRow("bottom edge") << QPoint(80, 220) << true;
    QTest::newRow("below it") << QPoint(80, 221) << false;
}

void TestRuleEditorPicking::cursorDecidesAtTheEdges()
{
    QFETCH(QPoint, cursor);
    QFETCH(bool, second);
    EditorScene scene;
    open(scene);
    QCursor::setPos(scene.picture()->mapToGlobal(cursor));
    QTest::mouseClick(scene.frames().at(1), Qt::LeftButton);
    QCOMPARE(confirm(scene), second ? QStringLiteral("(72 200 60 20)=Total 5")
                                    : QStringLiteral("(72 104 210 12)=INV-1"));
}

void TestRuleEditorPicking::laterOfOverlappingItemsIsPicked()
{
    EditorScene scene;
    open(scene, {{50, 50, 200, 40, "under"}, {100, 60, 200, 40, "over"}, {10, 300, 9, 9, "far"}});
    scene.clickPicture(QPoint(150, 70));
    QCOMPARE(confirm(scene), QStringLiteral("(100 60 200 40)=over"));
    scene.clickPicture(QPoint(60, 70));
    QCOMPARE(confirm(scene), QStringLiteral("(50 50 200 40)=under"));
}

void TestRuleEditorPicking::cursorOutsideEveryFramePicksTheFirstItem()
{
    EditorScene scene;
    open(scene);
    QCursor::setPos(scene.picture()->mapToGlobal(QPoint(400, 400)));
    QTest::mouseClick(scene.frames().at(1), Qt::LeftButton);
    QCOMPARE(scene.ruleButton()->geometry(), QRect(0, 0, 141, 28));
    QCOMPARE(confirm(scene), QStringLiteral("(72 104 210 12)=INV-1"));
}

void TestRuleEditorPicking::keyboardActivationFollowsTheCursor()
{
    EditorScene scene;
    open(scene);
    QCursor::setPos(scene.picture()->mapToGlobal(QPoint(80, 210)));
    scene.frames().at(0)->setFocus();
    QTest::keyClick(scene.frames().at(0), Qt::Key_Space);
    QCOMPARE(confirm(scene), QStringLiteral("(72 200 60 20)=Total 5"));
}

void TestRuleEditorPicking::tipShowsUnscaledPosition()
{
    EditorScene scene;
    open(scene);
    scene.click("pushButton_zoomout");
    QTRY_COMPARE(scene.frames().size(), 2);
    scene.clickFrame(0);
    QVERIFY(QToolTip::isVisible());
    QCOMPARE(QToolTip::text(), QStringLiteral("Position\n X- 72 Y- 104"));
    QToolTip::hideText();
}

void TestRuleEditorPicking::pointingAtTurnedTextShowsAllOfIt()
{
    EditorScene scene;
    open(scene, {{72, 104, 18, 21, QStringLiteral("A &lt; B, up the margin")},
                 {72, 200, 90, 21, QStringLiteral("Total 5")}});
    const auto pointAt = [&scene](int item) {
        QPushButton *frame = scene.frames().at(item);
        const QPoint inside = frame->rect().center();
        QHelpEvent help(QEvent::ToolTip, inside, frame->mapToGlobal(inside));
        QApplication::sendEvent(frame, &help);
    };
    pointAt(0);
    QVERIFY(QToolTip::isVisible());
    QVERIFY(QToolTip::text().contains(QStringLiteral("A &lt; B, up the margin")));
    QVERIFY(Qt::mightBeRichText(QToolTip::text()));
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
    pointAt(1);
    QVERIFY(!QToolTip::isVisible());
}

void TestRuleEditorPicking::confirmingButtonStandsRightOfTheItemAboveTheFrames()
{
    EditorScene scene;
    // The third frame lies where the button will stand.
    open(scene, {{72, 104, 210, 12, "INV-1"}, {72, 200, 60, 20, "x"}, {290, 100, 90, 40, "y"}});
    scene.clickFrame(0);
    QCOMPARE(scene.ruleButton()->geometry(), QRect(282, 104, 141, 28));
    QCOMPARE(scene.ruleButton()->text(), QStringLiteral("Make it be the rule"));
    QCOMPARE(scene.picture()->childAt(300, 120), scene.ruleButton());
}

void TestRuleEditorPicking::confirmingButtonFollowsTheZoom()
{
    EditorScene scene;
    open(scene);
    scene.clickFrame(0);
    scene.click("pushButton_zoomout");
    QVERIFY(scene.ruleButton()->isHidden());
    QTRY_COMPARE(scene.frames().size(), 2);
    scene.clickFrame(0);
    QCOMPARE(scene.ruleButton()->geometry(), QRect(352, 130, 141, 28));
}

void TestRuleEditorPicking::pressBesideTheItemsHidesTheConfirmingButton_data()
{
    QTest::addColumn<QString>("place");
    QTest::newRow("empty preview") << "imageLabel";
    QTest::newRow("frame") << "frame_back";
    QTest::newRow("tool row") << "widget";
    QTest::newRow("dialog") << "";
}

void TestRuleEditorPicking::pressBesideTheItemsHidesTheConfirmingButton()
{
    QFETCH(QString, place);
    EditorScene scene;
    open(scene);
    scene.clickFrame(0);
    QVERIFY(scene.ruleButton()->isVisible());
    QWidget *target = place.isEmpty() ? &scene.editor() : scene.find<QWidget>(qPrintable(place));
    const QPoint point = place == "imageLabel" ? QPoint(20, 20) : QPoint(2, 2);
    QTest::mousePress(target, Qt::LeftButton, {}, point);
    QVERIFY(scene.ruleButton()->isHidden());
    QTest::mouseRelease(target, Qt::LeftButton, {}, point);
    QCOMPARE(scene.frames().size(), 2);
}

void TestRuleEditorPicking::pressOnAnItemMovesTheConfirmingButton()
{
    EditorScene scene;
    open(scene);
    scene.clickFrame(0);
    QPushButton *other = scene.frames().at(1);
    QCursor::setPos(other->mapToGlobal(QPoint(5, 5)));
    QTest::mousePress(other, Qt::LeftButton);
    QVERIFY(scene.ruleButton()->isVisible());
    QCOMPARE(scene.ruleButton()->geometry().topLeft(), QPoint(282, 104));
    QTest::mouseRelease(other, Qt::LeftButton);
    QCOMPARE(scene.ruleButton()->geometry().topLeft(), QPoint(132, 200));
}

void TestRuleEditorPicking::confirmingShowsTheItemAndAllowsSaving()
{
    EditorScene scene;
    open(scene, {{10, 20, 30, 40, "Total 5"}});
    scene.clickFrame(0);
    scene.click("ruleButton");
    QCOMPARE(scene.field("lineEdit_rulebefore")->text(), QStringLiteral("(10 20 30 40)=Total 5"));
    QVERIFY(scene.ruleButton()->isHidden());
    QVERIFY(scene.button("pushButton_save")->isEnabled());
    QVERIFY(scene.field("lineEdit_rule")->isEnabled());
    QVERIFY(scene.field("lineEdit_rulebefore")->isEnabled());
}

namespace {

/// Bounds of what can be seen of @p widget, in its own pixels.
QRect seenPart(const QWidget &widget)
{
    return widget.visibleRegion().boundingRect();
}

/// A page larger than the view, with one item and others round it.
void openLarge(EditorScene &scene, const Subtext &item)
{
    scene.addPage(1, largeSheet, {{5, 5, 60, 12, "first"}, item, {1100, 1580, 60, 12, "last"}},
                  Qt::yellow);
    scene.storeDocument(1);
    scene.openWithFrames(3);
}

} // namespace

void TestRuleEditorPicking::theConfirmingButtonIsSeenWhole_data()
{
    QTest::addColumn<Subtext>("item");
    QTest::newRow("in the middle of the view") << Subtext{200, 200, 80, 14, "item"};
    QTest::newRow("at the right edge of the view") << Subtext{480, 200, 80, 14, "item"};
    QTest::newRow("at the lower edge of the view") << Subtext{200, 500, 80, 14, "item"};
    QTest::newRow("at the right edge of the page") << Subtext{1100, 300, 90, 14, "item"};
    QTest::newRow("in the lower right corner of the page") << Subtext{1100, 1580, 95, 14, "item"};
    QTest::newRow("as wide as the page") << Subtext{0, 700, 1200, 14, "item"};
}

void TestRuleEditorPicking::theConfirmingButtonIsSeenWhole()
{
    QFETCH(Subtext, item);
    EditorScene scene;
    openLarge(scene, item);
    const auto *area = scene.find<QScrollArea>("scrollArea");
    const QRect frame = scene.frameRects().at(1);
    scene.find<QScrollArea>("scrollArea")->ensureVisible(frame.right(), frame.center().y(), 1, 1);
    scene.clickPicture(QPoint(frame.right() - 3, frame.center().y()));
    const QPushButton *button = scene.ruleButton();
    QVERIFY(button->isVisible());
    QCOMPARE(button->size(), QSize(141, 28));
    QCOMPARE(seenPart(*button), button->rect());
    QVERIFY(QRect(QPoint(), largeSheet).contains(button->geometry()));
    QVERIFY(area->viewport()->rect().intersects(
        QRect(scene.picture()->mapTo(area->viewport(), frame.topLeft()), frame.size())));
    QVERIFY(!button->geometry().intersects(frame));
}

void TestRuleEditorPicking::theTipLeavesTheConfirmingButtonFree()
{
    EditorScene scene;
    openLarge(scene, {100, 100, 80, 40, "item"});
    const QRect frame = scene.frameRects().at(1);
    // Everywhere near the edge beside which the button stands, a tip at the cursor would cover it.
    for (int y = frame.top() + 1; y < frame.bottom(); y += 7) {
        scene.clickPicture(QPoint(frame.right() - 2, y));
        QVERIFY(QToolTip::isVisible());
        const QRect button(scene.ruleButton()->mapToGlobal(QPoint()), scene.ruleButton()->size());
        int tips = 0;
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (const QWidget *window : windows) {
            if (window->inherits("QTipLabel") && window->isVisible()) {
                ++tips;
                QVERIFY(!window->geometry().intersects(button));
            }
        }
        QCOMPARE(tips, 1);
    }
    QToolTip::hideText();
}

void TestRuleEditorPicking::confirmingMovesNeitherViewNorFocusToAnotherItem()
{
    EditorScene scene;
    openLarge(scene, {900, 1200, 80, 14, "item"});
    auto *area = scene.find<QScrollArea>("scrollArea");
    area->ensureVisible(940, 1207);
    scene.clickFrame(1);
    const QPoint view(area->horizontalScrollBar()->value(), area->verticalScrollBar()->value());
    QTest::mouseClick(scene.ruleButton(), Qt::LeftButton);
    QCoreApplication::processEvents();
    QCOMPARE(QPoint(area->horizontalScrollBar()->value(), area->verticalScrollBar()->value()),
             view);
    QCOMPARE(scene.editor().focusWidget(), scene.field("lineEdit_rule"));
    QVERIFY(!seenPart(*scene.frames().at(1)).isEmpty());
    // The name is typed without another click.
    QTest::keyClicks(scene.editor().focusWidget(), "Customer");
    QCOMPARE(scene.field("lineEdit_rule")->text(), QStringLiteral("Customer"));
}

void TestRuleEditorPicking::aPressBesideTheItemsLeavesTheViewWhereItIs()
{
    EditorScene scene;
    openLarge(scene, {900, 1200, 80, 14, "item"});
    auto *area = scene.find<QScrollArea>("scrollArea");
    area->ensureVisible(940, 1207);
    scene.clickFrame(1);
    scene.ruleButton()->setFocus();
    const QPoint view(area->horizontalScrollBar()->value(), area->verticalScrollBar()->value());
    QTest::mouseClick(scene.picture(), Qt::LeftButton, {}, QPoint(850, 1150));
    QVERIFY(scene.ruleButton()->isHidden());
    QCOMPARE(QPoint(area->horizontalScrollBar()->value(), area->verticalScrollBar()->value()),
             view);
    QVERIFY(!scene.frames().contains(scene.editor().focusWidget()));
}

void TestRuleEditorPicking::framesStandOutOnDarkPages_data()
{
    QTest::addColumn<QColor>("page");
    QTest::addColumn<bool>("outlined");
    QTest::newRow("white paper") << QColor(Qt::white) << false;
    QTest::newRow("pale yellow paper") << QColor(255, 255, 220) << false;
    QTest::newRow("black letterhead") << QColor(Qt::black) << false; // green stands out there
    QTest::newRow("dark blue letterhead") << QColor(0x26, 0x50, 0x7c) << true;
    QTest::newRow("the frame's own green") << QColor(0, 128, 0) << true;
    QTest::newRow("grey") << QColor(128, 128, 128) << true;
}

void TestRuleEditorPicking::framesStandOutOnDarkPages()
{
    QFETCH(QColor, page);
    QFETCH(bool, outlined);
    EditorScene scene;
    scene.addPage(1, squareSheet, {{100, 100, 100, 30, "item"}}, page);
    scene.storeDocument(1);
    scene.openWithFrames(1);
    const QPushButton *frame = scene.frames().first();
    QCOMPARE(
        frame->styleSheet(),
        QStringLiteral("border:2px dotted green;} QPushButton:Pressed{border:2px dotted red;"));
    const QImage seen = scene.picture()->grab(frame->geometry()).toImage();
    const auto isWhite = [](QRgb p) { return qRed(p) > 250 && qGreen(p) > 250 && qBlue(p) > 250; };
    if (page != Qt::white) {
        QCOMPARE(pixelsOf(seen, isWhite) > 100, outlined);
    }
    QVERIFY(page == QColor(0, 128, 0) || pixelsOf(seen, isGreen) == 174);
    // Inside the border the page shows as it is.
    QCOMPARE(seen.pixelColor(50, 15), page);
}

void TestRuleEditorPicking::textsStayAsTheyStandInThePageFile()
{
    EditorScene scene;
    open(scene, {{10, 20, 30, 40, QString::fromUtf8("A &amp; B %1 100% M\u00fcller \u8acb")}});
    scene.clickFrame(0);
    QCOMPARE(confirm(scene),
             QString::fromUtf8("(10 20 30 40)=A &amp; B %1 100% M\u00fcller \u8acb"));
}

void TestRuleEditorPicking::pageFileLinesFollowTheParser()
{
    EditorScene scene;
    Rules &editor = scene.editor();
    const QString line = "<span style=\"left:72;top:104;width:210;height:12\">INV-1</span>";
    QCOMPARE(editor.getSubtextInfo(line), (Subtext{72, 104, 210, 12, "INV-1"}));
    QCOMPARE(editor.getpos("top", line), 104);
    QCOMPARE(editor.getpos("left", "left:72px;"), 0);
    QCOMPARE(editor.gettext("XY</span>"), QStringLiteral("Y"));
}

void TestRuleEditorPicking::pageWithoutItemsHasNoFrames()
{
    EditorScene scene;
    scene.addPage(1, squareSheet, twoItems, Qt::white);
    scene.addPage(2, squareSheet, {}, Qt::yellow);
    scene.addPage(3, squareSheet, {}, Qt::cyan);
    scene.removeItems(3);
    scene.storeDocument(3);
    scene.openWithFrames(2);
    for (int page : {2, 3}) {
        scene.pageBox()->setValue(page);
        QVERIFY(settled());
        QCOMPARE(scene.frames().size(), 0);
        scene.clickPicture(QPoint(100, 110));
        QVERIFY(scene.ruleButton()->isHidden());
    }
}

void TestRuleEditorPicking::unusedSlotsChangeNothing()
{
    EditorScene scene;
    scene.editor().getdiv();
    open(scene);
    const QImage before = scene.editor().grab().toImage();
    scene.editor().getdiv();
    scene.editor().getdiv();
    scene.editor().getSpecifytext();
    QTest::mouseMove(scene.picture(), QPoint(30, 30));
    QCOMPARE(scene.editor().grab().toImage(), before);
    QCOMPARE(scene.frames().size(), 2);
}

QUORLIN_TEST(TestRuleEditorPicking)
#include "test_rule_editor_picking.moc"
