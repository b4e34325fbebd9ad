#include "platform/linux/tray/TrayMenuAdaptor.h"

#include <utility>

namespace {
QVariantMap only(const QStringList& names, QVariantMap properties)
{
    // An empty list stands for all of them.
    if (!names.isEmpty())
        properties.removeIf([&](QVariantMap::iterator each) { return !names.contains(each.key()); });
    return properties;
}
} // namespace

TrayMenuAdaptor::TrayMenuAdaptor(QObject* exported, std::function<void(const QString&)> chosen)
    : QDBusAbstractAdaptor(exported), m_chosen(std::move(chosen))
{
    TrayTypes::registerAll();
}

void TrayMenuAdaptor::setMenu(QList<StatusMenuEntry> menu)
{
    m_menu = std::move(menu);
    // Bars differ in which of the two they listen to for a changed check mark.
    QList<TrayMenuProperties> updated;
    for (int id = 1; id <= m_menu.size(); ++id)
        updated.append({id, propertiesOf(id)});
    Q_EMIT ItemsPropertiesUpdated(updated, {});
    Q_EMIT LayoutUpdated(++m_revision, 0);
}

const StatusMenuEntry* TrayMenuAdaptor::entryOf(int id) const
{
    return id >= 1 && id <= m_menu.size() ? &m_menu.at(id - 1) : nullptr;
}

QVariantMap TrayMenuAdaptor::propertiesOf(int id) const
{
    if (id == 0)
        return {{QStringLiteral("children-display"), QStringLiteral("submenu")}};
    const auto* entry = entryOf(id);
    if (!entry)
        return {};
    if (entry->isSeparator())
        return {{QStringLiteral("type"), QStringLiteral("separator")}};
    // One underscore would mark the letter after it.
    auto label = entry->title;
    label.replace(u'_', QStringLiteral("__"));
    QVariantMap properties{{QStringLiteral("label"), label}, {QStringLiteral("enabled"), entry->isEnabled}};
    if (entry->isChecked) {
        properties.insert(QStringLiteral("toggle-type"), QStringLiteral("checkmark"));
        properties.insert(QStringLiteral("toggle-state"), *entry->isChecked ? 1 : 0);
    }
    if (!entry->keyEquivalent.isEmpty()) {
        // Command, inside a menu, is Control here.
        const QStringList chord{QStringLiteral("Control"), entry->keyEquivalent};
        properties.insert(QStringLiteral("shortcut"), QVariant::fromValue(QList<QStringList>{chord}));
    }
    return properties;
}

uint TrayMenuAdaptor::GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                                TrayMenuLayout& layout) const
{
    layout = {parentId, only(propertyNames, propertiesOf(parentId)), {}};
    for (int id = 1; parentId == 0 && recursionDepth != 0 && id <= m_menu.size(); ++id)
        layout.children.append({id, only(propertyNames, propertiesOf(id)), {}});
    return m_revision;
}

QList<TrayMenuProperties> TrayMenuAdaptor::GetGroupProperties(const QList<int>& ids,
                                                              const QStringList& propertyNames) const
{
    QList<TrayMenuProperties> group;
    for (const auto id : ids) {
        if (id == 0 || entryOf(id))
            group.append({id, only(propertyNames, propertiesOf(id))});
    }
    return group;
}

QDBusVariant TrayMenuAdaptor::GetProperty(int id, const QString& name) const
{
    // The bus has no way to pass nothing.
    return QDBusVariant(propertiesOf(id).value(name, QString()));
}

void TrayMenuAdaptor::Event(int id, const QString& eventId, const QDBusVariant&, uint)
{
    const auto* entry = entryOf(id);
    if (entry && eventId == QLatin1String("clicked") && entry->isEnabled)
        m_chosen(entry->title);
}

QList<int> TrayMenuAdaptor::EventGroup(const QList<TrayMenuEvent>& events)
{
    QList<int> unknown;
    for (const auto& event : events) {
        if (event.id != 0 && !entryOf(event.id))
            unknown.append(event.id);
        else
            Event(event.id, event.kind, event.data, event.timestamp);
    }
    return unknown;
}

bool TrayMenuAdaptor::AboutToShow(int) const
{
    return false; // The bar has always been told of the newest menu.
}

QList<int> TrayMenuAdaptor::AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors) const
{
    for (const auto id : ids) {
        if (id != 0 && !entryOf(id))
            idErrors.append(id);
    }
    return {};
}
