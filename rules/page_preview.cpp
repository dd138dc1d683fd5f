#include "rules/rules.h"

#include "common/debug_line.h"
#include "common/folders.h"
#include "common/settings_text.h"
#include "common/stop_signals.h"
#include "common/tool_commands.h"
#include "pipeline/input_identity.h"
#include "rules/editor_text.h"
#include "rules/preview_geometry.h"

#include "ui_rules.h"

#include <QApplication>
#include <QCursor>
#include <QDeadlineTimer>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPixmap>
#include <QProcess>
#include <QPushButton>
#include <QScrollArea>
#include <QSettings>
#include <QUrl>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

using namespace quorlin;

namespace {

constexpr int signalCheckMilliseconds = 200;

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

/// @p zoom in percent, with as many digits as tell steps apart.
QString percentText(float zoom)
{
    return QString::number(double(zoom) * 100, 'g', 4);
}

/// Waits for @p process at most @p milliseconds. When the program is asked to end, the tool is
/// ended too: what it writes would stay behind.
void waitForExport(QProcess &process, int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    while (process.state() != QProcess::NotRunning && !deadline.hasExpired()) {
        const auto rest = static_cast<int>(deadline.remainingTime());
        if (process.waitForFinished(std::min(rest, signalCheckMilliseconds))) {
            return;
        }
        if (StopSignals::isAsked()) {
            process.kill();
            process.waitForFinished(signalCheckMilliseconds);
            return;
        }
    }
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
    waitForExport(*process, exportLimit);
    release(process);
}

void Rules::exportPage(int page)
{
    const std::optional<FileIdentity> before = identifyFile(pngPath);
    pictureIsCurrent = false;
    generatePNGfile(pdfPath, page, exportFile());
    const std::optional<FileIdentity> now = identifyFile(pngPath);
    if (!now || now == before) {
        showNotice(tr("Page %1 cannot be shown: it could not be read.").arg(page));
    }
}

void Rules::setIniImage()
{
    clearPreview();
    showNotice(QString());
    picked = false;
    disconnect(ui->spinBox_pagenumber, SIGNAL(valueChanged(int)), this, SLOT(setPageChange()));
    const QSettings settings(settingsFileName(), QSettings::IniFormat);
    const QString sample =
        settingsText(settings, QStringLiteral("file/file"), QStringLiteral("Empty input"));
    const int pageCount =
        settingsText(settings, QStringLiteral("file/page"), QStringLiteral("0")).toInt();
    if (pageCount <= 0) {
        showWithoutSample(sample);
        return;
    }
    ui->spinBox_pagenumber->setMaximum(pageCount);
    ui->spinBox_pagenumber->setMinimum(1);
    ui->spinBox_pagenumber->setValue(1);
    ui->label_pagenumber->setText(pageCountLabel(pageCount));
    if (!QFile::exists(sample)) {
        showNotice(tr("The first file of the list is gone: %1").arg(sample));
        return;
    }
    ui->pushButton_zoomin->setEnabled(true);
    ui->pushButton_zoomout->setEnabled(true);
    pdfPath = sample;
    pngPath = pictureFile();
    exportPage(1);
    setframeImage();
    setupdownVis();
    connect(ui->spinBox_pagenumber, SIGNAL(valueChanged(int)), this, SLOT(setPageChange()));
}

void Rules::showWithoutSample(const QString &sample)
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
    if (sample == QLatin1String("Empty input")) {
        showNotice(tr("The list is empty. Add a file, then open the rule editor again."));
    } else {
        showNotice(tr("The first file of the list cannot be read (damaged, protected by a "
                      "password, or no PDF file): %1")
                       .arg(sample));
    }
}

void Rules::showNotice(const QString &text)
{
    noticeLabel->setText(text);
    noticeLabel->setVisible(!text.isEmpty());
}

void Rules::setPageChange()
{
    const Anchor anchor = currentAnchor();
    showNotice(QString());
    pngPath = pictureFile();
    exportPage(ui->spinBox_pagenumber->value());
    clearPreview();
    setframeImage();
    returnTo(anchor);
}

void Rules::setframeImage()
{
    frameZoom = zoomFactor;
    if (showPicture(pngPath, zoomFactor)) {
        renewRuleButton();
        readItems();
        return;
    }
    if (imageWidth <= 0) {
        return; // no picture at all
    }
    // A zoom at which no picture can be held: the page stays at the one that it had.
    if (!showPicture(pngPath, shownZoom)) {
        showNotice(tr("This page is too large to be shown at %1 %.").arg(percentText(zoomFactor)));
        return;
    }
    frameZoom = shownZoom;
    showNotice(tr("This page cannot be shown at %1 %. It stays at %2 %.")
                   .arg(percentText(zoomFactor), percentText(shownZoom)));
    renewRuleButton();
    readItems();
}

/// Shows the picture in file @p path at @p zoom. A picture that cannot be read or held leaves the
/// one shown before.
bool Rules::showPicture(const QString &path, float zoom)
{
    if (pictureIsCurrent && zoom == shownZoom) {
        return true;
    }
    // Loaded as an image, not as a pixmap: QPixmap keeps files in a cache by name, size and second
    // of change, and would show the page before when pages are turned fast.
    QImage picture = path.isEmpty() ? QImage() : QImage(path);
    imageWidth = static_cast<float>(picture.width());
    imageHeight = static_cast<float>(picture.height());
    const QSize box = previewSize(imageWidth, imageHeight, zoom);
    if (box.isEmpty()) {
        return false;
    }
    picture = picture.scaled(box, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    if (picture.isNull()) {
        return false;
    }
    const QSize size = picture.size();
    imageLabel->setPixmap(QPixmap::fromImage(std::move(picture)));
    imageLabel->resize(size);
    shownZoom = zoom;
    pictureIsCurrent = true;
    return true;
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
    // The focus of a frame that goes would move to the next one, and the view after it.
    if (imageLabel->isAncestorOf(QApplication::focusWidget())) {
        scrollArea->setFocus();
    }
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
    const Anchor anchor = currentAnchor();
    clearPreview();
    showNotice(QString());
    zoomFactor = zoom;
    setframeImage();
    returnTo(anchor);
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
