#pragma once

#include "platform/ScriptRunner.h"
#include "platform/linux/scripting/ScriptParser.h"

class ScriptablePlayer;

/// Does what a script says to a player.
namespace ScriptEvaluator {
/// How much text a script may put together in all, in characters.
inline constexpr qsizetype longestText = qsizetype(1024) * 1024;

/// What was done before an error stays done.
ScriptResult evaluate(const PlayerScript& script, ScriptablePlayer& player);
} // namespace ScriptEvaluator
