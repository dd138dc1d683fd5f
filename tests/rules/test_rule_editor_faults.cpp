#include "common/stop_signals.h"
#include "editor_scene.h"
#include "tests/support/quiet.h"
#include "tests/support/room.h"

#include <QCursor>
#include <QElapsedTimer>
#include <QFile>
#include <QFrame>
#include <QTest>
#include <QTimer>

#include <csignal>
#include <functional>

/// What may go wrong: widgets that go while they are in use, reads that end late, documents and
/// tools that vanish, pages and zooms beyond measure. The sanitizers watch.
class TestRuleEditorFaults : public QObject
{
    Q_OBJECT

private slots:
    void frameMayGoWhileItsClickIsHandled();
    void frameMayGoWhileItIsPressed();
    void pageChangesWhileAReadIsPendingLeaveTheLastPage();
    void fastZoomClicksLeaveOneSetOfFrames();
    void lateReadDrawsNothingOverAnEmptiedEditor();
    void lateReadDrawsNothingOverAPageWithoutPicture();
    void editorMayGoWhileAReadIsPending();
    void editorOpenedTwiceStaysInOrder();
    void pressAfterEveryStoppedSetUpIsHarmless_data();
    void pressAfterEveryStoppedSetUpIsHarmless();
    void vanishedDocumentKeepsPictureAndFramesTogether();
    void failingExportKeepsPictureAndFramesTogether();
    void missingToolShowsNothing();
    void slowExportIsNeitherAwaitedNorKilled();
    void aHeldExportEndsWithTheProgram();
    void moreThanTenThousandLinesAreCut();
    void numbersBeyondThePictureAreHarmless();
    void extremeZoomKeepsTheLastPicture();
    void pastTheLargestZoomAWordStandsOverThePage();
    void theFrameSaysWhyItShowsNoPage_data();
    void theFrameSaysWhyItShowsNoPage();
    void theFrameSaysThatAPageCannotBeShown();
    void brokenPageFilesAreHarmless_data();
    void brokenPageFilesAreHarmless();
};

void TestRuleEditorFaults::frameMayGoWhileItsClickIsHandled()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.storeDocument(1);
    scene.openWithFrames(2);
    QObject::connect(scene.frames().at(1), &QPushButton::clicked, &scene.editor(),
                     &Rules::setZoomout);
    scene.clickFrame(1);
    QTRY_COMPARE(scene.frameRects(), (QList<QRect>{{90, 130, 262, 15}, {90, 250, 75, 25}}));
    scene.clickFrame(0);
    QObject::connect(scene.ruleButton(), &QPushButton::clicked, &scene.editor(), &Rules::setZoomin);
    scene.click("ruleButton");
    QTRY_COMPARE(scene.frames().size(), 2);
    QCOMPARE(scene.field("lineEdit_rulebefore")->text(), QStringLiteral("(72 104 210 12)=INV-1"));
}

void TestRuleEditorFaults::frameMayGoWhileItIsPressed()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.addPage(2, narrowSheet, oneItem, Qt::cyan);
    scene.storeDocument(2);
    scene.openWithFrames(2);
    QPushButton *frame = scene.frames().at(0);
    const QPoint inPicture = frame->geometry().center();
    QCursor::setPos(scene.picture()->mapToGlobal(inPicture));
    QTest::mousePress(frame, Qt::LeftButton);
    scene.pageBox()->setValue(2);
    QTest::mouseRelease(scene.picture(), Qt::LeftButton, {}, inPicture);
    QTRY_COMPARE(scene.frames().size(), 1);
    QVERIFY(scene.ruleButton()->isHidden());
}

