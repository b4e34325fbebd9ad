#include "platform/linux/mpris/MprisChoice.h"

#include <gtest/gtest.h>

namespace {
using MprisChoice::Candidate;
using MprisChoice::choose;

Candidate playing(quint64 started)
{
    return {true, true, started};
}
Candidate paused(quint64 started)
{
    return {true, false, started};
}
const Candidate nothing{};
} // namespace

TEST(MprisChoice, TheOneThatStartedLastIsShownAndStaysSo)
{
    EXPECT_EQ(choose({playing(1), playing(2)}, -1), 1);
    EXPECT_EQ(choose({playing(3), playing(2)}, 1), 0) << "another has started";
    EXPECT_EQ(choose({playing(1), paused(2)}, 1), 1) << "it rests, and no other has started since";
    EXPECT_EQ(choose({paused(0), paused(5)}, 0), 0) << "one that rests takes no other's place";
}

TEST(MprisChoice, WhenItGoesAnotherThatPlaysComesBeforeThoseThatRest)
{
    EXPECT_EQ(choose({paused(3), playing(1), playing(2)}, -1), 2);
    EXPECT_EQ(choose({paused(1), paused(3), paused(2)}, -1), 1);
    EXPECT_EQ(choose({nothing, paused(0)}, 0), 1) << "the current one has nothing to show any more";
}

TEST(MprisChoice, NothingToShowIsNeverChosen)
{
    EXPECT_EQ(choose({}, -1), -1);
    EXPECT_EQ(choose({nothing, {false, true, 9}}, 1), -1);
}
