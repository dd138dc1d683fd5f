#pragma once

#include <QDialog>

#include <memory>

class Ui_SecDialog;

/// An empty dialog, kept for settings of protected files; nothing creates it.
class SecDialog : public QDialog
{
    Q_OBJECT

public:
    explicit SecDialog(QWidget *parent = nullptr);
    ~SecDialog() override;

private:
    std::unique_ptr<Ui_SecDialog> ui;
};
