#include "clipboard/previews/QuickLookGeometry.h"

#include <gtest/gtest.h>

namespace {
constexpr ScreenRect screen{100, 50, 1280, 800};
} // namespace

TEST(QuickLookGeometry, ASmallPictureIsNotMadeLarger)
{
    EXPECT_EQ(QuickLookGeometry::pictureFrame(screen, {400, 300}),
              (ScreenRect{740 - 212, 450 - 184, 424, 368}));
}

TEST(QuickLookGeometry, ATinyPictureLeavesRoomForTheBar)
{
    EXPECT_EQ(QuickLookGeometry::pictureFrame(screen, {1, 1}), (ScreenRect{560, 340, 360, 220}));
}

TEST(QuickLookGeometry, ALargePictureIsFittedIntoMostOfTheScreen)
{
    const auto frame = QuickLookGeometry::pictureFrame(screen, {3000, 3000});
    EXPECT_EQ(frame.height, 640);
    EXPECT_EQ(frame.width, 640 - 68 + 24);
    EXPECT_EQ(frame.midX(), 740);
    EXPECT_EQ(QuickLookGeometry::longestSide(screen), 1024);
}

TEST(QuickLookGeometry, NothingIsLargerThanMostOfTheScreen)
{
    constexpr ScreenRect small{0, 0, 400, 240};
    for (const auto& frame : {QuickLookGeometry::textFrame(small), QuickLookGeometry::factsFrame(small),
                              QuickLookGeometry::pictureFrame(small, {1, 1})}) {
        EXPECT_LE(frame.width, 320);
        EXPECT_LE(frame.height, 192);
    }
}
