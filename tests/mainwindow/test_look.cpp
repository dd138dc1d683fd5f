#include "mainwindow/aboutdialog.h"
#include "mainwindow/elidedcombobox.h"
#include "mainwindow/process.h"
#include "options/opdialog.h"
#include "rules/rules.h"
#include "tests/support/room.h"
#include "widgets/plain_tip.h"
#include "widgets/screen_fit.h"

#include <QApplication>
#include <QDir>
#include <QFrame>
#include <QHash>
#include <QHeaderView>
#include <QHelpEvent>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QProcess>
#include <QProcessEnvironment>
#include <QPushButton>
#include <QScreen>
#include <QSpinBox>
#include <QStyleFactory>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QToolTip>
#include <QTranslator>

#include <algorithm>
#include <cmath>
#include <functional>

namespace {

constexpr double readable = 4.5; // what accessibility guidelines ask of normal text

double linear(int channel)
{
    const double value = channel / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(QRgb colour)
{
    return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) +
           0.0722 * linear(qBlue(colour));
}

double contrast(QRgb one, QRgb other)
{
    const double first = luminance(one) + 0.05;
    const double second = luminance(other) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

/// Contrast of the letters in @p picture: of its commonest colour and the one farthest from it.
double contrastIn(const QImage &picture)
{
    QHash<QRgb, int> colours;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            ++colours[picture.pixel(x, y)];
        }
    }
    QRgb ground = 0;
    int most = 0;
    for (auto colour = colours.cbegin(); colour != colours.cend(); ++colour) {
        if (colour.value() > most) {
            most = colour.value();
            ground = colour.key();
        }
    }
    double best = 1;
    for (const QRgb colour : colours.keys()) {
        best = std::max(best, contrast(ground, colour));
    }
    return best;
}

/// Contrast of the letters on @p widget as @p window shows it, without its frame.
double contrastOf(QWidget &window, const QWidget &widget)
{
    const QRect place(widget.mapTo(&window, QPoint()), widget.size());
    return contrastIn(window.grab(place.adjusted(4, 4, -4, -4)).toImage());
}

QPalette darkDesktop()
{
    QPalette dark(QColor(0x35, 0x35, 0x35), QColor(0x2d, 0x2d, 0x2d));
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text}) {
        dark.setColor(role, Qt::white);
    }
    dark.setColor(QPalette::Base, QColor(0x1e, 0x1e, 0x1e));
    return dark;
}

/// Fills what would be empty and takes the pictures off the buttons, so that only texts are left.
void fillIn(QWidget &window)
{
    for (QLineEdit *field : window.findChildren<QLineEdit *>()) {
        field->setText(QStringLiteral("MMMM"));
        field->setEnabled(true);
    }
    for (QPushButton *button : window.findChildren<QPushButton *>()) {
        button->setIcon(QIcon());
        button->setEnabled(true);
    }
    for (QTextEdit *text : window.findChildren<QTextEdit *>()) {
        text->setPlainText(QStringLiteral("MMMM"));
    }
    if (auto *table = window.findChild<QTableWidget *>()) {
        table->setRowCount(1);
        table->setItem(0, 0, new QTableWidgetItem(QStringLiteral("MMMM")));
    }
}

bool showsText(const QWidget &widget)
{
    if (!widget.isVisible() || !widget.isEnabled()) {
        return false;
    }
    if (const auto *label = qobject_cast<const QLabel *>(&widget)) {
        return !label->text().isEmpty();
    }
    if (const auto *button = qobject_cast<const QAbstractButton *>(&widget)) {
        return !button->text().isEmpty();
    }
    if (const auto *combo = qobject_cast<const QComboBox *>(&widget)) {
        return combo->count() > 0;
    }
    return qobject_cast<const QLineEdit *>(&widget) || qobject_cast<const QTextEdit *>(&widget) ||
           qobject_cast<const QHeaderView *>(&widget) ||
           qobject_cast<const QTableWidget *>(&widget) || qobject_cast<const QSpinBox *>(&widget);
}

