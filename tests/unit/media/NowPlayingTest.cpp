#include "media/NowPlaying.h"

#include <gtest/gtest.h>

namespace {
const auto moment = QDateTime::fromMSecsSinceEpoch(1'700'000'000'000, Qt::UTC);

/// A track seen 5 seconds before `moment`.
NowPlaying track(double duration, double elapsed, double rate)
{
    NowPlaying track;
    track.title = QStringLiteral("Song");
    track.duration = duration;
    track.elapsed = elapsed;
    track.playbackRate = rate;
    track.timestamp = moment.addSecs(-5);
    return track;
}

/// A track with something in every field.
NowPlaying fullTrack()
{
    return {.title = QStringLiteral("Song"),
            .artist = QStringLiteral("Singer"),
            .album = QStringLiteral("Songs"),
            .artworkData = QByteArray("cover"),
            .duration = 100,
            .elapsed = 10,
            .playbackRate = 1,
            .timestamp = moment,
            .sourceBundleID = QStringLiteral("player"),
            .shuffle = true,
            .repeatMode = RepeatMode::All,
            .canControlShuffleRepeat = true,
            .isLoved = true,
            .canLove = true,
            .trackID = QStringLiteral("1")};
}

template <typename Field, typename Value>
void expectToCount(Field NowPlaying::*field, Value other)
{
    auto changed = fullTrack();
    changed.*field = other;
    EXPECT_NE(changed, fullTrack());
}
} // namespace

TEST(NowPlayingTest, WithoutADurationThePositionRunsOnUnbounded)
{
    EXPECT_EQ(track(0, 10, 1).position(moment), 15);
    EXPECT_EQ(track(-1, 10, 1).position(moment), 15);
}

TEST(NowPlayingTest, ThePositionEndsAtTheDuration)
{
    EXPECT_EQ(track(100, 99, 2).position(moment), 100);
    EXPECT_EQ(track(100, 95, 1).position(moment), 100);
    EXPECT_EQ(track(100, 94.5, 1).position(moment), 99.5);
}

TEST(NowPlayingTest, ThePositionIsNeverNegative)
{
    // Long before it was seen.
    EXPECT_EQ(track(100, 10, 1).position(moment.addSecs(-60)), 0);
    EXPECT_EQ(track(100, -3, 0).position(moment), 0);
}

TEST(NowPlayingTest, APausedTrackStandsStillWithinItsBounds)
{
    EXPECT_FALSE(track(100, 42, 0).isPlaying());
    for (const int days : {-1, 0, 1000}) {
        EXPECT_EQ(track(100, 42, 0).position(moment.addDays(days)), 42);
        EXPECT_EQ(track(100, 142, 0).position(moment.addDays(days)), 100);
    }
}

TEST(NowPlayingTest, ANegativeRateDoesNotPlayButRunsBackwards)
{
    const auto backwards = track(100, 42, -2);
    EXPECT_FALSE(backwards.isPlaying());
    EXPECT_EQ(backwards.position(moment), 32);
}

TEST(NowPlayingTest, AnyPositiveRatePlays)
{
    EXPECT_TRUE(track(100, 0, 1).isPlaying());
    EXPECT_TRUE(track(100, 0, 0.001).isPlaying());
    EXPECT_EQ(track(100, 10, 0.5).position(moment), 12.5);
}

TEST(NowPlayingTest, WithoutATimestampNothingAdvances)
{
    auto still = track(100, 42, 1);
    still.timestamp.reset();
    EXPECT_EQ(still.position(moment), 42);
    EXPECT_EQ(still.position(moment.addSecs(1000)), 42);
    EXPECT_TRUE(still.isPlaying());
}

TEST(NowPlayingTest, FractionsOfASecondCount)
{
    EXPECT_EQ(track(100, 0, 1).position(moment.addMSecs(250)), 5.25);
}

TEST(NowPlayingTest, TwoThatDifferInTheirTimestampAloneAreUnequal)
{
    auto later = fullTrack();
    later.timestamp = moment.addMSecs(1);
    EXPECT_NE(later, fullTrack());
    later.timestamp.reset();
    EXPECT_NE(later, fullTrack());
}

TEST(NowPlayingTest, EveryFieldCountsForEquality)
{
    EXPECT_EQ(fullTrack(), fullTrack());
    expectToCount(&NowPlaying::title, QStringLiteral("Other"));
    expectToCount(&NowPlaying::artist, QString());
    expectToCount(&NowPlaying::album, QString());
    expectToCount(&NowPlaying::artworkData, QByteArray("other"));
    expectToCount(&NowPlaying::artworkData, std::nullopt);
    expectToCount(&NowPlaying::duration, 100.0000001);
    expectToCount(&NowPlaying::elapsed, 10.0000001);
    expectToCount(&NowPlaying::playbackRate, 0.9999999);
    expectToCount(&NowPlaying::sourceBundleID, std::nullopt);
    expectToCount(&NowPlaying::shuffle, false);
    expectToCount(&NowPlaying::repeatMode, RepeatMode::One);
    expectToCount(&NowPlaying::canControlShuffleRepeat, false);
    expectToCount(&NowPlaying::isLoved, false);
    expectToCount(&NowPlaying::canLove, false);
    expectToCount(&NowPlaying::trackID, QString());
}

TEST(NowPlayingTest, NoCoverIsAnotherThanAnEmptyOne)
{
    auto none = fullTrack();
    none.artworkData.reset();
    auto empty = fullTrack();
    empty.artworkData = QByteArray();
    EXPECT_NE(none, empty);
}

TEST(NowPlayingTest, CoversAreComparedByTheirBytes)
{
    auto copy = fullTrack();
    copy.artworkData = QByteArray(copy.artworkData->constData(), copy.artworkData->size());
    EXPECT_EQ(copy, fullTrack());
}

TEST(NowPlayingTest, WhatIsOptionalIsAbsentAtFirst)
{
    const NowPlaying track{.title = QStringLiteral("Song")};
    EXPECT_EQ(track.artworkData, std::nullopt);
    EXPECT_EQ(track.timestamp, std::nullopt);
    EXPECT_EQ(track.sourceBundleID, std::nullopt);
}
