#pragma once

#include <QString>

/// The players that are known by scripts, in the order in which they are looked for.
enum class ScriptedPlayer { Spotify, Music };

/// What scripts call the player.
inline QString scriptName(ScriptedPlayer player)
{
    return player == ScriptedPlayer::Spotify ? QStringLiteral("Spotify") : QStringLiteral("Music");
}
