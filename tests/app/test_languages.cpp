#include "catalogue.h"

#include "app/translation.h"
#include "mainwindow/aboutdialog.h"
#include "mainwindow/process.h"
#include "options/opdialog.h"
#include "rules/rules.h"
#include "tests/support/modal_answer.h"
#include "tests/support/room.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QSet>
#include <QStackedWidget>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTranslator>
#include <QXmlStreamReader>

#include <algorithm>

namespace {

const QStringList languages = {QStringLiteral("de"), QStringLiteral("es"),   QStringLiteral("fr"),
                               QStringLiteral("it"), QStringLiteral("ja"),   QStringLiteral("pl"),
                               QStringLiteral("pt"), QStringLiteral("zh_CN")};

/// What stands for something else in @p text: numbers to be filled in, the files a filter lets
/// pass.
QStringList placeHolders(const QString &text)
{
    static const QRegularExpression expression(QStringLiteral("%\\d|\\(\\*[^)]*\\)|;;"));
    QStringList found;
    for (auto match = expression.globalMatch(text); match.hasNext();) {
        found << match.next().captured();
    }
    found.sort();
    return found;
}

/// Pixels that @p widget lacks to show its text, its picture included; at most 0 when nothing is
/// cut off.
int lack(const QWidget &widget)
{
    const QFontMetrics metrics = widget.fontMetrics();
    if (const auto *label = qobject_cast<const QLabel *>(&widget)) {
        if (label->wordWrap()) {
            return label->heightForWidth(label->width()) - label->height();
        }
        // A caption may fill its label to the edge.
        const bool isCaption = !label->text().contains('<') && !label->text().contains('\n') &&
                               label->pixmap().isNull();
        const int needed =
            isCaption ? metrics.horizontalAdvance(label->text()) : label->sizeHint().width();
        return needed - label->width();
    }
    if (const auto *button = qobject_cast<const QPushButton *>(&widget)) {
        const int gap = button->text().isEmpty() ? 0 : 4;
        const int picture = button->icon().isNull() ? 0 : button->iconSize().width() + gap;
        return metrics.horizontalAdvance(button->text()) + picture - button->width();
    }
    if (const auto *button = qobject_cast<const QAbstractButton *>(&widget)) {
        return button->sizeHint().width() - button->width();
    }
    if (const auto *list = qobject_cast<const QListWidget *>(&widget)) {
        return list->sizeHintForColumn(0) - list->viewport()->width();
    }
    return 0;
}

/// What is cut off in @p window; empty when nothing is.
QString cutOff(const QWidget &window)
{
    QString found;
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        if (!widget->isVisible() || widget->objectName().startsWith(QLatin1String("qt_"))) {
            continue;
        }
        if (const int missing = lack(*widget); missing > 0) {
            found += widget->objectName() + " lacks " + QString::number(missing) + " pixels; ";
        }
    }
    return found;
}

QString cutOffHeaders(const QTableWidget &table)
{
    QString found;
    const QFontMetrics metrics = table.horizontalHeader()->fontMetrics();
    for (int column = 0; column < table.columnCount(); ++column) {
        const QString text = table.horizontalHeaderItem(column)->text();
        if (metrics.horizontalAdvance(text) > table.columnWidth(column)) {
            found += text + " is cut off; ";
        }
    }
    return found;
}

void save(QWidget &window, const QString &name)
{
    const QString folder = qEnvironmentVariable("QUORLIN_SCREENSHOTS");
    if (!folder.isEmpty()) {
        QVERIFY(window.grab().save(folder + "/" + name + ".png"));
    }
}

} // namespace

/// The languages that come with the program.
class TestLanguages : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void everyTextIsTranslated_data() { eachLanguage(); }
    void everyTextIsTranslated();
    void placeHoldersStay_data() { eachLanguage(); }
    void placeHoldersStay();
    void nothingIsCutOffInTheMainWindow_data() { eachLanguage(); }
    void nothingIsCutOffInTheMainWindow();
    void nothingIsCutOffInTheRuleEditor_data() { eachLanguage(); }
    void nothingIsCutOffInTheRuleEditor();
    void nothingIsCutOffInTheOtherDialogs_data() { eachLanguage(); }
    void nothingIsCutOffInTheOtherDialogs();
    void qtsOwnTextsAreTranslated_data() { eachLanguage(); }
    void qtsOwnTextsAreTranslated();
    void aCatalogueBesideTheProgramComesFirst();
    void anotherCountryOfALanguageIsServed();

private:
    static void eachLanguage();
    QString catalogueFolder() const { return QStringLiteral(QUORLIN_BIN_DIR); }
    void speak(const QString &language);

    QTemporaryDir folder;
    QStringList collected;
};

void TestLanguages::eachLanguage()
{
    QTest::addColumn<QString>("language");
    for (const QString &language : languages) {
        QTest::newRow(qPrintable(language)) << language;
    }
}

void TestLanguages::initTestCase()
{
    QVERIFY(folder.isValid());
    collected = collectedTexts(folder.filePath(QStringLiteral("all.ts")));
    QVERIFY(collected.size() > 80);
}

void TestLanguages::init()
{
    QDir::setCurrent(folder.path());
}

void TestLanguages::cleanup()
{
    for (QTranslator *translator : QCoreApplication::instance()->findChildren<QTranslator *>()) {
        delete translator; // which also takes it out of use
    }
}

