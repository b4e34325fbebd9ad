#include "clipboard/panel/ClipboardPanelGeometry.h"

#include <gtest/gtest.h>

using namespace ClipboardPanelGeometry;

namespace {
Screen screenAt(const ScreenRect& frame, double safeAreaTop = 0)
{
    return {QStringLiteral("any"), frame, safeAreaTop, {}, {}};
}

const auto only = screenAt({0, 0, 1280, 800});
} // namespace

TEST(ClipboardPanelGeometryTest, TheHeightIsThatOfTheListAndWhatStandsAroundIt)
{
    EXPECT_EQ(height(true, false), 500);
    EXPECT_EQ(height(false, false), 420);
    EXPECT_EQ(height(true, true), 534);
    EXPECT_EQ(height(false, true), 454);
}

TEST(ClipboardPanelGeometryTest, WithoutAnAnchorItHangsInTheMiddleBelowTheHousing)
{
    EXPECT_EQ(frame(only, {}, 500), (ScreenRect{450, 300, 380, 500}));
    EXPECT_EQ(frame(screenAt({100, 50, 1512, 982}, 32), {}, 500), (ScreenRect{666, 500, 380, 500}));
}

TEST(ClipboardPanelGeometryTest, WithAnAnchorItHangsBelowThatWithTheSameRightEdge)
{
    EXPECT_EQ(frame(only, ScreenRect{1000, 776, 24, 24}, 500), (ScreenRect{644, 270, 380, 500}));
}

TEST(ClipboardPanelGeometryTest, AnAnchorNearASideOfTheScreenKeepsItEightPointsInside)
{
    EXPECT_EQ(frame(only, ScreenRect{100, 776, 24, 24}, 500).x, 8);
    EXPECT_EQ(frame(only, ScreenRect{1256, 776, 24, 24}, 500).x, 1280 - 388);
    EXPECT_EQ(frame(screenAt({1280, 0, 1280, 800}), ScreenRect{1300, 776, 24, 24}, 500).x, 1288);
}

TEST(ClipboardPanelGeometryTest, OnAScreenThatIsTooNarrowTheRightEdgeDecides)
{
    EXPECT_EQ(frame(screenAt({0, 0, 300, 800}), ScreenRect{100, 776, 24, 24}, 500).x, 300 - 388);
}

TEST(ClipboardPanelGeometryTest, OverABarAtTheBottomItStandsAboveTheAnchor)
{
    EXPECT_EQ(frame(only, ScreenRect{1000, 0, 24, 24}, 500), (ScreenRect{644, 30, 380, 500}));
}

TEST(ClipboardPanelGeometryTest, WhereItFitsNeitherBelowNorAboveTheAnchorItStaysOnTheScreen)
{
    const auto second = screenAt({1280, 100, 1280, 600});
    EXPECT_EQ(frame(second, ScreenRect{2000, 400, 24, 24}, 500).y, 100);
    EXPECT_EQ(frame(second, ScreenRect{2000, 190, 24, 24}, 500).y, 100);
    EXPECT_EQ(frame(second, ScreenRect{2000, 170, 24, 24}, 500).y, 200) << "above, since it just fits there";
}

TEST(ClipboardPanelGeometryTest, OnALowScreenItIsAsHighAsThat)
{
    const auto low = screenAt({0, 0, 1280, 480});
    EXPECT_EQ(frame(low, ScreenRect{1000, 0, 24, 24}, 500), (ScreenRect{644, 0, 380, 480}));
    EXPECT_EQ(frame(low, ScreenRect{1000, 456, 24, 24}, 500), (ScreenRect{644, 0, 380, 480}));
    EXPECT_EQ(frame(low, {}, 500), (ScreenRect{450, 0, 380, 480}));
    EXPECT_EQ(frame(screenAt({0, 0, 1280, 480}, 32), {}, 500), (ScreenRect{450, 0, 380, 448}));
}

TEST(ClipboardPanelGeometryTest, TheAnchorsScreenIsTheOneThatHoldsItsMiddle)
{
    const auto left = screenAt({0, 0, 1280, 800});
    const auto right = screenAt({1280, 0, 1920, 1080});
    const QList<Screen> both{left, right};
    EXPECT_EQ(screen(both, left, ScreenRect{2000, 1056, 24, 24}), right);
    EXPECT_EQ(screen(both, right, ScreenRect{1270, 776, 18, 24}), left);
    EXPECT_EQ(screen(both, right, {}), right);
    EXPECT_EQ(screen(both, left, ScreenRect{9000, 776, 24, 24}), left);
}

TEST(ClipboardPanelGeometryTest, AnAnchorThatIsNotOnTheScreenIsNone)
{
    const auto without = frame(only, {}, 500);
    // Where an icon was on a display that was higher, on one to the left, and on one below.
    EXPECT_EQ(frame(only, ScreenRect{1000, 1056, 24, 24}, 500), without);
    EXPECT_EQ(frame(only, ScreenRect{-500, 776, 24, 24}, 500), without);
    EXPECT_EQ(frame(only, ScreenRect{1000, -300, 24, 24}, 500), without);
}

TEST(ClipboardPanelGeometryTest, WhereverTheAnchorIsThePanelIsOnTheScreen)
{
    for (double x = -2000; x <= 4000; x += 100) {
        for (double y = -2000; y <= 4000; y += 37) {
            const auto panel = frame(only, ScreenRect{x, y, 24, 24}, 500);
            EXPECT_TRUE(panel.minX() >= 8 && panel.maxX() <= 1280 - 8 && panel.minY() >= 0 &&
                        panel.maxY() <= 800)
                << "for an anchor at " << x << ", " << y;
        }
    }
}
