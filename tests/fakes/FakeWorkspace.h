#pragma once

#include "platform/Workspace.h"

#include <QStringList>

#include <map>

/// Programs as a test installs and activates them.
class FakeWorkspace final : public Workspace
{
public:
    std::optional<QString> frontmostApplication() const override { return frontmost; }
    std::optional<QString> applicationName(const QString& bundleIdentifier) const override
    {
        const auto found = names.find(bundleIdentifier);
        return found == names.end() ? std::nullopt : std::optional(found->second);
    }
    std::optional<QImage> applicationIcon(const QString& bundleIdentifier, int) const override
    {
        const auto found = icons.find(bundleIdentifier);
        return found == icons.end() ? std::nullopt : std::optional(found->second);
    }
    std::optional<QString> applicationForProcess(qint64 pid) const override
    {
        ++processLookups;
        const auto found = processes.find(pid);
        return found == processes.end() ? std::nullopt : std::optional(found->second);
    }
    bool isRunning(const QString& bundleIdentifier) const override
    {
        return running.contains(bundleIdentifier);
    }
    bool activate(const QString& bundleIdentifier) override
    {
        if (!isRunning(bundleIdentifier))
            return false;
        activated.append(bundleIdentifier);
        return true;
    }

    std::optional<QString> frontmost;
    std::map<QString, QString> names;
    std::map<QString, QImage> icons;
    std::map<qint64, QString> processes;
    mutable int processLookups = 0;
    QStringList running;
    /// In the order of the calls.
    QStringList activated;
};
