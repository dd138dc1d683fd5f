#include "rules/rules.h"

#include "ui_rules.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QScreen>
#include <QScrollArea>
#include <QXmlStreamReader>

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
    ui->pushButton_save->setEnabled(false);
    ui->lineEdit_rule->setEnabled(false);
    ui->lineEdit_rulebefore->setEnabled(false);
    connectControls();
}

Rules::~Rules() = default;

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
