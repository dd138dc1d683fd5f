#include "mainwindow/aboutdialog.h"

#include "mainwindow/floatform.h"
#include "mainwindow/maker.h"
#include "mainwindow/secdialog.h"
#include "tests/support/room.h"

#include <QDesktopServices>
#include <QFile>
#include <QIcon>
#include <QLabel>
#include <QMetaMethod>
#include <QPixmap>
#include <QTest>

using namespace quorlin;

namespace {

QStringList warnings;

void keepWarnings(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtWarningMsg) {
        warnings << text;
    }
}

QStringList methodsOf(const QMetaObject &meta)
{
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        names << QString::fromLatin1(meta.method(i).methodSignature());
    }
    return names;
}

} // namespace

class AboutDialogTest : public QObject
{
    Q_OBJECT

public slots:
    /// Stands in for the desktop's browser and mail program.
    void takeLink(const QUrl &url) { opened << url.toString(); }

private slots:
    void init();
    void cleanup();
    void showsProductMakerAndPicture();
    void linksAreAnchors();
    void sizeIsFixed();
    void backgroundIsThePictureAtTheBoxesSize();
    void clickOnHomePageOpensTheBrowser();
    void clickOnMailDoesNothing();
    void missingMailSlotIsWarnedAbout();
    void slotsOpenWhatTheyAreGiven();
    void smallFormsAreEmpty();
    void allPicturesAreThere_data();
    void allPicturesAreThere();
    void iconsHaveSeveralSizes();

private:
    static void clickLink(QLabel *label);
    QStringList opened;
};

void AboutDialogTest::init()
{
    opened.clear();
    for (const char *scheme : {"https", "mailto"}) {
        QDesktopServices::setUrlHandler(QString::fromLatin1(scheme), this, "takeLink");
    }
}

void AboutDialogTest::cleanup()
{
    for (const char *scheme : {"https", "mailto"}) {
        QDesktopServices::unsetUrlHandler(QString::fromLatin1(scheme));
    }
}

void AboutDialogTest::clickLink(QLabel *label)
{
    QVERIFY(label != nullptr);
    const QPoint place(label->fontMetrics().averageCharWidth() * 4, label->height() / 2);
    QTest::mouseMove(label, place);
    QTest::mouseClick(label, Qt::LeftButton, {}, place);
}

void AboutDialogTest::showsProductMakerAndPicture()
{
    const AboutDialog dialog;
    QCOMPARE(dialog.objectName(), QString("AboutDialog"));
    QCOMPARE(dialog.windowTitle(), QString("About"));
    QCOMPARE(dialog.findChild<QLabel *>("label_3")->text(), QString("Quorlin Cleaver 2.0"));
    QVERIFY(dialog.findChild<QLabel *>("label_4")->text().contains(QLatin1String(makerName)));
    const QImage icon = QPixmap(":/iconoption/icons/content32.png").toImage();
    QVERIFY(!icon.isNull());
    const auto labels = dialog.findChildren<QLabel *>();
    QVERIFY(std::any_of(labels.begin(), labels.end(), [&](const QLabel *label) {
        return label->pixmap(Qt::ReturnByValue).toImage() == icon;
    }));
}

void AboutDialogTest::linksAreAnchors()
{
    const AboutDialog dialog;
    QVERIFY(dialog.findChild<QLabel *>("label_homepage")
                ->text()
                .endsWith("<a href=\"https://cleaver.example.com\">"
                          "https://cleaver.example.com</a>"));
    QVERIFY(dialog.findChild<QLabel *>("label_mail")
                ->text()
                .endsWith("<a href=\"mailto:support@cleaver.example.com\">"
                          "support@cleaver.example.com</a>"));
    QVERIFY(!dialog.findChild<QLabel *>("label_homepage")->openExternalLinks());
    QVERIFY(!dialog.findChild<QLabel *>("label_mail")->openExternalLinks());
}

void AboutDialogTest::sizeIsFixed()
{
    AboutDialog dialog;
    dialog.show();
    const QSize size = dialog.size();
    QCOMPARE(dialog.minimumSize(), size);
    QCOMPARE(dialog.maximumSize(), size);
    dialog.resize(2 * size);
    QCOMPARE(dialog.size(), size);
}

void AboutDialogTest::backgroundIsThePictureAtTheBoxesSize()
{
    const AboutDialog dialog;
    const QImage expected =
        QPixmap(":/iconoption/icons/graybackgr.png")
            .scaled(dialog.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
            .toImage();
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        QCOMPARE(dialog.palette().brush(group, QPalette::Window).texture().toImage(), expected);
    }
}

