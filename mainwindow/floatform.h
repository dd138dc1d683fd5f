#pragma once

#include <QWidget>

#include <memory>

class Ui_floatform;

/// An empty form, kept for a floating tool window; nothing creates it.
class floatform : public QWidget
{
    Q_OBJECT

public:
    explicit floatform(QWidget *parent = nullptr);
    ~floatform() override;

private:
    std::unique_ptr<Ui_floatform> ui;
};