/// Names and contrasts of the texts of @p window that are hard to read; empty when none is.
QString faintTexts(QWidget &window)
{
    QString faint;
    int seen = 0;
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        if (!showsText(*widget)) {
            continue;
        }
        ++seen;
        const double measured = contrastOf(window, *widget);
        if (measured < readable) {
            faint += QString::fromLatin1(widget->metaObject()->className()) + ' ' +
                     widget->objectName() + ' ' + QString::number(measured) + "; ";
        }
    }
    return seen == 0 ? QStringLiteral("no text at all") : faint;
}

QString longName()
{
    return QStringLiteral("Customer number in the upper right corner of the first page.");
}

} // namespace

class TestLook : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void theMainWindowIsReadable_data() { desktops(); }
    void theMainWindowIsReadable();
    void theRuleEditorIsReadable_data() { desktops(); }
    void theRuleEditorIsReadable();
    void theOptionsAreReadable_data() { desktops(); }
    void theOptionsAreReadable();
    void theMessageBoxesAreReadable_data() { desktops(); }
    void theMessageBoxesAreReadable();
    void faintTextIsNoticed();
    void noTextOfTheMainWindowIsCutOff_data() { styles(); }
    void noTextOfTheMainWindowIsCutOff();
    void noTextOfTheRuleEditorIsCutOff_data() { styles(); }
    void noTextOfTheRuleEditorIsCutOff();
    void captionsOfOneWidthShareOneFont();
    void captionsFitInEveryLanguageAndFont_data();
    void captionsFitInEveryLanguageAndFont();
    void disabledTextsCanBeRead_data() { desktops(); }
    void disabledTextsCanBeRead();
    void theMainWindowIsOneOnEveryDesktop_data() { desktops(); }
    void theMainWindowIsOneOnEveryDesktop();
    void theMainWindowFollowsTheDesktopsColours();
    void tipsOfTheButtonsCanBeRead_data() { desktops(); }
    void tipsOfTheButtonsCanBeRead();
    void windowsStandInsideTheScreen_data();
    void windowsStandInsideTheScreen();
    void everyWindowFitsTheScreen();
    void everyWindowFitsEveryScreen_data();
    void everyWindowFitsEveryScreen();
    void aLongRuleNameEndsInAnEllipsis();
    void aShortRuleNameStandsWhole();
    void aPathsTipIsThePathAsItStands();

private:
    static void desktops();
    static void styles();
    static QString cutOff(const QWidget &window);
    /// The program's message box as it is shown by @p action.
    static QString faintTextsOfBox(const std::function<void()> &action);

    QTemporaryDir folder;
    QPalette ownPalette;
    QString ownStyle;
};

void TestLook::initTestCase()
{
    QVERIFY(folder.isValid());
    QDir::setCurrent(folder.path());
    ownPalette = QApplication::palette();
    ownStyle = QApplication::style()->name();
}

void TestLook::init()
{
    QApplication::setStyle(QStringLiteral("Fusion"));
    QFile::remove(QStringLiteral("setting.ini"));
}

void TestLook::cleanup()
{
    QApplication::setPalette(ownPalette);
    QApplication::setStyle(ownStyle);
}

void TestLook::desktops()
{
    QTest::addColumn<QPalette>("colours");
    QTest::newRow("light desktop") << QApplication::palette();
    QTest::newRow("dark desktop") << darkDesktop();
}

void TestLook::styles()
{
    QTest::addColumn<QString>("style");
    for (const QString &style : QStyleFactory::keys()) {
        QTest::newRow(qPrintable(style)) << style;
    }
}

void TestLook::theMainWindowIsReadable()
{
    QFETCH(QPalette, colours);
    QApplication::setPalette(colours);
    Process window;
    window.findChild<QComboBox *>(QStringLiteral("comboBox_rule"))->addItem(longName());
    fillIn(window);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(faintTexts(window), QString());
}

