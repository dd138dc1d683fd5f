#pragma once

#include <QPushButton>

class QImage;

/// The frame over one text item of the page, a flat button with the dotted border of its style
/// sheet. On dark or coloured parts of a page, where the border would vanish, a light line runs
/// under its dots.
class ItemFrame : public QPushButton
{
public:
    explicit ItemFrame(QWidget *parent = nullptr);

    /// Looks at what lies under the border. Called again when the frame moves.
    /// @param picture the picture that the parent shows, in its pixels
    void adaptTo(const QImage &picture);

    /// Whether the light line is drawn.
    bool isOutlined() const { return outlined; }

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool outlined = false;
};
