#pragma once

#include "platform/linux/scripting/ScriptValue.h"

#include <QString>

#include <vector>

/// Something in a script that has a value.
struct ScriptExpression
{
    enum class Kind {
        Literal,
        /// A variable, a constant or a property of the player, by `name`.
        Reference,
        /// The texts of all `parts`, one after the other.
        Join,
    };

    Kind kind = Kind::Literal;
    ScriptValue literal = {};
    QString name = {};
    std::vector<ScriptExpression> parts = {};
    /// Whether it is asked for `as text`.
    bool isText = false;
};
