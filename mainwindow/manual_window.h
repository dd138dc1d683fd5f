#pragma once

#include <QTextBrowser>

/// The manual in a window of its own, made of the pages that the program carries with it. Links
/// between the pages work; others open in the desktop's browser.
class ManualWindow : public QTextBrowser
{
public:
    ManualWindow();

protected:
    void showEvent(QShowEvent *event) override;
};