void AboutDialogTest::clickOnHomePageOpensTheBrowser()
{
    AboutDialog dialog;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    clickLink(dialog.findChild<QLabel *>("label_homepage"));
    QCOMPARE(opened, QStringList{"https://cleaver.example.com"});
}

void AboutDialogTest::clickOnMailDoesNothing()
{
    AboutDialog dialog;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    auto *mail = dialog.findChild<QLabel *>("label_mail");
    int activated = 0;
    connect(mail, &QLabel::linkActivated, this, [&] { ++activated; });
    clickLink(mail);
    QCOMPARE(activated, 1); // the click did meet the link
    QCOMPARE(opened, QStringList());
}

void AboutDialogTest::missingMailSlotIsWarnedAbout()
{
    warnings.clear();
    const QtMessageHandler previous = qInstallMessageHandler(keepWarnings);
    {
        const AboutDialog dialog;
    }
    qInstallMessageHandler(previous);
    QCOMPARE(warnings.size(), 3);
    QVERIFY2(warnings.first().startsWith("QObject::connect: No such slot "
                                         "AboutDialog::openmailpage(QString)"),
             qPrintable(warnings.first()));
}

void AboutDialogTest::slotsOpenWhatTheyAreGiven()
{
    const QStringList expected = {"openMainpage(QString)", "openMailpage(QString)"};
    QCOMPARE(methodsOf(AboutDialog::staticMetaObject), expected);
    AboutDialog dialog;
    dialog.openMainpage("https://a.example.com/x%20y");
    dialog.openMailpage("mailto:b@example.com");
    const QStringList links = {"https://a.example.com/x y", "mailto:b@example.com"};
    QCOMPARE(opened, links);
}

void AboutDialogTest::smallFormsAreEmpty()
{
    const SecDialog dialog;
    QCOMPARE(dialog.objectName(), QString("SecDialog"));
    QCOMPARE(dialog.windowTitle(), QString("Dialog"));
    QVERIFY(dialog.findChildren<QWidget *>().isEmpty());
    const floatform form;
    QCOMPARE(form.objectName(), QString("floatform"));
    QCOMPARE(form.windowTitle(), QString("Form"));
    QVERIFY(form.findChildren<QWidget *>().isEmpty());
    QCOMPARE(QByteArray(form.metaObject()->className()), QByteArray("floatform"));
}

void AboutDialogTest::allPicturesAreThere_data()
{
    QTest::addColumn<QByteArray>("signature");
    const QByteArray png = "\x89PNG";
    const QByteArray ico("\0\0\1\0\5\0", 6);
    for (const char *name : {"about.png", "add.png", "clear.png", "content32.png", "del.png",
                             "downa.png", "go_down.png", "go_up.png", "graybackgr.png",
                             "pdfcompress32.png", "segmentation.png", "setting.png", "up.png"}) {
        QTest::newRow(name) << png;
    }
    for (const char *name : {"alert.ico", "folder_green_open.ico", "zoom_in.ico", "zoom_out.ico"}) {
        QTest::newRow(name) << ico;
    }
    QTest::newRow("stock-ved.jpg") << QByteArray("\xff\xd8\xff");
}

void AboutDialogTest::allPicturesAreThere()
{
    QFETCH(QByteArray, signature);
    const QString path =
        QStringLiteral(":/iconoption/icons/") + QString::fromLatin1(QTest::currentDataTag());
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().startsWith(signature));
    QVERIFY(!QPixmap(path).isNull());
    const QString sharp = QString(path).replace(".png", "@2x.png");
    if (sharp != path && QFile::exists(sharp)) {
        QCOMPARE(QImage(sharp).size(), 2 * QImage(path).size());
    }
}

void AboutDialogTest::iconsHaveSeveralSizes()
{
    for (const char *name : {"alert.ico", "folder_green_open.ico", "zoom_in.ico", "zoom_out.ico"}) {
        const QIcon icon(QStringLiteral(":/iconoption/icons/") + QString::fromLatin1(name));
        for (const int side : {16, 24, 32, 48, 64}) {
            QVERIFY2(icon.availableSizes().contains(QSize(side, side)), name);
        }
    }
}

QUORLIN_TEST(AboutDialogTest)
#include "test_aboutdialog.moc"
