#include "rules/rules.h"

Rules::Rules(QWidget *parent) : QDialog(parent) {}

void Rules::setIniImage() {}
