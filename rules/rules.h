#pragma once

#include "analysis/line_parser.h"
#include "analysis/subtext.h"

#include <QDialog>
#include <QPoint>
#include <QPointF>
#include <QString>
#include <QStringList>

#include <array>
#include <memory>

class QHBoxLayout;
class QLabel;
class QMouseEvent;
class QNetworkAccessManager;
class QNetworkReply;
class QPushButton;
class QScrollArea;
class QWheelEvent;
class QXmlStreamReader;
class Ui_Rules;

/// The rule editor: shows one page of a sample document as a picture with a frame over every text
/// item; a picked item is saved as a rule.
///
/// One editor lives as long as the main window and is opened again and again: the zoom and the item
/// picked last outlive a closing, the page starts at 1 each time. Everything happens on the GUI
/// thread; the export of a page blocks it, the page's items are read afterwards from the event
/// loop.
class Rules : public QDialog
{
    Q_OBJECT

public:
    explicit Rules(QWidget *parent = nullptr); // rules/rules.cpp
    ~Rules() override;                         // rules/rules.cpp

    /// Shows the exported picture at the current zoom and starts reading the page's items. A
    /// picture that cannot be read or held leaves the one shown before.
    void setframeImage(); // rules/page_preview.cpp

    /// How long the export of one page may hold the editor up, in milliseconds; 30000 unless set.
    /// A tool that needs longer goes on by itself.
    void setExportLimit(int milliseconds); // rules/page_preview.cpp

protected:
    void wheelEvent(QWheelEvent *event) override;  // rules/page_preview.cpp
    void keyPressEvent(QKeyEvent *event) override; // rules/rule_saving.cpp
    void showEvent(QShowEvent *event) override;    // rules/rules.cpp
    void changeEvent(QEvent *event) override;      // rules/rules.cpp

public slots:
    // Declared in this order on purpose: it fixes the indices of the meta-object. The event
    // handlers among them override QDialog's.
    void gethtmlinfo();                                   // rules/text_picking.cpp
    void getdiv();                                        // rules/text_picking.cpp
    void getTextPosition(const QString &sxml);            // rules/text_picking.cpp
    Subtext getSubtextInfo(const QString &sRow);          // rules/text_picking.cpp
    int getpos(const QString &sPos, const QString &sRow); // rules/text_picking.cpp
    QString gettext(const QString &sRow);                 // rules/text_picking.cpp
    void drawlabels();                                    // rules/text_picking.cpp
    void mouseMoveEvent(QMouseEvent *event) override;     // rules/text_picking.cpp
    void mousePressEvent(QMouseEvent *event) override;    // rules/text_picking.cpp
    void setZoomout();                                    // rules/page_preview.cpp
    void setZoomin();                                     // rules/page_preview.cpp
    void textmessagebox();                                // rules/text_picking.cpp
    void getSpecifytext();                                // rules/text_picking.cpp
    void addtorules();                                    // rules/text_picking.cpp
    /// Exports page @p page (counted from 1; 0 = all pages) of @p pdffile beside @p pngfile, which
    /// names the tool's ".xml" output: picture and items lie next to it. Waits for the tool.
    void generatePNGfile(const QString &pdffile, int page,
                         const QString &pngfile); // rules/page_preview.cpp
    /// Prepares the preview of the sample named in the settings file; called before every opening.
    void setIniImage();   // rules/page_preview.cpp
    void setPageChange(); // rules/page_preview.cpp
    void setsave();       // rules/rule_saving.cpp
    void setpageup();     // rules/page_preview.cpp
    void setpagedown();   // rules/page_preview.cpp
    void setupdownVis();  // rules/page_preview.cpp

private:
    /// A place of the page, and where it stands in the view.
    struct Anchor
    {
        QPointF place; ///< page units
        QPoint inView; ///< pixels
        bool isPicked = false;
    };

    void buildPreview();                               // rules/rules.cpp
    void connectControls();                            // rules/rules.cpp
    void fitToScreen();                                // rules/rules.cpp
    void clearPreview();                               // rules/page_preview.cpp
    void renewRuleButton();                            // rules/page_preview.cpp
    void hideRuleButton();                             // rules/text_picking.cpp
    void zoomTo(float zoom);                           // rules/page_preview.cpp
    void exportPage(int page);                         // rules/page_preview.cpp
    void showWithoutSample(const QString &sample);     // rules/page_preview.cpp
    void showNotice(const QString &text);              // rules/page_preview.cpp
    bool showPicture(const QString &path, float zoom); // rules/page_preview.cpp
    void readItems();                                  // rules/page_preview.cpp
    void deleteItemButtons();                          // rules/text_picking.cpp
    void placeRuleButton(const QRect &frame);          // rules/text_picking.cpp
    void showPositionTip(QPoint cursor);               // rules/text_picking.cpp
    QRect pickedFrame() const;                         // rules/preview_scroll.cpp
    QRect visiblePart() const;                         // rules/preview_scroll.cpp
    void bringIntoView(const QRect &part);             // rules/preview_scroll.cpp
    Anchor currentAnchor() const;                      // rules/preview_scroll.cpp
    void returnTo(const Anchor &anchor);               // rules/preview_scroll.cpp

    std::unique_ptr<Ui_Rules> ui;
    QLabel *imageLabel = nullptr;
    QScrollArea *scrollArea = nullptr;
    QLabel *noticeLabel = nullptr; ///< says over the preview why it shows no page, or not this one
    /// The confirming button. Exactly one exists at any time: whatever deletes it makes a new one.
    QPushButton *ruleButton = nullptr;

    float zoomFactor = 1.0F;
    float imageWidth = 1.0F;  ///< of the picture loaded last, in pixels
    float imageHeight = 1.0F; ///< of the picture loaded last, in pixels
    /// Zoom of the frames: zoomFactor, or the zoom of the picture shown where that has no picture.
    float frameZoom = 1.0F;
    float shownZoom = 1.0F;        ///< of the picture shown
    bool pictureIsCurrent = false; ///< the picture shown is that of the last export
    QString pdfPath;
    QString pngPath;
    int exportLimit = 30000;

    QNetworkAccessManager *networkManager = nullptr;
    /// The pending read of the page's items; null when none is awaited. A read that ends without
    /// being this one belongs to a picture that is gone, and is dropped.
    QNetworkReply *htmlReply = nullptr;
    std::unique_ptr<QXmlStreamReader> xmlReader;

    /// Lines of the page's items; its length is the number of valid entries of the tables below.
    QStringList pageLines;
    std::array<Subtext, quorlin::maximumPageItems> items;
    std::array<QPushButton *, quorlin::maximumPageItems> itemButtons{};
    Subtext currentItem; ///< picked last, and what is saved
    bool picked = false; ///< an item was picked since the editor was opened
};
