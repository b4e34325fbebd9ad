#pragma once

#include "media/MediaCommand.h"
#include "media/RepeatMode.h"
#include "media/ScriptedPlayer.h"

#include <QString>

/// The texts of the scripts that the players get. Pure.
namespace PlayerScripts {
/// Whether it plays: "playing", "paused", "stopped".
QString state(ScriptedPlayer player);

/// All that is shown of the track, one line each, as PlayerReply reads it.
QString read(ScriptedPlayer player);

/// The cover from Music itself, unless the track is no longer that one; an empty `trackID` asks for whatever
/// cover is there.
QString cover(const QString& trackID);

/// Where Spotify has its cover.
QString artworkUrl();

QString command(ScriptedPlayer player, MediaCommand command);

/// `seconds` from the start of the track.
QString seek(ScriptedPlayer player, double seconds);

QString setShuffle(ScriptedPlayer player, bool enabled);

/// Spotify repeats or doesn't: one track as little as all.
QString setRepeat(ScriptedPlayer player, RepeatMode mode);

/// Music's mark of a favourite, whichever of its two names the player's version knows.
QString setLoved(bool loved);
} // namespace PlayerScripts
