#include "options/opdialog.h"

#include "common/settings_text.h"
#include "options/document_information.h"
#include "ui_opdialog.h"
#include "widgets/desktop_colours.h"
#include "widgets/screen_fit.h"

#include <QFile>
#include <QSettings>
#include <QSignalBlocker>
#include <QTextStream>

using namespace quorlin;

namespace {

constexpr int narrowList = 120;
constexpr int lowMargin = 3;

bool storedSwitch(const OptionRule &rule, const QString &stored)
{
    return rule.kind == OptionKind::OffUnlessOk ? offUnlessOk(stored) : onUnlessNo(stored);
}

void showResolution(int downsampleType, std::initializer_list<QWidget *> widgets)
{
    for (QWidget *widget : widgets) {
        widget->setVisible(hasResolution(downsampleType));
    }
}

} // namespace

OpDialog::OpDialog(QWidget *parent) : QDialog(parent), ui(std::make_unique<Ui_OpDialog>())
{
    ui->setupUi(this);
    setPalette(withReadableDisabledTexts(palette()));
    const QPixmap warning = QIcon(QStringLiteral(":/iconoption/icons/alert.ico")).pixmap(32);
    ui->label_warning_mark_icon->setPixmap(warning);
    ui->label_warning_pdfa_icon->setPixmap(warning);
    for (int i = 0; i < optionCount; ++i) {
        controls.at(i) = controlOf(optionRules().at(i));
    }
    setallowshow();
    connectActions();
    ui->listWidge_option->setCurrentRow(0);
}

OpDialog::~OpDialog() = default;

void OpDialog::showEvent(QShowEvent *event)
{
    const QSize room = roomFor(*this);
    // The columns stand below each other, and the rows apart, unless the screen has no room for it.
    const bool narrow = minimumSizeHint().width() > room.width();
    const bool low = minimumSizeHint().height() > room.height();
    for (QGridLayout *grid : {ui->gridLayout_clr, ui->gridLayout_gry, ui->gridLayout_mno}) {
        for (int column = 0; narrow && column < grid->columnCount(); ++column) {
            grid->setColumnMinimumWidth(column, 0);
        }
        if (low) {
            grid->setVerticalSpacing(1);
            grid->setContentsMargins(lowMargin, lowMargin, lowMargin, lowMargin);
        }
    }
    if (narrow) {
        ui->listWidge_option->setFixedWidth(narrowList);
    }
    fitOnScreen(*this);
    QDialog::showEvent(event);
}

void OpDialog::connectActions()
{
    connect(ui->pushButton_cancel, SIGNAL(clicked()), this, SLOT(close()));
    // In this order: the dialog is gone before the settings are written.
    connect(ui->pushButton_apply, SIGNAL(clicked()), this, SLOT(close()));
    connect(ui->pushButton_apply, SIGNAL(clicked()), this, SLOT(setop()));
    connect(ui->listWidge_option, SIGNAL(currentRowChanged(int)), ui->stackedWidget_option,
            SLOT(setCurrentIndex(int)));
    connect(ui->comboBox_generalsettings, SIGNAL(currentIndexChanged(int)), this,
            SLOT(setGeneralSetting()));
    connect(ui->comboBox_clr_down_type, SIGNAL(currentIndexChanged(int)), this,
            SLOT(closeClrDSres()));
    connect(ui->comboBox_gry_down_type, SIGNAL(currentIndexChanged(int)), this,
            SLOT(closeGryDSres()));
    connect(ui->comboBox__mno_down_type, SIGNAL(currentIndexChanged(int)), this,
            SLOT(closeMnoDSres()));
    connect(ui->lineEdit_userpassword, SIGNAL(editingFinished()), this, SLOT(setwarning()));
    connect(ui->lineEdit_ownerpassword, SIGNAL(editingFinished()), this, SLOT(setwarning()));
}