void TestRuleEditorFaults::pageChangesWhileAReadIsPendingLeaveTheLastPage()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.addPage(2, narrowSheet, oneItem, Qt::cyan);
    scene.addPage(3, narrowSheet, {{5, 6, 7, 8, "three"}}, Qt::green);
    scene.storeDocument(3);
    scene.editor().setIniImage();
    scene.editor().show();
    scene.pageBox()->setValue(2);
    scene.pageBox()->setValue(3);
    QTRY_COMPARE(scene.frameRects(), (QList<QRect>{{5, 6, 7, 8}}));
    QVERIFY(settled());
    QCOMPARE(scene.frameRects(), (QList<QRect>{{5, 6, 7, 8}}));
    QCOMPARE(scene.pictureColour(), QColor(Qt::green));
}

void TestRuleEditorFaults::fastZoomClicksLeaveOneSetOfFrames()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.storeDocument(1);
    scene.openWithFrames(2);
    for (int i = 0; i < 3; ++i) {
        scene.button("pushButton_zoomout")->click();
    }
    QTRY_COMPARE(scene.frames().size(), 2);
    QVERIFY(settled());
    QCOMPARE(scene.frames().size(), 2);
    for (int index : {1, 0}) {
        scene.clickFrame(index);
        scene.click("ruleButton");
        QVERIFY(scene.field("lineEdit_rulebefore")->text().endsWith(twoItems.at(index).text));
    }
    QCOMPARE(scene.picture()->findChildren<QPushButton *>("ruleButton").size(), 1);
}

void TestRuleEditorFaults::lateReadDrawsNothingOverAnEmptiedEditor()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.storeDocument(1);
    scene.editor().setIniImage();
    scene.storeSample("Empty input", "0");
    scene.editor().setIniImage();
    QVERIFY(settled());
    QCOMPARE(scene.frames().size(), 0);
}

void TestRuleEditorFaults::lateReadDrawsNothingOverAPageWithoutPicture()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.addPage(2, narrowSheet, oneItem, Qt::cyan);
    scene.removePicture(2);
    scene.storeDocument(2);
    scene.editor().setIniImage();
    scene.pageBox()->setValue(2);
    QVERIFY(settled());
    QCOMPARE(scene.frames().size(), 0);
}

void TestRuleEditorFaults::editorMayGoWhileAReadIsPending()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.storeDocument(1);
    {
        Rules editor;
        editor.setIniImage();
    }
    QVERIFY(settled());
}

void TestRuleEditorFaults::editorOpenedTwiceStaysInOrder()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.storeDocument(1);
    int inner = 77;
    QTimer::singleShot(0, &scene.editor(), [&] {
        scene.editor().setIniImage();
        inner = scene.editor().exec();
        QTimer::singleShot(0, &scene.editor(), &QDialog::reject);
    });
    scene.editor().setIniImage();
    QCOMPARE(scene.editor().exec(), int(QDialog::Rejected));
    QVERIFY(inner != int(QDialog::Accepted));
    scene.openWithFrames(2);
}

void TestRuleEditorFaults::pressAfterEveryStoppedSetUpIsHarmless_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("pages");
    QTest::newRow("no pages") << "Empty input"
                              << "0";
    QTest::newRow("no document") << "/nowhere/gone.pdf"
                                 << "3";
    QTest::newRow("a folder") << "/"
                              << "3";
}

void TestRuleEditorFaults::pressAfterEveryStoppedSetUpIsHarmless()
{
    QFETCH(QString, file);
    QFETCH(QString, pages);
    EditorScene scene;
    for (int round = 0; round < 2; ++round) {
        scene.storeSample(file, pages);
        scene.open();
        QTest::mouseClick(&scene.editor(), Qt::LeftButton, {}, QPoint(3, 3));
        QTest::mouseClick(scene.picture(), Qt::LeftButton, {}, QPoint(3, 3));
        scene.editor().setZoomin();
        scene.editor().setZoomout();
        QTest::mouseClick(scene.picture(), Qt::LeftButton, {}, QPoint(3, 3));
        scene.editor().setPageChange();
        QTest::mouseClick(scene.picture(), Qt::LeftButton, {}, QPoint(3, 3));
        scene.editor().textmessagebox();
        scene.editor().addtorules();
        QVERIFY(scene.ruleButton()->isHidden());
        QCOMPARE(scene.frames().size(), 0);
    }
}

