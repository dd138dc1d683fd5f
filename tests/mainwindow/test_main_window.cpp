#include "tests/support/process_state.h"
#include "tests/support/quiet.h"
#include "tests/support/room.h"
#include "tests/support/window_bench.h"

#include "widgets/screen_fit.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QFrame>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMetaMethod>
#include <QNetworkAccessManager>
#include <QPushButton>
#include <QScreen>
#include <QStandardPaths>
#include <QTest>
#include <QTextEdit>
#include <QTimer>

#include <algorithm>

using quorlin::test::WindowBench;

namespace {

const char *const labelSheet = "QLabel { background-color : #E1E6E2;  }";

/// Colour shown most often in @p widget.
QRgb mainColour(QWidget *widget)
{
    const QImage picture = widget->grab().toImage().convertToFormat(QImage::Format_RGB32);
    QHash<QRgb, int> counts;
    QRgb most = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb colour = picture.pixel(x, y);
            if (++counts[colour] > counts.value(most)) {
                most = colour;
            }
        }
    }
    return most;
}

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void theWindowOpensCentred();
    void slotsStandInOrder();
    void labels_data();
    void labels();
    void captionsAreNotCut();
    void buttons_data();
    void buttons();
    void theTable();
    void thePlaceOfTheButtons();
    void choicesAndFields();
    void layouts();
    void headersAreColoured();
    void theContextMenu();
    void theBackgroundIsNotRescaled();
    void connections();
    void theRuleListShowsTheSavedRules();
    void withoutSettingsTheRuleListIsEmpty();
    void longRuleNamesDoNotWidenTheWindow();
    void thePreviewTimerDoesNotRunAtFirst();
    void theAboutButtonOpensTheBox();
    void theDialogsAreMadeWithTheWindowAndShownNowhere();
    void closingTheWindowEndsTheProgram();
    void everySlotCanBeInvokedByName_data();
    void everySlotCanBeInvokedByName();
};

void TestMainWindow::theWindowOpensCentred()
{
    WindowBench bench;
    Process window;
    QCOMPARE(window.objectName(), QStringLiteral("process"));
    QCOMPARE(window.windowTitle(), QStringLiteral("Quorlin Cleaver"));
    const QIcon icon(QStringLiteral(":/iconoption/icons/content32.png"));
    QVERIFY(!icon.pixmap(32, 32).isNull());
    QCOMPARE(window.windowIcon().pixmap(32, 32).toImage(), icon.pixmap(32, 32).toImage());
    QCOMPARE(window.size(), QSize(840, 490));
    const QRect screen = QGuiApplication::screens().first()->geometry();
    QCOMPARE(window.pos(), QPoint((screen.left() + screen.right()) / 2 - 839 / 2,
                                  (screen.top() + screen.bottom()) / 2 - 489 / 2));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(window.size(), QSize(840, 490).boundedTo(quorlin::roomFor(window)));
    QVERIFY(window.acceptDrops());
    QVERIFY(window.parentWidget() == nullptr);
    QCOMPARE(ProcessState::pageCount(window), 1);
    QCOMPARE(ProcessState::currentPage(window), 1);
    QCOMPARE(ProcessState::currentRow(window), 0);
}

