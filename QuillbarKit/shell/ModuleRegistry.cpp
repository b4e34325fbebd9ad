#include "shell/ModuleRegistry.h"

#include <QHash>

#include <algorithm>
#include <limits>

ModuleRegistry::ModuleRegistry(std::vector<std::unique_ptr<NotchModule>> modules, QObject* parent)
    : QObject(parent), m_modules(std::move(modules))
{
    publish();
}

ModuleRegistry::~ModuleRegistry() = default;

void ModuleRegistry::setEnabledIDs(std::optional<QStringList> enabledIDs)
{
    const bool isOther = m_enabledIDs && m_enabledIDs != enabledIDs;
    m_enabledIDs = std::move(enabledIDs);
    publish();
    if (isOther)
        Q_EMIT choiceChanged();
}

void ModuleRegistry::setOrder(std::optional<QStringList> order)
{
    m_order = std::move(order);
    publish();
}

NotchModule* ModuleRegistry::module(const QString& id) const
{
    const auto found =
        std::ranges::find_if(m_modules, [&](const auto& module) { return module->id() == id; });
    return found == m_modules.end() ? nullptr : found->get();
}

QStringList ModuleRegistry::allIDs() const
{
    QStringList ids;
    for (const auto& module : m_modules)
        ids.append(module->id());
    return ids;
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

void ModuleRegistry::publish()
{
    QStringList ids;
    for (const auto* module : visibleModules())
        ids.append(module->id());
    if (ids != m_visibleIDs) {
        m_visibleIDs = ids;
        Q_EMIT visibleIDsChanged();
    }
    Q_EMIT changed();
}

QString ModuleRegistry::shownID(const QString& selectedID, const QStringList& visibleIDs)
{
    return visibleIDs.contains(selectedID) ? selectedID : visibleIDs.value(0);
}

QString ModuleRegistry::markedID(const QString& selectedID, const QStringList& visibleIDs) const
{
    return module(selectedID) ? selectedID : shownID(selectedID, visibleIDs);
}

QString ModuleRegistry::peekModuleID() const
{
    const auto* module = peekModule();
    return module ? module->id() : QString();
}

ModuleView ModuleRegistry::peekLeading(const QString& id) const
{
    return require(id).makePeekLeading().value_or(ModuleView());
}

ModuleView ModuleRegistry::peekTrailing(const QString& id) const
{
    return require(id).makePeekTrailing().value_or(ModuleView());
}

NotchModule& ModuleRegistry::require(const QString& id) const
{
    auto* found = module(id);
    if (!found)
        qFatal("ModuleRegistry: there is no module \"%s\"", qUtf8Printable(id));
    return *found;
}
