#pragma once

#include "shell/NotchModule.h"

#include <QObject>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

/// All modules in registration order, which of them are visible and in which order, and the one that peeks.
/// Main thread only.
class ModuleRegistry : public QObject
{
    Q_OBJECT

public:
    explicit ModuleRegistry(std::vector<std::unique_ptr<NotchModule>> modules, QObject* parent = nullptr);
    ~ModuleRegistry() override;

    /// When set, only these are visible; their order here plays no part.
    std::optional<QStringList> enabledIDs() const { return m_enabledIDs; }
    void setEnabledIDs(std::optional<QStringList> enabledIDs);

    /// When set, the wanted display order, without duplicates. Modules that it leaves out come last.
    std::optional<QStringList> order() const { return m_order; }
    void setOrder(std::optional<QStringList> order);

    /// The first module of that id, visible or not; null when there is none.
    NotchModule* module(const QString& id) const;

    std::vector<NotchModule*> visibleModules() const;

    /// The visible, active module with the highest priority, the first in display order among equals; null
    /// when none is active.
    NotchModule* peekModule() const;

    /// To be called when something that a module's isActive is made of may have changed.
    void notifyActivityChanged() { Q_EMIT changed(); }

Q_SIGNALS:
    /// What the functions above return may have changed.
    void changed();

private:
    std::vector<std::unique_ptr<NotchModule>> m_modules;
    std::optional<QStringList> m_enabledIDs;
    std::optional<QStringList> m_order;
};
