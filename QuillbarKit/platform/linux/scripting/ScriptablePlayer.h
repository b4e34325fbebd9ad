#pragma once

#include "platform/linux/scripting/ScriptValue.h"

#include <QString>

/// What a script can say to the program that it tells. Every member may throw a ScriptError.
class ScriptablePlayer
{
public:
    virtual ~ScriptablePlayer() = default;

    /// `name` as the script writes it: "player position", "name of current track".
    virtual ScriptValue property(const QString& name) = 0;
    virtual void setProperty(const QString& name, const ScriptValue& value) = 0;
    /// "playpause", "next track" or "previous track".
    virtual void perform(const QString& verb) = 0;
};
