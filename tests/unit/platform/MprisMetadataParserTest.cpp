#include "platform/linux/mpris/MprisMetadataParser.h"

#include <QDBusObjectPath>
#include <QDBusVariant>

#include <gtest/gtest.h>

#include <limits>

namespace {
const auto titleKey = QStringLiteral("xesam:title");
const auto artistKey = QStringLiteral("xesam:artist");
const auto urlKey = QStringLiteral("xesam:url");
const auto lengthKey = QStringLiteral("mpris:length");
const auto idKey = QStringLiteral("mpris:trackid");

QVariantMap titled(const QString& key, const QVariant& value)
{
    return {{titleKey, QStringLiteral("Song")}, {key, value}};
}

MprisMetadata parsed(const QVariantMap& metadata)
{
    return MprisMetadataParser::parse(metadata).value_or(MprisMetadata());
}

/// The title that a track without one gets from its address.
QString titleOf(const char* url)
{
    return parsed({{urlKey, QString::fromUtf8(url)}}).title;
}
} // namespace

TEST(MprisMetadataParser, ReadsWhatPlayersAreMeantToSend)
{
    const auto track = parsed({{titleKey, QStringLiteral("Song")},
                               {artistKey, QStringList{QStringLiteral("One"), QStringLiteral("Two")}},
                               {QStringLiteral("xesam:album"), QStringLiteral("Album")},
                               {QStringLiteral("mpris:artUrl"), QStringLiteral("https://example.org/cover")},
                               {urlKey, QStringLiteral("file:///music/song.ogg")},
                               {lengthKey, qlonglong(240'000'000)},
                               {idKey, QVariant::fromValue(QDBusObjectPath(QStringLiteral("/track/1")))}});
    EXPECT_EQ(track, (MprisMetadata{QStringLiteral("Song"), QStringLiteral("One, Two"),
                                    QStringLiteral("Album"), QStringLiteral("https://example.org/cover"),
                                    QStringLiteral("file:///music/song.ogg"), QStringLiteral("/track/1"),
                                    240'000'000}));
}

TEST(MprisMetadataParser, WithoutATitleTheFilesNameServes)
{
    EXPECT_EQ(titleOf("file:///music/Some%20song%20%2350%25.mp3"), u"Some song #50%.mp3");
    EXPECT_EQ(titleOf("file:///music/%C3%84rger.ogg"), QString::fromUtf8("Ärger.ogg"));
    EXPECT_EQ(titleOf("https://example.org/a/b.ogg?token=1"), u"b.ogg");
    EXPECT_EQ(titleOf("/music/100%25 #1.mp3"), u"100%25 #1.mp3") << "a bare path is as it is";
    EXPECT_EQ(titleOf("https://radio.example.org:8000/"), u"radio.example.org");
    EXPECT_EQ(parsed({{titleKey, QStringLiteral("  ")}, {urlKey, QStringLiteral("file:///a.ogg")}}).title,
              u"a.ogg");
}

TEST(MprisMetadataParser, WithoutAnythingToShowThereIsNoTrack)
{
    EXPECT_FALSE(MprisMetadataParser::parse({}));
    EXPECT_FALSE(MprisMetadataParser::parse({{titleKey, QString()}}));
    EXPECT_FALSE(MprisMetadataParser::parse({{titleKey, 7}}));
    EXPECT_FALSE(MprisMetadataParser::parse({{artistKey, QStringLiteral("Band")}}));
    EXPECT_FALSE(MprisMetadataParser::parse({{urlKey, QStringLiteral("file:///")}}));
    EXPECT_FALSE(MprisMetadataParser::parse({{urlKey, QStringLiteral("file:///") + QString(100'000, u'a')}}));
}

TEST(MprisMetadataParser, ArtistsComeAsOneTextToo)
{
    EXPECT_EQ(parsed(titled(artistKey, QStringLiteral("One Two"))).artist, u"One Two");
    EXPECT_EQ(parsed(titled(artistKey, QStringList{QString(), QStringLiteral(" One ")})).artist, u"One");
    EXPECT_EQ(parsed(titled(artistKey, QVariantList{QStringLiteral("One"), 7})).artist, u"One");
    EXPECT_EQ(parsed(titled(artistKey, 7)).artist, QString());
    EXPECT_EQ(parsed(titled(QStringLiteral("xesam:albumArtist"), QStringList{QStringLiteral("All")})).artist,
              u"All");
}

TEST(MprisMetadataParser, LengthsComeInManyTypes)
{
    const auto length = [](const QVariant& value) { return parsed(titled(lengthKey, value)).length; };
    EXPECT_EQ(length(qulonglong(5'000'000)), 5e6);
    EXPECT_EQ(length(5'000'000), 5e6);
    EXPECT_EQ(length(5'000'000u), 5e6);
    EXPECT_EQ(length(5e6), 5e6);
    EXPECT_EQ(length(QStringLiteral(" 5000000")), 5e6);
    EXPECT_EQ(length(QVariant::fromValue(QDBusVariant(5'000'000))), 5e6);
    EXPECT_EQ(length(QStringLiteral("3:25")), 0);
    EXPECT_EQ(length(qlonglong(-5)), 0);
    EXPECT_EQ(length(std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ(length(std::numeric_limits<double>::infinity()), 0);
    EXPECT_EQ(length(true), 0);
    EXPECT_EQ(length({}), 0);
}

TEST(MprisMetadataParser, ATrackIdMayBeNoPath)
{
    EXPECT_EQ(parsed(titled(idKey, QStringLiteral("spotify:track:1"))).trackId, u"spotify:track:1");
    EXPECT_EQ(parsed(titled(idKey, 7)).trackId, QString());
    const auto isPath = [](const char* id) {
        return MprisMetadataParser::isTrackPath(QString::fromLatin1(id));
    };
    EXPECT_TRUE(isPath("/0"));
    EXPECT_TRUE(isPath("/org/mpris/MediaPlayer2/Track/1"));
    EXPECT_FALSE(isPath("/org/mpris/MediaPlayer2/TrackList/NoTrack"));
    for (const auto* id : {"", "/", "//", "/a/", "/a-b", "a", "spotify:track:1", "/a\n"})
        EXPECT_FALSE(isPath(id)) << id;
}

TEST(MprisMetadataParser, OtherKeysDontMatter)
{
    const auto plain = parsed({{titleKey, QStringLiteral("Song")}});
    EXPECT_EQ(parsed(titled(QStringLiteral("xesam:trackNumber"), QStringLiteral("3/12"))), plain);
    EXPECT_EQ(parsed(titled(QStringLiteral("xesam:genre"), QStringLiteral("Rock"))), plain);
    EXPECT_EQ(parsed(titled(QString(), QVariant())), plain);
}