OpDialog::Control OpDialog::controlOf(const OptionRule &rule) const
{
    const QString name = QString::fromLatin1(rule.control);
    switch (rule.kind) {
    case OptionKind::GeneralSetting:
    case OptionKind::Index:
        return findChild<QComboBox *>(name);
    case OptionKind::Resolution:
    case OptionKind::Text:
        return findChild<QLineEdit *>(name);
    case OptionKind::OnUnlessNo:
    case OptionKind::OffUnlessOk:
        break;
    }
    if (auto *box = findChild<QCheckBox *>(name)) {
        return box;
    }
    // The entries of the page list are items, known by their untranslated text.
    const QStringList pages = {QStringLiteral("Image"), QStringLiteral("Fonts"),
                               QStringLiteral("Security"), QStringLiteral("Annotation")};
    return ui->listWidge_option->item(static_cast<int>(pages.indexOf(name)));
}

void OpDialog::showValue(const Control &control, const OptionRule &rule, const QString &stored)
{
    const QString fallback = QString::fromLatin1(rule.fallback);
    if (auto *const *box = std::get_if<QCheckBox *>(&control)) {
        (*box)->setChecked(storedSwitch(rule, stored));
    } else if (auto *const *item = std::get_if<QListWidgetItem *>(&control)) {
        (*item)->setCheckState(storedSwitch(rule, stored) ? Qt::Checked : Qt::Unchecked);
    } else if (auto *const *combo = std::get_if<QComboBox *>(&control)) {
        (*combo)->setCurrentIndex(rule.kind == OptionKind::GeneralSetting
                                      ? generalSettingIndex(stored)
                                      : storedIndex(stored, rule.limit, fallback.toInt()));
    } else {
        std::get<QLineEdit *>(control)->setText(
            rule.kind == OptionKind::Resolution ? resolutionText(stored, fallback) : stored);
    }
}

QString OpDialog::shownValue(const Control &control, const OptionRule &rule)
{
    if (auto *const *box = std::get_if<QCheckBox *>(&control)) {
        return switchText((*box)->isChecked());
    }
    if (auto *const *item = std::get_if<QListWidgetItem *>(&control)) {
        return switchText((*item)->checkState() == Qt::Checked);
    }
    if (auto *const *combo = std::get_if<QComboBox *>(&control)) {
        const int index = (*combo)->currentIndex();
        return rule.kind == OptionKind::GeneralSetting ? generalSettingText(index)
                                                       : QString::number(index);
    }
    return std::get<QLineEdit *>(control)->text();
}

void OpDialog::setallowshow()
{
    // A loaded value is no change by the user: it would turn a stored "Standard" into "Custom", and
    // a loaded "Standard" would replace what was loaded.
    allCustomDisconnection();
    const QSignalBlocker quiet(ui->comboBox_generalsettings);
    const QSettings settings(settingsFileName(), QSettings::IniFormat);
    for (int i = 0; i < optionCount; ++i) {
        const OptionRule &rule = optionRules().at(i);
        showValue(controls.at(i), rule,
                  settingsText(settings, QString::fromLatin1(rule.key),
                               QString::fromLatin1(rule.fallback)));
    }
    setwarning();
    closeResolutions();
    enablePages();
    allCustomConnection();
}

void OpDialog::setop()
{
    {
        QSettings settings(settingsFileName(), QSettings::IniFormat);
        for (int i = 0; i < optionCount; ++i) {
            const OptionRule &rule = optionRules().at(i);
            settings.setValue(QString::fromLatin1(rule.key), shownValue(controls.at(i), rule));
        }
    } // The settings are on disk before the document information is.
    writeAnnot();
}

void OpDialog::writeAnnot()
{
    QFile file(documentInformationFileName());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        return;
    }
    DocumentInformation information;
    information.title = ui->lineEdit_title->text();
    information.author = ui->lineEdit_author->text();
    information.subject = ui->lineEdit_subject->text();
    information.keywords = ui->lineEdit_keywords->text();
    information.creator = ui->lineEdit_creator->text();
    information.producer = ui->lineEdit_producer->text();
    QTextStream stream(&file);
    stream.setEncoding(QStringConverter::System);
    stream << documentInformationText(information);
}

