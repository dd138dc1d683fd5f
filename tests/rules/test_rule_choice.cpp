#include "editor_scene.h"

#include "mainwindow/process.h"
#include "rules/rule_store.h"
#include "tests/support/room.h"

#include <QApplication>
#include <QComboBox>
#include <QDropEvent>
#include <QMimeData>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <QUrl>

#include <functional>

namespace {

// Tells three pages of every document.
const char countingTool[] = R"(#!/bin/sh
printf 'NumberOfPages: 3\n' > "$4"
)";

} // namespace

/// The button "Rule" of the main window, the editor behind it and the list of rules.
class TestRuleChoice : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void emptyListOpensTheEditorWithoutSample();
    void firstFileIsTheSampleWhateverIsSelected();
    void uncountedFileOpensTheEditorWithoutPages();
    void savedRuleIsAppendedAndChosen();
    void cancelledEditorGoesBackToTheFirstRule_data();
    void cancelledEditorGoesBackToTheFirstRule();
    void cancelledEditorWithoutRulesChoosesNothing();
    void sameEditorIsUsedEveryTime();
    void acceptedEditorWithoutNameAddsNothing();
    void openingDuringAnOpenEditorIsHarmless();

private:
    QComboBox *ruleBox() const { return window->findChild<QComboBox *>("comboBox_rule"); }
    QTableWidget *table() const
    {
        return window->findChild<QTableWidget *>("inputfiletableWidget");
    }
    /// Drops @p files on the window and waits for their page counts.
    void addFiles(const QStringList &files);
    /// Presses "Rule" and hands the open editor to @p act, which ends with the editor closed.
    void pressRule(const std::function<void(EditorView &)> &act);
    /// Picks frame @p frame and saves it.
    static void saveFrame(EditorView &view, int frame, const QString &name);

    std::unique_ptr<ToolBench> bench;
    std::unique_ptr<Process> window;
};

void TestRuleChoice::init()
{
    bench = std::make_unique<ToolBench>();
    bench->writeTool("pagebinder", countingTool);
    bench->addPage(1, squareSheet, twoItems, Qt::white);
    quorlin::saveRule("Account", {1, 2, 3, 4, "a"});
    quorlin::saveRule("Number", {5, 6, 7, 8, "b"});
    window = std::make_unique<Process>();
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    QCOMPARE(ruleBox()->count(), 2);
}

void TestRuleChoice::cleanup()
{
    window.reset();
    bench.reset();
}

