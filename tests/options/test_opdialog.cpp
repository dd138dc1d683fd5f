#include "opdialog_fixture.h"

#include "options/option_rules.h"
#include "tests/support/room.h"
#include "tests/support/scratch_folders.h"
#include "tests/support/text_files.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QMetaMethod>
#include <QSettings>
#include <QStackedWidget>

#include <fcntl.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using namespace quorlin;
using quorlin::test::readFile;
using quorlin::test::ScratchFolders;
using quorlin::test::writeFile;

namespace {

/// What the control of @p rule shows, as it would be stored; "?" when it has none.
QString shown(const OpDialog &dialog, const OptionRule &rule)
{
    const QString name = QString::fromLatin1(rule.control);
    if (const auto *box = dialog.findChild<QCheckBox *>(name)) {
        return box->isChecked() ? "Ok" : "No";
    }
    if (const auto *combo = dialog.findChild<QComboBox *>(name)) {
        return QString::number(combo->currentIndex());
    }
    if (const auto *field = dialog.findChild<QLineEdit *>(name)) {
        return field->text();
    }
    const auto items =
        child<QListWidget>(dialog, "listWidge_option")->findItems(name, Qt::MatchExactly);
    return items.size() != 1 ? "?" : items.first()->checkState() == Qt::Checked ? "Ok" : "No";
}

const OptionRule &ruleOf(const QByteArray &key)
{
    for (const OptionRule &rule : optionRules()) {
        if (key == rule.key) {
            return rule;
        }
    }
    qFatal("no such key");
}

/// The settings file with the one key "Group/Name" in it.
QByteArray settingsWith(const QByteArray &key, const QByteArray &value)
{
    const auto slash = key.indexOf('/');
    return "[" + key.left(slash) + "]\n" + key.mid(slash + 1) + "=" + value + "\n";
}

/// Every key and value of the settings file, sorted.
QStringList storedLines()
{
    QStringList lines;
    QString group;
    for (const QByteArray &line : readFile("setting.ini").split('\n')) {
        if (line.startsWith('[')) {
            group = QString::fromUtf8(line.mid(1, line.indexOf(']') - 1));
        } else if (line.contains('=')) {
            lines << group + "/" + QString::fromUtf8(line);
        }
    }
    lines.sort();
    return lines;
}

QStringList texts(const QComboBox *combo)
{
    QStringList result;
    for (int i = 0; i < combo->count(); ++i) {
        result << combo->itemText(i);
    }
    return result;
}

/// Values that differ from the defaults and from the standard set, one per key in writing order.
const QStringList changedValues = {"1",  "No",  "0",        "96",       "2",     "1",  "100p", "0",
                                   "2",  "600", "3",        "No",       "No",    "No", "No",   "No",
                                   "se", "k=1", "No",       "No",       "No",    "No", "No",   "Ok",
                                   "A",  "T 1", "S;ubject", "key,word", "\"C\"", "P%1"};

/// Brings every option to changedValues as a user does: keys, clicks and the pages in between.
void changeEverything(const OpDialog &dialog)
{
    // Backwards, because a password switches PDF/A off and an unchecked entry its page.
    for (int i = optionCount - 1; i > 0; --i) {
        const OptionRule &rule = optionRules().at(static_cast<size_t>(i));
        const QString name = QString::fromLatin1(rule.control);
        const QString &value = changedValues.at(i);
        const QByteArray group = QByteArray(rule.key).split('/').first();
        const int page =
            static_cast<int>(QByteArrayList{"Image", "Fonts", "Secur", "Annot"}.indexOf(group));
        openPage(dialog, page);
        if (dialog.findChild<QComboBox *>(name)) {
            pick(dialog, rule.control, value.toInt());
        } else if (dialog.findChild<QLineEdit *>(name)) {
            type(dialog, rule.control, value);
        } else if (auto *box = dialog.findChild<QCheckBox *>(name)) {
            box->setFocus();
            QTest::keyClick(box, Qt::Key_Space);
        } else {
            QTest::keyClick(child(dialog, "listWidge_option"), Qt::Key_Space);
        }
    }
}

} // namespace

class OpDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void slotsStandInOrder();
    void emptySettingsShowTheDefaults();
    void textsAndEntriesAreAsUsersKnowThem();
    void storedTextsAreReadByTheirRule_data();
    void storedTextsAreReadByTheirRule();
    void readingCreatesNoFile();
    void everyKeyMakesTheRoundTrip();
    void listEntriesChooseThePages();
    void uncheckedEntryDisablesItsPageAndTurnsToCustom();
    void uncheckedPageStartsDisabled();
    void storedStandardStaysStandardWhenLoaded();
    void everyEditTurnsToCustom_data();
    void everyEditTurnsToCustom();
    void editsCanBeKeptFromTurningToCustom();
    void standardResetsEverything();
    void customChangesNothing();
    void editAfterStandardTurnsToCustomAgain();
    void passwordsShowTheirWarnings();
    void storedPasswordsShowTheirWarnings();
    void closedHidesItsResolution_data();
    void closedHidesItsResolution();
    void storedClosedStartsHidden();
    void cancelWritesNothing();
    void escapeWritesNothing();
    void applyClosesBeforeItWrites();
    void settingsAreWrittenBeforeTheInformation();
    void informationIsReplacedAsAWhole();
    void informationIsWrittenWithAnnotationUnchecked();
    void unwritableInformationLeavesTheSettings();
    void valuesOfOthersStay();
    void reloadingShowsTheFileAgain();
    void slotsCanBeInvokedByName();

private:
    std::unique_ptr<ScratchFolders> scratch;
};

void OpDialogTest::init()
{
    scratch = std::make_unique<ScratchFolders>();
}

void OpDialogTest::cleanup()
{
    scratch.reset();
}

void OpDialogTest::slotsStandInOrder()
{
    QByteArrayList names;
    const QMetaObject &meta = OpDialog::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QCOMPARE(meta.method(i).access(), QMetaMethod::Public);
        names << meta.method(i).methodSignature();
    }
    const QByteArrayList expected = {
        "setop()",         "setGeneralSetting()", "setstackenable()",
        "setwarning()",    "closeClrDSres()",     "closeGryDSres()",
        "closeMnoDSres()", "linkCustomSetting()", "changeStackedDisplay()"};
    QCOMPARE(names, expected);
}

void OpDialogTest::emptySettingsShowTheDefaults()
{
    const OpDialog dialog;
    QCOMPARE(dialog.windowTitle(), QString("Option"));
    for (const OptionRule &rule : optionRules()) {
        QVERIFY2(shown(dialog, rule) == QLatin1String(rule.fallback), rule.key);
    }
    const auto entry = [&](const char *name) {
        return child<QComboBox>(dialog, name)->currentText();
    };
    QCOMPARE(entry("comboBox_generalsettings"), QString("Standard"));
    for (const char *type :
         {"comboBox_clr_down_type", "comboBox_gry_down_type", "comboBox__mno_down_type"}) {
        QCOMPARE(entry(type), QString("Bicubic"));
    }
    QCOMPARE(entry("comboBox_clr_compress"), QString("JPEG"));
    QCOMPARE(entry("comboBox_gry_compress"), QString("JPEG"));
    QCOMPARE(entry("comboBox_mno_compress"), QString("CCITT Group 4"));
    QCOMPARE(child<QLineEdit>(dialog, "lineEdit_mno_res")->text(), QString("300"));
    QVERIFY(!child<QCheckBox>(dialog, "checkBox_pdfa")->isChecked());
    QVERIFY(child(dialog, "checkBox_pdfa")->isEnabled());
    QVERIFY(child(dialog, "groupBox_warning_mark")->isHidden());
    QVERIFY(child(dialog, "groupBox_warningPDFA")->isHidden());
    QVERIFY(!dialog.isVisible());
}

