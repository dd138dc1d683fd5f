#pragma once

#include <QPushButton>

/// A flat push button that shows when it has the keyboard's focus, which some styles leave out.
class FocusButton : public QPushButton
{
public:
    explicit FocusButton(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};
