#include "platform/linux/tray/TrayIcon.h"

#include <QPainter>

#include <gtest/gtest.h>

namespace {
/// The left half is drawn, the right half is empty.
QImage halfDrawn()
{
    QImage shape(64, 64, QImage::Format_ARGB32_Premultiplied);
    shape.fill(Qt::transparent);
    QPainter(&shape).fillRect(0, 0, 32, 64, Qt::black);
    return shape;
}
} // namespace

TEST(TrayIconTest, TheShapeIsWhiteWhateverItsColour)
{
    const auto image = TrayIcon::onAnyBar(halfDrawn(), 22);
    EXPECT_EQ(image.size(), QSize(22, 22));
    EXPECT_EQ(image.pixelColor(5, 11), QColor(Qt::white));
}

TEST(TrayIconTest, TheRestIsClearButForADarkEdge)
{
    const auto image = TrayIcon::onAnyBar(halfDrawn(), 22);
    EXPECT_EQ(image.pixelColor(18, 11).alpha(), 0);
    const auto edge = image.pixelColor(0, 11);
    EXPECT_GT(edge.alpha(), 0);
    EXPECT_LT(edge.alpha(), 255);
    EXPECT_EQ(edge.red(), 0);
}

TEST(TrayIconTest, TheEdgeGrowsWithTheIcon)
{
    const auto image = TrayIcon::onAnyBar(halfDrawn(), 44);
    EXPECT_EQ(image.pixelColor(1, 22).red(), 0);
    EXPECT_EQ(image.pixelColor(4, 22), QColor(Qt::white));
}