void TestMainWindow::slotsStandInOrder()
{
    const char *const expected[] = {"convertbegin()",
                                    "enteroption()",
                                    "setopenfile()",
                                    "setremove()",
                                    "setopenselected()",
                                    "setremoveall()",
                                    "setoutputfile()",
                                    "setabout()",
                                    "setabout1()",
                                    "dragEnterEvent(QDragEnterEvent*)",
                                    "dropEvent(QDropEvent*)",
                                    "keyReleaseEvent(QKeyEvent*)",
                                    "dopreview()",
                                    "setpreview()",
                                    "getpdfpage()",
                                    "splitPage()",
                                    "getAlltheText()",
                                    "gethtm()",
                                    "getTextPosition(QString)",
                                    "getSubtextInfo(QString)",
                                    "getpos(QString,QString)",
                                    "gettext(QString)",
                                    "splitpdffile()",
                                    "setlink()",
                                    "setrowup()",
                                    "setrowdown()",
                                    "setpdfpage()"};
    const QMetaObject &meta = Process::staticMetaObject;
    QStringList found;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        QCOMPARE(method.methodType(), QMetaMethod::Slot);
        QCOMPARE(method.access(), QMetaMethod::Public);
        found.append(QString::fromLatin1(method.methodSignature()));
    }
    QCOMPARE(found, QStringList(std::begin(expected), std::end(expected)));
    const auto typeOf = [&](const char *signature) {
        return QByteArray(meta.method(meta.indexOfMethod(signature)).typeName());
    };
    QCOMPARE(typeOf("splitPage()"), "QStringList");
    QCOMPARE(typeOf("getSubtextInfo(QString)"), "Subtext");
    QCOMPARE(typeOf("getpos(QString,QString)"), "int");
    QCOMPARE(typeOf("gettext(QString)"), "QString");
    QVERIFY(meta.indexOfMethod("setdefaultpreview()") < 0);
    WindowBench bench;
    bench.window().setdefaultpreview();
}

void TestMainWindow::labels_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QSize>("maximum");
    QTest::addColumn<int>("width");
    const int any = QWIDGETSIZE_MAX;
    QTest::newRow("label") << "File List" << QSize(any, any) << 0;
    QTest::newRow("label_2") << "Rule Name" << QSize(90, 20) << 90;
    QTest::newRow("outputfolderlabel") << "Output Folder" << QSize(100, 20) << 0;
    QTest::newRow("label_4") << "Split Method" << QSize(90, 20) << 90;
    QTest::newRow("label_3") << "Progress Status" << QSize(any, 20) << 0;
}

void TestMainWindow::labels()
{
    QFETCH(QString, text);
    QFETCH(QSize, maximum);
    QFETCH(int, width);
    WindowBench bench;
    const auto *label = bench.widget<QLabel>(QTest::currentDataTag());
    QVERIFY(label != nullptr);
    QCOMPARE(label->text(), text);
    QCOMPARE(label->maximumSize(), maximum);
    QCOMPARE(label->font().pointSize(), 13);
    QCOMPARE(label->styleSheet(), QLatin1String(labelSheet));
    if (width != 0) {
        QCOMPARE(label->width(), width);
    }
    if (text == QLatin1String("Progress Status")) {
        QCOMPARE(label->height(), 20);
    }
}

void TestMainWindow::captionsAreNotCut()
{
    WindowBench bench;
    const QList<QLabel *> labels = bench.window().findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        QVERIFY2(label->fontMetrics().horizontalAdvance(label->text()) <= label->width(),
                 qPrintable(label->text()));
    }
    const QList<QPushButton *> buttons = bench.window().findChildren<QPushButton *>();
    for (const QPushButton *button : buttons) {
        const int icon = button->text().isEmpty() ? 0 : button->iconSize().width() + 4;
        QVERIFY2(button->fontMetrics().horizontalAdvance(button->text()) + icon <= button->width(),
                 qPrintable(button->text()));
    }
}

void TestMainWindow::buttons_data()
{
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("picture");
    QTest::newRow("openfileButton") << "Add"
                                    << "add.png";
    QTest::newRow("removeButton") << "Romove"
                                  << "del.png";
    QTest::newRow("removeallButton") << "Clear"
                                     << "clear.png";
    QTest::newRow("pushButton_up") << "Up"
                                   << "go_up.png";
    QTest::newRow("pushButton_down") << "Down"
                                     << "go_down.png";
    QTest::newRow("pushButton_option") << "Rule"
                                       << "setting.png";
    QTest::newRow("runButton") << "Split"
                               << "segmentation.png";
    QTest::newRow("aboutpushButton") << "About"
                                     << "about.png";
    QTest::newRow("outputButton") << ""
                                  << "folder_green_open.ico";
}

