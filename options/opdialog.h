#pragma once

#include "options/option_rules.h"

#include <QDialog>

#include <array>
#include <memory>
#include <variant>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QListWidgetItem;
class Ui_OpDialog;

/// Output options: images, fonts, security and document information. The dialog loads its controls
/// from the settings file when it is made and writes them back on "Apply"; nothing else reads them.
class OpDialog : public QDialog
{
    Q_OBJECT

public:
    explicit OpDialog(QWidget *parent = nullptr);
    ~OpDialog() override;

    /// Loads every control from the settings file and applies what the values imply.
    void setallowshow();
    /// Replaces the document information file by the six fields as they are shown. A file that
    /// cannot be written gives no message.
    void writeAnnot();
    /// Makes every change of an option turn the general setting to "Custom".
    void allCustomConnection();
    /// Undoes allCustomConnection(), so that a whole set of options can be changed at once.
    void allCustomDisconnection();

protected:
    void showEvent(QShowEvent *event) override;

public slots:
    /// Writes all options and the document information file.
    void setop();
    /// Fills in the standard set when "Standard" is chosen.
    void setGeneralSetting();
    /// Turns to "Custom" and enables the pages whose list entries are checked.
    void setstackenable();
    /// Shows what the passwords rule out.
    void setwarning();
    /// Hides the colour resolution while downsampling is closed.
    void closeClrDSres();
    /// Hides the grey resolution while downsampling is closed.
    void closeGryDSres();
    /// Hides the mono resolution while downsampling is closed.
    void closeMnoDSres();
    /// Turns the general setting to "Custom".
    void linkCustomSetting();
    /// Shows the page of the list's current row.
    void changeStackedDisplay();

private:
    using Control = std::variant<QCheckBox *, QListWidgetItem *, QComboBox *, QLineEdit *>;

    Control controlOf(const quorlin::OptionRule &rule) const;
    static void showValue(const Control &control, const quorlin::OptionRule &rule,
                          const QString &stored);
    static QString shownValue(const Control &control, const quorlin::OptionRule &rule);
    void showStandardSet();
    void enablePages();
    void closeResolutions();
    void connectActions();

    std::unique_ptr<Ui_OpDialog> ui;
    /// The controls of optionRules(), in the same order.
    std::array<Control, quorlin::optionCount> controls;
};
