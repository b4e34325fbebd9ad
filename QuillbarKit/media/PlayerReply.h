#pragma once

#include "media/NowPlaying.h"
#include "media/ScriptedPlayer.h"

#include <QString>

#include <optional>

/// What a player answers to the reading script. Pure.
namespace PlayerReply {
/// Everything but the cover and the moment, which the answer doesn't tell. None for no answer, a stopped
/// player, and an answer without a title or with too few lines.
std::optional<NowPlaying> parse(const std::optional<QString>& reply, ScriptedPlayer player);
} // namespace PlayerReply
