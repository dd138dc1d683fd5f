#include "rules/rules.h"

#include "common/debug_line.h"
#include "common/folders.h"
#include "common/settings_text.h"
#include "common/tool_commands.h"
#include "rules/editor_text.h"
#include "rules/preview_geometry.h"

#include "ui_rules.h"

#include <QCursor>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPixmap>
#include <QProcess>
#include <QPushButton>
#include <QSettings>
#include <QUrl>
#include <QWheelEvent>

#include <utility>

using namespace quorlin;

namespace {

QString pictureFile()
{
    return temporaryFolder() + QStringLiteral("/text_pg_0001.png");
}

QString exportFile()
{
    return temporaryFolder() + QStringLiteral("/text.xml");
}

/// "file:///" and the path, put together so that "#", "?" and "%" in the path stay part of it.
QUrl itemsUrl()
{
    QUrl url;
    url.setScheme(QStringLiteral("file"));
    url.setHost(QString());
    url.setPath(QLatin1Char('/') + temporaryFolder() + QStringLiteral("/text_pg_0001.htm"),
                QUrl::DecodedMode);
    return url;
}

/// Lets go of @p process without ending a tool that still runs. QProcess::close() would kill it,
/// and QIODevice::close() takes away the buffers into which the process is still read.
void release(QProcess *process)
{
    if (process->state() == QProcess::NotRunning) {
        process->close();
        delete process;
        return;
    }
    QObject::connect(process, SIGNAL(finished(int, QProcess::ExitStatus)), process,
                     SLOT(deleteLater()));
    process->closeReadChannel(QProcess::StandardOutput);
    process->closeReadChannel(QProcess::StandardError);
    process->closeWriteChannel();
}

bool isEmptyScrollPhase(const QWheelEvent &event)
{
    const bool edge = event.phase() == Qt::ScrollBegin || event.phase() == Qt::ScrollEnd;
    return edge && event.angleDelta().isNull();
}

} // namespace

void Rules::setExportLimit(int milliseconds)
{
    exportLimit = milliseconds;
}

void Rules::generatePNGfile(const QString &pdffile, int page, const QString &pngfile)
{
    const QString command = pageExportCommand(applicationFolder(), pdffile, page, pngfile);
    debugLine({quoted(command)});
    auto *process = new QProcess;
    process->startCommand(command, QIODevice::ReadWrite);
    process->waitForFinished(exportLimit);
    release(process);
}

void Rules::setIniImage()
{
    clearPreview();
    disconnect(ui->spinBox_pagenumber, SIGNAL(valueChanged(int)), this, SLOT(setPageChange()));
    const QSettings settings(settingsFileName(), QSettings::IniFormat);
    const QString sample =
        settingsText(settings, QStringLiteral("file/file"), QStringLiteral("Empty input"));
    const int pageCount =
        settingsText(settings, QStringLiteral("file/page"), QStringLiteral("0")).toInt();
    if (pageCount <= 0) {
        showWithoutSample();
        return;
    }
    ui->spinBox_pagenumber->setMaximum(pageCount);
    ui->spinBox_pagenumber->setMinimum(1);
    ui->spinBox_pagenumber->setValue(1);
    ui->label_pagenumber->setText(pageCountLabel(pageCount));
    if (!QFile::exists(sample)) {
        return;
    }
    ui->pushButton_zoomin->setEnabled(true);
    ui->pushButton_zoomout->setEnabled(true);
    pdfPath = sample;
    pngPath = pictureFile();
    generatePNGfile(pdfPath, 1, exportFile());
    setframeImage();
    setupdownVis();
    connect(ui->spinBox_pagenumber, SIGNAL(valueChanged(int)), this, SLOT(setPageChange()));
}

void Rules::showWithoutSample()
{
    ui->spinBox_pagenumber->setMaximum(0);
    ui->spinBox_pagenumber->setMinimum(0);
    ui->spinBox_pagenumber->setValue(0);
    const std::initializer_list<QPushButton *> buttons = {
        ui->pushButton_down, ui->pushButton_up, ui->pushButton_zoomin, ui->pushButton_zoomout,
        ui->pushButton_save};
    for (QPushButton *button : buttons) {
        button->setEnabled(false);
    }
    ui->lineEdit_rule->setEnabled(false);
    ui->lineEdit_rulebefore->setEnabled(false);
}