void TestRuleEditorFaults::vanishedDocumentKeepsPictureAndFramesTogether()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.storeDocument(2);
    scene.openWithFrames(2);
    QVERIFY(QFile::remove(scene.document()));
    scene.failExports(true);
    scene.click("pushButton_up");
    QCOMPARE(scene.pictureColour(), QColor(Qt::yellow));
    QTRY_COMPARE(scene.frames().size(), 2);
}

void TestRuleEditorFaults::failingExportKeepsPictureAndFramesTogether()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.addPage(2, narrowSheet, oneItem, Qt::cyan);
    scene.storeDocument(2);
    scene.openWithFrames(2);
    scene.failExports(true);
    scene.click("pushButton_up");
    // The tool left what it had exported before: picture and frames of page 1.
    QCOMPARE(scene.pictureColour(), QColor(Qt::yellow));
    QTRY_COMPARE(scene.frames().size(), 2);
    scene.failExports(false);
    scene.click("pushButton_down");
    scene.click("pushButton_up");
    QCOMPARE(scene.pictureColour(), QColor(Qt::cyan));
    QTRY_COMPARE(scene.frames().size(), 1);
}

void TestRuleEditorFaults::missingToolShowsNothing()
{
    EditorScene scene;
    scene.removeTool();
    scene.storeDocument(3);
    scene.open();
    scene.click("pushButton_up");
    QCOMPARE(scene.pageBox()->value(), 2);
    QVERIFY(scene.picture()->pixmap().isNull());
    QCOMPARE(scene.frames().size(), 0);
}

void TestRuleEditorFaults::slowExportIsNeitherAwaitedNorKilled()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.addPage(2, narrowSheet, oneItem, Qt::cyan);
    scene.storeDocument(2);
    scene.openWithFrames(2);
    scene.editor().setExportLimit(100);
    scene.holdExports();
    scene.click("pushButton_up");
    QCOMPARE(scene.pageBox()->value(), 2);
    QCOMPARE(scene.pictureColour(), QColor(Qt::yellow));
    QTRY_COMPARE(scene.frames().size(), 2);
    // The tool goes on and its files still come; the next look at the page shows them.
    scene.releaseExports();
    QTRY_COMPARE(QImage(scene.scratchPath() + "/text_pg_0001.png").pixelColor(0, 0),
                 QColor(Qt::cyan));
    scene.click("pushButton_zoomout");
    QCOMPARE(scene.pictureColour(), QColor(Qt::cyan));
    QTRY_COMPARE(scene.frameRects(), (QList<QRect>{{375, 50, 100, 12}}));
    // Its end is noticed, so that nothing of it is left behind.
    QTRY_VERIFY(!hasChildProcesses());
}

void TestRuleEditorFaults::aHeldExportEndsWithTheProgram()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.addPage(2, narrowSheet, oneItem, Qt::cyan);
    scene.storeDocument(2);
    scene.openWithFrames(2);
    scene.editor().setExportLimit(3000);
    scene.holdExports();
    int signalled = 0;
    {
        const quorlin::StopSignals stop([&signalled](int signal) { signalled = signal; });
        QCOMPARE(std::raise(SIGUSR1), 0);
        scene.click("pushButton_up");
        QVERIFY(!hasChildProcesses());
        QTRY_COMPARE(signalled, SIGUSR1);
    }
    const quorlin::StopSignals forgetful([](int) {}); // nobody is asked to end any more
    QVERIFY(!quorlin::StopSignals::isAsked());
    scene.releaseExports();
}

void TestRuleEditorFaults::moreThanTenThousandLinesAreCut()
{
    EditorScene scene;
    QByteArray text;
    for (int i = 0; i < 10025; ++i) {
        text += itemLine({1 + i % 390, 1 + i / 390, 2, 1, QString::number(i)});
    }
    scene.addPageText(1, narrowSheet, text, Qt::yellow);
    scene.addPage(2, narrowSheet, oneItem, Qt::cyan);
    scene.storeDocument(2);
    scene.open();
    QTRY_COMPARE_WITH_TIMEOUT(scene.frames().size(), 10000, 60000);
    scene.clickPicture(QPoint(1 + 9999 % 390, 1 + 9999 / 390));
    scene.click("ruleButton");
    QVERIFY(scene.field("lineEdit_rulebefore")->text().endsWith("=9999"));
    scene.click("pushButton_up");
    QTRY_COMPARE(scene.frames().size(), 1);
}

