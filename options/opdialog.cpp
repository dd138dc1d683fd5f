#include "options/opdialog.h"

OpDialog::OpDialog(QWidget *parent) : QDialog(parent) {}
