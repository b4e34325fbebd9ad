#include "ui/MarqueeOverflow.h"

#include <gtest/gtest.h>

TEST(MarqueeOverflowTest, WhatFitsWithinHalfAPointDoesNotScroll)
{
    EXPECT_FALSE(MarqueeOverflow::shouldScroll(100, 200));
    EXPECT_FALSE(MarqueeOverflow::shouldScroll(200, 200));
    EXPECT_FALSE(MarqueeOverflow::shouldScroll(200.5, 200));
    EXPECT_TRUE(MarqueeOverflow::shouldScroll(200.51, 200));
}

TEST(MarqueeOverflowTest, ARoundTakesTheTextAndTheGapAtTheSpeed)
{
    EXPECT_EQ(MarqueeOverflow::duration(256, 44, 30), 10);
    EXPECT_EQ(MarqueeOverflow::duration(256, 44, 0), 0);
    EXPECT_EQ(MarqueeOverflow::duration(256, 44, -5), 0);
}
