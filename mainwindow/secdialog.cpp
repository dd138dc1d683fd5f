#include "mainwindow/secdialog.h"

#include "ui_secdialog.h"

SecDialog::SecDialog(QWidget *parent) : QDialog(parent), ui(std::make_unique<Ui_SecDialog>())
{
    ui->setupUi(this);
}

SecDialog::~SecDialog() = default;
