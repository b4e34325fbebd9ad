#include "media/PlayerReply.h"

#include <QStringList>

#include <gmock/gmock.h>

namespace {
constexpr auto Spotify = ScriptedPlayer::Spotify;
constexpr auto Music = ScriptedPlayer::Music;

QStringList lines()
{
    return {QStringLiteral("Autobahn"), QStringLiteral("Kraftwerk"), QStringLiteral("Best"),
            QStringLiteral("215"),      QStringLiteral("12"),        QStringLiteral("playing"),
            QStringLiteral("true"),     QStringLiteral("true"),      QStringLiteral("true"),
            QStringLiteral("4A")};
}

std::optional<NowPlaying> parse(const QStringList& lines, ScriptedPlayer player)
{
    return PlayerReply::parse(lines.join(u'\n'), player);
}

/// The reply with one line replaced.
NowPlaying with(qsizetype line, const char* text, ScriptedPlayer player = Music)
{
    QStringList changed = lines();
    changed[line] = QString::fromUtf8(text);
    return parse(changed, player).value();
}

TEST(PlayerReply, OfSpotify)
{
    const auto track = parse(lines(), Spotify).value();
    EXPECT_EQ(track, (NowPlaying{.title = QStringLiteral("Autobahn"),
                                 .artist = QStringLiteral("Kraftwerk"),
                                 .album = QStringLiteral("Best"),
                                 .duration = 0.215,
                                 .elapsed = 12,
                                 .playbackRate = 1,
                                 .sourceBundleID = QStringLiteral("com.spotify.client"),
                                 .shuffle = true,
                                 .repeatMode = RepeatMode::All,
                                 .canControlShuffleRepeat = true,
                                 .isLoved = false,
                                 .canLove = false,
                                 .trackID = QStringLiteral("4A")}));
}

TEST(PlayerReply, OfMusic)
{
    auto all = lines();
    all[7] = QStringLiteral("one");
    const auto track = parse(all, Music).value();
    EXPECT_EQ(track, (NowPlaying{.title = QStringLiteral("Autobahn"),
                                 .artist = QStringLiteral("Kraftwerk"),
                                 .album = QStringLiteral("Best"),
                                 .duration = 215,
                                 .elapsed = 12,
                                 .playbackRate = 1,
                                 .sourceBundleID = QStringLiteral("com.apple.Music"),
                                 .shuffle = true,
                                 .repeatMode = RepeatMode::One,
                                 .canControlShuffleRepeat = false,
                                 .isLoved = true,
                                 .canLove = true,
                                 .trackID = QStringLiteral("4A")}));
}

TEST(PlayerReply, NoneIsNothing)
{
    EXPECT_FALSE(PlayerReply::parse(std::nullopt, Music));
    EXPECT_FALSE(PlayerReply::parse(QString(), Music));
}

TEST(PlayerReply, StoppedIsNothing)
{
    EXPECT_FALSE(PlayerReply::parse(QStringLiteral("STOPPED"), Spotify));
}

TEST(PlayerReply, WithoutATitleIsNothing)
{
    auto all = lines();
    all[0].clear();
    EXPECT_FALSE(parse(all, Spotify));
}

TEST(PlayerReply, OfFiveLinesIsNothing)
{
    EXPECT_FALSE(parse(lines().first(5), Spotify));
}

TEST(PlayerReply, OfSixLinesHasItsDefaults)
{
    const auto track = parse(lines().first(6), Music).value();
    EXPECT_FALSE(track.shuffle);
    EXPECT_EQ(track.repeatMode, RepeatMode::Off);
    EXPECT_FALSE(track.isLoved);
    EXPECT_TRUE(track.trackID.isEmpty());
    EXPECT_TRUE(track.canLove);
}

TEST(PlayerReply, OfSevenLinesKnowsNoShuffleYet)
{
    EXPECT_FALSE(parse(lines().first(7), Spotify)->shuffle);
}

TEST(PlayerReply, OfEightLinesKnowsShuffleAndRepeatButNoFavourite)
{
    const auto track = parse(lines().first(8), Spotify).value();
    EXPECT_TRUE(track.shuffle);
    EXPECT_EQ(track.repeatMode, RepeatMode::All);
    EXPECT_FALSE(parse(lines().first(8), Music)->isLoved);
    EXPECT_TRUE(parse(lines().first(9), Music)->isLoved);
}

TEST(PlayerReply, ALineFeedInTheTitleShiftsTheRest)
{
    const auto track = with(0, "Auto\nbahn");
    EXPECT_EQ(track.title, u"Auto");
    EXPECT_EQ(track.artist, u"bahn");
    EXPECT_EQ(track.playbackRate, 0);
}

TEST(PlayerReply, ADecimalCommaIsAPoint)
{
    EXPECT_EQ(with(4, "3,14").elapsed, 3.14);
    EXPECT_EQ(with(3, "215,5").duration, 215.5);
}

TEST(PlayerReply, NumbersAreRead)
{
    EXPECT_EQ(with(4, "-1.5").elapsed, -1.5);
    EXPECT_EQ(with(4, "+2").elapsed, 2);
    EXPECT_EQ(with(4, "1e2").elapsed, 100);
    EXPECT_EQ(with(4, ".5").elapsed, 0.5);
}

TEST(PlayerReply, WhatIsNoNumberIsNought)
{
    for (const char* text : {"", " 3", "3 ", "3s", "3.1.4", "1,234.5", "0x10", "nan", "inf", "1e999", "+-1",
                             "++1", "٣", "missing value"}) {
        EXPECT_EQ(with(4, text).elapsed, 0) << text;
        EXPECT_EQ(with(3, text).duration, 0) << text;
    }
}

TEST(PlayerReply, OnlyPlayingPlays)
{
    EXPECT_EQ(with(5, "playing").playbackRate, 1);
    for (const char* text : {"paused", "Playing", "fast forwarding", ""})
        EXPECT_EQ(with(5, text).playbackRate, 0) << text;
}

TEST(PlayerReply, ShuffleIsOnOnlyByTheWord)
{
    EXPECT_FALSE(with(6, "false").shuffle);
    EXPECT_FALSE(with(6, "TRUE").shuffle);
}

TEST(PlayerReply, RepeatOfMusicIsOneOfThree)
{
    EXPECT_EQ(with(7, "one").repeatMode, RepeatMode::One);
    EXPECT_EQ(with(7, "all").repeatMode, RepeatMode::All);
    EXPECT_EQ(with(7, "off").repeatMode, RepeatMode::Off);
    EXPECT_EQ(with(7, "true").repeatMode, RepeatMode::Off);
}

TEST(PlayerReply, RepeatOfSpotifyIsYesOrNo)
{
    EXPECT_EQ(with(7, "true", Spotify).repeatMode, RepeatMode::All);
    EXPECT_EQ(with(7, "one", Spotify).repeatMode, RepeatMode::Off);
}
} // namespace