void TestRuleChoice::addFiles(const QStringList &files)
{
    QMimeData data;
    QList<QUrl> urls;
    for (const QString &file : files) {
        urls.append(QUrl::fromLocalFile(file));
    }
    data.setUrls(urls);
    QDropEvent event(QPointF(100, 100), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    window->dropEvent(&event);
    QTRY_VERIFY(window->findChild<QPushButton *>("pushButton_option")->isEnabled());
}

void TestRuleChoice::pressRule(const std::function<void(EditorView &)> &act)
{
    bool acted = false;
    QTimer::singleShot(0, window.get(), [&] {
        auto *editor = qobject_cast<Rules *>(QApplication::activeModalWidget());
        QVERIFY(editor);
        QVERIFY(QTest::qWaitForWindowExposed(editor));
        EditorView view(*editor);
        act(view);
        acted = true;
        QVERIFY(!editor->isVisible());
    });
    QTest::mouseClick(window->findChild<QPushButton *>("pushButton_option"), Qt::LeftButton);
    QVERIFY(acted);
}

void TestRuleChoice::saveFrame(EditorView &view, int frame, const QString &name)
{
    QTRY_VERIFY(view.frames().size() > frame);
    view.clickFrame(frame);
    view.click("ruleButton");
    view.typeName(name);
    view.click("pushButton_save");
}

void TestRuleChoice::emptyListOpensTheEditorWithoutSample()
{
    pressRule([](EditorView &view) {
        QCOMPARE(ToolBench::setting("file/file"), QStringLiteral("Empty input"));
        QCOMPARE(ToolBench::setting("file/page"), QStringLiteral("0"));
        QCOMPARE(view.pageBox()->maximum(), 0);
        view.editor().close();
    });
    QCOMPARE(bench->calls(), QStringList());
}

void TestRuleChoice::firstFileIsTheSampleWhateverIsSelected()
{
    const QString second = bench->applicationPath() + "/second, \"b\".pdf";
    QVERIFY(QFile::copy(bench->document(), second));
    addFiles({bench->document(), second});
    table()->selectRow(1);
    pressRule([&](EditorView &view) {
        QCOMPARE(ToolBench::setting("file/file"), bench->document());
        QCOMPARE(ToolBench::setting("file/page"), QStringLiteral("3"));
        QCOMPARE(view.pageBox()->maximum(), 3);
        QTRY_COMPARE(view.frames().size(), 2);
        view.editor().close();
    });
    QCOMPARE(bench->calls().size(), 1);
}

void TestRuleChoice::uncountedFileOpensTheEditorWithoutPages()
{
    bench->writeTool("pagebinder", "#!/bin/sh\nexit 1\n");
    addFiles({bench->document()});
    pressRule([&](EditorView &view) {
        QCOMPARE(ToolBench::setting("file/file"), bench->document());
        QCOMPARE(ToolBench::setting("file/page"), QString());
        QVERIFY(!view.button("pushButton_zoomin")->isEnabled());
        view.editor().close();
    });
}

void TestRuleChoice::savedRuleIsAppendedAndChosen()
{
    addFiles({bench->document()});
    pressRule([](EditorView &view) { saveFrame(view, 0, "A first name, \"by\" order"); });
    QCOMPARE(ruleBox()->count(), 3);
    QCOMPARE(ruleBox()->currentIndex(), 2);
    QCOMPARE(ruleBox()->currentText(), QStringLiteral("A first name, \"by\" order"));
    QCOMPARE(quorlin::readRule(ruleBox()->currentText()), twoItems.at(0));
    pressRule([](EditorView &view) { saveFrame(view, 1, "2024/05"); });
    QCOMPARE(ruleBox()->count(), 4);
    QCOMPARE(ruleBox()->currentText(), QStringLiteral("2024/05"));
    QCOMPARE(quorlin::readRule(ruleBox()->currentText()), twoItems.at(1));
}

void TestRuleChoice::cancelledEditorGoesBackToTheFirstRule_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("Escape") << true;
    QTest::newRow("close button") << false;
}

void TestRuleChoice::cancelledEditorGoesBackToTheFirstRule()
{
    QFETCH(bool, byKey);
    ruleBox()->setCurrentIndex(1);
    pressRule([byKey](EditorView &view) {
        if (byKey) {
            QTest::keyClick(&view.editor(), Qt::Key_Escape);
        } else {
            view.editor().close();
        }
    });
    QCOMPARE(ruleBox()->currentIndex(), 0);
    QCOMPARE(ruleBox()->count(), 2);
}

void TestRuleChoice::cancelledEditorWithoutRulesChoosesNothing()
{
    ruleBox()->clear();
    pressRule([](EditorView &view) { view.editor().close(); });
    QCOMPARE(ruleBox()->currentIndex(), -1);
}

void TestRuleChoice::sameEditorIsUsedEveryTime()
{
    QList<Rules *> seen;
    for (int i = 0; i < 2; ++i) {
        pressRule([&](EditorView &view) {
            seen.append(&view.editor());
            view.editor().close();
        });
    }
    QCOMPARE(seen.at(0), seen.at(1));
}

void TestRuleChoice::acceptedEditorWithoutNameAddsNothing()
{
    QVERIFY(QFile::remove(bench->applicationPath() + "/setting.ini"));
    ruleBox()->setCurrentIndex(1);
    pressRule([](EditorView &view) { view.editor().accept(); });
    QCOMPARE(ruleBox()->count(), 2);
    QCOMPARE(ruleBox()->currentIndex(), 1);
}

void TestRuleChoice::openingDuringAnOpenEditorIsHarmless()
{
    addFiles({bench->document()});
    pressRule([&](EditorView &view) {
        QTRY_COMPARE(view.frames().size(), 2);
        QVERIFY(QMetaObject::invokeMethod(window.get(), "enteroption"));
        saveFrame(view, 1, "Total");
    });
    QCOMPARE(ruleBox()->currentText(), QStringLiteral("Total"));
    QCOMPARE(ruleBox()->count(), 3);
}

QUORLIN_TEST(TestRuleChoice)
#include "test_rule_choice.moc"
