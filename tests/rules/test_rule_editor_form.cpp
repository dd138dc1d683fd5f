#include "editor_scene.h"
#include "tests/support/room.h"

#include <QDialog>
#include <QFrame>
#include <QGuiApplication>
#include <QLayout>
#include <QMetaMethod>
#include <QScreen>
#include <QScrollArea>
#include <QTest>

/// What the editor looks like before anything happens in it.
class TestRuleEditorForm : public QObject
{
    Q_OBJECT

private slots:
    void dialogHasItsTitleSizeAndPlace();
    void windowOffersMinimiseMaximiseAndClose();
    void toolButtonsAreSmallAndCrossed_data();
    void toolButtonsAreSmallAndCrossed();
    void controlsHaveTheirTextsAndSizes();
    void layoutsCarryTheirNames();
    void previewIsBuiltInsideTheFrame();
    void savingIsOffAtFirst();
    void slotsStandInTheirOrder();
    void returnNeverReachesAToolButton();
};

void TestRuleEditorForm::dialogHasItsTitleSizeAndPlace()
{
    const EditorScene scene;
    const auto *dialog = scene.picture()->window();
    QCOMPARE(dialog->objectName(), QStringLiteral("Rules"));
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Rule"));
    const QIcon icon(":/iconoption/icons/content32.png");
    QVERIFY(!icon.pixmap(32, 32).isNull());
    QCOMPARE(dialog->windowIcon().pixmap(32, 32).toImage(), icon.pixmap(32, 32).toImage());
    QCOMPARE(dialog->size(), QSize(626, 669));
    const QSize screen = QGuiApplication::primaryScreen()->geometry().size();
    QCOMPARE(dialog->pos(), QPoint(screen.width() / 2 - 313, screen.height() / 2 - 334));
}

void TestRuleEditorForm::windowOffersMinimiseMaximiseAndClose()
{
    EditorScene scene;
    const Qt::WindowFlags flags = scene.editor().windowFlags();
    QVERIFY(flags.testFlag(Qt::WindowMinimizeButtonHint));
    QVERIFY(flags.testFlag(Qt::WindowMaximizeButtonHint));
    QVERIFY(flags.testFlag(Qt::WindowCloseButtonHint));
    QVERIFY(!flags.testFlag(Qt::WindowContextHelpButtonHint));
    QVERIFY(!flags.testFlag(Qt::WindowStaysOnTopHint));
}

void TestRuleEditorForm::toolButtonsAreSmallAndCrossed_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("icon");
    QTest::newRow("enlarging") << "pushButton_zoomout"
                               << "zoom_in.ico";
    QTest::newRow("shrinking") << "pushButton_zoomin"
                               << "zoom_out.ico";
    QTest::newRow("back") << "pushButton_down"
                          << "up.png";
    QTest::newRow("on") << "pushButton_up"
                        << "downa.png";
}

void TestRuleEditorForm::toolButtonsAreSmallAndCrossed()
{
    QFETCH(QString, name);
    QFETCH(QString, icon);
    const EditorScene scene;
    const QPushButton *button = scene.button(qPrintable(name));
    QVERIFY(button);
    QCOMPARE(button->maximumSize(), QSize(32, 32));
    QCOMPARE(button->iconSize(), QSize(32, 32));
    const QIcon expected(":/iconoption/icons/" + icon);
    QVERIFY(!expected.availableSizes().isEmpty());
    QCOMPARE(button->icon().pixmap(32, 32).toImage(), expected.pixmap(32, 32).toImage());
}