void TestLook::theRuleEditorIsReadable()
{
    QFETCH(QPalette, colours);
    QApplication::setPalette(colours);
    Rules editor;
    fillIn(editor);
    editor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&editor));
    editor.textmessagebox(); // brings the button that makes the rule
    auto *button = editor.findChild<QPushButton *>(QStringLiteral("ruleButton"));
    QVERIFY(button->isVisible());
    QVERIFY(button->sizeHint().width() <= button->width());
    QVERIFY(button->fontMetrics().height() <= button->height());
    QCOMPARE(faintTexts(editor), QString());
}

void TestLook::theOptionsAreReadable()
{
    QFETCH(QPalette, colours);
    QApplication::setPalette(colours);
    OpDialog dialog;
    fillIn(dialog);
    dialog.setwarning();
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    auto *pages = dialog.findChild<QListWidget *>(QStringLiteral("listWidge_option"));
    for (int row = 0; row < pages->count(); ++row) {
        pages->setCurrentRow(row);
        QCOMPARE(faintTexts(dialog), QString());
    }
}

QString TestLook::faintTextsOfBox(const std::function<void()> &action)
{
    QString faint = QStringLiteral("no box");
    QTimer::singleShot(0, [&faint] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            for (QAbstractButton *button : box->buttons()) {
                button->setIcon(QIcon());
            }
            faint = faintTexts(*box);
            box->accept();
        }
    });
    action();
    return faint;
}

void TestLook::theMessageBoxesAreReadable()
{
    QFETCH(QPalette, colours);
    QApplication::setPalette(colours);
    Process window;
    QCOMPARE(faintTextsOfBox([&] { window.convertbegin(); }), QString());
    window.findChild<QTableWidget *>()->setRowCount(1);
    QCOMPARE(faintTextsOfBox([&] { window.convertbegin(); }), QString());
    Rules editor;
    QCOMPARE(faintTextsOfBox([&] { editor.setsave(); }), QString());
}

void TestLook::faintTextIsNoticed()
{
    QLabel label(QStringLiteral("MMMM"));
    QPalette faint = label.palette();
    faint.setColor(QPalette::Window, QColor(0xe1, 0xe6, 0xe2));
    faint.setColor(QPalette::WindowText, Qt::white);
    label.setPalette(faint);
    label.setMargin(8);
    QVERIFY(contrastOf(label, label) < 2);
    faint.setColor(QPalette::WindowText, Qt::black);
    label.setPalette(faint);
    QVERIFY(contrastOf(label, label) > 10);
}

QString TestLook::cutOff(const QWidget &window)
{
    QString found;
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        const auto *label = qobject_cast<const QLabel *>(widget);
        const auto *button = qobject_cast<const QPushButton *>(widget);
        if (!widget->isVisible() || (label == nullptr && button == nullptr)) {
            continue;
        }
        const QString text = label != nullptr ? label->text() : button->text();
        const QFontMetrics metrics = widget->fontMetrics();
        const bool hasPicture = button != nullptr && !button->icon().isNull();
        const int picture = hasPicture ? button->iconSize().width() + (text.isEmpty() ? 0 : 4) : 0;
        // Ink, not line height: a caption may be lower than its line as long as its letters fit.
        if (metrics.horizontalAdvance(text) + picture > widget->width() ||
            metrics.tightBoundingRect(text).height() > widget->height()) {
            found += widget->objectName() + " is cut off; ";
        }
        if (!widget->parentWidget()->rect().contains(widget->geometry())) {
            found += widget->objectName() + " leaves its parent; ";
        }
    }
    return found;
}

void TestLook::noTextOfTheMainWindowIsCutOff()
{
    QFETCH(QString, style);
    QApplication::setStyle(style);
    Process window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(cutOff(window), QString());
    window.resize(window.minimumSizeHint());
    QCoreApplication::processEvents();
    QCOMPARE(cutOff(window), QString());
}

void TestLook::noTextOfTheRuleEditorIsCutOff()
{
    QFETCH(QString, style);
    QApplication::setStyle(style);
    Rules editor;
    editor.findChild<QLabel *>(QStringLiteral("label_pagenumber"))
        ->setText(QStringLiteral("/10000"));
    editor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&editor));
    QCOMPARE(cutOff(editor), QString());
}

