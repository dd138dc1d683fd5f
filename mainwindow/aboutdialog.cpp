#include "mainwindow/aboutdialog.h"

#include "mainwindow/maker.h"
#include "ui_aboutdialog.h"

#include <QDesktopServices>
#include <QPixmap>
#include <QUrl>

using namespace quorlin;

namespace {

/// A link in a colour of its own: rich text would take the desktop's, which may be as light as the
/// picture behind it.
QString anchor(const QString &target, const QString &text)
{
    return QStringLiteral("<style>a { color: #1a4f8f; }</style>") + QStringLiteral("<a href=\"") +
           target + QStringLiteral("\">") + text + QStringLiteral("</a>");
}

} // namespace

AboutDialog::AboutDialog(QWidget *parent) : QDialog(parent), ui(std::make_unique<Ui_AboutDialog>())
{
    ui->setupUi(this);
    setFixedSize(size());
    ui->label_4->setText(tr(makerNotice));
    const QString homePage = QString::fromLatin1(homePageAddress);
    ui->label_homepage->setText(anchor(homePage, homePage));
    connect(ui->label_homepage, SIGNAL(linkActivated(QString)), this, SLOT(openMainpage(QString)));
    showBackground();
    const QString mail = QString::fromLatin1(supportMailAddress);
    ui->label_mail->setText(anchor(QStringLiteral("mailto:") + mail, mail));
    // No slot is spelt like this, so the address is shown but a click on it starts no mail program;
    // Qt's warning about it in the log is expected.
    connect(ui->label_mail, SIGNAL(linkActivated(QString)), this, SLOT(openmailpage(QString)));
}

AboutDialog::~AboutDialog() = default;

void AboutDialog::showBackground()
{
    const QPixmap picture(QStringLiteral(":/iconoption/icons/graybackgr.png"));
    if (picture.isNull()) {
        return; // A brush without picture would leave the box black.
    }
    QPalette colours = palette();
    colours.setBrush(QPalette::Window,
                     picture.scaled(size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    // The picture is light on every desktop, so the texts must not follow a dark one.
    colours.setColor(QPalette::WindowText, QColor(0x20, 0x24, 0x2b));
    setPalette(colours);
}

void AboutDialog::openMainpage(const QString &url)
{
    QDesktopServices::openUrl(QUrl(url));
}

void AboutDialog::openMailpage(const QString &mail)
{
    QDesktopServices::openUrl(QUrl(mail));
}