void TestRuleEditorForm::controlsHaveTheirTextsAndSizes()
{
    const EditorScene scene;
    const auto *pageLabel = scene.find<QLabel>("label_pagenumber");
    QCOMPARE(pageLabel->minimumSize(), QSize(50, 32));
    QCOMPARE(pageLabel->maximumSize(), QSize(1000, 32));
    QCOMPARE(pageLabel->text(), QString());
    const auto *label = scene.find<QLabel>("label");
    QCOMPARE(label->text(), QStringLiteral("Rule Content"));
    QCOMPARE(label->minimumHeight(), 22);
    QCOMPARE(label->maximumHeight(), 22);
    QCOMPARE(scene.button("pushButton_save")->text(), QStringLiteral("Save Rule As"));
    const auto *frame = scene.find<QFrame>("frame_back");
    QCOMPARE(frame->minimumSize(), QSize(431, 441));
    QCOMPARE(frame->frameShape(), QFrame::StyledPanel);
    QCOMPARE(frame->frameShadow(), QFrame::Sunken);
}

void TestRuleEditorForm::layoutsCarryTheirNames()
{
    const EditorScene scene;
    QVERIFY(scene.find<QWidget>("widget"));
    for (const char *name :
         {"horizontalLayout_3", "verticalLayout", "horizontalLayout", "horizontalLayout_2"}) {
        QVERIFY2(scene.picture()->window()->findChild<QLayout *>(name), name);
    }
}

void TestRuleEditorForm::previewIsBuiltInsideTheFrame()
{
    const EditorScene scene;
    const auto *area = scene.find<QScrollArea>("scrollArea");
    QVERIFY(area->widgetResizable());
    QCOMPARE(area->backgroundRole(), QPalette::Dark);
    QCOMPARE(area->widget(), scene.picture());
    const auto *frame = scene.find<QFrame>("frame_back");
    QVERIFY(frame->isAncestorOf(area));
    QVERIFY(qobject_cast<QHBoxLayout *>(frame->layout()));
    QVERIFY(scene.picture()->hasMouseTracking());
    QCOMPARE(scene.picture()->alignment(), Qt::AlignLeft | Qt::AlignTop);
    QVERIFY(scene.ruleButton());
    QVERIFY(scene.ruleButton()->isHidden());
}

void TestRuleEditorForm::savingIsOffAtFirst()
{
    const EditorScene scene;
    QVERIFY(!scene.button("pushButton_save")->isEnabled());
    QVERIFY(!scene.field("lineEdit_rule")->isEnabled());
    QVERIFY(!scene.field("lineEdit_rulebefore")->isEnabled());
}

void TestRuleEditorForm::slotsStandInTheirOrder()
{
    const QList<QByteArray> expected{"gethtmlinfo()",
                                     "getdiv()",
                                     "getTextPosition(QString)",
                                     "getSubtextInfo(QString)",
                                     "getpos(QString,QString)",
                                     "gettext(QString)",
                                     "drawlabels()",
                                     "mouseMoveEvent(QMouseEvent*)",
                                     "mousePressEvent(QMouseEvent*)",
                                     "setZoomout()",
                                     "setZoomin()",
                                     "textmessagebox()",
                                     "getSpecifytext()",
                                     "addtorules()",
                                     "generatePNGfile(QString,int,QString)",
                                     "setIniImage()",
                                     "setPageChange()",
                                     "setsave()",
                                     "setpageup()",
                                     "setpagedown()",
                                     "setupdownVis()"};
    const QMetaObject &meta = Rules::staticMetaObject;
    QList<QByteArray> found;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Slot);
        QCOMPARE(meta.method(i).access(), QMetaMethod::Public);
        found.append(meta.method(i).methodSignature());
    }
    QCOMPARE(found, expected);
}

void TestRuleEditorForm::returnNeverReachesAToolButton()
{
    const EditorScene scene;
    for (const char *name : {"pushButton_zoomout", "pushButton_zoomin", "pushButton_down",
                             "pushButton_up", "ruleButton"}) {
        QVERIFY2(!scene.button(name)->autoDefault(), name);
    }
    QVERIFY(scene.button("pushButton_save")->autoDefault());
}

QUORLIN_TEST(TestRuleEditorForm)
#include "test_rule_editor_form.moc"