namespace {

const QStringList captionNames = {QStringLiteral("label_2"), QStringLiteral("label_4"),
                                  QStringLiteral("outputfolderlabel")};

/// Buttons and captions of the main window in German, the longest words a translator would choose.
class GermanWords : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *, const char *source, const char *, int) const override
    {
        static const QHash<QByteArray, QString> words = {
            {"Add", QStringLiteral("Hinzuf\u00fcgen")},
            {"Romove", QStringLiteral("Entfernen")},
            {"Clear", QStringLiteral("Liste leeren")},
            {"Up", QStringLiteral("Nach oben")},
            {"Down", QStringLiteral("Nach unten")},
            {"Rule", QStringLiteral("Regel")},
            {"Split", QStringLiteral("Aufteilen")},
            {"About", QStringLiteral("\u00dcber")},
            {"Rule Name", QStringLiteral("Regelname")},
            {"Output Folder", QStringLiteral("Ausgabeordner")},
            {"Split Method", QStringLiteral("Teilungsmethode")},
            {"File List", QStringLiteral("Dateiliste")},
            {"Progress Status", QStringLiteral("Fortschritt")},
        };
        return words.value(source);
    }
};

} // namespace

void TestLook::captionsOfOneWidthShareOneFont()
{
    Process window;
    const QFont font = window.findChild<QLabel *>(captionNames.first())->font();
    QCOMPARE(font.pointSize(), 13);
    for (const QString &name : captionNames) {
        QCOMPARE(window.findChild<QLabel *>(name)->font(), font);
    }
    QFont buttonFont;
    for (const QPushButton *button :
         window.findChild<QFrame *>(QStringLiteral("frame"))->findChildren<QPushButton *>()) {
        buttonFont = buttonFont == QFont() ? button->font() : buttonFont;
        QCOMPARE(button->font(), buttonFont);
        QCOMPARE(button->minimumWidth(), 90);
        QCOMPARE(button->maximumWidth(), 90);
    }
}

void TestLook::captionsFitInEveryLanguageAndFont_data()
{
    QTest::addColumn<bool>("german");
    QTest::addColumn<int>("points");
    for (const bool german : {false, true}) {
        for (const int points : {8, 9, 11, 13, 15, 18}) {
            QTest::addRow("%s, %d points", german ? "German" : "English", points)
                << german << points;
        }
    }
}

void TestLook::captionsFitInEveryLanguageAndFont()
{
    QFETCH(bool, german);
    QFETCH(int, points);
    const QFont before = QApplication::font();
    QFont font = before;
    font.setPointSize(points);
    GermanWords words;
    if (german) {
        QVERIFY(QCoreApplication::installTranslator(&words));
    }
    QApplication::setFont(font);
    {
        Process window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(cutOff(window), QString());
        const auto *table = window.findChild<QTableWidget *>();
        QVERIFY(table->verticalHeader()->defaultSectionSize() >= table->fontMetrics().height());
        // The font may change while the window is open.
        font.setPointSize(points + 3);
        QApplication::setFont(font);
        QCOMPARE(cutOff(window), QString());
    }
    QApplication::setFont(before);
    QCoreApplication::removeTranslator(&words);
}

void TestLook::disabledTextsCanBeRead()
{
    QFETCH(QPalette, colours);
    QApplication::setPalette(colours);
    Process window;
    Rules editor;
    OpDialog options;
    for (QWidget *parent : std::initializer_list<QWidget *>{&window, &editor, &options}) {
        fillIn(*parent);
        parent->show();
        QVERIFY(QTest::qWaitForWindowExposed(parent));
        for (QWidget *widget : parent->findChildren<QWidget *>()) {
            const auto *button = qobject_cast<QPushButton *>(widget);
            const bool shows = (button != nullptr && !button->text().isEmpty()) ||
                               qobject_cast<QLineEdit *>(widget) != nullptr;
            // The output folder's field is never off.
            if (!shows || !widget->isVisible() || widget->objectName() == "outputfolderEdit") {
                continue;
            }
            widget->setEnabled(false);
            const double measured = contrastOf(*parent, *widget);
            QVERIFY2(measured >= readable,
                     qPrintable(widget->objectName() + ' ' + QString::number(measured)));
        }
    }
}