void OpDialogTest::textsAndEntriesAreAsUsersKnowThem()
{
    const OpDialog dialog;
    const auto entries = [&](const char *name) { return texts(child<QComboBox>(dialog, name)); };
    const QStringList types = {"Closed", "Subsample", "Average", "Bicubic"};
    QCOMPARE(entries("comboBox_clr_down_type"), types);
    QCOMPARE(entries("comboBox_gry_down_type"), types);
    QCOMPARE(entries("comboBox__mno_down_type"), types);
    const QStringList modes = {"Auto", "JPEG", "ZIP"};
    QCOMPARE(entries("comboBox_clr_compress"), modes);
    QCOMPARE(entries("comboBox_gry_compress"), modes);
    const QStringList monoModes = {"Auto", "ZIP", "RLE", "JBIG2", "CCITT Group 4"};
    QCOMPARE(entries("comboBox_mno_compress"), monoModes);
    const QStringList general = {"Standard", "Custom"};
    QCOMPARE(entries("comboBox_generalsettings"), general);

    const auto caption = [&](const char *name) {
        return child<QAbstractButton>(dialog, name)->text();
    };
    QCOMPARE(caption("checkBox_embedallfonts"), QString("Embed All Fonts"));
    QCOMPARE(caption("checkBox_compressfonts"), QString("Compress Fonts"));
    QCOMPARE(caption("checkBox_subset"), QString("Subset Fonts"));
    QCOMPARE(caption("checkBox_allow_print"), QString("Allow Printing Document"));
    QCOMPARE(caption("checkBox_allow_modcontents"),
             QString("Allow Modifying Contents of Document"));
    QCOMPARE(caption("checkBox_allow_copy"),
             QString("Allow Copying Text and Graphics from Document"));
    QCOMPARE(caption("checkBox_allow_add"), QString("Allow Adding or Modifying Text Annotations"));
    QCOMPARE(caption("checkBox_pdfa"), QString("Generate a PDF/A File"));
    QCOMPARE(caption("pushButton_cancel"), QString("Cancel"));
    QCOMPARE(caption("pushButton_apply"), QString("Apply"));

    const auto warning = [&](const char *group) {
        for (const QLabel *label : child(dialog, group)->findChildren<QLabel *>()) {
            if (!label->text().isEmpty()) {
                return label->text();
            }
        }
        return QString();
    };
    QCOMPARE(warning("groupBox_warning_mark"),
             QString("The User Password have been set,\n and Mark function will fail."));
    QCOMPARE(warning("groupBox_warningPDFA"),
             QString("User Password or Owner Password has been set, \n and PDF/A function will "
                     "fail."));
    QStringList titles;
    for (const QGroupBox *group : dialog.findChildren<QGroupBox *>()) {
        titles << group->title();
    }
    for (const char *title : {"Color Image", "Gray Image", "Mono Image", "Mark"}) {
        QVERIFY2(titles.count(QString::fromLatin1(title)) == 1, title);
    }
    QStringList labels;
    for (const QLabel *label : dialog.findChildren<QLabel *>()) {
        labels << label->text();
    }
    for (const char *text : {"Downsample Type", "Downsample Resolution", "Compress Mode", "ppi"}) {
        QVERIFY2(labels.count(QString::fromLatin1(text)) == 3, text);
    }
    for (const char *text : {"Settings", "User Password", "Owner Password", "Author", "Title",
                             "Subject", "Keywords", "Creator", "Producer"}) {
        QVERIFY2(labels.count(QString::fromLatin1(text)) == 1, text);
    }
}

void OpDialogTest::storedTextsAreReadByTheirRule_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<QString>("control");
    const auto row = [](const OptionRule &rule, const char *stored, const QString &control) {
        QTest::addRow("%s=%s", rule.key, stored)
            << QByteArray(rule.key) << QByteArray(stored) << control;
    };
    for (const OptionRule &rule : optionRules()) {
        const QString fallback = QString::fromLatin1(rule.fallback);
        switch (rule.kind) {
        case OptionKind::Index:
            for (const char *junk : {"7", "abc", "-1", ""}) {
                row(rule, junk, fallback);
            }
            row(rule, qPrintable(QString::number(rule.limit)), fallback);
            row(rule, "0", "0");
            row(rule, qPrintable(QString::number(rule.limit - 1)), QString::number(rule.limit - 1));
            break;
        case OptionKind::Resolution:
            row(rule, "", fallback);
            row(rule, "fine", "fine");
            row(rule, "-72", "-72");
            break;
        case OptionKind::OnUnlessNo:
            row(rule, "No", "No");
            row(rule, "no", "Ok");
            row(rule, "", "Ok");
            break;
        case OptionKind::OffUnlessOk:
            row(rule, "Ok", "Ok");
            row(rule, "ok", "No");
            row(rule, "1", "No");
            break;
        case OptionKind::GeneralSetting:
            row(rule, "1", "1");
            row(rule, "2", "0");
            row(rule, "abc", "0");
            break;
        case OptionKind::Text:
            row(rule, "a, b", "a, b");
            row(rule, "\"x \"", "x ");
            break;
        }
    }
}

