#include "tests/support/room.h"
#include "tests/tools/pagexport/export_run.h"
#include "tools/pagexport/picture/palette.h"
#include "tools/pagexport/picture/png_writer.h"

#include <QFileInfo>
#include <QImage>
#include <QRandomGenerator>
#include <QTest>

#include <cmath>

using namespace quorlin::test;

namespace {

QImage packedAndRead(const QImage &picture)
{
    QByteArray samples;
    for (int y = 0; y < picture.height(); ++y) {
        samples.append(reinterpret_cast<const char *>(picture.constScanLine(y)),
                       3 * picture.width());
    }
    const std::string png =
        tools::encodePng({reinterpret_cast<const unsigned char *>(samples.constData()),
                          picture.width(), picture.height()});
    return QImage::fromData(reinterpret_cast<const uchar *>(png.data()),
                            static_cast<int>(png.size()), "PNG")
        .convertToFormat(QImage::Format_RGB888);
}

QImage noise(int width, int height, int colors)
{
    QImage picture(width, height, QImage::Format_RGB888);
    QRandomGenerator random(4711);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const int color = random.bounded(colors);
            picture.setPixelColor(x, y, QColor(color & 255, (color >> 8) & 255, 255 - (color & 7)));
        }
    }
    return picture;
}

bool isInk(const QImage &picture, int x, int y)
{
    return picture.valid(x, y) && qGray(picture.pixel(x, y)) < 128;
}

} // namespace

/// The page picture: a right PNG file, of the right size, with the frames on the text.
class TestPagePicture : public QObject
{
    Q_OBJECT

private slots:
    void everyPictureComesBackUnchanged_data();
    void everyPictureComesBackUnchanged();
    void aPaletteHas256ColoursAtMost();
    void pictureHasOnePixelPerUnit_data();
    void pictureHasOnePixelPerUnit();
    void everyPageHasAPicture_data();
    void everyPageHasAPicture();
    void framesLieOnTheInkOfAPageTooLarge();
    void framesLieOnTheInk_data();
    void framesLieOnTheInk();
    void turnedTextLiesInItsFrame();
    void pageGroupChangesNothing();
    void blendModesAreKept();
};

void TestPagePicture::everyPictureComesBackUnchanged_data()
{
    QTest::addColumn<QImage>("picture");
    const auto filled = [](int width, int height, QColor color) {
        QImage picture(width, height, QImage::Format_RGB888);
        picture.fill(color);
        return picture;
    };
    QTest::newRow("one white pixel") << filled(1, 1, Qt::white);
    QTest::newRow("one black pixel") << filled(1, 1, Qt::black);
    QTest::newRow("paper") << filled(893, 1263, Qt::white);
    QTest::newRow("one colour") << filled(300, 200, QColor(1, 2, 3));
    QTest::newRow("narrow") << noise(1, 700, 200);
    QTest::newRow("flat") << noise(700, 1, 200);
    QTest::newRow("two pixels wide") << noise(2, 50, 5000);
    QTest::newRow("few colours") << noise(333, 77, 3);
    QTest::newRow("just a palette") << noise(301, 303, 255);
    QTest::newRow("many colours") << noise(257, 259, 60000);
    QTest::newRow("rows beyond the window") << noise(12000, 5, 60000);
    QImage drawn = filled(640, 480, Qt::white);
    for (int i = 0; i < 200; ++i) { // lines, runs and repeated rows of every length
        for (int y = i; y < std::min(480, 2 * i); ++y) {
            for (int x = 3 * i; x < std::min(640, 3 * i + i % 40); ++x) {
                drawn.setPixelColor(x, y, QColor(i, 255 - i, i / 2));
            }
        }
    }
    QTest::newRow("drawing") << drawn;
}

void TestPagePicture::everyPictureComesBackUnchanged()
{
    QFETCH(QImage, picture);
    QCOMPARE(packedAndRead(picture), picture);
}

