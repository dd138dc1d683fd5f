#include "editor_scene.h"

#include "rules/rule_store.h"
#include "tests/support/modal_answer.h"
#include "tests/support/room.h"

#include <QMessageBox>
#include <QSignalSpy>
#include <QTest>

/// Saving the picked item under a name.
class TestRuleEditorSaving : public QObject
{
    Q_OBJECT

private slots:
    void savedRuleStandsInTheSettingsFile();
    void returnInTheNameFieldSaves();
    void returnElsewhereSavesNothing_data();
    void returnElsewhereSavesNothing();
    void emptyNameIsRefused();
    void takenNameIsRefused();
    void itemClickedLastIsSaved();
    void editingTheContentFieldChangesNothing();
    void namesAreTakenAsTyped_data();
    void namesAreTakenAsTyped();
    void pickedItemOutlivesPagesZoomsAndOpenings();
    void fieldsStayOnUntilThereAreNoPages();

private:
    static void openAndConfirm(EditorScene &scene, int frame = 0)
    {
        scene.addPage(1, squareSheet, twoItems, Qt::white);
        scene.addPage(2, squareSheet, {}, Qt::yellow);
        scene.storeDocument(2);
        scene.openWithFrames(2);
        scene.clickFrame(frame);
        scene.click("ruleButton");
    }
};

void TestRuleEditorSaving::savedRuleStandsInTheSettingsFile()
{
    EditorScene scene;
    openAndConfirm(scene);
    QSignalSpy finished(&scene.editor(), &QDialog::finished);
    scene.typeName("Invoice");
    scene.click("pushButton_save");
    QCOMPARE(finished.size(), 1);
    QCOMPARE(finished.first().first().toInt(), int(QDialog::Accepted));
    QVERIFY(!scene.editor().isVisible());
    QVERIFY(scene.settingsFile().startsWith(
        "[Invoice]\nhei=12\ntext=INV-1\nwid=210\nxpos=72\nypos=104\n\n[currule]\nrule=Invoice\n"));
    QVERIFY(scene.settingsFile().endsWith("\n[orbi]\nInvoice=1\n"));
}

void TestRuleEditorSaving::returnInTheNameFieldSaves()
{
    EditorScene scene;
    openAndConfirm(scene);
    scene.typeName("Invoice");
    QTest::keyClick(scene.field("lineEdit_rule"), Qt::Key_Return);
    QCOMPARE(scene.pictureSize(), squareSheet);
    QVERIFY(!scene.editor().isVisible());
    QCOMPARE(EditorScene::setting("currule/rule"), QStringLiteral("Invoice"));
}

void TestRuleEditorSaving::returnElsewhereSavesNothing_data()
{
    QTest::addColumn<QString>("place");
    for (const char *place : {"spinBox_pagenumber", "lineEdit_rulebefore", "pushButton_zoomout",
                              "scrollArea", "ruleButton"}) {
        QTest::newRow(place) << place;
    }
}

void TestRuleEditorSaving::returnElsewhereSavesNothing()
{
    QFETCH(QString, place);
    EditorScene scene;
    openAndConfirm(scene);
    scene.typeName("Invoice");
    scene.clickFrame(0);
    auto *widget = scene.find<QWidget>(qPrintable(place));
    widget->setFocus();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        QTest::keyClick(widget, key);
    }
    QVERIFY(scene.editor().isVisible());
    QCOMPARE(EditorScene::setting("currule/rule"), QStringLiteral("(absent)"));
    QCOMPARE(scene.pageBox()->value(), 1);
    QCOMPARE(scene.pictureSize(), squareSheet);
}

void TestRuleEditorSaving::emptyNameIsRefused()
{
    EditorScene scene;
    openAndConfirm(scene);
    const QByteArray before = scene.settingsFile();
    const quorlin::test::ModalAnswer modals;
    scene.click("pushButton_save");
    QCOMPARE(modals.boxes().size(), 1);
    const quorlin::test::ShownBox &box = modals.boxes().first();
    QCOMPARE(box.title, QStringLiteral("Empty Rule Name"));
    QCOMPARE(box.text, QStringLiteral("Please input rule name"));
    QCOMPARE(box.icon, int(QMessageBox::Warning));
    QCOMPARE(box.buttons, QStringList{"OK"});
    QCOMPARE(box.parent, &scene.editor());
    QVERIFY(scene.editor().isVisible());
    QCOMPARE(scene.settingsFile(), before);
    QCOMPARE(scene.field("lineEdit_rulebefore")->text(), QStringLiteral("(72 104 210 12)=INV-1"));
}

