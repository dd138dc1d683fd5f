#include "rules/preview_geometry.h"
#include "tests/support/room.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <vector>

using namespace quorlin;

class TestPreviewGeometry : public QObject
{
    Q_OBJECT

private slots:
    void enlargingMultipliesInSinglePrecision();
    void shrinkingMultipliesInDoublePrecisionAndRoundsEachStep();
    void zoomHasNoLimits();
    void pictureIsScaledToTruncatedSides_data();
    void pictureIsScaledToTruncatedSides();
    void frameLiesWhereTheItemLies_data();
    void frameLiesWhereTheItemLies();
    void frameProductsAreTakenInSinglePrecision();
    void aFrameOfOneEmOverLongerTextCoversItsStart();
    void pointBelongsToFrame_data();
    void pointBelongsToFrame();
    void laterOfOverlappingFramesWins();
    void noFrameContainsAPointOutside();
    void confirmingButtonStandsRightOfTheFrame();
    void confirmingButtonStaysInsideThePreview_data();
    void confirmingButtonStaysInsideThePreview();
    void scrollingKeepsAPlaceWhereItIs();
};

namespace {

Subtext place(qint32 left, qint32 top, qint32 width, qint32 height)
{
    return {left, top, width, height, QString()};
}

} // namespace

void TestPreviewGeometry::enlargingMultipliesInSinglePrecision()
{
    QCOMPARE(enlargedZoom(1.0F), 1.25F);
    QCOMPARE(enlargedZoom(enlargedZoom(1.0F)), 1.5625F);
    QVERIFY(enlargedZoom(0.8F) == 0.8F * 1.25F);
}

void TestPreviewGeometry::shrinkingMultipliesInDoublePrecisionAndRoundsEachStep()
{
    float zoom = 1.0F;
    for (int step = 0; step < 3; ++step) {
        const auto expected = static_cast<float>(static_cast<double>(zoom) * 0.8);
        zoom = shrunkZoom(zoom);
        QVERIFY(zoom == expected);
    }
    QVERIFY(std::abs(zoom - 0.512F) < 1e-6F);
}

void TestPreviewGeometry::zoomHasNoLimits()
{
    float large = 1.0F;
    float small = 1.0F;
    for (int step = 0; step < 100; ++step) {
        large = enlargedZoom(large);
        small = shrunkZoom(small);
    }
    QVERIFY(large > 1e9F);
    QVERIFY(small < 1e-9F && small > 0.0F);
}

void TestPreviewGeometry::pictureIsScaledToTruncatedSides_data()
{
    QTest::addColumn<float>("width");
    QTest::addColumn<float>("height");
    QTest::addColumn<float>("zoom");
    QTest::addColumn<QSize>("size");
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinite = std::numeric_limits<float>::infinity();
    QTest::newRow("zoom 1 keeps the size") << 893.F << 1263.F << 1.F << QSize(893, 1263);
    QTest::newRow("sides are truncated") << 893.F << 1263.F << 1.25F << QSize(1116, 1578);
    QTest::newRow("an unreadable picture has no size") << 0.F << 0.F << 1.F << QSize();
    QTest::newRow("nothing is left of a side") << 100.F << 1.F << 0.5F << QSize();
    QTest::newRow("one pixel is left") << 2.F << 2.F << 0.5F << QSize(1, 1);
    QTest::newRow("the longest side") << 32767.F << 1.F << 1.F << QSize(32767, 1);
    QTest::newRow("nothing is left of the width") << 1.F << 100.F << 0.5F << QSize();
    QTest::newRow("too high") << 1.F << 32768.F << 1.F << QSize();
    QTest::newRow("a side too long") << 32768.F << 1.F << 1.F << QSize();
    QTest::newRow("the largest area") << 16384.F << 16384.F << 1.F << QSize(16384, 16384);
    QTest::newRow("an area too large") << 16384.F << 16385.F << 1.F << QSize();
    QTest::newRow("endless zoom") << 893.F << 1263.F << infinite << QSize();
    QTest::newRow("no number") << 893.F << 1263.F << nan << QSize();
    QTest::newRow("zoom 0") << 893.F << 1263.F << 0.F << QSize();
}

void TestPreviewGeometry::pictureIsScaledToTruncatedSides()
{
    QFETCH(float, width);
    QFETCH(float, height);
    QFETCH(float, zoom);
    QFETCH(QSize, size);
    QCOMPARE(previewSize(width, height, zoom), size);
}

void TestPreviewGeometry::frameLiesWhereTheItemLies_data()
{
    QTest::addColumn<QPoint>("corner");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<float>("zoom");
    QTest::addColumn<QRect>("frame");
    const int most = std::numeric_limits<int>::max();
    QTest::newRow("zoom 1") << QPoint(72, 104) << QSize(210, 12) << 1.F << QRect(72, 104, 210, 12);
    QTest::newRow("zoom 1.25") << QPoint(72, 104) << QSize(210, 12) << 1.25F
                               << QRect(90, 130, 262, 15);
    QTest::newRow("zoom 0.8") << QPoint(72, 104) << QSize(210, 12) << 0.8F << QRect(57, 83, 168, 9);
    QTest::newRow("no item") << QPoint(0, 0) << QSize(0, 0) << 1.25F << QRect(0, 0, 0, 0);
    QTest::newRow("no width") << QPoint(5, 5) << QSize(0, 12) << 1.F << QRect(5, 5, 0, 12);
    QTest::newRow("numbers beyond every picture")
        << QPoint(most - 1, 7) << QSize(2, 12) << 1.F << QRect(16777215, 7, 2, 12);
    QTest::newRow("zoom beyond every picture")
        << QPoint(72, 0) << QSize(210, 12) << std::numeric_limits<float>::infinity()
        << QRect(16777215, 0, 16777215, 16777215);
}

