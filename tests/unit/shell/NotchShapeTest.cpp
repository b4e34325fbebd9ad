#include "shell/NotchShape.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace {
constexpr QRectF panel(0, 0, 600, 240);

/// The pixels that a painter without antialiasing would fill.
QRegion painted(const NotchShape& shape, const QRectF& rect, double scale, const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.scale(scale, scale);
    painter.fillPath(shape.path(rect), Qt::black);
    painter.end();
    QRegion region;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 127)
                region += QRect(x, y, 1, 1);
        }
    }
    return region;
}

int area(const QRegion& region)
{
    int sum = 0;
    for (const auto& rect : region)
        sum += rect.width() * rect.height();
    return sum;
}
} // namespace

TEST(NotchShapeTest, TheOutlineTouchesAllFourEdges)
{
    EXPECT_EQ((NotchShape{7, 22}.path(panel).boundingRect()), panel);
    EXPECT_EQ((NotchShape{7, 22}.path(QRectF(10, 20, 200, 40)).boundingRect()), QRectF(10, 20, 200, 40));
}

TEST(NotchShapeTest, TheOutlineStartsBelowTheTopLeftCornerAndRunsClockwise)
{
    const auto path = NotchShape{7, 22}.path(panel);
    EXPECT_EQ(path.elementAt(0), QPointF(0, 7));
    // Along an arc to the top edge, then a line to its right end.
    EXPECT_NEAR(path.elementAt(3).x, 7, 1e-9);
    EXPECT_NEAR(path.elementAt(3).y, 0, 1e-9);
    EXPECT_TRUE(path.elementAt(4).isLineTo());
    EXPECT_NEAR(path.elementAt(4).x, 593, 1e-9);
}

TEST(NotchShapeTest, AllFourCornersAreConvex)
{
    const auto path = NotchShape{7, 22}.path(panel);
    for (const auto& outside : {QPointF(1, 1), QPointF(599, 1), QPointF(4, 236), QPointF(596, 236)})
        EXPECT_FALSE(path.contains(outside)) << outside.x() << "," << outside.y();
    for (const auto& inside : {QPointF(3, 3), QPointF(597, 3), QPointF(8, 232), QPointF(592, 232)})
        EXPECT_TRUE(path.contains(inside)) << inside.x() << "," << inside.y();
}

TEST(NotchShapeTest, ARadiusOfZeroMakesItsCornersSquare)
{
    const auto squareTop = NotchShape{0, 22}.path(panel);
    EXPECT_TRUE(squareTop.contains(QPointF(0.1, 0.1)));
    EXPECT_TRUE(squareTop.contains(QPointF(599.9, 0.1)));
    EXPECT_FALSE(squareTop.contains(QPointF(1, 239)));
    const auto squareBottom = NotchShape{7, 0}.path(panel);
    EXPECT_TRUE(squareBottom.contains(QPointF(0.1, 239.9)));
    EXPECT_TRUE(squareBottom.contains(QPointF(599.9, 239.9)));
    EXPECT_FALSE(squareBottom.contains(QPointF(0.5, 0.5)));
    EXPECT_EQ((NotchShape{0, 0}.pixels(panel, 1)), QRegion(0, 0, 600, 240));
}

TEST(NotchShapeTest, ThePixelsAreThoseThatAPainterFills)
{
    struct Case
    {
        QRectF rect;
        double scale;
    };
    for (const auto& [rect, scale] :
         {Case{panel, 1}, Case{panel, 2}, Case{panel, 1.5}, Case{QRectF(200, 0, 200, 24), 1},
          Case{QRectF(200, 0, 200, 24), 2}, Case{QRectF(117.5, 0, 365, 131.5), 1.25},
          Case{QRectF(0, 0, 60, 15), 1}}) {
        const NotchShape shape{7, 22};
        const QSize size = (QSizeF(600, 240) * scale).toSize();
        const auto region = shape.pixels(rect, scale);
        const auto expected = painted(shape, rect, scale, size);
        // The painter's arcs are Bézier curves and its sampling is its own: single pixels on the edge differ.
        EXPECT_LE(area(region ^ expected), 2 * 8 * scale)
            << rect.width() << "x" << rect.height() << " at " << scale;
        EXPECT_FALSE(region.isEmpty());
    }
}

TEST(NotchShapeTest, NothingIsDrawnInAnEmptyRectangle)
{
    EXPECT_TRUE((NotchShape{7, 22}.pixels(QRectF(300, 0, 0, 0), 1).isEmpty()));
}
