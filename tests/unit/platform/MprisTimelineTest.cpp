#include "platform/linux/mpris/MprisTimeline.h"

#include "fakes/ManualClock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {
class MprisTimelineTest : public ::testing::Test
{
protected:
    MprisTimelineTest() { clock.advance(1000); }

    MprisTimeline::Moment now() const { return {clock.monotonicSeconds(), clock.now()}; }
    double position() const { return timeline.position(clock.monotonicSeconds()); }
    void read(double raw) { timeline.read(raw, now(), clock.monotonicSeconds()); }

    /// Plays on, looked at each `period` seconds, as a player that counts `unit` a second tells it.
    void playOn(double from, double seconds, double unit, double period = 1)
    {
        for (double gone = period; gone <= seconds; gone += period) {
            clock.advance(period);
            read(std::floor((from + gone) * unit));
        }
    }

    ManualClock clock;
    MprisTimeline timeline;
};
} // namespace

TEST_F(MprisTimelineTest, ThePositionRunsAtTheRateAndStandsAtRest)
{
    timeline.setLength(100e6);
    timeline.setRate(2, now());
    read(10.5e6);
    clock.advance(3);
    EXPECT_DOUBLE_EQ(position(), 16.5);
    timeline.setRate(0, now());
    clock.advance(60);
    EXPECT_DOUBLE_EQ(position(), 16.5);
    timeline.setRate(1, now());
    clock.advance(500);
    EXPECT_DOUBLE_EQ(position(), 100) << "and ends with the track";
}

TEST_F(MprisTimelineTest, APlaceIsTheSameUntilThereIsNews)
{
    timeline.setRate(1, now());
    read(10.5e6);
    const auto first = timeline.place(now());
    clock.advance(3);
    read(13.52e6);
    const auto second = timeline.place(now());
    EXPECT_EQ(first.position, second.position);
    EXPECT_EQ(first.timestamp, second.timestamp);
    read(20.5e6);
    EXPECT_DOUBLE_EQ(timeline.place(now()).position, 20.5);
    EXPECT_EQ(timeline.place(now()).timestamp, clock.now());
}

TEST_F(MprisTimelineTest, SettingTheClockOnTheWallMovesNothing)
{
    timeline.setRate(1, now());
    read(10.5e6);
    clock.advance(2);
    clock.setNow(clock.now().addSecs(-3600));
    const auto place = timeline.place(now());
    EXPECT_DOUBLE_EQ(place.position, 12.5);
    EXPECT_EQ(place.timestamp, clock.now());
}

TEST_F(MprisTimelineTest, AnOldPositionToldRightAfterASeekIsNotBelieved)
{
    timeline.setRate(1, now());
    read(10.5e6);
    timeline.seeked(60e6, now());
    clock.advance(0.1);
    read(10.6e6);
    EXPECT_DOUBLE_EQ(position(), 60.1);
    clock.advance(1);
    read(50.2e6);
    EXPECT_DOUBLE_EQ(position(), 50.2) << "later what it says holds";
}

TEST_F(MprisTimelineTest, WordOfAMoveToTheOldPlaceRightAfterItWasToldToMoveIsNotBelieved)
{
    timeline.setLength(240e6);
    timeline.setRate(1, now());
    read(10.5e6);
    clock.advance(5);
    timeline.moveTo(60, now());
    clock.advance(0.1);
    timeline.moveTo(65, now());
    clock.advance(0.2);
    timeline.seeked(15e6, now()); // in whole seconds
    EXPECT_NEAR(position(), 65.2, 1e-6);
    timeline.seeked(65.1e6, now());
    EXPECT_DOUBLE_EQ(position(), 65.1) << "from where it was told to go it does say so";
    timeline.seeked(15.5e6, now());
    EXPECT_DOUBLE_EQ(position(), 15.5) << "and then it may move anywhere, back as well";
}

TEST_F(MprisTimelineTest, AMoveThatIsSaidLaterOrIsToAnotherPlaceHolds)
{
    timeline.setLength(240e6);
    timeline.setRate(1, now());
    read(10.5e6);
    timeline.moveTo(60, now());
    timeline.seeked(30.5e6, now());
    EXPECT_DOUBLE_EQ(position(), 30.5);
    timeline.moveTo(60, now());
    clock.advance(1);
    timeline.seeked(31.5e6, now());
    EXPECT_DOUBLE_EQ(position(), 31.5);
    timeline.moveTo(33, now());
    timeline.seeked(32.5e6, now());
    EXPECT_DOUBLE_EQ(position(), 32.5) << "nearer to where it was told to go";
}

