#include "media/PlayerScripts.h"

#include <gmock/gmock.h>

#include <limits>

namespace {
constexpr auto Spotify = ScriptedPlayer::Spotify;
constexpr auto Music = ScriptedPlayer::Music;

TEST(PlayerScripts, AskForTheState)
{
    EXPECT_EQ(PlayerScripts::state(Spotify), u"tell application \"Spotify\" to player state as string");
    EXPECT_EQ(PlayerScripts::state(Music), u"tell application \"Music\" to player state as string");
}

TEST(PlayerScripts, ReadSpotify)
{
    EXPECT_EQ(PlayerScripts::read(Spotify), QStringLiteral(R"(tell application "Spotify"
    if player state is stopped then return "STOPPED"
    set t to name of current track
    set ar to artist of current track
    set al to album of current track
    set d to (duration of current track)
    set p to player position
    set ps to (player state as string)
    set sh to "false"
    try
        set sh to (shuffling as text)
    end try
    set rp to "false"
    try
        set rp to (repeating as text)
    end try
    set lv to "false"
    set tid to ""
    try
        set tid to (id of current track as text)
    end try
    return t & "\n" & ar & "\n" & al & "\n" & d & "\n" & p & "\n" & ps & "\n" & sh & "\n" & rp & "\n" & lv & "\n" & tid
end tell)"));
}

TEST(PlayerScripts, ReadMusic)
{
    EXPECT_EQ(PlayerScripts::read(Music), QStringLiteral(R"(tell application "Music"
    if player state is stopped then return "STOPPED"
    set t to name of current track
    set ar to artist of current track
    set al to album of current track
    set d to (duration of current track)
    set p to player position
    set ps to (player state as string)
    set sh to "false"
    try
        set sh to (shuffle enabled as text)
    end try
    set rp to "off"
    try
        set rp to (song repeat as text)
    end try
    set lv to "false"
    try
        set lv to (favorited of current track as text)
    on error
        try
            set lv to (loved of current track as text)
        end try
    end try
    set tid to ""
    try
        set tid to (persistent ID of current track as text)
    end try
    return t & "\n" & ar & "\n" & al & "\n" & d & "\n" & p & "\n" & ps & "\n" & sh & "\n" & rp & "\n" & lv & "\n" & tid
end tell)"));
}

TEST(PlayerScripts, AskForTheCoverOfOneTrack)
{
    EXPECT_EQ(PlayerScripts::cover(QStringLiteral("1A%1")), QStringLiteral(R"(tell application "Music"
if (persistent ID of current track as text) is not "1A%1" then return
return (get raw data of artwork 1 of current track)
end tell)"));
}

TEST(PlayerScripts, AskForAnyCoverWhereTheTrackHasNoIdentifier)
{
    EXPECT_EQ(PlayerScripts::cover({}), QStringLiteral(R"(tell application "Music"
return (get raw data of artwork 1 of current track)
end tell)"));
}

TEST(PlayerScripts, AskForTheCoversAddress)
{
    EXPECT_EQ(PlayerScripts::artworkUrl(), u"tell application \"Spotify\" to artwork url of current track");
}

TEST(PlayerScripts, Command)
{
    EXPECT_EQ(PlayerScripts::command(Spotify, MediaCommand::TogglePlayPause),
              u"tell application \"Spotify\" to playpause");
    EXPECT_EQ(PlayerScripts::command(Spotify, MediaCommand::Next),
              u"tell application \"Spotify\" to next track");
    EXPECT_EQ(PlayerScripts::command(Music, MediaCommand::Previous),
              u"tell application \"Music\" to previous track");
}

TEST(PlayerScripts, SeekToThePlainestDecimals)
{
    const auto end = [](double seconds) {
        return PlayerScripts::seek(Music, seconds).mid(QStringLiteral("tell application \"Music\" ").size());
    };
    EXPECT_EQ(end(12.5), u"to set player position to 12.5");
    EXPECT_EQ(end(0.1), u"to set player position to 0.1");
    EXPECT_EQ(end(90), u"to set player position to 90");
    EXPECT_EQ(end(1e-7), u"to set player position to 0.0000001");
    EXPECT_EQ(end(1.0 / 3), u"to set player position to 0.3333333333333333");
    EXPECT_TRUE(PlayerScripts::seek(Music, std::numeric_limits<double>::max()).endsWith(u'0'));
}

TEST(PlayerScripts, SetShuffle)
{
    EXPECT_EQ(PlayerScripts::setShuffle(Spotify, true),
              u"tell application \"Spotify\" to set shuffling to true");
    EXPECT_EQ(PlayerScripts::setShuffle(Music, false),
              u"tell application \"Music\" to set shuffle enabled to false");
}

TEST(PlayerScripts, SetRepeatOnSpotifyIsYesOrNo)
{
    EXPECT_EQ(PlayerScripts::setRepeat(Spotify, RepeatMode::Off),
              u"tell application \"Spotify\" to set repeating to false");
    EXPECT_EQ(PlayerScripts::setRepeat(Spotify, RepeatMode::All),
              u"tell application \"Spotify\" to set repeating to true");
    EXPECT_EQ(PlayerScripts::setRepeat(Spotify, RepeatMode::One),
              u"tell application \"Spotify\" to set repeating to true");
}

TEST(PlayerScripts, SetRepeatOnMusic)
{
    EXPECT_EQ(PlayerScripts::setRepeat(Music, RepeatMode::Off),
              u"tell application \"Music\" to set song repeat to off");
    EXPECT_EQ(PlayerScripts::setRepeat(Music, RepeatMode::All),
              u"tell application \"Music\" to set song repeat to all");
    EXPECT_EQ(PlayerScripts::setRepeat(Music, RepeatMode::One),
              u"tell application \"Music\" to set song repeat to one");
}

TEST(PlayerScripts, SetLovedByEitherName)
{
    EXPECT_EQ(PlayerScripts::setLoved(true), QStringLiteral(R"(tell application "Music"
    try
        set favorited of current track to true
    on error
        try
            set loved of current track to true
        end try
    end try
end tell)"));
    EXPECT_TRUE(PlayerScripts::setLoved(false).contains(u"set loved of current track to false\n"));
}
} // namespace
