#pragma once

#include "platform/StatusItem.h"
#include "platform/linux/tray/TrayTypes.h"

#include <QDBusAbstractAdaptor>

#include <functional>

/// The bus interface com.canonical.dbusmenu: a menu that the desktop's bar shows in our place. Entry n of the
/// menu, counted from 1, has the number n; 0 is the menu itself. There are no menus within it.
class TrayMenuAdaptor final : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version CONSTANT)
    Q_PROPERTY(QString TextDirection READ textDirection CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath CONSTANT)

public:
    /// `chosen` is called with the title of an entry that was chosen, inside the bar's call.
    TrayMenuAdaptor(QObject* exported, std::function<void(const QString&)> chosen);

    /// Replaces the menu and tells the bar.
    void setMenu(QList<StatusMenuEntry> menu);

    const QList<StatusMenuEntry>& menu() const { return m_menu; }

    uint version() const { return 3; }
    QString textDirection() const { return QStringLiteral("ltr"); }
    QString status() const { return QStringLiteral("normal"); }
    QStringList iconThemePath() const { return {}; }

public Q_SLOTS:
    // The interface gives these names.
    uint GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                   TrayMenuLayout& layout) const;
    QList<TrayMenuProperties> GetGroupProperties(const QList<int>& ids,
                                                 const QStringList& propertyNames) const;
    QDBusVariant GetProperty(int id, const QString& name) const;
    void Event(int id, const QString& eventId, const QDBusVariant& data, uint timestamp);
    QList<int> EventGroup(const QList<TrayMenuEvent>& events);
    bool AboutToShow(int id) const;
    QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors) const;

Q_SIGNALS:
    void ItemsPropertiesUpdated(const QList<TrayMenuProperties>& updated,
                                const QList<TrayMenuRemovals>& removed);
    void LayoutUpdated(uint revision, int parentId);
    void ItemActivationRequested(int id, uint timestamp);

private:
    const StatusMenuEntry* entryOf(int id) const;
    QVariantMap propertiesOf(int id) const;

    std::function<void(const QString&)> m_chosen;
    QList<StatusMenuEntry> m_menu;
    uint m_revision = 1;
};