void TestPreviewGeometry::frameLiesWhereTheItemLies()
{
    QFETCH(QPoint, corner);
    QFETCH(QSize, size);
    QFETCH(float, zoom);
    QFETCH(QRect, frame);
    const Subtext text = place(corner.x(), corner.y(), size.width(), size.height());
    QCOMPARE(itemFrame(text, zoom), frame);
}

void TestPreviewGeometry::frameProductsAreTakenInSinglePrecision()
{
    // In double precision 25 x 0.64f is a little less than 16.
    const float zoom = shrunkZoom(shrunkZoom(1.0F));
    QCOMPARE(itemFrame(place(25, 25, 25, 25), zoom), QRect(16, 16, 16, 16));
}

void TestPreviewGeometry::aFrameOfOneEmOverLongerTextCoversItsStart()
{
    const auto covers = [](qint32 width, qint32 height, const char *text) {
        return coversTheStartOnly({72, 72, width, height, QString::fromLatin1(text)});
    };
    QVERIFY(covers(18, 21, "Invoice 7"));
    QVERIFY(covers(21, 21, "INV"));
    QVERIFY(!covers(18, 21, "7"));
    QVERIFY(!covers(18, 21, "&lt;7")); // two letters
    QVERIFY(!covers(76, 21, "Invoice 7"));
}

void TestPreviewGeometry::pointBelongsToFrame_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<bool>("inside");
    QTest::newRow("left edge is in") << QPointF(90, 137) << true;
    QTest::newRow("left of it is out") << QPointF(89.5, 137) << false;
    QTest::newRow("last column is in") << QPointF(351, 137) << true;
    QTest::newRow("right edge is out") << QPointF(352, 137) << false;
    QTest::newRow("top edge is in") << QPointF(100, 130) << true;
    QTest::newRow("above it is out") << QPointF(100, 129) << false;
    QTest::newRow("bottom edge is in") << QPointF(100, 145) << true;
    QTest::newRow("below it is out") << QPointF(100, 145.5) << false;
}

void TestPreviewGeometry::pointBelongsToFrame()
{
    QFETCH(QPointF, point);
    QFETCH(bool, inside);
    const std::vector<QRect> frames{QRect(90, 130, 262, 15)};
    QCOMPARE(frameAt(frames, point).has_value(), inside);
}

void TestPreviewGeometry::laterOfOverlappingFramesWins()
{
    const std::vector<QRect> frames{QRect(0, 0, 100, 20), QRect(50, 0, 100, 20),
                                    QRect(300, 0, 100, 20)};
    QCOMPARE(frameAt(frames, QPointF(60, 10)).value_or(-1), 1);
    QCOMPARE(frameAt(frames, QPointF(10, 10)).value_or(-1), 0);
}

void TestPreviewGeometry::noFrameContainsAPointOutside()
{
    QVERIFY(!frameAt({}, QPointF(0, 0)));
    const std::vector<QRect> empty{QRect(0, 0, 0, 0)};
    QVERIFY(!frameAt(empty, QPointF(0, 0)));
}

void TestPreviewGeometry::confirmingButtonStandsRightOfTheFrame()
{
    const QSize preview(600, 400);
    QCOMPARE(confirmGeometry(QRect(90, 130, 262, 15), preview), QRect(352, 130, 141, 28));
    QCOMPARE(confirmGeometry(QRect(90, 130, 369, 15), preview), QRect(459, 130, 141, 28));
    QCOMPARE(confirmGeometry(QRect(), preview), QRect(0, 0, 141, 28));
}

void TestPreviewGeometry::confirmingButtonStaysInsideThePreview_data()
{
    QTest::addColumn<QRect>("frame");
    QTest::addColumn<QRect>("place");
    QTest::newRow("one pixel too far right: below, at the edge")
        << QRect(90, 130, 370, 15) << QRect(459, 145, 141, 28);
    QTest::newRow("at the right edge, in the lower corner: above")
        << QRect(500, 380, 90, 15) << QRect(459, 352, 141, 28);
    QTest::newRow("at the right edge of a page lower than item and button: at the top")
        << QRect(500, 10, 90, 385) << QRect(459, 0, 141, 28);
    QTest::newRow("at the lower edge: beside, as low as it goes")
        << QRect(10, 390, 90, 10) << QRect(100, 372, 141, 28);
    QTest::newRow("beyond the preview") << QRect(5000, 6000, 90, 10) << QRect(459, 372, 141, 28);
}

void TestPreviewGeometry::confirmingButtonStaysInsideThePreview()
{
    QFETCH(QRect, frame);
    QTEST(confirmGeometry(frame, QSize(600, 400)), "place");
}

void TestPreviewGeometry::scrollingKeepsAPlaceWhereItIs()
{
    QCOMPARE(scrollKeeping(400, 100, 1.0F), 300);
    QCOMPARE(scrollKeeping(400, 100, 1.25F), 400);
    QCOMPARE(scrollKeeping(400, 100, 0.8F), 220);
    QCOMPARE(scrollKeeping(40, 100, 1.0F), -60); // the scroll bar stops at 0
}

QUORLIN_TEST(TestPreviewGeometry)
#include "test_preview_geometry.moc"
