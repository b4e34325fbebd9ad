#pragma once

#include "platform/linux/scripting/ScriptStatement.h"

#include <QString>

#include <optional>
#include <vector>

/// A script that tells one program something.
struct PlayerScript
{
    QString application;
    std::vector<ScriptStatement> statements;
};

/// Reads the scripts that are written for players: `tell application "X" to` with one statement, or a block
/// of them up to `end tell`. In it: `set`, `return`, `if A is [not] B then return`, `try` with `on error`,
/// verbs, and expressions of strings, numbers, names, `of`, `&`, `as text` and parentheses. Pure; any text is
/// survived.
namespace ScriptParser {
/// The longest text that is read, in characters.
inline constexpr qsizetype longestSource = qsizetype(64) * 1024;
/// How deep blocks and parentheses may stand in one another.
inline constexpr int deepestNesting = 32;

/// None for a text that is no such script.
std::optional<PlayerScript> parse(const QString& source);
} // namespace ScriptParser
