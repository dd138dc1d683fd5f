#include "rules/rules.h"

#include "widgets/desktop_colours.h"
#include "widgets/screen_fit.h"

#include "ui_rules.h"

#include <QApplication>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QScreen>
#include <QScrollArea>
#include <QXmlStreamReader>

using namespace quorlin;

namespace {

constexpr QSize smallestFrame(431, 441); // where the screen has room for it

} // namespace

Rules::Rules(QWidget *parent)
    : QDialog(parent), ui(std::make_unique<Ui_Rules>()),
      networkManager(new QNetworkAccessManager(this))
{
    ui->setupUi(this);
    setWindowFlags(Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint |
                   Qt::WindowCloseButtonHint);
    const QSize screen = QGuiApplication::primaryScreen()->geometry().size();
    move(screen.width() / 2 - width() / 2, screen.height() / 2 - height() / 2);
    // The pictures are our own export's, which bounds them; large sheets exceed Qt's limit of 128.
    QImageReader::setAllocationLimit(1024);

    buildPreview();
    setPalette(withReadableDisabledTexts(palette()));
    ui->pushButton_save->setEnabled(false);
    ui->lineEdit_rule->setEnabled(false);
    ui->lineEdit_rulebefore->setEnabled(false);
    connectControls();
}

Rules::~Rules() = default;

void Rules::showEvent(QShowEvent *event)
{
    fitToScreen();
    QDialog::showEvent(event);
}

void Rules::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::ApplicationPaletteChange) {
        setPalette(withReadableDisabledTexts(QApplication::palette(this)));
    }
    QDialog::changeEvent(event);
}

void Rules::fitToScreen()
{
    // The frame may be smaller than it asks for where the screen has no room for that.
    ui->frame_back->setMinimumSize(smallestFrame);
    const QSize room = roomFor(*this);
    const QSize lack = (minimumSizeHint() - room).expandedTo(QSize(0, 0));
    ui->frame_back->setMinimumSize((smallestFrame - lack).expandedTo(QSize(1, 1)));
    fitOnScreen(*this);
}

void Rules::buildPreview()
{
    imageLabel = new QLabel(ui->frame_back);
    imageLabel->setObjectName(QStringLiteral("imageLabel"));
    imageLabel->setMouseTracking(true);
    imageLabel->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    renewRuleButton();

    scrollArea = new QScrollArea(ui->frame_back);
    scrollArea->setObjectName(QStringLiteral("scrollArea"));
    scrollArea->setAccessibleName(tr("Page Preview"));
    scrollArea->setWidgetResizable(true);
    scrollArea->setBackgroundRole(QPalette::Dark);
    scrollArea->setWidget(imageLabel);

    noticeLabel = new QLabel;
    noticeLabel->setObjectName(QStringLiteral("noticeLabel"));
    noticeLabel->setTextFormat(Qt::PlainText);
    noticeLabel->setWordWrap(true);
    noticeLabel->setMargin(6);
    noticeLabel->setAutoFillBackground(true);
    // What it covers can be clicked all the same.
    noticeLabel->setAttribute(Qt::WA_TransparentForMouseEvents);
    noticeLabel->hide();
    auto *overlay = new QVBoxLayout(scrollArea->viewport());
    overlay->setContentsMargins(0, 0, 0, 0);
    overlay->addWidget(noticeLabel);
    overlay->addStretch();

    auto *layout = new QHBoxLayout;
    layout->addWidget(scrollArea);
    ui->frame_back->setLayout(layout);
}

void Rules::connectControls()
{
    connect(ui->pushButton_zoomout, SIGNAL(clicked()), this, SLOT(setZoomout()));
    connect(ui->pushButton_zoomin, SIGNAL(clicked()), this, SLOT(setZoomin()));
    connect(ui->spinBox_pagenumber, SIGNAL(valueChanged(int)), this, SLOT(setPageChange()));
    connect(ui->spinBox_pagenumber, SIGNAL(valueChanged(int)), this, SLOT(setupdownVis()));
    connect(ui->pushButton_save, SIGNAL(clicked()), this, SLOT(setsave()));
    connect(ui->pushButton_up, SIGNAL(clicked()), this, SLOT(setpageup()));
    connect(ui->pushButton_down, SIGNAL(clicked()), this, SLOT(setpagedown()));
}