void OpDialogTest::storedTextsAreReadByTheirRule()
{
    QFETCH(QByteArray, key);
    QFETCH(QByteArray, stored);
    writeFile("setting.ini", settingsWith(key, stored));
    const OpDialog dialog;
    QTEST(shown(dialog, ruleOf(key)), "control");
    for (const OptionRule &rule : optionRules()) {
        if (key != rule.key) {
            QVERIFY2(shown(dialog, rule) == QLatin1String(rule.fallback), rule.key);
        }
    }
}

void OpDialogTest::readingCreatesNoFile()
{
    const OpDialog dialog;
    QVERIFY(QDir().isEmpty());
}

void OpDialogTest::everyKeyMakesTheRoundTrip()
{
    OpDialog dialog;
    open(dialog);
    changeEverything(dialog);
    for (int i = 0; i < optionCount; ++i) {
        const OptionRule &rule = optionRules().at(static_cast<size_t>(i));
        QVERIFY2(shown(dialog, rule) == changedValues.at(i),
                 qPrintable(rule.key + (" shows " + shown(dialog, rule))));
    }
    QTest::mouseClick(child(dialog, "pushButton_apply"), Qt::LeftButton);
    QVERIFY(!dialog.isVisible());

    QStringList expected = {"Set/Set=1",
                            "Image/Image=No",
                            "Image/ColorType=0",
                            "Image/ColorRes=96",
                            "Image/ColorEnc=2",
                            "Image/GrayType=1",
                            "Image/GrayRes=100p",
                            "Image/GrayEnc=0",
                            "Image/MonoType=2",
                            "Image/MonoRes=600",
                            "Image/MonoEnc=3",
                            "Fonts/Fonts=No",
                            "Fonts/Embed=No",
                            "Fonts/Com=No",
                            "Fonts/Sub=No",
                            "Secur/Secur=No",
                            "Secur/UsrPwd=se",
                            "Secur/OwrPwd=\"k=1\"",
                            "Secur/AllowPri=No",
                            "Secur/AllowMod=No",
                            "Secur/AllowCop=No",
                            "Secur/AllowAdd=No",
                            "Annot/Annot=No",
                            "Annot/PDFA=Ok",
                            "Annot/Aut=A",
                            "Annot/Tit=T 1",
                            "Annot/Sub=\"S;ubject\"",
                            "Annot/Key=\"key,word\"",
                            "Annot/Cre=\\\"C\\\"",
                            "Annot/Pro=P%1"};
    expected.sort();
    QCOMPARE(storedLines(), expected);

    const OpDialog reopened;
    for (int i = 0; i < optionCount; ++i) {
        const OptionRule &rule = optionRules().at(static_cast<size_t>(i));
        QVERIFY2(shown(reopened, rule) == changedValues.at(i), rule.key);
    }
    const QByteArray information = readFile("pdfinfo.txt");
    QCOMPARE(information, QByteArray("[ /Title (T 1)\n /Author (A) \n /Subject (S;ubject) \n "
                                     "/Keywords (key,word) \n /Creator (\"C\") \n /Producer (P%1) "
                                     "\n /DOCINFO pdfmark"));
}

void OpDialogTest::listEntriesChooseThePages()
{
    OpDialog dialog;
    open(dialog);
    auto *list = child<QListWidget>(dialog, "listWidge_option");
    auto *stack = child<QStackedWidget>(dialog, "stackedWidget_option");
    const QStringList names = {"Image", "Fonts", "Security", "Annotation"};
    const QStringList pages = {"stackedWidget_image", "stackedWidget_fonts",
                               "stackedWidget_security", "stackedWidget_annotation"};
    QCOMPARE(list->count(), 4);
    QCOMPARE(stack->count(), 4);
    for (const int row : {3, 1, 2, 0}) {
        QCOMPARE(list->item(row)->text(), names.at(row));
        openPage(dialog, row);
        QCOMPARE(stack->currentIndex(), row);
        QCOMPARE(stack->currentWidget()->objectName(), pages.at(row));
    }
    QCOMPARE(shown(dialog, ruleOf("Set/Set")), QString("0"));
    stack->setCurrentIndex(2);
    dialog.changeStackedDisplay();
    QCOMPARE(stack->currentIndex(), 0);
}

