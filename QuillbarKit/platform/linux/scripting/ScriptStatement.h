#pragma once

#include "platform/linux/scripting/ScriptExpression.h"

#include <QString>

#include <vector>

/// A line of a script, or a block with the lines in it.
struct ScriptStatement
{
    enum class Kind {
        /// The value of `expression` is the script's result unless another one follows.
        Evaluate,
        /// Ends the script with the value of `expression`.
        Return,
        /// Gives `name` the value of `expression`.
        Set,
        /// Tells the player to do `name`.
        Perform,
        /// `body` if `expression` and `other` are the same, or with `isNegated` if they aren't.
        If,
        /// `body`, and `onError` where that fails.
        Try,
    };

    Kind kind = Kind::Evaluate;
    QString name = {};
    ScriptExpression expression = {};
    ScriptExpression other = {};
    bool isNegated = false;
    std::vector<ScriptStatement> body = {};
    std::vector<ScriptStatement> onError = {};
};