void TestPagePicture::aPaletteHas256ColoursAtMost()
{
    // White, and colours that differ in green.
    std::vector<unsigned char> samples(3, 255);
    for (int green = 0; green < 256; ++green) {
        samples.insert(samples.end(), {7, static_cast<unsigned char>(green), 7});
    }
    QVERIFY(tools::paletteRows({samples.data(), 256, 1}).has_value());
    QVERIFY(!tools::paletteRows({samples.data(), 257, 1}).has_value());
}

void TestPagePicture::pictureHasOnePixelPerUnit_data()
{
    QTest::addColumn<QByteArray>("box");
    QTest::addColumn<QByteArray>("entries");
    QTest::addColumn<QSize>("size");
    QTest::newRow("A4") << QByteArray("[0 0 595 842]") << QByteArray() << QSize(893, 1263);
    QTest::newRow("letter") << QByteArray("[0 0 612 792]") << QByteArray() << QSize(918, 1188);
    QTest::newRow("turned") << QByteArray("[0 0 595 842]") << QByteArray("/Rotate 90")
                            << QSize(1263, 893);
    QTest::newRow("cropped") << QByteArray("[0 0 595 842]")
                             << QByteArray("/CropBox[100 100 300 200]") << QSize(300, 150);
    QTest::newRow("user unit") << QByteArray("[0 0 100 200]") << QByteArray("/UserUnit 2")
                               << QSize(300, 600);
}

void TestPagePicture::pictureHasOnePixelPerUnit()
{
    QFETCH(QByteArray, box);
    QFETCH(QByteArray, entries);
    PdfBuilder pdf;
    PdfBuilder::Page page;
    page.mediaBox = box.toStdString();
    page.entries = entries.toStdString();
    pdf.addPage("BT /F1 12 Tf 20 20 Td (x) Tj ET", page);
    ExportRun run;
    QCOMPARE(run.run(pdf, {"-f", "1", "-l", "1"}), 0);
    const QImage picture(run.path("page_pg_0001.png"));
    QTEST(picture.size(), "size");
}

void TestPagePicture::everyPageHasAPicture_data()
{
    QTest::addColumn<QByteArray>("boxes");
    QTest::addColumn<QSize>("size");
    const QSize letter(918, 1188);
    QTest::newRow("no media box") << QByteArray() << letter;
    QTest::newRow("null media box") << QByteArray("/MediaBox null") << letter;
    QTest::newRow("empty media box") << QByteArray("/MediaBox[0 0 0 0]") << letter;
    QTest::newRow("three numbers") << QByteArray("/MediaBox[0 0 612]") << letter;
    QTest::newRow("no numbers") << QByteArray("/MediaBox[/a/b/c/d]") << letter;
    QTest::newRow("reversed") << QByteArray("/MediaBox[612 792 0 0]") << letter;
    QTest::newRow("crop box reversed")
        << QByteArray("/MediaBox[0 0 612 792]/CropBox[500 500 50 50]") << QSize(675, 675);
    QTest::newRow("crop box empty")
        << QByteArray("/MediaBox[0 0 612 792]/CropBox[0 0 0 0]") << letter;
    QTest::newRow("crop box larger")
        << QByteArray("/MediaBox[0 0 612 792]/CropBox[-100 -100 5000 5000]") << letter;
    QTest::newRow("crop box elsewhere")
        << QByteArray("/MediaBox[0 0 612 792]/CropBox[1000 1000 1100 1100]") << letter;
    QTest::newRow("tiny") << QByteArray("/MediaBox[0 0 .5 .5]") << QSize(2, 2);
    QTest::newRow("tiny crop box")
        << QByteArray("/MediaBox[0 0 612 792]/CropBox[9 9 9.1 9.1]") << QSize(2, 2);
    QTest::newRow("user unit of nothing")
        << QByteArray("/MediaBox[0 0 612 792]/UserUnit 0") << letter;
    QTest::newRow("negative user unit")
        << QByteArray("/MediaBox[0 0 612 792]/UserUnit -3") << letter;
    QTest::newRow("large user unit")
        << QByteArray("/MediaBox[0 0 500 500]/UserUnit 1000") << QSize(5477, 5477);
    QTest::newRow("larger than any paper")
        << QByteArray("/MediaBox[0 0 1000000 1000000]") << QSize(5477, 5477);
    QTest::newRow("beyond all numbers")
        << QByteArray("/MediaBox[-99999999999 -99999999999 99999999999 99999999999]")
        << QSize(5477, 5477);
    QTest::newRow("a long strip") << QByteArray("/MediaBox[0 0 100 100000]") << QSize(30, 30000);
}