void OpDialogTest::uncheckedEntryDisablesItsPageAndTurnsToCustom()
{
    OpDialog dialog;
    open(dialog);
    auto *list = child<QListWidget>(dialog, "listWidge_option");
    auto *stack = child<QStackedWidget>(dialog, "stackedWidget_option");
    for (int row = 0; row < 4; ++row) {
        openPage(dialog, row);
        QVERIFY(stack->widget(row)->isEnabled());
        QTest::keyClick(list, Qt::Key_Space);
        QVERIFY(!stack->widget(row)->isEnabled());
        QCOMPARE(shown(dialog, ruleOf("Set/Set")), QString("1"));
        for (int other = 0; other < 4; ++other) {
            QCOMPARE(stack->widget(other)->isEnabled(), other > row);
        }
    }
    QTest::keyClick(list, Qt::Key_Space);
    QVERIFY(stack->widget(3)->isEnabled());
}

void OpDialogTest::uncheckedPageStartsDisabled()
{
    writeFile("setting.ini", settingsWith("Fonts/Fonts", "No"));
    const OpDialog dialog;
    QVERIFY(!child(dialog, "stackedWidget_fonts")->isEnabled());
    QVERIFY(child(dialog, "stackedWidget_image")->isEnabled());
    QVERIFY(child(dialog, "stackedWidget_security")->isEnabled());
    QVERIFY(child(dialog, "stackedWidget_annotation")->isEnabled());
}

void OpDialogTest::storedStandardStaysStandardWhenLoaded()
{
    writeFile("setting.ini",
              "[Set]\nSet=0\n[Image]\nColorType=0\nColorRes=96\n[Secur]\nUsrPwd=u\n");
    const OpDialog dialog;
    QCOMPARE(shown(dialog, ruleOf("Set/Set")), QString("0"));
    QCOMPARE(shown(dialog, ruleOf("Image/ColorType")), QString("0"));
    QCOMPARE(shown(dialog, ruleOf("Image/ColorRes")), QString("96"));
    QCOMPARE(shown(dialog, ruleOf("Secur/UsrPwd")), QString("u"));
}

void OpDialogTest::everyEditTurnsToCustom_data()
{
    QTest::addColumn<int>("rule");
    for (int i = 1; i < optionCount; ++i) {
        QTest::newRow(optionRules().at(static_cast<size_t>(i)).key) << i;
    }
}

void OpDialogTest::everyEditTurnsToCustom()
{
    QFETCH(int, rule);
    const OptionRule &option = optionRules().at(static_cast<size_t>(rule));
    const QString name = QString::fromLatin1(option.control);
    OpDialog dialog;
    open(dialog);
    const QString before = shown(dialog, option);
    if (auto *combo = dialog.findChild<QComboBox *>(name)) {
        pick(dialog, option.control, combo->currentIndex() - 1);
    } else if (dialog.findChild<QLineEdit *>(name)) {
        type(dialog, option.control, "x");
    } else if (auto *box = dialog.findChild<QCheckBox *>(name)) {
        QTest::keyClick(box, Qt::Key_Space);
    } else {
        auto *list = child<QListWidget>(dialog, "listWidge_option");
        openPage(dialog, list->row(list->findItems(name, Qt::MatchExactly).first()));
        QTest::keyClick(list, Qt::Key_Space);
    }
    QVERIFY(shown(dialog, option) != before);
    QCOMPARE(shown(dialog, ruleOf("Set/Set")), QString("1"));
}

void OpDialogTest::editsCanBeKeptFromTurningToCustom()
{
    OpDialog dialog;
    open(dialog);
    dialog.allCustomDisconnection();
    changeEverything(dialog);
    QCOMPARE(shown(dialog, ruleOf("Set/Set")), QString("0"));
    QVERIFY(child(dialog, "stackedWidget_image")->isEnabled()); // its entry is not listened to
    dialog.allCustomConnection();
    type(dialog, "lineEdit_title", "y");
    QCOMPARE(shown(dialog, ruleOf("Set/Set")), QString("1"));
}

