#pragma once

#include <QString>

/// A piece of a script's text.
struct ScriptToken
{
    enum class Kind { Word, Number, String, Join, Open, Close, LineEnd };

    Kind kind = Kind::LineEnd;
    /// The word, the number's digits, or the string with its escapes resolved.
    QString text = {};

    bool operator==(const ScriptToken&) const = default;
};
