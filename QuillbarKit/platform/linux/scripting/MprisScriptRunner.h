#pragma once

#include "platform/ScriptRunner.h"

#include <QHash>

#include <memory>
#include <utility>

class Clock;
class PlayerBus;
struct PlayerScript;

/// Runs the scripts that are written for players against the player's object on the session bus. A script's
/// application is the player that calls itself so, else one whose identifier holds the word. Never starts a
/// program. A player that hangs holds it up for 2 seconds now and then, see PlayerBus.
class MprisScriptRunner final : public ScriptRunner
{
public:
    /// `clock` outlives the runner. The bus is connected to when it is first needed.
    explicit MprisScriptRunner(const Clock& clock);
    ~MprisScriptRunner() override;

    std::optional<ScriptResult> execute(const QString& source) override;

    /// By the name that a player gives itself and its desktop file's; each where missing by the last part of
    /// its bus name.
    QList<RunningApplication> runningApplications() override;

    void cancel() override;

private:
    /// By bus name.
    using Players = QList<std::pair<QString, RunningApplication>>;

    ScriptResult tell(const PlayerScript& script);
    Players players();
    RunningApplication identity(const QString& busName);
    std::optional<QString> find(const QString& application);

    const std::unique_ptr<PlayerBus> m_bus;
    /// What players have said of themselves; it stays as it is while they run.
    QHash<QString, RunningApplication> m_identities;
};
