#include "editor_scene.h"

#include "common/folders.h"
#include "common/settings_text.h"

#include <QCursor>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QMessageBox>
#include <QSettings>
#include <QTest>
#include <QTimer>

namespace {

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly | QIODevice::Truncate), qPrintable(path));
    file.write(content);
}

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Copies the prepared page named by -f beside the output file.
const char toolScript[] = R"(#!/bin/sh
here=$(dirname "$0")
printf '%s\n' "$*" >> "$here/calls.txt"
page=0
while [ $# -gt 2 ]; do
    if [ "$1" = "-f" ]; then page=$2; shift; fi
    shift
done
out=$(dirname "$2")
[ -f "$here/canned/fail" ] && exit 1
if [ -f "$here/canned/hold" ]; then
    while [ ! -f "$here/canned/go" ]; do sleep 0.02; done
fi
rm -f "$out/text_pg_0001.htm" "$out/text_pg_0001.png"
[ -f "$here/canned/$page.htm" ] && cp "$here/canned/$page.htm" "$out/text_pg_0001.htm"
[ -f "$here/canned/$page.png" ] && cp "$here/canned/$page.png" "$out/text_pg_0001.png"
exit 0
)";

} // namespace

EditorScene::EditorScene() : formerFolder(QDir::currentPath()), formerTmp(qgetenv("TMPDIR"))
{
    qputenv("TMPDIR", QFile::encodeName(scratch.path()));
    QDir::setCurrent(application.path());
    quorlin::setApplicationFolder(application.path());
    QDir(application.path()).mkdir(QStringLiteral("canned"));
    write(document(), "%PDF-1.4\n");
    writeTool();
    rules = std::make_unique<Rules>();
}

EditorScene::~EditorScene()
{
    rules.reset();
    quorlin::setApplicationFolder(QString());
    QDir::setCurrent(formerFolder);
    if (formerTmp.isEmpty()) {
        qunsetenv("TMPDIR");
    } else {
        qputenv("TMPDIR", formerTmp);
    }
}

void EditorScene::writeTool()
{
    const QString tool = application.filePath(QStringLiteral("pagexport"));
    write(tool, toolScript);
    QFile::setPermissions(tool, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void EditorScene::addPage(int page, QSize size, const QList<Subtext> &items, Qt::GlobalColor colour)
{
    QByteArray text;
    for (const Subtext &item : items) {
        text += itemLine(item);
    }
    addPageText(page, size, text, colour);
}

void EditorScene::addPageText(int page, QSize size, const QByteArray &text, Qt::GlobalColor colour)
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(colour);
    // Uncompressed, so that pictures of one size have files of one size.
    QVERIFY(picture.save(canned(QString::number(page) + ".png"), "PNG", 100));
    write(canned(QString::number(page) + ".htm"), text);
}

void EditorScene::removePicture(int page)
{
    QVERIFY(QFile::remove(canned(QString::number(page) + ".png")));
}

void EditorScene::removeItems(int page)
{
    QVERIFY(QFile::remove(canned(QString::number(page) + ".htm")));
}

void EditorScene::storeSample(const QString &file, const QString &pageCount)
{
    QSettings settings(quorlin::settingsFileName(), QSettings::IniFormat);
    settings.setValue(QStringLiteral("file/file"), file);
    settings.setValue(QStringLiteral("file/page"), pageCount);
}

void EditorScene::storeDocument(int pageCount)
{
    storeSample(document(), QString::number(pageCount));
}

void EditorScene::failExports(bool fail)
{
    if (fail) {
        write(canned(QStringLiteral("fail")), "");
    } else {
        QFile::remove(canned(QStringLiteral("fail")));
    }
}

void EditorScene::holdExports()
{
    QFile::remove(canned(QStringLiteral("go")));
    write(canned(QStringLiteral("hold")), "");
}

void EditorScene::releaseExports()
{
    write(canned(QStringLiteral("go")), "");
}

void EditorScene::removeTool()
{
    QVERIFY(QFile::remove(application.filePath(QStringLiteral("pagexport"))));
}

QStringList EditorScene::calls() const
{
    const QString text = QString::fromUtf8(read(application.filePath(QStringLiteral("calls.txt"))));
    return text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void EditorScene::open()
{
    rules->setIniImage();
    rules->show();
    QVERIFY(QTest::qWaitForWindowExposed(rules.get()));
}

void EditorScene::openWithFrames(int frames)
{
    open();
    QTRY_COMPARE(this->frames().size(), frames);
}

QList<QPushButton *> EditorScene::frames() const
{
    QList<QPushButton *> found = picture()->findChildren<QPushButton *>(Qt::FindDirectChildrenOnly);
    found.removeAll(ruleButton());
    // Raising one of them moves it in the list of children only for the confirming button.
    return found;
}

QList<QRect> EditorScene::frameRects() const
{
    QList<QRect> rects;
    for (const QPushButton *frame : frames()) {
        rects.append(frame->geometry());
    }
    return rects;
}

QColor EditorScene::pictureColour() const
{
    return picture()->pixmap().toImage().pixelColor(0, 0);
}

void EditorScene::click(const char *name)
{
    QPushButton *target = button(name);
    QVERIFY2(target, name);
    QTest::mouseClick(target, Qt::LeftButton);
}

void EditorScene::clickPicture(QPoint point)
{
    QCursor::setPos(picture()->mapToGlobal(point));
    QWidget *target = picture()->childAt(point);
    if (target == nullptr) {
        QTest::mouseClick(picture(), Qt::LeftButton, {}, point);
        return;
    }
    QTest::mouseClick(target, Qt::LeftButton, {}, target->mapFrom(picture(), point));
}

void EditorScene::clickFrame(int index)
{
    const QRect frame = frameRects().at(index);
    clickPicture(frame.topLeft() + QPoint(frame.width() / 2, frame.height() / 2));
}

QString EditorScene::setting(const QString &key)
{
    const QSettings settings(quorlin::settingsFileName(), QSettings::IniFormat);
    return settings.value(key, QStringLiteral("(absent)")).toString();
}

QByteArray EditorScene::settingsFile() const
{
    return read(application.filePath(quorlin::settingsFileName()));
}

QByteArray itemLine(const Subtext &item)
{
    return QStringLiteral("<span style=\"left:%1;top:%2;width:%3;height:%4\">%5</span>\n")
        .arg(item.left)
        .arg(item.top)
        .arg(item.width)
        .arg(item.height)
        .arg(item.text)
        .toUtf8();
}

BoxAnswer::BoxAnswer()
{
    auto timer = std::make_unique<QTimer>();
    timer->setInterval(10);
    QObject::connect(timer.get(), &QTimer::timeout, timer.get(), [this, clock = timer.get()] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (box == nullptr || !box->isVisible()) {
            return;
        }
        clock->stop();
        shown = true;
        title = box->windowTitle();
        text = box->text();
        icon = box->icon();
        buttons = int(box->buttons().size());
        QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
    });
    timer->start();
    watcher = std::move(timer);
}

BoxAnswer::~BoxAnswer() = default;
