#include "support/TimeFormatting.h"

#include <gmock/gmock.h>

#include <limits>

namespace {
using TimeFormatting::mmss;

TEST(TimeFormatting, CutsTowardsZero)
{
    EXPECT_EQ(mmss(0.9), u"0:00");
    EXPECT_EQ(mmss(59.9), u"0:59");
    EXPECT_EQ(mmss(119.999), u"1:59");
}

TEST(TimeFormatting, SixtySecondsAreOneMinute)
{
    EXPECT_EQ(mmss(60), u"1:00");
}

TEST(TimeFormatting, SecondsHaveTwoDigits)
{
    EXPECT_EQ(mmss(1), u"0:01");
    EXPECT_EQ(mmss(605), u"10:05");
}

TEST(TimeFormatting, HasNoHourField)
{
    EXPECT_EQ(mmss(3725), u"62:05");
    EXPECT_EQ(mmss(24 * 3600), u"1440:00");
}

TEST(TimeFormatting, NegativeAndZeroAreZero)
{
    EXPECT_EQ(mmss(0), u"0:00");
    EXPECT_EQ(mmss(-0.0), u"0:00");
    EXPECT_EQ(mmss(-5), u"0:00");
    EXPECT_EQ(mmss(std::numeric_limits<double>::lowest()), u"0:00");
}

TEST(TimeFormatting, WhatIsNoNumberOrNotFiniteIsZero)
{
    EXPECT_EQ(mmss(std::numeric_limits<double>::quiet_NaN()), u"0:00");
    EXPECT_EQ(mmss(std::numeric_limits<double>::infinity()), u"0:00");
    EXPECT_EQ(mmss(-std::numeric_limits<double>::infinity()), u"0:00");
}

TEST(TimeFormatting, SmallestPositiveNumberIsZero)
{
    EXPECT_EQ(mmss(std::numeric_limits<double>::denorm_min()), u"0:00");
}

TEST(TimeFormatting, HugeValuesStayAtTheLongestThatFits)
{
    // 2^63 - 1 seconds.
    EXPECT_EQ(mmss(9.3e18), u"153722867280912930:07");
    EXPECT_EQ(mmss(std::numeric_limits<double>::max()), u"153722867280912930:07");
    // The last double below 2^63.
    EXPECT_EQ(mmss(9223372036854774784.0), u"153722867280912913:04");
}
} // namespace