void Rules::setPageChange()
{
    pngPath = pictureFile();
    generatePNGfile(pdfPath, ui->spinBox_pagenumber->value(), exportFile());
    clearPreview();
    setframeImage();
}

void Rules::setframeImage()
{
    // Loaded as an image, not as a pixmap: QPixmap keeps files in a cache by name, size and second
    // of change, and would show the page before when pages are turned fast.
    QImage picture = pngPath.isEmpty() ? QImage() : QImage(pngPath);
    imageWidth = static_cast<float>(picture.width());
    imageHeight = static_cast<float>(picture.height());
    const QSize box = previewSize(imageWidth, imageHeight, zoomFactor);
    if (box.isEmpty()) {
        return;
    }
    picture = picture.scaled(box, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    if (picture.isNull()) {
        return;
    }
    const QSize shown = picture.size();
    imageLabel->setPixmap(QPixmap::fromImage(std::move(picture)));
    imageLabel->resize(shown);
    renewRuleButton();
    readItems();
}

void Rules::readItems()
{
    htmlReply = networkManager->get(QNetworkRequest(itemsUrl()));
    connect(htmlReply, SIGNAL(finished()), this, SLOT(gethtmlinfo()));
}

/// Takes every frame off the picture, and with them the lines they stand for and the read that
/// would bring new ones for the old picture.
void Rules::clearPreview()
{
    htmlReply = nullptr;
    pageLines.clear();
    itemButtons.fill(nullptr);
    const auto children = imageLabel->findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
    for (QWidget *child : children) {
        delete child;
    }
    ruleButton = nullptr;
    renewRuleButton();
}

void Rules::renewRuleButton()
{
    delete ruleButton;
    ruleButton = new QPushButton(imageLabel);
    ruleButton->setObjectName(QStringLiteral("ruleButton"));
    ruleButton->setAutoDefault(false);
    ruleButton->hide();
    connect(ruleButton, SIGNAL(clicked()), this, SLOT(addtorules()));
}

void Rules::zoomTo(float zoom)
{
    clearPreview();
    zoomFactor = zoom;
    setframeImage();
}

void Rules::setZoomout()
{
    zoomTo(enlargedZoom(zoomFactor));
}

void Rules::setZoomin()
{
    zoomTo(shrunkZoom(zoomFactor));
}

void Rules::setupdownVis()
{
    const PageButtons buttons = pageButtons(ui->spinBox_pagenumber->value(),
                                            pageCountFromLabel(ui->label_pagenumber->text()));
    ui->pushButton_down->setEnabled(buttons.previous);
    ui->pushButton_up->setEnabled(buttons.next);
}

void Rules::setpagedown()
{
    const auto page = previousPage(ui->spinBox_pagenumber->value(),
                                   pageCountFromLabel(ui->label_pagenumber->text()));
    if (page) {
        ui->spinBox_pagenumber->setValue(*page);
    }
}

void Rules::setpageup()
{
    const auto page =
        nextPage(ui->spinBox_pagenumber->value(), pageCountFromLabel(ui->label_pagenumber->text()));
    if (page) {
        ui->spinBox_pagenumber->setValue(*page);
    }
}

void Rules::wheelEvent(QWheelEvent *event)
{
    // Touchpads announce the begin and the end of a gesture without any movement.
    if (isEmptyScrollPhase(*event)) {
        return;
    }
    // Only above the frame, over the tool row; over the preview the wheel belongs to scrolling.
    if (ui->frame_back->mapFromGlobal(QCursor::pos()).y() >= 0) {
        return;
    }
    const QPoint delta = event->angleDelta();
    if ((delta.y() != 0 ? delta.y() : delta.x()) > 0) {
        setZoomout();
    } else {
        setZoomin();
    }
}