void TestLanguages::speak(const QString &language)
{
    QVERIFY(quorlin::installTranslation(catalogueFolder(), QLocale(language)));
}

void TestLanguages::everyTextIsTranslated()
{
    QFETCH(QString, language);
    const auto entries =
        entriesOf(QStringLiteral(QUORLIN_SOURCE_DIR "/translations/quorlin-cleaver_") + language +
                  QStringLiteral(".ts"));
    QStringList missing;
    for (const QString &text : collected) {
        // Style sheets stand among the texts of the forms, but are none.
        if (entries.value(text).isEmpty() && !text.contains(QLatin1String("background-color"))) {
            missing << text;
        }
    }
    QCOMPARE(missing, QStringList());
    QStringList outdated;
    for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry) {
        if (!collected.contains(entry.key())) {
            outdated << entry.key();
        }
    }
    QCOMPARE(outdated, QStringList());
}

void TestLanguages::placeHoldersStay()
{
    QFETCH(QString, language);
    const auto entries =
        entriesOf(QStringLiteral(QUORLIN_SOURCE_DIR "/translations/quorlin-cleaver_") + language +
                  QStringLiteral(".ts"));
    QVERIFY(!entries.isEmpty());
    for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry) {
        QCOMPARE(placeHolders(entry.value()), placeHolders(entry.key()));
    }
}

void TestLanguages::nothingIsCutOffInTheMainWindow()
{
    QFETCH(QString, language);
    speak(language);
    Process window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(window.findChild<QPushButton *>(QStringLiteral("runButton"))->text() !=
            QLatin1String("Split"));
    save(window, QStringLiteral("window-") + language);
    QCOMPARE(cutOff(window), QString());
    QCOMPARE(cutOffHeaders(*window.findChild<QTableWidget *>()), QString());
    const auto *methods = window.findChild<QComboBox *>(QStringLiteral("comboBox_method"));
    for (int i = 0; i < methods->count(); ++i) {
        const int needed = methods->fontMetrics().horizontalAdvance(methods->itemText(i));
        QVERIFY2(needed < methods->width() - methods->height(), qPrintable(methods->itemText(i)));
    }
}

void TestLanguages::nothingIsCutOffInTheRuleEditor()
{
    QFETCH(QString, language);
    speak(language);
    Rules editor;
    editor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&editor));
    save(editor, QStringLiteral("editor-") + language);
    QCOMPARE(cutOff(editor), QString());
}

void TestLanguages::nothingIsCutOffInTheOtherDialogs()
{
    QFETCH(QString, language);
    speak(language);
    AboutDialog about;
    about.show();
    QVERIFY(QTest::qWaitForWindowExposed(&about));
    save(about, QStringLiteral("about-") + language);
    QCOMPARE(cutOff(about), QString());
    OpDialog options;
    options.show();
    QVERIFY(QTest::qWaitForWindowExposed(&options));
    auto *list = options.findChild<QListWidget *>();
    for (int page = 0; page < list->count(); ++page) {
        list->setCurrentRow(page);
        options.findChild<QStackedWidget *>()->setCurrentIndex(page);
        QCoreApplication::processEvents();
        save(options, QStringLiteral("options-") + QString::number(page) + '-' + language);
        QCOMPARE(cutOff(options), QString());
    }
}

void TestLanguages::qtsOwnTextsAreTranslated()
{
    QFETCH(QString, language);
    if (!QFile::exists(catalogueFolder() + QStringLiteral("/translations/qtbase_de.qm"))) {
        QSKIP("Qt's own catalogues (Debian: qt6-translations-l10n) are not installed");
    }
    speak(language);
    QMessageBox box(QMessageBox::Question, QString(), QString(),
                    QMessageBox::Cancel | QMessageBox::Save);
    QVERIFY(box.button(QMessageBox::Cancel)->text() != QLatin1String("Cancel"));
}

void TestLanguages::aCatalogueBesideTheProgramComesFirst()
{
    QVERIFY(QFile::link(catalogueFolder() + QStringLiteral("/translations"),
                        folder.filePath(QStringLiteral("translations"))));
    QVERIFY(QFile::copy(QStringLiteral(QUORLIN_GERMAN_CATALOGUE),
                        folder.filePath(QStringLiteral("quorlin-cleaver_de.qm"))));
    QVERIFY(quorlin::installTranslation(folder.path(), QLocale(QStringLiteral("de_DE"))));
    const Process window;
    QCOMPARE(window.findChild<QPushButton *>(QStringLiteral("runButton"))->text(),
             QStringLiteral("Teilen"));
    // What the user's catalogue leaves open comes from the program's own.
    QCOMPARE(window.findChild<QPushButton *>(QStringLiteral("removeButton"))->text(),
             QStringLiteral("Entfernen"));
}

void TestLanguages::anotherCountryOfALanguageIsServed()
{
    for (const char *country : {"de_CH", "pt_BR", "fr_CA", "es_MX"}) {
        QVERIFY(quorlin::installTranslation(catalogueFolder(), QLocale(QLatin1String(country))));
    }
    QVERIFY(!quorlin::installTranslation(catalogueFolder(), QLocale(QStringLiteral("sv_SE"))));
}

QUORLIN_TEST(TestLanguages)
#include "test_languages.moc"
