#include "mainwindow/process.h"
#include "rules/rules.h"

#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

/// Names of the widgets in the order in which Tab reaches them, beginning with @p first.
static QStringList tabOrder(QWidget &window, const QString &first)
{
    QStringList names;
    auto *start = window.findChild<QWidget *>(first);
    QWidget *widget = start;
    do {
        const bool stops = (widget->focusPolicy() & Qt::TabFocus) != 0;
        if (stops && !widget->objectName().isEmpty() && !widget->objectName().startsWith("qt_")) {
            names.append(widget->objectName());
        }
        widget = widget->nextInFocusChain();
    } while (widget != start);
    return names;
}

class TestKeyboardAccess : public QObject
{
    Q_OBJECT

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
        const QStringList order = tabOrder(editor, QStringLiteral("pushButton_zoomout"));
        QCOMPARE(order.mid(0, 5),
                 QStringList({"pushButton_zoomout", "pushButton_zoomin", "pushButton_down",
                              "pushButton_up", "spinBox_pagenumber"}));
        QVERIFY(order.indexOf("lineEdit_rulebefore") < order.indexOf("pushButton_save"));
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

    void everyControlWithoutTextHasANameForScreenReaders()
    {
        Process window;
        Rules editor;
        for (QWidget *parent : {static_cast<QWidget *>(&window), static_cast<QWidget *>(&editor)}) {
            const QList<QPushButton *> buttons = parent->findChildren<QPushButton *>();
            for (const QPushButton *button : buttons) {
                if (button->isHidden()) {
                    continue; // gets its text before it is shown
                }
                QVERIFY2(!button->text().isEmpty() || !button->accessibleName().isEmpty(),
                         qPrintable(button->objectName()));
            }
        }
    }

private:
    QTemporaryDir folder;
};

QTEST_MAIN(TestKeyboardAccess)
#include "test_keyboard_access.moc"
