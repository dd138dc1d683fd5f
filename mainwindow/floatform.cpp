#include "mainwindow/floatform.h"

#include "ui_floatform.h"

floatform::floatform(QWidget *parent) : QWidget(parent), ui(std::make_unique<Ui_floatform>())
{
    ui->setupUi(this);
}

floatform::~floatform() = default;
