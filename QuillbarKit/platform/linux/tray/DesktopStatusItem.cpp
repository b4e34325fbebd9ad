#include "platform/linux/tray/DesktopStatusItem.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace {
const auto watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
}

DesktopStatusItem::DesktopStatusItem(const QDBusConnection& bus, X11Connection& connection,
                                     MainQueue& mainQueue, QObject* parent)
    : QObject(parent), m_notifierItem(bus, mainQueue), m_embeddedItem(connection, mainQueue)
{
    // Until it is known, it is nowhere: an icon that jumps from one place to another is worse than a late
    // one.
    setHasWatcher(bus.isConnected());
    if (!bus.isConnected())
        return;
    m_watcher.setConnection(bus);
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    m_watcher.addWatchedService(watcherName);
    connect(
        &m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString&, const QString&, const QString& owner) { setHasWatcher(!owner.isEmpty()); });
    auto question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"));
    question << watcherName;
    auto* answer = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* call) {
        const QDBusPendingReply<bool> reply = *call;
        setHasWatcher(reply.isValid() && reply.value());
        call->deleteLater();
    });
}

void DesktopStatusItem::setHasWatcher(bool hasWatcher)
{
    m_hasWatcher = hasWatcher;
    m_embeddedItem.setShown(!hasWatcher);
}

void DesktopStatusItem::install(const QImage& image, const QString& title)
{
    m_notifierItem.install(image, title);
    m_embeddedItem.install(image, title);
}

void DesktopStatusItem::setMenu(QList<StatusMenuEntry> menu)
{
    m_notifierItem.setMenu(menu);
    m_embeddedItem.setMenu(std::move(menu));
}

void DesktopStatusItem::setClickHandler(std::function<void()> handler)
{
    m_notifierItem.setClickHandler(handler);
    m_embeddedItem.setClickHandler(std::move(handler));
}

std::optional<ScreenRect> DesktopStatusItem::frameOnScreen() const
{
    return m_hasWatcher ? m_notifierItem.frameOnScreen() : m_embeddedItem.frameOnScreen();
}