void TestLook::theMainWindowIsOneOnEveryDesktop()
{
    QFETCH(QPalette, colours);
    QApplication::setPalette(colours);
    Process window;
    fillIn(window);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    // Captions, button row and headers are light by their sheets, the picture by itself: so are the
    // list, the choices, the field and the pane.
    for (const char *name : {"inputfiletableWidget", "comboBox_rule", "comboBox_method",
                             "outputfolderEdit", "textEdit_process"}) {
        const auto *widget = window.findChild<QWidget *>(QLatin1String(name));
        const QRect place(widget->mapTo(&window, QPoint()), widget->size());
        const QImage seen = window.grab(place).toImage();
        qint64 lightness = 0;
        for (int y = 0; y < seen.height(); ++y) {
            for (int x = 0; x < seen.width(); ++x) {
                lightness += qGray(seen.pixel(x, y));
            }
        }
        lightness /= qint64{seen.width()} * seen.height();
        QVERIFY2(lightness > 180, qPrintable(widget->objectName() + QString::number(lightness)));
    }
}

void TestLook::theMainWindowFollowsTheDesktopsColours()
{
    Process window;
    fillIn(window);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const QImage picture = window.palette().brush(QPalette::Window).texture().toImage();
    for (const QPalette &colours : {darkDesktop(), ownPalette, darkDesktop()}) {
        QApplication::setPalette(colours);
        QCoreApplication::processEvents();
        QCOMPARE(faintTexts(window), QString());
        QCOMPARE(window.palette().brush(QPalette::Window).texture().toImage(), picture);
    }
}

void TestLook::tipsOfTheButtonsCanBeRead()
{
    QFETCH(QPalette, colours);
    QApplication::setPalette(colours);
    QToolTip::setPalette(colours);
    Process window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    for (const char *name : {"openfileButton", "removeButton", "runButton", "aboutpushButton"}) {
        auto *button = window.findChild<QPushButton *>(QLatin1String(name));
        QVERIFY(!button->toolTip().isEmpty());
        QHelpEvent asked(QEvent::ToolTip, QPoint(5, 5), button->mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(button, &asked);
        QVERIFY(QToolTip::isVisible());
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *tip : windows) {
            if (tip->inherits("QTipLabel") && tip->isVisible()) {
                QVERIFY2(contrastIn(tip->grab().toImage()) >= readable, name);
            }
        }
        QToolTip::hideText();
    }
}

void TestLook::windowsStandInsideTheScreen_data()
{
    QTest::addColumn<QRect>("window");
    QTest::addColumn<QRect>("available");
    QTest::addColumn<QRect>("place");
    const QRect wide(0, 0, 1920, 1080);
    QTest::newRow("what fits stays, even half outside")
        << QRect(-20, 155, 840, 490) << wide << QRect(-20, 155, 840, 490);
    QTest::newRow("as large as the room")
        << QRect(100, 20, 626, 669) << QRect(0, 0, 800, 440) << QRect(100, 30, 626, 410);
    QTest::newRow("below a panel")
        << QRect(100, 20, 626, 669) << QRect(0, 40, 960, 500) << QRect(100, 70, 626, 470);
    QTest::newRow("too wide and beside the origin")
        << QRect(-20, 155, 840, 490) << QRect(1000, 0, 800, 800) << QRect(1000, 155, 800, 490);
    QTest::newRow("no room at all")
        << QRect(0, 0, 100, 100) << QRect(0, 0, 5, 5) << QRect(0, 0, 100, 100);
}

void TestLook::windowsStandInsideTheScreen()
{
    QFETCH(QRect, window);
    QFETCH(QRect, available);
    QTEST(quorlin::placedInside(window, available, QMargins(0, 30, 0, 0)), "place");
}

