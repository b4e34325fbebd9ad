#pragma once

#include "platform/linux/scripting/ScriptToken.h"

#include <QList>
#include <QString>

#include <optional>

/// Takes a script's text apart. Pure.
namespace ScriptLexer {
/// The tokens, each line closed by a LineEnd, empty lines left out. None where a character has no place in a
/// script or a string has no end.
std::optional<QList<ScriptToken>> tokens(const QString& source);
} // namespace ScriptLexer
