#include "media/WaveformBars.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {
QList<double> heights(int count, double phase, double liveliness)
{
    QList<double> heights;
    for (int bar = 0; bar < count; ++bar)
        heights.append(WaveformBars::barHeight(bar, phase, liveliness));
    return heights;
}
} // namespace

TEST(WaveformBarsTest, TheySwingBetweenTwoPatternsThatRepeatAfterFourBars)
{
    EXPECT_THAT(heights(6, 1, 1), ElementsAre(10, 14, 7, 12, 10, 14));
    EXPECT_THAT(heights(6, 0, 1), ElementsAre(5, 8, 13, 6, 5, 8));
    EXPECT_THAT(heights(4, 0.5, 1), ElementsAre(7.5, 11, 10, 9));
}

TEST(WaveformBarsTest, AtRestTheyAreAFlatLine)
{
    EXPECT_THAT(heights(4, 0, 0), ElementsAre(4, 4, 4, 4));
    EXPECT_THAT(heights(4, 1, 0), ElementsAre(4, 4, 4, 4));
}

TEST(WaveformBarsTest, FourBarsTake16By14)
{
    WaveformBars bars;
    EXPECT_EQ(bars.implicitWidth(), 16);
    EXPECT_EQ(bars.implicitHeight(), 14);
}