void OpDialogTest::standardResetsEverything()
{
    OpDialog dialog;
    open(dialog);
    changeEverything(dialog);
    pick(dialog, "comboBox_generalsettings", 0);
    for (const OptionRule &rule : optionRules()) {
        QVERIFY2(shown(dialog, rule) == QLatin1String(rule.standard), rule.key);
    }
    for (const char *box : {"checkBox_allow_print", "checkBox_allow_modcontents",
                            "checkBox_allow_copy", "checkBox_allow_add"}) {
        QVERIFY2(!child<QCheckBox>(dialog, box)->isChecked(), box);
    }
    auto *stack = child<QStackedWidget>(dialog, "stackedWidget_option");
    for (int page = 0; page < 4; ++page) {
        QVERIFY(stack->widget(page)->isEnabled());
    }
    QVERIFY(!child(dialog, "lineEdit_clr_res")->isHidden());
    QVERIFY(child(dialog, "checkBox_pdfa")->isEnabled());
    QVERIFY(child(dialog, "groupBox_warning_mark")->isHidden());
    QVERIFY(child(dialog, "groupBox_warningPDFA")->isHidden());
    QVERIFY(QDir().isEmpty());
}

void OpDialogTest::customChangesNothing()
{
    OpDialog dialog;
    open(dialog);
    pick(dialog, "comboBox_generalsettings", 1);
    QCOMPARE(shown(dialog, ruleOf("Set/Set")), QString("1"));
    for (int i = 1; i < optionCount; ++i) {
        const OptionRule &rule = optionRules().at(static_cast<size_t>(i));
        QVERIFY2(shown(dialog, rule) == QLatin1String(rule.fallback), rule.key);
    }
}

void OpDialogTest::editAfterStandardTurnsToCustomAgain()
{
    OpDialog dialog;
    open(dialog);
    for (int round = 0; round < 3; ++round) {
        type(dialog, "lineEdit_author", "x");
        QCOMPARE(shown(dialog, ruleOf("Set/Set")), QString("1"));
        pick(dialog, "comboBox_generalsettings", 0);
        QCOMPARE(shown(dialog, ruleOf("Set/Set")), QString("0"));
        QCOMPARE(shown(dialog, ruleOf("Annot/Aut")), QString());
        openPage(dialog, 1);
        QTest::keyClick(child(dialog, "listWidge_option"), Qt::Key_Space);
        QCOMPARE(shown(dialog, ruleOf("Set/Set")), QString("1"));
        pick(dialog, "comboBox_generalsettings", 0);
        QCOMPARE(shown(dialog, ruleOf("Set/Set")), QString("0"));
    }
}

void OpDialogTest::passwordsShowTheirWarnings()
{
    OpDialog dialog;
    open(dialog);
    openPage(dialog, 2);
    const auto state = [&] {
        return QString(child(dialog, "groupBox_warning_mark")->isHidden() ? "-" : "M") +
               (child(dialog, "groupBox_warningPDFA")->isHidden() ? "-" : "P") +
               (child(dialog, "checkBox_pdfa")->isEnabled() ? "+" : "-");
    };
    auto *owner = child<QLineEdit>(dialog, "lineEdit_ownerpassword");
    owner->setFocus();
    QTest::keyClicks(owner, "o");
    QCOMPARE(state(), QString("--+")); // not before editing has finished
    QTest::keyClick(owner, Qt::Key_Tab);
    QCOMPARE(state(), QString("-P-"));
    type(dialog, "lineEdit_userpassword", "u");
    QCOMPARE(state(), QString("MP-"));
    type(dialog, "lineEdit_ownerpassword", "");
    QCOMPARE(state(), QString("MP-"));
    type(dialog, "lineEdit_userpassword", "");
    QCOMPARE(state(), QString("--+"));
}

