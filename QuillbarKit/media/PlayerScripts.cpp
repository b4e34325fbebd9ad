#include "media/PlayerScripts.h"

#include <QLocale>

namespace {
const auto head = QStringLiteral(R"(tell application "%1"
    if player state is stopped then return "STOPPED"
    set t to name of current track
    set ar to artist of current track
    set al to album of current track
    set d to (duration of current track)
    set p to player position
    set ps to (player state as string)
)");

const auto spotifyPart = QStringLiteral(R"(    set sh to "false"
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
)");

const auto musicPart = QStringLiteral(R"(    set sh to "false"
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
)");

// The line feeds are the script's own: it gets a backslash and an n.
const auto tail = QStringLiteral(
    R"(    return t & "\n" & ar & "\n" & al & "\n" & d & "\n" & p & "\n" & ps & "\n" & sh & "\n" & rp & "\n" & lv & "\n" & tid
end tell)");

const auto lovedScript = QStringLiteral(R"(tell application "Music"
    try
        set favorited of current track to %1
    on error
        try
            set loved of current track to %1
        end try
    end try
end tell)");

QString tellOnce(ScriptedPlayer player, const QString& what)
{
    return QStringLiteral("tell application \"") + scriptName(player) + QStringLiteral("\" to ") + what;
}

QString boolean(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

/// The shortest digits that give the number again, never with an exponent.
QString decimal(double number)
{
    return QString::number(number, 'f', QLocale::FloatingPointShortest);
}
} // namespace

QString PlayerScripts::state(ScriptedPlayer player)
{
    return tellOnce(player, QStringLiteral("player state as string"));
}

QString PlayerScripts::read(ScriptedPlayer player)
{
    return head.arg(scriptName(player)) + (player == ScriptedPlayer::Spotify ? spotifyPart : musicPart) +
           tail;
}

QString PlayerScripts::cover(const QString& trackID)
{
    // Not by arg(): the identifier may hold a place marker itself.
    const QString guard = trackID.isEmpty()
                              ? QString()
                              : QStringLiteral("if (persistent ID of current track as text) is not \"") +
                                    trackID + QStringLiteral("\" then return\n");
    return QStringLiteral("tell application \"Music\"\n") + guard +
           QStringLiteral("return (get raw data of artwork 1 of current track)\nend tell");
}

QString PlayerScripts::artworkUrl()
{
    return tellOnce(ScriptedPlayer::Spotify, QStringLiteral("artwork url of current track"));
}

QString PlayerScripts::command(ScriptedPlayer player, MediaCommand command)
{
    switch (command) {
    case MediaCommand::TogglePlayPause:
        return tellOnce(player, QStringLiteral("playpause"));
    case MediaCommand::Next:
        return tellOnce(player, QStringLiteral("next track"));
    case MediaCommand::Previous:
        return tellOnce(player, QStringLiteral("previous track"));
    }
    Q_UNREACHABLE();
}

QString PlayerScripts::seek(ScriptedPlayer player, double seconds)
{
    return tellOnce(player, QStringLiteral("set player position to ") + decimal(seconds));
}

QString PlayerScripts::setShuffle(ScriptedPlayer player, bool enabled)
{
    const QString property =
        player == ScriptedPlayer::Spotify ? QStringLiteral("shuffling") : QStringLiteral("shuffle enabled");
    return tellOnce(player, QStringLiteral("set ") + property + QStringLiteral(" to ") + boolean(enabled));
}

QString PlayerScripts::setRepeat(ScriptedPlayer player, RepeatMode mode)
{
    if (player == ScriptedPlayer::Spotify)
        return tellOnce(player, QStringLiteral("set repeating to ") + boolean(mode != RepeatMode::Off));
    return tellOnce(player, QStringLiteral("set song repeat to ") + RepeatModes::rawValue(mode));
}

QString PlayerScripts::setLoved(bool loved)
{
    return lovedScript.arg(boolean(loved));
}
