#pragma once

#include "platform/linux/scripting/ScriptError.h"
#include "platform/linux/scripting/ScriptablePlayer.h"

#include <QHash>
#include <QStringList>

/// A player with the properties that the test gives it. It fails at every other one.
class FakeScriptablePlayer final : public ScriptablePlayer
{
public:
    QHash<QString, ScriptValue> properties;
    /// What it was told, as "VERB" or "NAME = VALUE".
    QStringList told;
    bool isBroken = false;

    ScriptValue property(const QString& name) override
    {
        if (isBroken || !properties.contains(name))
            throw ScriptError{QStringLiteral("no ") + name};
        return properties.value(name);
    }

    void setProperty(const QString& name, const ScriptValue& value) override
    {
        if (isBroken || !properties.contains(name))
            throw ScriptError{QStringLiteral("no ") + name};
        properties[name] = value;
        told.append(name + QStringLiteral(" = ") + ScriptValues::text(value).value_or(QStringLiteral("-")));
    }

    void perform(const QString& verb) override
    {
        if (isBroken)
            throw ScriptError{QStringLiteral("no ") + verb};
        told.append(verb);
    }
};