void OpDialogTest::storedPasswordsShowTheirWarnings()
{
    writeFile("setting.ini", settingsWith("Secur/OwrPwd", "o"));
    const OpDialog owner;
    QVERIFY(child(owner, "groupBox_warning_mark")->isHidden());
    QVERIFY(!child(owner, "groupBox_warningPDFA")->isHidden());
    QVERIFY(!child(owner, "checkBox_pdfa")->isEnabled());

    writeFile("setting.ini", settingsWith("Secur/UsrPwd", "u"));
    const OpDialog user;
    QVERIFY(!child(user, "groupBox_warning_mark")->isHidden());
    QVERIFY(!child(user, "groupBox_warningPDFA")->isHidden());
    QVERIFY(!child(user, "checkBox_pdfa")->isEnabled());
}

void OpDialogTest::closedHidesItsResolution_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QByteArrayList>("hidden");
    QTest::newRow("colour") << QByteArray("comboBox_clr_down_type")
                            << QByteArrayList{"label_clr_res", "lineEdit_clr_res",
                                              "label_clr_unit"};
    QTest::newRow("grey") << QByteArray("comboBox_gry_down_type")
                          << QByteArrayList{"label_gry_res", "lineEdit__gry_res", "label_gry_unit"};
    QTest::newRow("mono") << QByteArray("comboBox__mno_down_type")
                          << QByteArrayList{"label_mno_res", "lineEdit_mno_res", "label_mno_unit"};
}

void OpDialogTest::closedHidesItsResolution()
{
    QFETCH(QByteArray, type);
    QFETCH(QByteArrayList, hidden);
    OpDialog dialog;
    open(dialog);
    const QByteArrayList all = {"label_clr_res", "lineEdit_clr_res",  "label_clr_unit",
                                "label_gry_res", "lineEdit__gry_res", "label_gry_unit",
                                "label_mno_res", "lineEdit_mno_res",  "label_mno_unit"};
    for (int index = 0; index < 4; ++index) {
        pick(dialog, type.constData(), index);
        for (const QByteArray &name : all) {
            QCOMPARE(child(dialog, name.constData())->isHidden(),
                     index == 0 && hidden.contains(name));
        }
    }
}

void OpDialogTest::storedClosedStartsHidden()
{
    writeFile("setting.ini", settingsWith("Image/GrayType", "0"));
    const OpDialog dialog;
    QVERIFY(child(dialog, "lineEdit__gry_res")->isHidden());
    QVERIFY(!child(dialog, "lineEdit_clr_res")->isHidden());
    QVERIFY(!child(dialog, "lineEdit_mno_res")->isHidden());
}

void OpDialogTest::cancelWritesNothing()
{
    OpDialog dialog;
    open(dialog);
    changeEverything(dialog);
    QTest::mouseClick(child(dialog, "pushButton_cancel"), Qt::LeftButton);
    QVERIFY(!dialog.isVisible());
    QVERIFY(QDir().isEmpty());
}

void OpDialogTest::escapeWritesNothing()
{
    OpDialog dialog;
    open(dialog);
    type(dialog, "lineEdit_title", "x");
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QVERIFY(!dialog.isVisible());
    QVERIFY(QDir().isEmpty());
}

void OpDialogTest::applyClosesBeforeItWrites()
{
    OpDialog dialog;
    open(dialog);
    bool emptyAtClose = false;
    bool hiddenAtClose = false;
    connect(&dialog, &QDialog::finished, this, [&] {
        emptyAtClose = QDir().isEmpty();
        hiddenAtClose = !dialog.isVisible();
    });
    QTest::mouseClick(child(dialog, "pushButton_apply"), Qt::LeftButton);
    QVERIFY(emptyAtClose);
    QVERIFY(hiddenAtClose);
    QVERIFY(QFile::exists("setting.ini"));
    QVERIFY(QFile::exists("pdfinfo.txt"));
}

void OpDialogTest::settingsAreWrittenBeforeTheInformation()
{
    // A pipe stands in for the information file. More text than it can hold keeps the dialog at
    // writing, so that the other end sees what is on disk by then.
    QCOMPARE(::mkfifo("pdfinfo.txt", 0600), 0);
    OpDialog dialog;
    const QString longText(30000, QLatin1Char('x'));
    for (const char *field :
         {"lineEdit_author", "lineEdit_title", "lineEdit_subject", "lineEdit_producer"}) {
        child<QLineEdit>(dialog, field)->setText(longText);
    }
    QByteArray settingsByThen;
    QByteArray information;
    std::thread reader([&] {
        QFile pipe("pdfinfo.txt");
        if (pipe.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
            information = pipe.read(1);
            settingsByThen = readFile("setting.ini");
            information += pipe.readAll();
        }
    });
    dialog.setop();
    reader.join();
    QVERIFY(settingsByThen.contains("Pro=xxx"));
    QCOMPARE(settingsByThen, readFile("setting.ini"));
    QVERIFY(information.endsWith(") \n /DOCINFO pdfmark"));
    QVERIFY(information.size() > 120000);
}