void TestRuleEditorFaults::numbersBeyondThePictureAreHarmless()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet,
                  {{2147483647, 2147483647, 2147483647, 2147483647, "far"},
                   {1, 1, 2147483647, 2147483647, "everywhere"},
                   {10, 10, 20, 20, "near"}},
                  Qt::yellow);
    scene.storeDocument(1);
    scene.openWithFrames(3);
    scene.click("pushButton_zoomout");
    QTRY_COMPARE(scene.frames().size(), 3);
    scene.clickPicture(QPoint(20, 20));
    scene.click("ruleButton");
    QVERIFY(scene.field("lineEdit_rulebefore")->text().endsWith("=near"));
    scene.clickPicture(QPoint(200, 200));
    scene.editor().addtorules();
    QCOMPARE(scene.field("lineEdit_rulebefore")->text(),
             QStringLiteral("(1 1 2147483647 2147483647)=everywhere"));
}

void TestRuleEditorFaults::extremeZoomKeepsTheLastPicture()
{
    EditorScene scene;
    // A narrow strip reaches the longest side long before it fills the memory.
    scene.addPage(1, QSize(4000, 4), {{1, 1, 3, 2, "strip"}}, Qt::yellow);
    scene.storeDocument(1);
    scene.openWithFrames(1);
    for (int i = 0; i < 60; ++i) {
        scene.click("pushButton_zoomout");
        QTest::mouseClick(scene.picture(), Qt::LeftButton, {}, QPoint(1, 1));
    }
    QVERIFY(scene.pictureSize().width() <= 32767);
    QVERIFY(scene.pictureSize().width() > 32767 / 1.3);
    QTRY_COMPARE(scene.frames().size(), 1);
    for (int i = 0; i < 200; ++i) {
        scene.click("pushButton_zoomin");
    }
    QVERIFY(!scene.picture()->pixmap().isNull());
    for (int i = 0; i < 500; ++i) {
        scene.editor().setZoomin();
    }
    for (int i = 0; i < 1000; ++i) {
        scene.editor().setZoomout();
    }
    QTRY_COMPARE(scene.frames().size(), 1);
    QVERIFY(!scene.picture()->pixmap().isNull());
}

void TestRuleEditorFaults::pastTheLargestZoomAWordStandsOverThePage()
{
    EditorScene scene;
    scene.addPage(1, QSize(4000, 400), {{1000, 100, 300, 20, "strip"}}, Qt::yellow);
    scene.storeDocument(1);
    scene.openWithFrames(1);
    const auto *notice = scene.find<QLabel>("noticeLabel");
    while (notice->isHidden()) {
        scene.click("pushButton_zoomout");
    }
    QTRY_COMPARE(scene.frames().size(), 1);
    const QSize largest = scene.pictureSize();
    const QRect frame = scene.frameRects().first();
    QVERIFY(largest.width() > 32767 / 1.3);
    QVERIFY2(notice->text().contains(QLatin1String("cannot be shown at")),
             qPrintable(notice->text()));
    const QString word = notice->text();
    // A frame over the page that stayed picks its item.
    scene.clickFrame(0);
    QVERIFY(scene.ruleButton()->isVisible());
    scene.click("pushButton_zoomout");
    QVERIFY(notice->text() != word); // every step counts, and is told
    QTRY_COMPARE(scene.frameRects(), QList<QRect>{frame});
    scene.click("pushButton_zoomin");
    QCOMPARE(notice->text(), word);
    scene.click("pushButton_zoomin");
    QVERIFY(notice->isHidden());
    QTRY_COMPARE(scene.frames().size(), 1);
    QCOMPARE(scene.pictureSize(), largest);
    scene.click("pushButton_zoomin");
    QVERIFY(scene.pictureSize().width() < largest.width());
}

