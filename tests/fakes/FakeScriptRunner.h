#pragma once

#include "platform/ScriptRunner.h"

#include <QHash>
#include <QStringList>

#include <utility>

/// Players that answer scripts as told; every script that is none of these has no result.
class FakeScriptRunner final : public ScriptRunner
{
public:
    QList<RunningApplication> applications;
    QHash<QString, ScriptResult> answers;
    /// Texts that can't be made into scripts.
    QStringList noScripts;

    std::optional<ScriptResult> execute(const QString& source) override
    {
        m_executed.append(source);
        return noScripts.contains(source) ? std::nullopt : std::optional(answers.value(source));
    }

    QList<RunningApplication> runningApplications() override { return applications; }

    bool isCancelled = false;
    void cancel() override { isCancelled = true; }

    const QStringList& executed() const { return m_executed; }

    /// What was executed since the last call.
    QStringList takeExecuted() { return std::exchange(m_executed, {}); }

private:
    QStringList m_executed;
};