void OpDialogTest::informationIsReplacedAsAWhole()
{
    writeFile("pdfinfo.txt", QByteArray(5000, 'x'));
    OpDialog dialog;
    dialog.writeAnnot();
    QCOMPARE(readFile("pdfinfo.txt"),
             QByteArray("[ /Title ()\n /Author () \n /Subject () \n /Keywords () \n /Creator () "
                        "\n /Producer () \n /DOCINFO pdfmark"));
    child<QLineEdit>(dialog, "lineEdit_title")->setText(QString::fromUtf8("t%2\xc3\xa9"));
    child<QLineEdit>(dialog, "lineEdit_author")->setText("A)");
    dialog.writeAnnot();
    QVERIFY(readFile("pdfinfo.txt").startsWith("[ /Title (tA)\xc3\xa9)\n /Author (A)) \n"));
    QVERIFY(!QFile::exists("setting.ini"));
}

void OpDialogTest::informationIsWrittenWithAnnotationUnchecked()
{
    OpDialog dialog;
    open(dialog);
    openPage(dialog, 3);
    QTest::keyClick(child(dialog, "listWidge_option"), Qt::Key_Space);
    QTest::mouseClick(child(dialog, "pushButton_apply"), Qt::LeftButton);
    QVERIFY(storedLines().contains("Annot/Annot=No"));
    QVERIFY(readFile("pdfinfo.txt").startsWith("[ /Title ()\n"));
}

void OpDialogTest::unwritableInformationLeavesTheSettings()
{
    // A folder of that name cannot be opened for writing, whoever runs the test.
    QVERIFY(QDir().mkdir("pdfinfo.txt"));
    OpDialog dialog;
    open(dialog);
    QTest::mouseClick(child(dialog, "pushButton_apply"), Qt::LeftButton);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(storedLines().size(), optionCount);
    QVERIFY(QFileInfo("pdfinfo.txt").isDir());
}

void OpDialogTest::valuesOfOthersStay()
{
    writeFile("setting.ini", "[Image]\ntext=INV-1\nxpos=72\n[dir]\ninput=/in\n");
    OpDialog dialog;
    dialog.setop();
    const QStringList lines = storedLines();
    QVERIFY(lines.contains("Image/text=INV-1"));
    QVERIFY(lines.contains("Image/xpos=72"));
    QVERIFY(lines.contains("dir/input=/in"));
    QCOMPARE(lines.size(), optionCount + 3);
}

void OpDialogTest::reloadingShowsTheFileAgain()
{
    OpDialog dialog;
    open(dialog);
    type(dialog, "lineEdit_author", "x");
    writeFile("setting.ini", "[Set]\nSet=0\n[Image]\nMonoRes=600\n");
    dialog.setallowshow();
    QCOMPARE(shown(dialog, ruleOf("Set/Set")), QString("0"));
    QCOMPARE(shown(dialog, ruleOf("Image/MonoRes")), QString("600"));
    QCOMPARE(shown(dialog, ruleOf("Annot/Aut")), QString());
    type(dialog, "lineEdit_author", "y");
    QCOMPARE(shown(dialog, ruleOf("Set/Set")), QString("1"));
}

void OpDialogTest::slotsCanBeInvokedByName()
{
    OpDialog dialog;
    for (const char *slot :
         {"setop", "setGeneralSetting", "setstackenable", "setwarning", "closeClrDSres",
          "closeGryDSres", "closeMnoDSres", "linkCustomSetting", "changeStackedDisplay"}) {
        QVERIFY2(QMetaObject::invokeMethod(&dialog, slot), slot);
    }
    QCOMPARE(storedLines().size(), optionCount);
}

QUORLIN_TEST(OpDialogTest)
#include "test_opdialog.moc"
