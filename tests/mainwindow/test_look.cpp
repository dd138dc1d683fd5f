#include "mainwindow/elidedcombobox.h"
#include "mainwindow/plain_tip.h"
#include "mainwindow/process.h"
#include "options/opdialog.h"
#include "rules/rules.h"
#include "tests/support/room.h"

#include <QApplication>
#include <QDir>
#include <QHash>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QStyleFactory>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>
#include <QTimer>

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

void TestLook::aLongRuleNameEndsInAnEllipsis()
{
    Process window;
    auto *rule = static_cast<ElidedComboBox *>(
        window.findChild<QComboBox *>(QStringLiteral("comboBox_rule")));
    rule->addItem(longName());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(window.size(), QSize(840, 490));
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
