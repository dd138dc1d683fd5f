#pragma once

#include <QDialog>

/// The rule editor: rules are made on the preview of a sample document's page.
class Rules : public QDialog
{
    Q_OBJECT

public:
    explicit Rules(QWidget *parent = nullptr);

public slots:
    /// Prepares the preview of the sample named in the settings file; called before every opening.
    void setIniImage();
};
