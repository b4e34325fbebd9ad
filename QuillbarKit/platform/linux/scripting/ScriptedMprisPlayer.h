#pragma once

#include "platform/linux/mpris/MprisMetadata.h"
#include "platform/linux/scripting/ScriptablePlayer.h"

#include <QVariantMap>

#include <optional>

class PlayerBus;

/// A player of the MPRIS 2.2 interface in the words of the player scripts, for the time of one script. What
/// it tells is read once, and again after each change, so that all that a script reads is of one moment.
class ScriptedMprisPlayer final : public ScriptablePlayer
{
public:
    /// How the program that the script means counts the duration of a track.
    enum class DurationUnit { Seconds, Milliseconds };

    /// `bus` outlives this; `name` is the player's bus name.
    ScriptedMprisPlayer(PlayerBus& bus, QString name, DurationUnit durationUnit);

    ScriptValue property(const QString& name) override;
    void setProperty(const QString& name, const ScriptValue& value) override;
    void perform(const QString& verb) override;

private:
    const QVariantMap& state();
    QVariant stateOf(const QString& property, const QString& scriptName);
    MprisMetadata track();
    ScriptValue duration();
    double position();
    void setPosition(double seconds);
    void set(const QString& property, const QVariant& value);
    void call(const QString& interface, const QString& method, const QVariantList& arguments);

    PlayerBus& m_bus;
    const QString m_name;
    const DurationUnit m_durationUnit;
    std::optional<QVariantMap> m_state;
};