void TestLook::everyWindowFitsTheScreen()
{
    Process window;
    Rules editor;
    OpDialog options;
    AboutDialog about;
    for (QWidget *shown : std::initializer_list<QWidget *>{&window, &editor, &options, &about}) {
        shown->show();
        QVERIFY(QTest::qWaitForWindowExposed(shown));
        const QRect screen = shown->screen()->availableGeometry();
        QVERIFY2(screen.contains(shown->frameGeometry()), shown->metaObject()->className());
        if (shown != &about) { // its texts are links, whose tags take no room
            QCOMPARE(cutOff(*shown), QString());
        }
        for (const QWidget *child : shown->findChildren<QWidget *>()) {
            const bool reached = child->isVisible() && (child->focusPolicy() & Qt::TabFocus) != 0 &&
                                 !child->objectName().startsWith(QLatin1String("qt_"));
            if (reached) {
                const QRect place(child->mapTo(shown, QPoint()), child->size());
                QVERIFY2(shown->rect().contains(place), qPrintable(child->objectName()));
            }
        }
        shown->hide();
    }
}

void TestLook::everyWindowFitsEveryScreen_data()
{
    QTest::addColumn<QSize>("screen");
    QTest::addColumn<QByteArray>("scale");
    QTest::newRow("800 x 800, scale 1.6") << QSize(800, 800) << QByteArray("1.6");
    QTest::newRow("800 x 440") << QSize(800, 440) << QByteArray("1");
    QTest::newRow("800 x 600") << QSize(800, 600) << QByteArray("1");
    QTest::newRow("1366 x 768") << QSize(1366, 768) << QByteArray("1");
    QTest::newRow("1920 x 1080, scale 2") << QSize(1920, 1080) << QByteArray("2");
    QTest::newRow("3840 x 2160, scale 2") << QSize(3840, 2160) << QByteArray("2");
}

void TestLook::everyWindowFitsEveryScreen()
{
    QFETCH(QSize, screen);
    QFETCH(QByteArray, scale);
    // The size and the scale of the screen are fixed when a program starts.
    const QString description = folder.filePath(QStringLiteral("screen.json"));
    QFile file(description);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QStringLiteral("{\"screens\": [{\"name\": \"screen\", \"x\": 0, \"y\": 0, "
                              "\"width\": %1, \"height\": %2, \"logicalDpi\": 96, "
                              "\"logicalBaseDpi\": 96, \"dpr\": 1}]}")
                   .arg(screen.width())
                   .arg(screen.height())
                   .toUtf8());
    file.close();
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::fromLatin1(scale));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"),
                       QStringLiteral("offscreen:configfile=") + description);
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(QCoreApplication::applicationFilePath(),
                  {QStringLiteral("look"), QStringLiteral("-silent"),
                   QStringLiteral("everyWindowFitsTheScreen")});
    QVERIFY(program.waitForFinished(-1));
    QVERIFY2(program.exitCode() == 0, program.readAll().constData());
}

void TestLook::aLongRuleNameEndsInAnEllipsis()
{
    Process window;
    auto *rule = static_cast<ElidedComboBox *>(
        window.findChild<QComboBox *>(QStringLiteral("comboBox_rule")));
    rule->addItem(longName());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(window.size(), QSize(840, 490).boundedTo(quorlin::roomFor(window)));
    QVERIFY(rule->shownText().endsWith(QChar(0x2026)));
    QVERIFY(longName().startsWith(rule->shownText().chopped(1)));
    QVERIFY(rule->shownText().size() > 15);
    QCOMPARE(rule->currentText(), longName());
    rule->resize(700, rule->height());
    QCOMPARE(rule->shownText(), longName());
}

void TestLook::aShortRuleNameStandsWhole()
{
    Process window;
    auto *rule = static_cast<ElidedComboBox *>(
        window.findChild<QComboBox *>(QStringLiteral("comboBox_rule")));
    rule->addItem(QStringLiteral("Customer number"));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(rule->shownText(), QStringLiteral("Customer number"));
}

void TestLook::aPathsTipIsThePathAsItStands()
{
    QCOMPARE(
        quorlin::plainTip(QStringLiteral("/a/<b>  & c.pdf")),
        QStringLiteral("<span style=\"white-space:pre-wrap\">/a/&lt;b&gt;  &amp; c.pdf</span>"));
}

QUORLIN_TEST(TestLook)
#include "test_look.moc"