void TestPagePicture::everyPageHasAPicture()
{
    QFETCH(QByteArray, boxes);
    PdfBuilder pdf;
    const int content = pdf.addStream({}, "BT /F1 12 Tf 20 20 Td (x) Tj ET");
    const int page = pdf.add("<</Type/Page/Parent 2 0 R/Resources<</Font<</F1 3 0 R>>>>/Contents " +
                             std::to_string(content) + " 0 R" + boxes.toStdString() + ">>");
    pdf.setPageTree("<</Type/Pages/Count 1/Kids[" + std::to_string(page) + " 0 R]>>");
    ExportRun run;
    QCOMPARE(run.run(pdf, {"-f", "1", "-l", "1"}), 0);
    const QImage picture(run.path("page_pg_0001.png"));
    QTEST(picture.size(), "size");
}

void TestPagePicture::framesLieOnTheInkOfAPageTooLarge()
{
    PdfBuilder pdf;
    PdfBuilder::Page page;
    page.mediaBox = "[0 0 20000 20000]";
    pdf.addPage("BT /F1 400 Tf 2000 17000 Td (HHHHHHHH) Tj ET", page);
    ExportRun run;
    QCOMPARE(run.run(pdf, {"-f", "1", "-l", "1"}), 0);
    const QImage picture(run.path("page_pg_0001.png"));
    QCOMPARE(run.items().size(), 1);
    const ItemLine item = run.items()[0];
    QCOMPARE(item.text, "HHHHHHHH");
    int ink = 0;
    for (int y = item.top; y < item.top + item.height; ++y) {
        for (int x = item.left; x < item.left + item.width; ++x) {
            ink += isInk(picture, x, y) ? 1 : 0;
        }
    }
    QVERIFY(ink > item.width * item.height / 10);
}

void TestPagePicture::framesLieOnTheInk_data()
{
    QTest::addColumn<QString>("file");
    for (const char *file :
         {"cairo_accent", "chromium_first", "fop_accent",       "groff_slash", "gs_dash",
          "landscape",    "lo_mailmerge",   "lo_tagged_accent", "mupdf_label", "pdftocairo_re",
          "qt_accent",    "rl_crop",        "rl_numeric",       "rl_rotated",  "rl_userunit",
          "rl_flip",      "tex_dash",       "weasy_cjk",        "wkhtml_iban", "xetex_cjk"}) {
        QTest::newRow(file) << QStringLiteral(QUORLIN_CORPUS_DIR "/batch/") + file + ".pdf";
    }
}