TEST_F(MprisTimelineTest, AnOldPositionToldRightAfterATrackBeganIsNotBelieved)
{
    timeline.setRate(1, now());
    read(120.5e6);
    clock.advance(3);
    timeline.startTrack(now());
    clock.advance(0.1);
    read(123.6e6);
    EXPECT_NEAR(position(), 0.1, 1e-6);
    read(30.4e6);
    EXPECT_DOUBLE_EQ(position(), 30.4) << "but a track may begin anywhere else";
}

TEST_F(MprisTimelineTest, AQuestionFromBeforeTheSeekHasNoAnswer)
{
    timeline.setRate(1, now());
    const double asked = clock.monotonicSeconds();
    clock.advance(2);
    timeline.moveTo(60, now());
    clock.advance(1.5);
    timeline.read(2.5e6, now(), asked);
    EXPECT_DOUBLE_EQ(position(), 61.5);
}

TEST_F(MprisTimelineTest, WholeSecondsDontMakeItJump)
{
    timeline.setRate(1, now());
    clock.advance(0.7);
    read(0);
    double last = position();
    for (int i = 0; i < 30; ++i) {
        clock.advance(0.7);
        read(std::floor(0.7 * (i + 2)) * 1e6);
        EXPECT_NEAR(position() - last, 0.7, 0.36);
        EXPECT_NEAR(position(), 0.7 * (i + 2), 0.7);
        last = position();
    }
    EXPECT_NEAR(position(), 0.7 * 31, 0.25) << "each tells a little more of where it is";

    timeline.setRate(0, now());
    const double resting = position();
    read(std::floor(resting) * 1e6);
    EXPECT_DOUBLE_EQ(position(), resting) << "at rest as well";
    read(40e6);
    EXPECT_DOUBLE_EQ(position(), 40);
}

TEST_F(MprisTimelineTest, AFewReadingsAtTheRightMomentsTellWhereWithinItsSecondAPlayerIs)
{
    for (const double start : {10.02, 20.3, 30.5, 40.77, 50.99}) {
        timeline.startTrack(now());
        clock.advance(2);
        const double begun = clock.monotonicSeconds();
        const auto played = [&] { return start + clock.monotonicSeconds() - begun; };
        read(std::floor(played()) * 1e6);
        timeline.setRate(1, now());
        read(std::floor(played()) * 1e6);
        int readings = 0;
        for (; const auto moment = timeline.tellingMoment(clock.monotonicSeconds()); ++readings) {
            ASSERT_GT(*moment, clock.monotonicSeconds());
            ASSERT_LE(*moment, clock.monotonicSeconds() + 1.1);
            clock.advance(*moment - clock.monotonicSeconds());
            read(std::floor(played()) * 1e6);
        }
        EXPECT_GT(readings, 0) << start;
        EXPECT_LE(readings, 4) << start;
        EXPECT_NEAR(position(), played(), 0.2) << start;
        timeline.setRate(0, now());
    }
}

TEST_F(MprisTimelineTest, NoMomentTellsMoreOfAPlayerThatTellsFractionsOrRests)
{
    timeline.setRate(1, now());
    read(10.5e6);
    EXPECT_FALSE(timeline.tellingMoment(clock.monotonicSeconds()));
    clock.advance(1.5);
    read(12e6);
    EXPECT_FALSE(timeline.tellingMoment(clock.monotonicSeconds()));
    timeline = {};
    read(12e6);
    EXPECT_FALSE(timeline.tellingMoment(clock.monotonicSeconds()));
    timeline.setRate(1, now());
    read(12e6);
    EXPECT_TRUE(timeline.tellingMoment(clock.monotonicSeconds()));
}

TEST_F(MprisTimelineTest, APlayerWhoseSecondsFollowNoClockIsNotAskedAgainAndAgain)
{
    timeline.setRate(1, now());
    int readings = 0;
    for (double told = 10e6; const auto moment =
                                 [&] {
                                     read(told);
                                     return timeline.tellingMoment(clock.monotonicSeconds());
                                 }();
         told += 7e6) {
        ASSERT_LT(++readings, 20);
        clock.advance(*moment - clock.monotonicSeconds());
    }
    EXPECT_GT(readings, 1);
    timeline = {};
    timeline.setRate(1, now());
    for (readings = 0;; ++readings) {
        ASSERT_LT(readings, 20);
        read(0);
        const auto moment = timeline.tellingMoment(clock.monotonicSeconds());
        if (!moment)
            break;
        clock.advance(*moment - clock.monotonicSeconds());
    }
    EXPECT_GT(readings, 1) << "it may have just begun";
    timeline.seeked(500e6, now());
    clock.advance(1);
    read(501e6);
    EXPECT_TRUE(timeline.tellingMoment(clock.monotonicSeconds())) << "a move is a new beginning";
}