void OpDialog::setGeneralSetting()
{
    if (ui->comboBox_generalsettings->currentIndex() != 0) {
        return;
    }
    allCustomDisconnection();
    showStandardSet();
    allCustomConnection();
}

void OpDialog::showStandardSet()
{
    for (int i = 0; i < optionCount; ++i) {
        const OptionRule &rule = optionRules().at(i);
        showValue(controls.at(i), rule, QString::fromLatin1(rule.standard));
    }
    setwarning();
    closeResolutions();
    enablePages();
}

void OpDialog::setstackenable()
{
    linkCustomSetting();
    enablePages();
}

void OpDialog::enablePages()
{
    for (int row = 0; row < ui->listWidge_option->count(); ++row) {
        ui->stackedWidget_option->widget(row)->setEnabled(
            ui->listWidge_option->item(row)->checkState() == Qt::Checked);
    }
}

void OpDialog::setwarning()
{
    const PasswordEffect effect =
        passwordEffect(ui->lineEdit_userpassword->text(), ui->lineEdit_ownerpassword->text());
    ui->groupBox_warning_mark->setVisible(effect.warnsMark);
    ui->groupBox_warningPDFA->setVisible(effect.warnsPdfA);
    ui->checkBox_pdfa->setEnabled(effect.pdfAEnabled);
}

void OpDialog::closeClrDSres()
{
    showResolution(ui->comboBox_clr_down_type->currentIndex(),
                   {ui->label_clr_res, ui->lineEdit_clr_res, ui->label_clr_unit});
}

void OpDialog::closeGryDSres()
{
    showResolution(ui->comboBox_gry_down_type->currentIndex(),
                   {ui->label_gry_res, ui->lineEdit__gry_res, ui->label_gry_unit});
}

void OpDialog::closeMnoDSres()
{
    showResolution(ui->comboBox__mno_down_type->currentIndex(),
                   {ui->label_mno_res, ui->lineEdit_mno_res, ui->label_mno_unit});
}

void OpDialog::closeResolutions()
{
    closeClrDSres();
    closeGryDSres();
    closeMnoDSres();
}

void OpDialog::linkCustomSetting()
{
    ui->comboBox_generalsettings->setCurrentIndex(1);
}

void OpDialog::changeStackedDisplay()
{
    ui->stackedWidget_option->setCurrentIndex(ui->listWidge_option->currentRow());
}

void OpDialog::allCustomConnection()
{
    connect(ui->listWidge_option, SIGNAL(itemChanged(QListWidgetItem *)), this,
            SLOT(setstackenable()));
    for (int i = 0; i < optionCount; ++i) {
        if (auto *const *box = std::get_if<QCheckBox *>(&controls.at(i))) {
            connect(*box, SIGNAL(toggled(bool)), this, SLOT(linkCustomSetting()));
        } else if (auto *const *field = std::get_if<QLineEdit *>(&controls.at(i))) {
            connect(*field, SIGNAL(textChanged(QString)), this, SLOT(linkCustomSetting()));
        } else if (auto *const *combo = std::get_if<QComboBox *>(&controls.at(i));
                   combo && *combo != ui->comboBox_generalsettings) {
            connect(*combo, SIGNAL(currentIndexChanged(int)), this, SLOT(linkCustomSetting()));
        }
    }
}

void OpDialog::allCustomDisconnection()
{
    disconnect(ui->listWidge_option, SIGNAL(itemChanged(QListWidgetItem *)), this,
               SLOT(setstackenable()));
    for (int i = 0; i < optionCount; ++i) {
        if (auto *const *box = std::get_if<QCheckBox *>(&controls.at(i))) {
            disconnect(*box, nullptr, this, SLOT(linkCustomSetting()));
        } else if (auto *const *field = std::get_if<QLineEdit *>(&controls.at(i))) {
            disconnect(*field, nullptr, this, SLOT(linkCustomSetting()));
        } else if (auto *const *combo = std::get_if<QComboBox *>(&controls.at(i))) {
            disconnect(*combo, nullptr, this, SLOT(linkCustomSetting()));
        }
    }
}
