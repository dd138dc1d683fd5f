#include "editor_scene.h"

#include "common/settings_text.h"
#include "tests/support/text_files.h"

#include <QCursor>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QSettings>
#include <QTest>

using quorlin::test::writeFile;

namespace {

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

ToolBench::ToolBench()
{
    QDir(applicationPath()).mkdir(QStringLiteral("canned"));
    writeFile(document(), "%PDF-1.4\n");
    writeTool(QStringLiteral("pagexport"), toolScript);
}

void ToolBench::writeTool(const QString &tool, const QByteArray &script)
{
    const QString path = applicationPath() + QLatin1Char('/') + tool;
    writeFile(path, script);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void ToolBench::addPage(int page, QSize size, const QList<Subtext> &items, const QColor &colour)
{
    QByteArray text;
    for (const Subtext &item : items) {
        text += itemLine(item);
    }
    addPageText(page, size, text, colour);
}

void ToolBench::addPageText(int page, QSize size, const QByteArray &text, const QColor &colour)
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(colour);
    // Uncompressed, so that pictures of one size have files of one size.
    QVERIFY(picture.save(canned(QString::number(page) + ".png"), "PNG", 100));
    writeFile(canned(QString::number(page) + ".htm"), text);
}

void ToolBench::removePicture(int page)
{
    QVERIFY(QFile::remove(canned(QString::number(page) + ".png")));
}

void ToolBench::removeItems(int page)
{
    QVERIFY(QFile::remove(canned(QString::number(page) + ".htm")));
}

void ToolBench::storeSample(const QString &file, const QString &pageCount)
{
    QSettings settings(quorlin::settingsFileName(), QSettings::IniFormat);
    settings.setValue(QStringLiteral("file/file"), file);
    settings.setValue(QStringLiteral("file/page"), pageCount);
}

void ToolBench::storeDocument(int pageCount)
{
    storeSample(document(), QString::number(pageCount));
}

void ToolBench::failExports(bool fail)
{
    if (fail) {
        writeFile(canned(QStringLiteral("fail")), "");
    } else {
        QFile::remove(canned(QStringLiteral("fail")));
    }
}

void ToolBench::holdExports()
{
    QFile::remove(canned(QStringLiteral("go")));
    writeFile(canned(QStringLiteral("hold")), "");
}

void ToolBench::releaseExports()
{
    writeFile(canned(QStringLiteral("go")), "");
}

void ToolBench::useRealTools(const QString &folder)
{
    // By links, because the tools' own folder may serve other tests at the same time.
    for (const char *tool : {"pagexport", "pagebinder"}) {
        const QString link = applicationPath() + QLatin1Char('/') + QString::fromLatin1(tool);
        QFile::remove(link);
        QVERIFY(QFile::link(folder + QLatin1Char('/') + QLatin1String(tool), link));
    }
}

void ToolBench::removeTool()
{
    QVERIFY(QFile::remove(applicationPath() + QStringLiteral("/pagexport")));
}

QStringList ToolBench::calls() const
{
    return quorlin::test::linesOf(applicationPath() + QStringLiteral("/calls.txt"));
}

EditorScene::EditorScene() : EditorScene(std::make_unique<Rules>()) {}

EditorScene::EditorScene(std::unique_ptr<Rules> made) : EditorView(*made), owned(std::move(made)) {}

void EditorScene::open()
{
    editor().setIniImage();
    editor().show();
    QVERIFY(QTest::qWaitForWindowExposed(&editor()));
}

void EditorScene::openWithFrames(int frames)
{
    open();
    QTRY_COMPARE(this->frames().size(), frames);
}

QList<QPushButton *> EditorView::frames() const
{
    QList<QPushButton *> found = picture()->findChildren<QPushButton *>(Qt::FindDirectChildrenOnly);
    found.removeAll(ruleButton());
    return found;
}

QList<QRect> EditorView::frameRects() const
{
    QList<QRect> rects;
    for (const QPushButton *frame : frames()) {
        rects.append(frame->geometry());
    }
    return rects;
}

QColor EditorView::pictureColour() const
{
    return picture()->pixmap().toImage().pixelColor(0, 0);
}

void EditorView::click(const char *name)
{
    QPushButton *target = button(name);
    QVERIFY2(target, name);
    QTest::mouseClick(target, Qt::LeftButton);
}

void EditorView::clickPicture(QPoint point)
{
    QCursor::setPos(picture()->mapToGlobal(point));
    QWidget *target = picture()->childAt(point);
    if (target == nullptr) {
        QTest::mouseClick(picture(), Qt::LeftButton, {}, point);
        return;
    }
    QTest::mouseClick(target, Qt::LeftButton, {}, target->mapFrom(picture(), point));
}

void EditorView::clickFrame(int index)
{
    const QRect frame = frameRects().at(index);
    clickPicture(frame.topLeft() + QPoint(frame.width() / 2, frame.height() / 2));
}

void EditorView::typeName(const QString &name)
{
    field("lineEdit_rule")->setFocus();
    field("lineEdit_rule")->clear();
    QTest::keyClicks(field("lineEdit_rule"), name);
}

QString ToolBench::setting(const QString &key)
{
    const QSettings settings(quorlin::settingsFileName(), QSettings::IniFormat);
    return settings.value(key, QStringLiteral("(absent)")).toString();
}

QByteArray ToolBench::settingsFile() const
{
    return quorlin::test::readFile(folders.settingsFile());
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