void TestMainWindow::buttons()
{
    QFETCH(QString, caption);
    QFETCH(QString, picture);
    WindowBench bench;
    const auto *button = bench.widget<QPushButton>(QTest::currentDataTag());
    QVERIFY(button != nullptr);
    QCOMPARE(button->text(), caption);
    QVERIFY(button->isFlat());
    if (caption.isEmpty()) {
        QCOMPARE(button->size(), QSize(28, 26));
    } else {
        QCOMPARE(button->width(), 90);
        QCOMPARE(button->parentWidget()->objectName(), QStringLiteral("frame"));
    }
    const QIcon icon(QStringLiteral(":/iconoption/icons/") + picture);
    QVERIFY(!icon.pixmap(16, 16).isNull());
    QCOMPARE(button->icon().pixmap(16, 16).toImage(), icon.pixmap(16, 16).toImage());
}

void TestMainWindow::theTable()
{
    WindowBench bench;
    const QTableWidget *table = bench.table();
    QCOMPARE(table->columnCount(), 4);
    const char *const headers[] = {"PDF File", "Page", "File Size", "Result"};
    for (int column = 0; column < 4; ++column) {
        QCOMPARE(table->horizontalHeaderItem(column)->text(), QLatin1String(headers[column]));
    }
    QVERIFY(table->isSortingEnabled());
    QCOMPARE(table->horizontalHeader()->sortIndicatorSection(), -1);
    QCOMPARE(table->editTriggers(), QAbstractItemView::NoEditTriggers);
    QCOMPARE(table->selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(table->lineWidth(), 2);
    QVERIFY(table->autoFillBackground());
    QVERIFY(table->hasAutoScroll());
    QCOMPARE(table->horizontalHeader()->defaultSectionSize(), 150);
    QCOMPARE(table->horizontalHeader()->minimumSectionSize(), 70);
    QVERIFY(table->horizontalHeader()->stretchLastSection());
    QCOMPARE(table->verticalHeader()->defaultSectionSize(), 18);
    QVERIFY(!table->verticalHeader()->stretchLastSection());
    QCOMPARE(table->styleSheet(), QStringLiteral("backgrouond-color:rgb(122,122,122)"));
    QCOMPARE(table->horizontalHeader()->styleSheet(),
             QStringLiteral("QHeaderView::section {background-color:CornflowerBlue;color: black;"
                            "padding-left: 0px;border: 0px solid #6c6c6c;}"));
    QCOMPARE(table->verticalHeader()->styleSheet(),
             QStringLiteral("QHeaderView::section {background-color:GhostWhite;color: black;"
                            "padding-left: 2px;border: 0px solid #6c6c6c;}"));
}

void TestMainWindow::thePlaceOfTheButtons()
{
    WindowBench bench;
    const auto *frame = bench.widget<QFrame>("frame");
    QCOMPARE(frame->maximumHeight(), 60);
    QCOMPARE(frame->frameShape(), QFrame::StyledPanel);
    QCOMPARE(frame->frameShadow(), QFrame::Raised);
    QCOMPARE(frame->styleSheet(), QStringLiteral("background-color : #E1E6E2;  "));
    QCOMPARE(frame->findChildren<QPushButton *>().size(), 8);
    // From top to bottom as in the form.
    int above = -1;
    for (const char *name : {"label", "inputfiletableWidget", "frame", "comboBox_rule",
                             "comboBox_method", "label_3", "textEdit_process"}) {
        const int y = bench.widget<QWidget>(name)->mapTo(&bench.window(), QPoint(0, 0)).y();
        QVERIFY2(y > above, name);
        above = y;
    }
}

void TestMainWindow::choicesAndFields()
{
    WindowBench bench;
    QCOMPARE(bench.widget<QComboBox>("comboBox_rule")->minimumWidth(), 200);
    const auto *method = bench.widget<QComboBox>("comboBox_method");
    QCOMPARE(method->count(), 3);
    QCOMPARE(method->currentIndex(), 0);
    QCOMPARE(method->itemText(0),
             QStringLiteral("1. Split when the next page has differet text in the specified "
                            "position."));
    QCOMPARE(method->itemText(1),
             QStringLiteral("2. Split when the next page has text in the specified position."));
    QCOMPARE(method->itemText(2),
             QStringLiteral("3. Use Method 1 and group pages containing the same text together."));
    const auto *folder = bench.widget<QLineEdit>("outputfolderEdit");
    QCOMPARE(folder->text(), QString());
    QCOMPARE(folder->palette().color(QPalette::Base), QColor(Qt::white));
    QCOMPARE(folder->palette().color(QPalette::Text), QColor(Qt::black));
    const auto *pane = bench.widget<QTextEdit>("textEdit_process");
    QVERIFY(pane->isReadOnly());
    QCOMPARE(pane->height(), 120);
    QVERIFY(pane->document()->isEmpty());
}

void TestMainWindow::layouts()
{
    WindowBench bench;
    for (const char *name : {"horizontalLayout", "horizontalLayout_2", "horizontalLayout_3",
                             "horizontalLayout_4", "verticalLayout_2"}) {
        const auto *layout = bench.window().findChild<QBoxLayout *>(QLatin1String(name));
        QVERIFY2(layout != nullptr, name);
        QCOMPARE(layout->spacing(), 6);
    }
    QCOMPARE(bench.window().layout()->contentsMargins(), QMargins(11, 11, 11, 11));
}

void TestMainWindow::headersAreColoured()
{
    WindowBench bench;
    bench.addFiles({bench.addBatch(QStringLiteral("a.pdf"), {QStringLiteral("A")})});
    QCOMPARE(QColor(mainColour(bench.table()->horizontalHeader())), QColor(0x64, 0x95, 0xed));
    QCOMPARE(QColor(mainColour(bench.table()->verticalHeader()->viewport())).name(),
             QColor(mainColour(bench.table()->verticalHeader())).name());
    const QImage vertical = bench.table()->verticalHeader()->grab().toImage();
    QCOMPARE(QColor(vertical.pixel(1, 1)), QColor(0xf8, 0xf8, 0xff));
    QCOMPARE(bench.table()->rowHeight(0), 18);
}

void TestMainWindow::theContextMenu()
{
    WindowBench bench;
    QCOMPARE(bench.table()->contextMenuPolicy(), Qt::ActionsContextMenu);
    const QList<QAction *> actions = bench.table()->actions();
    QStringList texts;
    for (const QAction *action : actions) {
        texts.append(action->text());
        QCOMPARE(action->parent(), bench.table());
    }
    QCOMPARE(texts, QStringList({QStringLiteral("Add File(s)"), QStringLiteral("View PDF File"),
                                 QStringLiteral("Delete Selected Item(s)"),
                                 QStringLiteral("Delete All Item(s)")}));
}

void TestMainWindow::theBackgroundIsNotRescaled()
{
    WindowBench bench;
    Process &window = bench.window();
    QVERIFY(window.autoFillBackground());
    const QImage picture =
        QPixmap(QStringLiteral(":/iconoption/icons/stock-ved.jpg"))
            .scaled(QSize(840, 490), Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
            .toImage();
    QCOMPARE(picture.size(), QSize(840, 490));
    for (const QPalette::ColorGroup group :
         {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        QCOMPARE(window.palette().brush(group, QPalette::Window).texture().toImage(), picture);
    }
    window.resize(1000, 700);
    QCOMPARE(window.palette().brush(QPalette::Window).texture().toImage(), picture);
}

void TestMainWindow::connections()
{
    WindowBench bench;
    // Each connection of the window's own can be taken apart exactly once.
    const auto connected = [&](const char *sender, const char *signal, const char *slot) {
        return QObject::disconnect(bench.widget<QObject>(sender), signal, &bench.window(), slot) &&
               !QObject::disconnect(bench.widget<QObject>(sender), signal, &bench.window(), slot);
    };
    const char *const table = "inputfiletableWidget";
    QVERIFY(connected("runButton", SIGNAL(clicked(bool)), SLOT(convertbegin())));
    QVERIFY(connected("pushButton_option", SIGNAL(clicked(bool)), SLOT(enteroption())));
    QVERIFY(connected("openfileButton", SIGNAL(clicked()), SLOT(setopenfile())));
    QVERIFY(
        connected(table, SIGNAL(itemDoubleClicked(QTableWidgetItem *)), SLOT(setopenselected())));
    QVERIFY(connected("removeButton", SIGNAL(clicked()), SLOT(setremove())));
    QVERIFY(connected("removeallButton", SIGNAL(clicked()), SLOT(setremoveall())));
    QVERIFY(connected(table, SIGNAL(itemClicked(QTableWidgetItem *)), SLOT(setpreview())));
    QVERIFY(connected(table, SIGNAL(itemSelectionChanged()), SLOT(setpreview())));
    QVERIFY(connected("outputButton", SIGNAL(clicked()), SLOT(setoutputfile())));
    QVERIFY(connected("aboutpushButton", SIGNAL(clicked()), SLOT(setabout1())));
    QVERIFY(connected("pushButton_up", SIGNAL(clicked()), SLOT(setrowup())));
    QVERIFY(connected("pushButton_down", SIGNAL(clicked()), SLOT(setrowdown())));
    QTimer *timer = ProcessState::previewTimer(bench.window());
    QVERIFY(QObject::disconnect(timer, SIGNAL(timeout()), &bench.window(), SLOT(dopreview())));
    QVERIFY(!QObject::disconnect(timer, SIGNAL(timeout()), &bench.window(), SLOT(dopreview())));
}

void TestMainWindow::theRuleListShowsTheSavedRules()
{
    WindowBench bench;
    for (const char *name : {"b", "Z", "10", "a, b", "\xc3\xa9", "[x]"}) {
        bench.folders.saveRule(QString::fromUtf8(name), 1, 1);
    }
    const auto *rules = bench.widget<QComboBox>("comboBox_rule");
    QStringList names;
    for (int i = 0; i < rules->count(); ++i) {
        names.append(rules->itemText(i));
    }
    QCOMPARE(names, QStringList({QStringLiteral("10"), QStringLiteral("Account"),
                                 QStringLiteral("Z"), QStringLiteral("[x]"), QStringLiteral("a, b"),
                                 QStringLiteral("b"), QString::fromUtf8("é")}));
    QCOMPARE(rules->currentIndex(), 0);
}

void TestMainWindow::withoutSettingsTheRuleListIsEmpty()
{
    WindowBench bench;
    QVERIFY(QFile::remove(bench.folders.settingsFile()));
    QCOMPARE(bench.widget<QComboBox>("comboBox_rule")->count(), 0);
    bench.closeWindow();
    quorlin::test::writeFile(bench.folders.settingsFile(), "[dir]\ninput=/x\n");
    QCOMPARE(bench.widget<QComboBox>("comboBox_rule")->count(), 0);
}

void TestMainWindow::longRuleNamesDoNotWidenTheWindow()
{
    WindowBench bench;
    bench.folders.saveRule(QString(150, QLatin1Char('W')), 1, 1);
    QCOMPARE(bench.window().size(), QSize(840, 490).boundedTo(quorlin::roomFor(bench.window())));
}

void TestMainWindow::thePreviewTimerDoesNotRunAtFirst()
{
    WindowBench bench;
    QTimer *timer = ProcessState::previewTimer(bench.window());
    QCOMPARE(timer->parent(), &bench.window());
    QVERIFY(!timer->isActive());
    QCOMPARE(bench.window().findChildren<QTimer *>(QString(), Qt::FindDirectChildrenOnly).size(),
             1);
    QCOMPARE(bench.window()
                 .findChildren<QNetworkAccessManager *>(QString(), Qt::FindDirectChildrenOnly)
                 .size(),
             1);
}

void TestMainWindow::theAboutButtonOpensTheBox()
{
    WindowBench bench;
    bool modal = false;
    bench.modals.handleNext([&](QDialog *dialog) {
        modal = dialog->isModal() && QByteArray(dialog->metaObject()->className()) == "AboutDialog";
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    bench.click("aboutpushButton");
    QVERIFY(modal);
    QCOMPARE(ProcessState::dataFolderPath(bench.window()),
             QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation));
}

void TestMainWindow::theDialogsAreMadeWithTheWindowAndShownNowhere()
{
    WindowBench bench;
    const auto dialogs = [] {
        QStringList found;
        const QWidgetList widgets = QApplication::topLevelWidgets();
        for (const QWidget *widget : widgets) {
            if (qobject_cast<const QDialog *>(widget) != nullptr) {
                found.append(widget->objectName() +
                             (widget->isVisible() ? QStringLiteral(" shown") : QString()));
            }
        }
        found.sort();
        return found;
    };
    QCOMPARE(dialogs(), QStringList());
    bench.window();
    const QStringList made = {QStringLiteral("AboutDialog"), QStringLiteral("OpDialog"),
                              QStringLiteral("Rules")};
    QCOMPARE(dialogs(), made);
    bench.closeWindow();
    QCOMPARE(dialogs(), QStringList());
}

void TestMainWindow::closingTheWindowEndsTheProgram()
{
    WindowBench bench;
    Process &window = bench.window();
    bool late = false;
    QTimer watchdog;
    watchdog.setSingleShot(true);
    QObject::connect(&watchdog, &QTimer::timeout, &watchdog, [&] {
        late = true;
        QCoreApplication::exit(1);
    });
    watchdog.start(30000);
    QTimer::singleShot(0, &window, [&] { window.close(); });
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(!late);
}

void TestMainWindow::everySlotCanBeInvokedByName_data()
{
    QTest::addColumn<int>("index");
    const QMetaObject &meta = Process::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QTest::newRow(meta.method(i).name().constData()) << i;
    }
}

void TestMainWindow::everySlotCanBeInvokedByName()
{
    QFETCH(int, index);
    WindowBench bench;
    const QMetaMethod method = Process::staticMetaObject.method(index);
    Process &window = bench.window();
    bench.modals.cancelNext();
    // An event handler gets no event, a parser an empty text.
    QGenericArgument arguments[2];
    QDragEnterEvent *drag = nullptr;
    QDropEvent *drop = nullptr;
    QKeyEvent *key = nullptr;
    const QString text;
    for (int i = 0; i < method.parameterCount(); ++i) {
        const QByteArray type = method.parameterTypeName(i);
        const void *value = type == "QString"            ? static_cast<const void *>(&text)
                            : type == "QDragEnterEvent*" ? static_cast<const void *>(&drag)
                            : type == "QDropEvent*"      ? static_cast<const void *>(&drop)
                                                         : static_cast<const void *>(&key);
        arguments[i] = QGenericArgument(
            type == "QString" ? "QString" : method.parameterTypes().at(i).constData(), value);
    }
    QVERIFY(method.invoke(&window, Qt::DirectConnection, arguments[0], arguments[1]));
    // Whatever was started comes to an end.
    QTRY_VERIFY(isQuiet());
    QCOMPARE(bench.table()->rowCount(), 0);
}

QUORLIN_TEST(TestMainWindow)
#include "test_main_window.moc"
