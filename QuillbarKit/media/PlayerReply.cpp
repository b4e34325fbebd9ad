#include "media/PlayerReply.h"

#include <QStringList>

#include <charconv>
#include <cmath>
#include <string>

namespace {
enum Line { Title, Artist, Album, Duration, Position, State, Shuffle, Repeat, Loved, TrackID };
constexpr qsizetype fewestLines = State + 1;

constexpr double millisecondsASecond = 1000.0;

/// Scripts write numbers as the user's country does. 0 for what is no number from its first character to
/// its last.
double number(const QString& text)
{
    std::string digits = QString(text).replace(u',', u'.').toStdString();
    // A plus is as good a sign as the minus, which the conversion takes by itself.
    if (digits.starts_with('+') && !digits.starts_with("+-"))
        digits.erase(0, 1);
    double value = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value);
    return error == std::errc() && stop == end && std::isfinite(value) ? value : 0;
}

RepeatMode repeatMode(const QString& line, ScriptedPlayer player)
{
    if (player == ScriptedPlayer::Spotify)
        return line == u"true" ? RepeatMode::All : RepeatMode::Off;
    return RepeatModes::repeatMode(line).value_or(RepeatMode::Off);
}
} // namespace

std::optional<NowPlaying> PlayerReply::parse(const std::optional<QString>& reply, ScriptedPlayer player)
{
    if (!reply || *reply == u"STOPPED")
        return std::nullopt;
    const QStringList lines = reply->split(u'\n');
    if (lines.size() < fewestLines || lines.at(Title).isEmpty())
        return std::nullopt;

    const bool isSpotify = player == ScriptedPlayer::Spotify;
    NowPlaying track;
    track.title = lines.at(Title);
    track.artist = lines.at(Artist);
    track.album = lines.at(Album);
    // Spotify tells the duration in milliseconds, though not the position.
    track.duration = number(lines.at(Duration)) / (isSpotify ? millisecondsASecond : 1);
    track.elapsed = number(lines.at(Position));
    track.playbackRate = lines.at(State) == u"playing" ? 1 : 0;
    track.sourceBundleID =
        isSpotify ? QStringLiteral("com.spotify.client") : QStringLiteral("com.apple.Music");
    if (lines.size() > Repeat) {
        track.shuffle = lines.at(Shuffle) == u"true";
        track.repeatMode = repeatMode(lines.at(Repeat), player);
    }
    track.canControlShuffleRepeat = isSpotify;
    track.isLoved = !isSpotify && lines.size() > Loved && lines.at(Loved) == u"true";
    track.canLove = !isSpotify;
    track.trackID = lines.value(TrackID);
    return track;
}
