#include "opdialog_fixture.h"

#include "mainwindow/aboutdialog.h"
#include "tests/support/room.h"
#include "tests/support/scratch_folders.h"

#include <QAbstractButton>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QStyleFactory>

using quorlin::test::ScratchFolders;

namespace {

/// What is wrong with the visible widgets of @p window: cut off texts, widgets outside their parent
/// or over each other. Empty when nothing is.
QString faults(const QWidget &window)
{
    QString found;
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        const bool named = !widget->objectName().isEmpty() &&
                           !widget->objectName().startsWith(QLatin1String("qt_"));
        if (!named || !widget->isVisible()) {
            continue;
        }
        const bool showsText =
            qobject_cast<const QLabel *>(widget) || qobject_cast<const QAbstractButton *>(widget);
        const auto *label = qobject_cast<const QLabel *>(widget);
        const QSize needed = label && label->wordWrap()
                                 ? QSize(0, label->heightForWidth(label->width()))
                             : showsText ? widget->sizeHint()
                                         : widget->minimumSizeHint();
        if (widget->width() < needed.width() || widget->height() < needed.height()) {
            found += widget->objectName() + " is cut off; ";
        }
        const QWidget *parent = widget->parentWidget();
        if (!parent->rect().contains(widget->geometry())) {
            found += widget->objectName() + " leaves its parent; ";
        }
        for (const QWidget *other :
             parent->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
            if (other != widget && other->isVisible() && !other->objectName().isEmpty() &&
                other->geometry().intersects(widget->geometry())) {
                found += widget->objectName() + " covers " + other->objectName() + "; ";
            }
        }
    }
    return found;
}

/// Lightness (0 to 255) of the darkest point of @p picture in @p area.
int darkestIn(const QImage &picture, const QRect &area)
{
    int darkest = 255;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            darkest = std::min(darkest, picture.pixelColor(x, y).lightness());
        }
    }
    return darkest;
}

void save(QWidget &window, const QString &name)
{
    const QString folder = qEnvironmentVariable("QUORLIN_SCREENSHOTS");
    if (!folder.isEmpty()) {
        QVERIFY(window.grab().save(folder + "/" + name + ".png"));
    }
}

} // namespace

class DialogScreenTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void nothingIsCutOff_data();
    void nothingIsCutOff();
    void aboutBoxIsReadableInDarkColours();
    void everyFieldHasALabel();
    void tabReachesEveryControl();

private:
    std::unique_ptr<ScratchFolders> scratch;
    QFont font;
};

void DialogScreenTest::init()
{
    scratch = std::make_unique<ScratchFolders>();
    font = QApplication::font();
}

void DialogScreenTest::cleanup()
{
    QApplication::setFont(font);
    scratch.reset();
}

void DialogScreenTest::nothingIsCutOff_data()
{
    QTest::addColumn<QString>("style");
    QTest::addColumn<double>("enlarged");
    for (const QString &style : QStyleFactory::keys()) {
        for (const double enlarged : {1.0, 1.25}) {
            QTest::addRow("%s, letters at %g", qPrintable(style), enlarged) << style << enlarged;
        }
    }
}

void DialogScreenTest::nothingIsCutOff()
{
    QFETCH(QString, style);
    QFETCH(double, enlarged);
    QApplication::setStyle(style);
    QFont large = font;
    large.setPointSizeF(font.pointSizeF() * enlarged);
    QApplication::setFont(large);

    OpDialog dialog;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    const bool pictures = enlarged == 1.0 && style == QLatin1String("Fusion");
    const QStringList names = {"options-image", "options-fonts", "options-security",
                               "options-annotation"};
    child<QLineEdit>(dialog, "lineEdit_userpassword")->setText("secret");
    dialog.setwarning(); // the fullest state of the pages
    const auto *list = child<QListWidget>(dialog, "listWidge_option");
    QVERIFY(list->sizeHintForColumn(0) <= list->viewport()->width());
    for (int row = 0; row < names.size(); ++row) {
        openPage(dialog, row);
        QCOMPARE(faults(dialog), QString());
        if (pictures) {
            save(dialog, names.at(row));
        }
    }

    AboutDialog about;
    about.show();
    QVERIFY(QTest::qWaitForWindowExposed(&about));
    QCOMPARE(faults(about), QString());
    if (pictures) {
        save(about, "about");
    }
}

void DialogScreenTest::aboutBoxIsReadableInDarkColours()
{
    const QPalette before = QApplication::palette();
    QPalette dark(QColor(0x30, 0x30, 0x30), QColor(0x20, 0x20, 0x20));
    dark.setColor(QPalette::Link, QColor(0xe0, 0xe8, 0xff));
    QApplication::setPalette(dark);
    {
        AboutDialog about;
        about.show();
        QVERIFY(QTest::qWaitForWindowExposed(&about));
        const QImage picture = about.grab().toImage();
        for (const char *name : {"label_3", "label_4", "label_homepage", "label_mail"}) {
            const auto *label = about.findChild<QLabel *>(QString::fromLatin1(name));
            QVERIFY2(darkestIn(picture, label->geometry()) < 100, name);
        }
    }
    QApplication::setPalette(before);
}

void DialogScreenTest::everyFieldHasALabel()
{
    const OpDialog dialog;
    QSet<QWidget *> named;
    for (const QLabel *label : dialog.findChildren<QLabel *>()) {
        named.insert(label->buddy());
    }
    for (QLineEdit *field : dialog.findChildren<QLineEdit *>()) {
        QVERIFY2(named.contains(field), qPrintable(field->objectName()));
    }
    for (QComboBox *combo : dialog.findChildren<QComboBox *>()) {
        QVERIFY2(named.contains(combo), qPrintable(combo->objectName()));
    }
    QVERIFY(!child(dialog, "listWidge_option")->accessibleName().isEmpty());
}

void DialogScreenTest::tabReachesEveryControl()
{
    OpDialog dialog;
    open(dialog);
    for (int row = 0; row < 4; ++row) {
        openPage(dialog, row);
        QStringList reached;
        QPoint previous(0, -1);
        auto *general = child(dialog, "comboBox_generalsettings");
        general->setFocus();
        do {
            const QWidget *focus = QApplication::focusWidget();
            reached << focus->objectName();
            const bool onPage =
                dialog.findChild<QWidget *>("stackedWidget_option")->isAncestorOf(focus);
            const QPoint place = focus->mapTo(&dialog, QPoint());
            if (onPage) { // from top to bottom
                QVERIFY2(place.y() > previous.y(), qPrintable(focus->objectName()));
                previous = place;
            }
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        } while (QApplication::focusWidget() != general && reached.size() < 40);
        for (const QWidget *widget : dialog.findChildren<QWidget *>()) {
            if (widget->isVisible() && widget->isEnabled() &&
                (widget->focusPolicy() & Qt::TabFocus) && !widget->objectName().isEmpty() &&
                !widget->objectName().startsWith(QLatin1String("qt_"))) {
                QVERIFY2(reached.contains(widget->objectName()), qPrintable(widget->objectName()));
            }
        }
    }
}

QUORLIN_TEST(DialogScreenTest)
#include "test_dialog_screen.moc"
