#pragma once

#include "platform/RunningApplication.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

/// What became of a script.
struct ScriptResult
{
    /// None when the script has no result, or none of that form.
    std::optional<QString> stringValue;
    std::optional<QByteArray> data;
    /// Describes why it failed; the values are absent then.
    std::optional<QString> error;
};

/// Runs scripts that talk to players. Any one thread at a time, not the main one: it waits for the player,
/// within bounds. Only cancel() may be called meanwhile, from another.
class ScriptRunner
{
public:
    virtual ~ScriptRunner() = default;

    /// None for a text that is no script.
    virtual std::optional<ScriptResult> execute(const QString& source) = 0;

    /// The players that could be told anything.
    virtual QList<RunningApplication> runningApplications() = 0;

    /// Ends the waiting for players, now and for good: a script that runs, and every later one, comes to
    /// nothing at once.
    virtual void cancel() = 0;
};