void TestRuleEditorFaults::theFrameSaysWhyItShowsNoPage_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("pages");
    QTest::addColumn<QString>("words");
    QTest::newRow("no file in the list")
        << "Empty input"
        << "0"
        << "The list is empty. Add a file, then open the rule editor again.";
    QTest::newRow("pages never counted")
        << "SAMPLE"
        << ""
        << "The first file of the list cannot be read (damaged, protected by a password, or no "
           "PDF file): SAMPLE";
    QTest::newRow("file gone") << "/nowhere/a %1 <b>.pdf"
                               << "3"
                               << "The first file of the list is gone: /nowhere/a %1 <b>.pdf";
}

void TestRuleEditorFaults::theFrameSaysWhyItShowsNoPage()
{
    QFETCH(QString, file);
    QFETCH(QString, pages);
    QFETCH(QString, words);
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.storeSample(file == QLatin1String("SAMPLE") ? scene.document() : file, pages);
    scene.open();
    const auto *notice = scene.find<QLabel>("noticeLabel");
    QVERIFY(notice->isVisible());
    QCOMPARE(notice->text(), words.replace(QLatin1String("SAMPLE"), scene.document()));
    QVERIFY(scene.find<QFrame>("frame_back")->isAncestorOf(notice));
    QVERIFY(notice->height() >= notice->heightForWidth(notice->width()));
    // Once there is a page, nothing is left to say.
    scene.storeDocument(1);
    scene.openWithFrames(2);
    QVERIFY(notice->isHidden());
}

void TestRuleEditorFaults::theFrameSaysThatAPageCannotBeShown()
{
    EditorScene scene;
    scene.addPage(1, narrowSheet, twoItems, Qt::yellow);
    scene.addPage(2, narrowSheet, oneItem, Qt::cyan);
    scene.storeDocument(3);
    scene.openWithFrames(2);
    const auto *notice = scene.find<QLabel>("noticeLabel");
    QVERIFY(notice->isHidden());
    scene.failExports(true);
    scene.click("pushButton_up");
    QVERIFY(notice->isVisible());
    QCOMPARE(notice->text(), QStringLiteral("Page 2 cannot be shown: it could not be read."));
    // What the word covers can be clicked all the same.
    QVERIFY(notice->testAttribute(Qt::WA_TransparentForMouseEvents));
    scene.failExports(false);
    scene.click("pushButton_down");
    QTRY_COMPARE(scene.frames().size(), 2);
    QVERIFY(notice->isHidden());
}

void TestRuleEditorFaults::brokenPageFilesAreHarmless_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("frames");
    QTest::newRow("zero bytes") << QByteArray("a\0b\nc\0", 6) << 2;
    QTest::newRow("no line feed") << QByteArray("left:7;top:8;width:9;height:10") << 1;
    QTest::newRow("not UTF-8") << QByteArray("\xff\xfe\xc3\n\x80</span>\n") << 2;
    QTest::newRow("line feeds alone") << QByteArray("\n\n\n") << 0;
    QTest::newRow("carriage returns") << QByteArray("\r\n\r\n") << 2;
    QTest::newRow("one long line") << QByteArray(1000000, 'x') << 1;
}

void TestRuleEditorFaults::brokenPageFilesAreHarmless()
{
    QFETCH(QByteArray, text);
    QFETCH(int, frames);
    EditorScene scene;
    scene.addPageText(1, narrowSheet, text, Qt::yellow);
    scene.storeDocument(1);
    scene.openWithFrames(frames);
    QVERIFY(settled());
    QCOMPARE(scene.frames().size(), frames);
    scene.editor().getdiv();
    scene.clickPicture(QPoint(10, 10));
}

QUORLIN_TEST(TestRuleEditorFaults)
#include "test_rule_editor_faults.moc"
