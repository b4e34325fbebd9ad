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
/// within bounds.
class ScriptRunner
{
public:
    virtual ~ScriptRunner() = default;

    /// None for a text that is no script.
    virtual std::optional<ScriptResult> execute(const QString& source) = 0;

    /// The players that could be told anything.
    virtual QList<RunningApplication> runningApplications() = 0;
};
