#pragma once

#include <QString>

/// Thrown by what a script asks for and can't have. A `try` of the script catches it, else it ends the
/// script; it never leaves ScriptEvaluator.
struct ScriptError
{
    QString description;
};
