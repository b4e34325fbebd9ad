#include "shell/ModuleRegistry.h"

#include <QHash>

#include <algorithm>
#include <limits>

ModuleRegistry::ModuleRegistry(std::vector<std::unique_ptr<NotchModule>> modules, QObject* parent)
    : QObject(parent), m_modules(std::move(modules))
{}

ModuleRegistry::~ModuleRegistry() = default;

void ModuleRegistry::setEnabledIDs(std::optional<QStringList> enabledIDs)
{
    m_enabledIDs = std::move(enabledIDs);
    Q_EMIT changed();
}

void ModuleRegistry::setOrder(std::optional<QStringList> order)
{
    m_order = std::move(order);
    Q_EMIT changed();
}

NotchModule* ModuleRegistry::module(const QString& id) const
{
    const auto found =
        std::ranges::find_if(m_modules, [&](const auto& module) { return module->id() == id; });
    return found == m_modules.end() ? nullptr : found->get();
}

std::vector<NotchModule*> ModuleRegistry::visibleModules() const
{
    std::vector<NotchModule*> visible;
    for (const auto& module : m_modules) {
        if (!m_enabledIDs || m_enabledIDs->contains(module->id()))
            visible.push_back(module.get());
    }
    if (!m_order)
        return visible;
    QHash<QString, qsizetype> ranks;
    for (qsizetype i = 0; i < m_order->size(); ++i) {
        const auto& id = m_order->at(i);
        if (ranks.contains(id))
            qFatal("ModuleRegistry: the order names \"%s\" twice", qUtf8Printable(id));
        ranks.insert(id, i);
    }
    std::ranges::stable_sort(visible, {}, [&](const NotchModule* module) {
        return ranks.value(module->id(), std::numeric_limits<qsizetype>::max());
    });
    return visible;
}

NotchModule* ModuleRegistry::peekModule() const
{
    NotchModule* best = nullptr;
    for (auto* module : visibleModules()) {
        if (module->isActive() && (!best || module->peekPriority() > best->peekPriority()))
            best = module;
    }
    return best;
}
