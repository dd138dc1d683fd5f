#include "editor_scene.h"

#include "analysis/line_parser.h"
#include "tests/support/programs.h"
#include "tests/support/room.h"

#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

const QString corpus = QStringLiteral(QUORLIN_CORPUS_DIR);

/// Ink of a picture: pixels that differ clearly from its empty margin.
class Ink
{
public:
    explicit Ink(const QImage &picture)
        : image(picture.convertToFormat(QImage::Format_RGB32)), paper(image.pixel(2, 2))
    {
    }

    bool at(int x, int y) const
    {
        const QRgb pixel = image.pixel(x, y);
        return std::max({std::abs(qRed(pixel) - qRed(paper)),
                         std::abs(qGreen(pixel) - qGreen(paper)),
                         std::abs(qBlue(pixel) - qBlue(paper))}) > 80;
    }
    /// Smallest rectangle around the ink inside @p area.
    QRect bounds(const QRect &area) const
    {
        QRect found;
        const QRect inside = area & image.rect();
        for (int y = inside.top(); y <= inside.bottom(); ++y) {
            for (int x = inside.left(); x <= inside.right(); ++x) {
                if (at(x, y)) {
                    found |= QRect(x, y, 1, 1);
                }
            }
        }
        return found;
    }

private:
    QImage image;
    QRgb paper;
};

/// How far the ink stands inside the frame at each edge; negative where it sticks out.
struct Margins
{
    int left, right, top, bottom;
};

/// Margins of the text framed by @p frame; the ink is searched a little beyond the frame, in a
/// cross that keeps clear of the corners.
std::optional<Margins> margins(const Ink &ink, const QRect &frame, int beyond)
{
    const QRect across = ink.bounds(frame.adjusted(-beyond, 0, beyond, 0));
    const QRect down = ink.bounds(frame.adjusted(0, -beyond, 0, beyond));
    if (across.isEmpty() || down.isEmpty()) {
        return std::nullopt;
    }
    return Margins{across.left() - frame.left(), frame.right() - across.right(),
                   down.top() - frame.top(), frame.bottom() - down.bottom()};
}

QStringList itemTexts(const QString &pageFile)
{
    QFile file(pageFile);
    QStringList texts;
    if (file.open(QIODevice::ReadOnly)) {
        const auto lines = quorlin::pageFileLines(QString::fromUtf8(file.readAll()));
        for (const QString &line : lines) {
            texts.append(quorlin::itemText(line));
        }
    }
    return texts;
}

QJsonObject expectation(const QString &name)
{
    QFile file(corpus + QStringLiteral("/expected.json"));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QJsonObject files = QJsonDocument::fromJson(file.readAll()).object()["files"].toObject();
    return files[QStringLiteral("batch/") + name].toObject();
}

} // namespace

/// Frames lie on the text they stand for: measured against the ink of the picture, for documents
/// of many producers, for turned, cropped, wide and enlarged pages, at several zooms.
class TestFramesOnInk : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void pictureStartsAtTheOriginOfTheFrames();
    void framesLieOnTheirText_data();
    void framesLieOnTheirText();
    void fieldLiesWhereItWasPlaced_data();
    void fieldLiesWhereItWasPlaced();

private:
    static void documents();
    static void open(EditorScene &scene, const QString &name, int page);
    static int checkFrames(EditorScene &scene, double zoom);
    static void checkFrame(const Margins &found, const QRect &frame, double zoom,
                           const QString &text);
};

void TestFramesOnInk::initTestCase()
{
    if (!QFileInfo::exists(corpus + QStringLiteral("/batch"))) {
        QSKIP("The corpus is absent");
    }
}

void TestFramesOnInk::documents()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("page");
    const QStringList producers{"cairo_accent.pdf", "chromium_special.pdf", "fop_special.pdf",
                                "groff_slash.pdf",  "gs_dash.pdf",          "mupdf_label.pdf",
                                "qt_accent.pdf",    "rl_numeric.pdf",       "tex_liga.pdf",
                                "weasy_cjk.pdf",    "wkhtml_iban.pdf",      "xetex_cjk.pdf"};
    for (const QString &name : producers) {
        QTest::newRow(qPrintable(name)) << name << 1;
    }
    QTest::newRow("landscape") << "landscape.pdf" << 1;
    QTest::newRow("turned by 90 degrees") << "rl_rotated.pdf" << 1;
    QTest::newRow("upright among turned pages") << "rl_rotated.pdf" << 2;
    QTest::newRow("turned by 270 degrees") << "rl_rotated.pdf" << 3;
    QTest::newRow("turned by 180 degrees") << "rl_rotated.pdf" << 4;
    QTest::newRow("cropped") << "rl_crop.pdf" << 1;
    QTest::newRow("cropped, another origin") << "rl_crop.pdf" << 3;
    QTest::newRow("drawn upside down") << "rl_flip.pdf" << 1;
    QTest::newRow("user unit of 1.5") << "rl_userunit.pdf" << 1;
}

void TestFramesOnInk::open(EditorScene &scene, const QString &name, int page)
{
    scene.useRealTools(quorlin::test::startedPrograms());
    scene.storeSample(corpus + QStringLiteral("/batch/") + name, QString::number(page));
    scene.open();
    if (page > 1) {
        scene.pageBox()->setValue(page);
    }
    QTRY_VERIFY(scene.frames().size() > 5);
}

