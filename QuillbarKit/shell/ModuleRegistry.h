#pragma once

#include "shell/NotchModule.h"

#include <QObject>
#include <QStringList>
#include <QtQmlIntegration>

#include <memory>
#include <optional>
#include <vector>

/// All modules in registration order, which of them are visible and in which order, and the one that peeks.
/// Main thread only.
class ModuleRegistry : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application controller")
    /// The ids of all modules in registration order, for views that are kept whatever is visible.
    Q_PROPERTY(QStringList allIDs READ allIDs CONSTANT)
    /// The ids of the visible modules in display order. Unlike changed(), its signal tells of a difference.
    Q_PROPERTY(QStringList visibleIDs READ visibleIDs NOTIFY visibleIDsChanged)
    /// The id of the module that peeks, empty when none does.
    Q_PROPERTY(QString peekModuleID READ peekModuleID NOTIFY changed)

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

    QStringList allIDs() const;
    QStringList visibleIDs() const { return m_visibleIDs; }

    // A view passes visibleIDs itself, so that it follows their changes.

    /// The id of the module to show for that selected id: itself when it is visible, else the first visible
    /// one, else empty.
    Q_INVOKABLE static QString shownID(const QString& selectedID, const QStringList& visibleIDs);

    /// The id to mark as selected for that selected id: itself, or the one shown where there is no such
    /// module at all.
    Q_INVOKABLE QString markedID(const QString& selectedID, const QStringList& visibleIDs) const;

    // For the views; the id is that of a registered module.
    Q_INVOKABLE QString title(const QString& id) const { return require(id).title(); }
    Q_INVOKABLE QString iconSystemName(const QString& id) const { return require(id).iconSystemName(); }
    Q_INVOKABLE bool fillsAvailableHeight(const QString& id) const
    {
        return require(id).fillsAvailableHeight();
    }
    Q_INVOKABLE ModuleView expandedView(const QString& id) const { return require(id).makeExpandedView(); }
    /// A view without a source where the module has none for that side.
    Q_INVOKABLE ModuleView peekLeading(const QString& id) const;
    Q_INVOKABLE ModuleView peekTrailing(const QString& id) const;

    /// The visible, active module with the highest priority, the first in display order among equals; null
    /// when none is active.
    NotchModule* peekModule() const;

    /// To be called when something that a module's isActive is made of may have changed.
    void notifyActivityChanged() { Q_EMIT changed(); }

    QString peekModuleID() const;

Q_SIGNALS:
    /// What the functions above return may have changed.
    void changed();
    void visibleIDsChanged();
    /// Other modules are enabled than before. The first choice handed over is no change.
    void choiceChanged();

private:
    NotchModule& require(const QString& id) const;
    void publish();

    std::vector<std::unique_ptr<NotchModule>> m_modules;
    std::optional<QStringList> m_enabledIDs;
    std::optional<QStringList> m_order;
    QStringList m_visibleIDs;
};
