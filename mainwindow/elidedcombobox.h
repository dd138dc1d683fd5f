#pragma once

#include <QComboBox>

/// A combo box that ends a text too long for it in an ellipsis instead of cutting a letter, and
/// shows it whole in its tool tip.
class ElidedComboBox : public QComboBox
{
public:
    explicit ElidedComboBox(QWidget *parent = nullptr);

    /// The current text as it stands in the box.
    QString shownText() const;
    /// Wide enough for its texts, but not at the cost of what stands beside it.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QString fitting(const QStyleOptionComboBox &option) const;
};