void TestRuleEditorSaving::takenNameIsRefused()
{
    EditorScene scene;
    quorlin::saveRule("Invoice", {1, 2, 3, 4, "old"});
    openAndConfirm(scene);
    const QByteArray before = scene.settingsFile();
    scene.typeName("Invoice");
    const quorlin::test::ModalAnswer modals;
    scene.click("pushButton_save");
    QCOMPARE(modals.boxes().size(), 1);
    const quorlin::test::ShownBox &box = modals.boxes().first();
    QCOMPARE(box.title, QStringLiteral("Existed Rule Name"));
    QCOMPARE(box.text, QStringLiteral("The rule name has been used, Please input another one"));
    QCOMPARE(box.icon, int(QMessageBox::Warning));
    QCOMPARE(box.buttons, QStringList{"OK"});
    QCOMPARE(box.parent, &scene.editor());
    QVERIFY(scene.editor().isVisible());
    QCOMPARE(scene.settingsFile(), before);
    QCOMPARE(scene.field("lineEdit_rule")->text(), QStringLiteral("Invoice"));
    scene.typeName("Invoice 2");
    scene.click("pushButton_save");
    QVERIFY(!scene.editor().isVisible());
    QCOMPARE(quorlin::readRule("Invoice"), (Subtext{1, 2, 3, 4, "old"}));
    QCOMPARE(quorlin::readRule("Invoice 2"), twoItems.at(0));
}

void TestRuleEditorSaving::itemClickedLastIsSaved()
{
    EditorScene scene;
    openAndConfirm(scene, 0);
    scene.clickFrame(1);
    QCOMPARE(scene.field("lineEdit_rulebefore")->text(), QStringLiteral("(72 104 210 12)=INV-1"));
    scene.typeName("Total");
    scene.click("pushButton_save");
    QCOMPARE(quorlin::readRule("Total"), twoItems.at(1));
}

void TestRuleEditorSaving::editingTheContentFieldChangesNothing()
{
    EditorScene scene;
    openAndConfirm(scene);
    scene.field("lineEdit_rulebefore")->clear();
    QTest::keyClicks(scene.field("lineEdit_rulebefore"), "(1 2 3 4)=other");
    scene.typeName("Invoice");
    scene.click("pushButton_save");
    QCOMPARE(quorlin::readRule("Invoice"), twoItems.at(0));
}

void TestRuleEditorSaving::namesAreTakenAsTyped_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks around") << "  two words ";
    QTest::newRow("a blank alone") << " ";
    QTest::newRow("comma, quote, percent") << "a,\"b\" 50%";
    QTest::newRow("slash") << "2024/05";
    QTest::newRow("a slash alone") << "/";
    QTest::newRow("slashes around") << "/a/";
    QTest::newRow("place-holder") << "%1 %n";
    QTest::newRow("the name of the list") << "orbi";
    QTest::newRow("the name of the rule saved last") << "currule";
    QTest::newRow("a program section") << "dir";
    QTest::newRow("General") << "General";
}

void TestRuleEditorSaving::namesAreTakenAsTyped()
{
    QFETCH(QString, name);
    EditorScene scene;
    openAndConfirm(scene);
    scene.typeName(name);
    scene.click("pushButton_save");
    QVERIFY(!scene.editor().isVisible());
    QCOMPARE(quorlin::currentRuleName(), name);
    QCOMPARE(quorlin::readRule(name), twoItems.at(0));
    QVERIFY(quorlin::isRuleNameTaken(name));
}

void TestRuleEditorSaving::pickedItemOutlivesPagesZoomsAndOpenings()
{
    EditorScene scene;
    openAndConfirm(scene, 1);
    scene.click("pushButton_up");
    scene.click("pushButton_zoomout");
    scene.editor().close();
    scene.openWithFrames(2);
    scene.typeName("Total");
    scene.click("pushButton_save");
    QCOMPARE(quorlin::readRule("Total"), twoItems.at(1));
}

void TestRuleEditorSaving::fieldsStayOnUntilThereAreNoPages()
{
    EditorScene scene;
    openAndConfirm(scene);
    scene.editor().close();
    scene.openWithFrames(2);
    QVERIFY(scene.button("pushButton_save")->isEnabled());
    QVERIFY(scene.field("lineEdit_rule")->isEnabled());
    scene.editor().close();
    scene.storeSample("Empty input", "0");
    scene.open();
    QVERIFY(!scene.button("pushButton_save")->isEnabled());
    QVERIFY(!scene.field("lineEdit_rule")->isEnabled());
    QVERIFY(!scene.field("lineEdit_rulebefore")->isEnabled());
}

QUORLIN_TEST(TestRuleEditorSaving)
#include "test_rule_editor_saving.moc"
