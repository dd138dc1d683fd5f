#include "mainwindow/aboutdialog.h"
#include "mainwindow/process.h"
#include "options/opdialog.h"
#include "rules/rules.h"
#include "tests/support/room.h"

#include <QAccessible>
#include <QComboBox>
#include <QDesktopServices>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>
#include <QUrl>

/// Names of the controls in the order in which presses of Tab reach them, beginning with @p first.
/// Every control is turned on and shown before, because Tab passes over the others.
static QStringList tabOrder(QWidget &window, const QString &first)
{
    window.show();
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window)) {
        return {QStringLiteral("the window is not active")};
    }
    for (QWidget *control : window.findChildren<QWidget *>()) {
        control->setEnabled(true);
        if ((control->focusPolicy() & Qt::TabFocus) != 0 && !control->objectName().isEmpty()) {
            control->show();
        }
    }
    QStringList names;
    auto *start = window.findChild<QWidget *>(first);
    start->setFocus(Qt::TabFocusReason);
    do {
        names.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget() != start && names.size() < 100);
    return names;
}

/// Names of the buttons of @p window that look the same with and without the keyboard's focus.
static QString buttonsWithoutFocusMark(QWidget &window)
{
    window.show();
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window)) {
        return QStringLiteral("the window is not active");
    }
    QTest::keyClick(&window, Qt::Key_Tab); // from here on the focus is shown
    QString unmarked;
    for (QPushButton *button : window.findChildren<QPushButton *>()) {
        if (!button->isVisible() || button->autoDefault()) {
            continue; // a dialog's default button is marked with and without the focus
        }
        button->setEnabled(true);
        window.setFocus(Qt::TabFocusReason);
        const QImage before = button->grab().toImage();
        button->setFocus(Qt::TabFocusReason);
        if (button->grab().toImage() == before) {
            unmarked += button->objectName() + ' ';
        }
    }
    return unmarked;
}

class TestKeyboardAccess : public QObject
{
    Q_OBJECT

public slots:
    /// Stands in for the desktop's browser.
    void takeLink(const QUrl &url) { opened << url.toString(); }

private slots:
    void initTestCase()
    {
        QVERIFY(folder.isValid());
        QDir::setCurrent(folder.path());
    }

    void tabFollowsTheEyeThroughTheMainWindow()
    {
        Process window;
        QCOMPARE(
            tabOrder(window, QStringLiteral("inputfiletableWidget")),
            QStringList({"inputfiletableWidget", "openfileButton", "removeButton",
                         "removeallButton", "pushButton_up", "pushButton_down", "pushButton_option",
                         "runButton", "aboutpushButton", "comboBox_rule", "outputfolderEdit",
                         "outputButton", "comboBox_method", "textEdit_process"}));
    }

    void theTableLetsTheTabKeyGo()
    {
        Process window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        window.activateWindow();
        auto *table = window.findChild<QWidget *>(QStringLiteral("inputfiletableWidget"));
        table->setFocus();
        QTest::keyClick(table, Qt::Key_Tab);
        QCOMPARE(window.focusWidget()->objectName(), QStringLiteral("openfileButton"));
    }

    void aButtonReachedByTabIsPressedBySpace()
    {
        Process window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        auto *about = window.findChild<QPushButton *>(QStringLiteral("aboutpushButton"));
        QSignalSpy pressed(about, &QPushButton::pressed);
        about->disconnect(&window); // its box would wait for an answer
        about->setFocus();
        QTest::keyClick(about, Qt::Key_Space);
        QCOMPARE(pressed.count(), 1);
    }

    void tabFollowsTheEyeThroughTheRuleEditor()
    {
        Rules editor;
        QStringList order = tabOrder(editor, QStringLiteral("pushButton_zoomout"));
        order.removeAll(QStringLiteral("scrollArea")); // scrolls by the arrow keys
        QCOMPARE(order, QStringList({"pushButton_zoomout", "pushButton_zoomin", "pushButton_down",
                                     "pushButton_up", "spinBox_pagenumber", "lineEdit_rulebefore",
                                     "pushButton_save", "lineEdit_rule", "ruleButton"}));
    }

    void aButtonShowsThatItHasTheFocus()
    {
        Process window;
        QCOMPARE(buttonsWithoutFocusMark(window), QString());
        Rules editor;
        QCOMPARE(buttonsWithoutFocusMark(editor), QString());
        OpDialog options;
        QCOMPARE(buttonsWithoutFocusMark(options), QString());
    }

    void theHomePageOpensByKeyboard()
    {
        QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "takeLink");
        AboutDialog about;
        about.show();
        about.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&about));
        auto *link = about.findChild<QWidget *>(QStringLiteral("label_homepage"));
        for (int i = 0; i < 3 && QApplication::focusWidget() != link; ++i) {
            QTest::keyClick(&about, Qt::Key_Tab);
        }
        QCOMPARE(QApplication::focusWidget(), link);
        QTest::keyClick(link, Qt::Key_Tab); // to the link in the text
        QCOMPARE(QApplication::focusWidget(), link);
        QTest::keyClick(link, Qt::Key_Return);
        QCOMPARE(opened, QStringList({"https://cleaver.example.com"}));
        QDesktopServices::unsetUrlHandler(QStringLiteral("https"));
    }

    void escapeClosesTheDialogs()
    {
        AboutDialog about;
        OpDialog options;
        Rules editor;
        for (QDialog *dialog : std::initializer_list<QDialog *>{&about, &options, &editor}) {
            dialog->show();
            QVERIFY(QTest::qWaitForWindowExposed(dialog));
            QTest::keyClick(dialog, Qt::Key_Escape);
            QVERIFY(dialog->isHidden());
            QCOMPARE(dialog->result(), static_cast<int>(QDialog::Rejected));
        }
    }

    void everyLabelOfAFieldIsItsBuddy_data()
    {
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("field");
        QTest::newRow("file list") << "label"
                                   << "inputfiletableWidget";
        QTest::newRow("rule name") << "label_2"
                                   << "comboBox_rule";
        QTest::newRow("output folder") << "outputfolderlabel"
                                       << "outputfolderEdit";
        QTest::newRow("split method") << "label_4"
                                      << "comboBox_method";
        QTest::newRow("progress status") << "label_3"
                                         << "textEdit_process";
    }

    void everyLabelOfAFieldIsItsBuddy()
    {
        QFETCH(QString, label);
        QFETCH(QString, field);
        Process window;
        QWidget *buddy = window.findChild<QLabel *>(label)->buddy();
        QVERIFY(buddy != nullptr);
        QCOMPARE(buddy->objectName(), field);
    }

    void screenReadersHaveANameForEveryControl()
    {
        Process window;
        Rules editor;
        OpDialog options;
        for (QWidget *parent : std::initializer_list<QWidget *>{&window, &editor, &options}) {
            for (QWidget *control : parent->findChildren<QWidget *>()) {
                const bool named = !control->objectName().isEmpty() &&
                                   !control->objectName().startsWith("qt_") &&
                                   (control->focusPolicy() & Qt::TabFocus) != 0;
                // The button that makes the rule gets its text before it is shown.
                if (!named || control->objectName() == "ruleButton") {
                    continue;
                }
                QAccessibleInterface *told = QAccessible::queryAccessibleInterface(control);
                QVERIFY2(told != nullptr && !told->text(QAccessible::Name).isEmpty(),
                         qPrintable(control->objectName()));
            }
        }
    }

private:
    QStringList opened;
    QTemporaryDir folder;
};

QUORLIN_TEST(TestKeyboardAccess)
#include "test_keyboard_access.moc"