void TestFramesOnInk::checkFrame(const Margins &found, const QRect &frame, double zoom,
                                 const QString &text)
{
    // Room that letters leave inside their frame: the first letter's side bearing, the ascent above
    // the tallest letters, the descent below letters without one. At zoom 1.0 it is known to the
    // pixel, so that a frame two pixels off in any direction is found.
    const bool exact = zoom == 1.0;
    const int slack = exact ? 1 : 2;
    const int bearing = exact ? 4 : int(std::ceil(3 * zoom)) + slack;
    const int above = exact ? 1 : -slack;
    const int room = frame.height() / 4 + slack;
    const QString told = QStringLiteral("\"%1\" at zoom %2: %3 %4 %5 %6")
                             .arg(text)
                             .arg(zoom)
                             .arg(found.left)
                             .arg(found.right)
                             .arg(found.top)
                             .arg(found.bottom);
    QVERIFY2(found.left >= -slack && found.left <= bearing, qPrintable(told));
    QVERIFY2(found.right >= -slack && found.right <= bearing, qPrintable(told));
    QVERIFY2(found.top >= above && found.top <= room, qPrintable(told));
    QVERIFY2(found.bottom >= -slack && found.bottom <= room, qPrintable(told));
}

int TestFramesOnInk::checkFrames(EditorScene &scene, double zoom)
{
    const Ink ink(scene.picture()->pixmap().toImage());
    const QList<QRect> frames = scene.frameRects();
    const QStringList texts = itemTexts(scene.scratchPath() + QStringLiteral("/text_pg_0001.htm"));
    // When shrunk, the line above comes as near as four pixels.
    const int beyond = zoom < 1.0 ? 2 : 4;
    int checked = 0;
    for (int i = 0; i < frames.size() && i < texts.size(); ++i) {
        const QRect frame = frames.at(i);
        if (frame.isEmpty() || texts.at(i).trimmed().isEmpty()) {
            continue;
        }
        const QRect around = frame.adjusted(-beyond - 2, -beyond - 2, beyond + 2, beyond + 2);
        const auto meets = [&](const QRect &other) { return other.intersects(around); };
        if (std::count_if(frames.begin(), frames.end(), meets) > 1) {
            continue;
        }
        const auto found = margins(ink, frame, beyond);
        if (!found) {
            QTest::qFail(qPrintable("no ink under \"" + texts.at(i) + '"'), __FILE__, __LINE__);
            continue;
        }
        checkFrame(*found, frame, zoom, texts.at(i));
        ++checked;
    }
    return checked;
}

void TestFramesOnInk::pictureStartsAtTheOriginOfTheFrames()
{
    EditorScene scene;
    open(scene, "landscape.pdf", 1);
    for (QPushButton *frame : scene.frames()) {
        frame->hide();
    }
    const QImage picture = scene.picture()->pixmap().toImage();
    const QImage shown = scene.picture()->grab(picture.rect()).toImage();
    QCOMPARE(shown.convertToFormat(picture.format()), picture);
}

void TestFramesOnInk::framesLieOnTheirText_data()
{
    documents();
}

void TestFramesOnInk::framesLieOnTheirText()
{
    QFETCH(QString, name);
    QFETCH(int, page);
    EditorScene scene;
    open(scene, name, page);
    if (QTest::currentTestFailed()) {
        return;
    }
    const int frames = int(scene.frames().size());
    QVERIFY(checkFrames(scene, 1.0) >= 5);
    const QList<std::pair<const char *, double>> steps{
        {"pushButton_zoomout", 1.25}, {"pushButton_zoomout", 1.5625}, {"pushButton_zoomin", 1.25},
        {"pushButton_zoomin", 1.0},   {"pushButton_zoomin", 0.8},     {"pushButton_zoomin", 0.64}};
    for (const auto &[button, zoom] : steps) {
        scene.click(button);
        QTRY_COMPARE(scene.frames().size(), frames);
        QVERIFY(checkFrames(scene, zoom) >= 5);
        if (QTest::currentTestFailed()) {
            return;
        }
    }
}

void TestFramesOnInk::fieldLiesWhereItWasPlaced_data()
{
    documents();
}

void TestFramesOnInk::fieldLiesWhereItWasPlaced()
{
    QFETCH(QString, name);
    QFETCH(int, page);
    const QJsonObject expected = expectation(name);
    QVERIFY(!expected["accounts"].toArray().at(page - 1).toString().isEmpty());
    EditorScene scene;
    open(scene, name, page);
    const QJsonObject field = expected["field"].toObject();
    const double left = field["left_pt"].toDouble() * 1.5;
    const double baseline = field["baseline_pt"].toDouble() * 1.5;
    const QList<QRect> frames = scene.frameRects();
    const auto placed = [&](const QRect &frame) {
        return std::abs(frame.x() - left) <= 1 && frame.y() + frame.height() / 2.0 < baseline &&
               baseline <= frame.y() + frame.height();
    };
    QCOMPARE(std::count_if(frames.begin(), frames.end(), placed), 1);
}

QUORLIN_TEST(TestFramesOnInk)
#include "test_frames_on_ink.moc"
