#pragma once

#include <QDialog>

/// The modal box that names the product and its version.
class AboutDialog : public QDialog
{
    Q_OBJECT

public:
    explicit AboutDialog(QWidget *parent = nullptr);
};
