#include "media/NowPlayingParser.h"

#include <gtest/gtest.h>

#include <limits>

namespace {
constexpr auto prefix = "kMRMediaRemoteNowPlayingInfo";

QVariantMap dictionary(std::initializer_list<std::pair<const char*, QVariant>> values)
{
    QVariantMap map;
    for (const auto& [name, value] : values)
        map.insert(QString::fromLatin1(prefix) + QString::fromLatin1(name), value);
    return map;
}

const QVariant title = QStringLiteral("Song");
const auto moment = QDateTime::fromMSecsSinceEpoch(1'700'000'000'000, Qt::UTC);

/// What a track reads as whose key `name` has that value.
NowPlaying trackWith(const char* name, const QVariant& value)
{
    const auto track = NowPlayingParser::parse(dictionary({{"Title", title}, {name, value}}), std::nullopt);
    EXPECT_TRUE(track);
    return track.value_or(NowPlaying());
}

double rateOf(const QVariant& value)
{
    return trackWith("PlaybackRate", value).playbackRate;
}
} // namespace

TEST(NowPlayingParserTest, AnEmptyDictionaryGivesNothing)
{
    EXPECT_EQ(NowPlayingParser::parse({}, std::nullopt), std::nullopt);
    EXPECT_EQ(NowPlayingParser::parse({}, QStringLiteral("player")), std::nullopt);
}

TEST(NowPlayingParserTest, ATitleAloneStandsStillAtTheStart)
{
    const auto track = NowPlayingParser::parse(dictionary({{"Title", title}}), std::nullopt);
    ASSERT_TRUE(track);
    EXPECT_EQ(track, (NowPlaying{.title = QStringLiteral("Song"), .canControlShuffleRepeat = true}));
    EXPECT_EQ(track->duration, 0);
    EXPECT_EQ(track->elapsed, 0);
    EXPECT_EQ(track->playbackRate, 0);
    EXPECT_EQ(track->timestamp, std::nullopt);
    EXPECT_EQ(track->position(moment), 0);
    EXPECT_EQ(track->position(moment.addYears(1)), 0);
}

TEST(NowPlayingParserTest, ATrackIsReadWhole)
{
    const auto track = NowPlayingParser::parse(dictionary({{"Title", title},
                                                           {"Artist", QStringLiteral("Singer")},
                                                           {"Album", QStringLiteral("Songs")},
                                                           {"ArtworkData", QByteArray("cover")},
                                                           {"Duration", 200.5},
                                                           {"ElapsedTime", 10.25},
                                                           {"PlaybackRate", 1.5},
                                                           {"Timestamp", moment},
                                                           {"Other", 3}}),
                                               QStringLiteral("player"));
    EXPECT_EQ(track, (NowPlaying{.title = QStringLiteral("Song"),
                                 .artist = QStringLiteral("Singer"),
                                 .album = QStringLiteral("Songs"),
                                 .artworkData = QByteArray("cover"),
                                 .duration = 200.5,
                                 .elapsed = 10.25,
                                 .playbackRate = 1.5,
                                 .timestamp = moment,
                                 .sourceBundleID = QStringLiteral("player"),
                                 .canControlShuffleRepeat = true}));
}

TEST(NowPlayingParserTest, ATitleOfAnotherTypeIsNoneWhateverElseThereIs)
{
    for (const QVariant& value : {QVariant(), QVariant(QString()), QVariant(7), QVariant(QByteArray("Song")),
                                  QVariant(QStringList{QStringLiteral("Song")}), QVariant(true)}) {
        EXPECT_EQ(NowPlayingParser::parse(dictionary({{"Title", value},
                                                      {"Artist", QStringLiteral("Singer")},
                                                      {"Album", QStringLiteral("Songs")},
                                                      {"PlaybackRate", 1.0}}),
                                          QStringLiteral("player")),
                  std::nullopt);
    }
}

TEST(NowPlayingParserTest, ATitleOfBlanksIsATitle)
{
    EXPECT_EQ(trackWith("Title", QStringLiteral(" ")).title, QStringLiteral(" "));
}

TEST(NowPlayingParserTest, ValuesOfAnotherTypeCountAsMissing)
{
    EXPECT_EQ(trackWith("Artist", QStringList{QStringLiteral("Singer")}).artist, QString());
    EXPECT_EQ(trackWith("Album", 1984).album, QString());
    EXPECT_EQ(trackWith("ArtworkData", QStringLiteral("cover")).artworkData, std::nullopt);
    EXPECT_EQ(trackWith("Timestamp", 1'700'000'000.0).timestamp, std::nullopt);
    EXPECT_EQ(trackWith("Timestamp", QStringLiteral("2023-11-14T22:13:20Z")).timestamp, std::nullopt);
    EXPECT_EQ(trackWith("Timestamp", moment.date()).timestamp, std::nullopt);
}

TEST(NowPlayingParserTest, AnEmptyCoverIsThere)
{
    EXPECT_EQ(trackWith("ArtworkData", QByteArray()).artworkData, QByteArray());
}

TEST(NowPlayingParserTest, EveryTypeOfNumberIsRead)
{
    EXPECT_EQ(rateOf(1.0), 1.0);
    EXPECT_EQ(rateOf(1.0F), 1.0);
    EXPECT_EQ(rateOf(1), 1.0);
    EXPECT_EQ(rateOf(1U), 1.0);
    EXPECT_EQ(rateOf(qint64(1)), 1.0);
    EXPECT_EQ(rateOf(quint64(1)), 1.0);
    EXPECT_EQ(rateOf(QVariant::fromValue<long>(1)), 1.0);
    EXPECT_EQ(rateOf(QVariant::fromValue<unsigned long>(1)), 1.0);
    EXPECT_EQ(rateOf(QVariant::fromValue<short>(1)), 1.0);
    EXPECT_EQ(rateOf(QVariant::fromValue<unsigned short>(1)), 1.0);
    EXPECT_EQ(rateOf(QVariant::fromValue<signed char>(1)), 1.0);
    EXPECT_EQ(rateOf(QVariant::fromValue<unsigned char>(1)), 1.0);
    EXPECT_EQ(rateOf(-2), -2.0);
    EXPECT_EQ(trackWith("ElapsedTime", 12).elapsed, 12.0);
    EXPECT_EQ(trackWith("Duration", quint64(240)).duration, 240.0);
}

TEST(NowPlayingParserTest, WhatIsNoNumberReadsAsZero)
{
    EXPECT_EQ(trackWith("Duration", QStringLiteral("240")).duration, 0.0);
    EXPECT_EQ(trackWith("Duration", QByteArray("240")).duration, 0.0);
    EXPECT_EQ(trackWith("Duration", QVariant()).duration, 0.0);
    EXPECT_EQ(rateOf(true), 0.0);
    EXPECT_EQ(rateOf(QVariantList{1.0}), 0.0);
    EXPECT_EQ(rateOf(QChar(u'1')), 0.0);
}

TEST(NowPlayingParserTest, NumbersPassThroughAsTheyAre)
{
    EXPECT_EQ(rateOf(std::numeric_limits<double>::infinity()), std::numeric_limits<double>::infinity());
    EXPECT_EQ(trackWith("Duration", -5.0).duration, -5.0);
}
