#pragma once

#include <QDialog>

/// Output options: images, fonts, security and document information.
class OpDialog : public QDialog
{
    Q_OBJECT

public:
    explicit OpDialog(QWidget *parent = nullptr);
};
