#include "shell/NotchGeometryMath.h"

#include <gtest/gtest.h>

using NotchGeometryMath::notchSize;

TEST(NotchGeometryMathTest, TheGapBetweenTheAuxiliaryAreasIsTheWidth)
{
    EXPECT_EQ(notchSize(32, 24, 663.0, 849.0), QSizeF(186, 32));
}

TEST(NotchGeometryMathTest, AGapOfExactlyTheMinimumFallsBackToTheDefaultWidth)
{
    EXPECT_EQ(notchSize(32, 24, 700.0, 800.0), QSizeF(200, 32));
    EXPECT_EQ(notchSize(32, 24, 700.0, 800.5), QSizeF(100.5, 32));
}

TEST(NotchGeometryMathTest, ASingleAuxiliaryAreaGivesTheDefaultWidth)
{
    EXPECT_EQ(notchSize(32, 24, 700.0, std::nullopt), QSizeF(200, 32));
    EXPECT_EQ(notchSize(32, 24, std::nullopt, 900.0), QSizeF(200, 32));
}

TEST(NotchGeometryMathTest, AreasThatOverlapGiveTheDefaultWidth)
{
    EXPECT_EQ(notchSize(32, 24, 900.0, 700.0).width(), 200.0);
}

TEST(NotchGeometryMathTest, TheTallerOfSafeAreaAndBarIsTheHeight)
{
    EXPECT_EQ(notchSize(38, 24, std::nullopt, std::nullopt).height(), 38.0);
    EXPECT_EQ(notchSize(20, 24, std::nullopt, std::nullopt).height(), 24.0);
    EXPECT_EQ(notchSize(24, 24, std::nullopt, std::nullopt).height(), 24.0);
}

TEST(NotchGeometryMathTest, WithoutANotchTheBarGivesTheHeight)
{
    EXPECT_EQ(notchSize(0, 28, std::nullopt, std::nullopt), QSizeF(200, 28));
}