// The ink of every item lies in its frame, and fills it from one side to the other: a frame that is
// shifted or scaled by more than a few pixels misses ink or reaches into empty paper.
void TestPagePicture::framesLieOnTheInk()
{
    QFETCH(QString, file);
    if (!QFileInfo::exists(file)) {
        QSKIP("the files with known contents are not here");
    }
    for (const char *page : {"1", "2", "3", "4"}) {
        ExportRun run;
        QCOMPARE(run.run(file, {"-f", page, "-l", page}), 0);
        const QImage picture(run.path("page_pg_0001.png"));
        QVERIFY(!run.items().isEmpty());
        for (const ItemLine &item : run.items()) {
            int first = picture.width();
            int last = -1;
            int highest = picture.height();
            int lowest = -1;
            for (int y = item.top - 2; y < item.top + item.height + 2; ++y) {
                for (int x = item.left - 3; x < item.left + item.width + 3; ++x) {
                    if (isInk(picture, x, y)) {
                        first = std::min(first, x);
                        last = std::max(last, x);
                        highest = std::min(highest, y);
                        lowest = std::max(lowest, y);
                    }
                }
            }
            const QByteArray where = item.text.toUtf8() + " on page " + page;
            QVERIFY2(last >= 0, where.constData());
            const double size = item.height / 1.15;
            QVERIFY2(first >= item.left - 2 && first <= item.left + 0.35 * size, where.constData());
            QVERIFY2(last <= item.left + item.width + 2 &&
                         last >= item.left + item.width - 0.6 * size,
                     where.constData());
            // The middle of the line, between baseline and x-height, is never empty.
            QVERIFY2(highest <= item.top + 0.62 * size && lowest >= item.top + 0.6 * size,
                     where.constData());
        }
    }
}

void TestPagePicture::turnedTextLiesInItsFrame()
{
    PdfBuilder pdf;
    pdf.addPage("BT /F1 20 Tf 0 1 -1 0 100 300 Tm (HHHH) Tj ET "
                "BT /F1 20 Tf 0 -1 1 0 300 300 Tm (HHHH) Tj ET "
                "BT /F1 20 Tf -1 0 0 -1 500 500 Tm (HHHH) Tj ET");
    ExportRun run;
    QCOMPARE(run.run(pdf, {"-f", "1", "-l", "1"}), 0);
    const QImage picture(run.path("page_pg_0001.png"));
    QCOMPARE(run.items().size(), 3);
    for (const ItemLine &item : run.items()) {
        int ink = 0;
        for (int y = item.top; y < item.top + item.height; ++y) {
            for (int x = item.left; x < item.left + item.width; ++x) {
                ink += isInk(picture, x, y) ? 1 : 0;
            }
        }
        QVERIFY(ink > item.width * item.height / 10);
    }
}

void TestPagePicture::pageGroupChangesNothing()
{
    const std::string content =
        "/G gs .2 .4 .6 rg 50 50 200 200 re f 1 0 0 rg 150 150 200 200 re f "
        "BT /F1 40 Tf 60 400 Td 0 g (Overlapping) Tj ET";
    QList<QImage> pictures;
    for (const char *group : {"", "/Group<</Type/Group/S/Transparency/I true/CS/DeviceRGB>>"}) {
        PdfBuilder pdf;
        PdfBuilder::Page page;
        page.entries = group;
        page.resources = "/ExtGState<</G<</ca .5/BM/Normal>>>>";
        pdf.addPage(content, page);
        ExportRun run;
        QCOMPARE(run.run(pdf, {"-f", "1", "-l", "1"}), 0);
        pictures.append(QImage(run.path("page_pg_0001.png")));
    }
    QVERIFY(!pictures[0].isNull());
    QCOMPARE(pictures[1], pictures[0]);
}

void TestPagePicture::blendModesAreKept()
{
    PdfBuilder pdf;
    PdfBuilder::Page page;
    page.entries = "/Group<</Type/Group/S/Transparency/I true/CS/DeviceRGB>>";
    page.resources = "/ExtGState<</G<</BM/Multiply>>>>";
    pdf.addPage("0 1 1 rg 0 0 100 100 re f /G gs 1 1 0 rg 0 0 100 100 re f", page);
    ExportRun run;
    QCOMPARE(run.run(pdf, {"-f", "1", "-l", "1"}), 0);
    const QImage picture(run.path("page_pg_0001.png"));
    QCOMPARE(picture.pixelColor(20, picture.height() - 20), QColor(0, 255, 0));
}

QUORLIN_TEST(TestPagePicture)
#include "test_page_picture.moc"
