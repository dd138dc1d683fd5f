#pragma once

#include <QDialog>

#include <memory>

class Ui_AboutDialog;

/// The modal box that names the product, its version and its maker. It keeps the size of its form.
class AboutDialog : public QDialog
{
    Q_OBJECT

public:
    explicit AboutDialog(QWidget *parent = nullptr);
    ~AboutDialog() override;

public slots:
    /// Hands the home page @p url to the desktop's browser.
    void openMainpage(const QString &url);
    /// Hands the mail link @p mail to the desktop's mail program.
    void openMailpage(const QString &mail);

private:
    void showBackground();

    std::unique_ptr<Ui_AboutDialog> ui;
};