TEST_F(MprisTimelineTest, MillisecondsShowWithinASecondOrTwo)
{
    timeline.setLength(5'400'000); // an hour and a half, or five seconds
    timeline.setRate(1, now());
    read(30'250);
    EXPECT_LT(position(), 0.1) << "at first";
    playOn(30.25, 2, 1e3);
    EXPECT_NEAR(position(), 32.25, 0.01);
    EXPECT_DOUBLE_EQ(timeline.length(), 5400);
    EXPECT_DOUBLE_EQ(timeline.inPlayerUnits(60), 60'000);
}

TEST_F(MprisTimelineTest, ASongShorterThanASecondIsOneInMilliseconds)
{
    timeline.setLength(240'000);
    read(30'250);
    EXPECT_DOUBLE_EQ(timeline.length(), 240);
    EXPECT_DOUBLE_EQ(position(), 30.25);
    timeline.setRate(1, now());
    playOn(30.25, 10, 1e3);
    EXPECT_NEAR(position(), 40.25, 0.01);
}

TEST_F(MprisTimelineTest, OnlyTheLengthMayBeInMilliseconds)
{
    timeline.setLength(3'600'000); // an hour, or 3.6 seconds
    timeline.setRate(1, now());
    read(0.5e6);
    playOn(0.5, 3, 1e6);
    EXPECT_DOUBLE_EQ(timeline.length(), 3.6) << "it may still be that short";
    playOn(3.5, 5, 1e6);
    EXPECT_DOUBLE_EQ(timeline.length(), 3600);
    EXPECT_NEAR(position(), 8.5, 0.01);
    timeline.startTrack(now());
    timeline.setLength(1'800'000);
    EXPECT_DOUBLE_EQ(timeline.length(), 1800) << "and so are the others of this player";
}

TEST_F(MprisTimelineTest, OnlyThePositionMayBeInMilliseconds)
{
    timeline.setLength(240e6);
    timeline.setRate(1, now());
    read(30'250);
    playOn(30.25, 2, 1e3);
    EXPECT_NEAR(position(), 32.25, 0.01);
    EXPECT_DOUBLE_EQ(timeline.length(), 240);
}

TEST_F(MprisTimelineTest, SeeksAndStallsDontChangeTheUnit)
{
    timeline.setLength(240e6);
    timeline.setRate(1, now());
    read(10.5e6);
    playOn(10.5, 2, 1e6);
    for (const double raw : {200.5e6, 5.25e6, 5.25e6, 5.25e6, 7.75e6}) {
        clock.advance(2);
        read(raw);
        EXPECT_DOUBLE_EQ(position(), raw / 1e6);
    }
    timeline.setLength(3e6); // a jingle that is repeated
    clock.advance(2);
    read(0.5e6);
    EXPECT_DOUBLE_EQ(timeline.length(), 3);
}

TEST_F(MprisTimelineTest, AnOldPositionMakesNoShortTrackLong)
{
    timeline.setLength(240e6);
    timeline.setRate(1, now());
    read(120.5e6);
    playOn(120.5, 3, 1e6);
    timeline.startTrack(now());
    timeline.setLength(5e6);
    clock.advance(0.2);
    read(123.7e6);
    clock.advance(1);
    read(1.2e6);
    EXPECT_DOUBLE_EQ(timeline.length(), 5);
    EXPECT_NEAR(position(), 1.2, 1e-6);
}

TEST_F(MprisTimelineTest, APlayerThatSaysZeroForEverDoesntKnow)
{
    timeline.setRate(1, now());
    for (int i = 0; i < 10; ++i) {
        read(0);
        clock.advance(3);
    }
    EXPECT_DOUBLE_EQ(position(), 30);
}

TEST_F(MprisTimelineTest, LengthsThatCantBeAreUnknown)
{
    for (const double length : {0.0, -5e6, static_cast<double>(std::numeric_limits<qint64>::max())}) {
        timeline.setLength(length);
        EXPECT_EQ(timeline.length(), 0) << length;
    }
}
