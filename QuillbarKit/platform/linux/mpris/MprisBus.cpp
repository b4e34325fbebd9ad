#include "platform/linux/mpris/MprisBus.h"

#include "platform/linux/dbus/SessionBus.h"
#include "support/MainQueue.h"
#include "support/SerialQueue.h"

#include <QPointer>

#include <algorithm>

namespace {
/// How long to wait before the bus is looked for again, in seconds: a restart takes no time, a session that
/// is ending never brings one back.
constexpr double shortestDelay = 0.25;
constexpr double longestDelay = 10;
} // namespace

MprisBus::MprisBus(MainQueue& mainQueue, SerialQueue& background, QObject* parent)
    : QObject(parent), m_mainQueue(mainQueue), m_background(background), m_connection(QString()),
      m_delay(shortestDelay)
{}

MprisBus::~MprisBus()
{
    if (m_retry)
        m_retry->cancel();
    if (!m_connectionName.isEmpty())
        QDBusConnection::disconnectFromBus(m_connectionName);
}

void MprisBus::connectToBus()
{
    if (!SessionBus::isAnnounced()) {
        tryLater();
        return;
    }
    const auto name = QStringLiteral("quillbar-players-%1").arg(++m_attempts);
    m_background.async([&mainQueue = m_mainQueue, bus = QPointer(this), name] {
        const auto connection = QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
        mainQueue.async([bus, name, connection] {
            if (bus)
                bus->handleAttempt(connection, name);
            else
                QDBusConnection::disconnectFromBus(name);
        });
    });
}

void MprisBus::handleAttempt(const QDBusConnection& connection, const QString& name)
{
    if (!connection.isConnected()) {
        QDBusConnection::disconnectFromBus(name);
        tryLater();
        return;
    }
    m_connection = connection;
    m_connectionName = name;
    m_delay = shortestDelay;
    m_connection.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                         QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                         SLOT(handleDisconnected()));
    Q_EMIT connected();
}

void MprisBus::handleDisconnected()
{
    if (m_connectionName.isEmpty())
        return;
    Q_EMIT lost();
    m_connection = QDBusConnection(QString());
    QDBusConnection::disconnectFromBus(m_connectionName);
    m_connectionName.clear();
    tryLater();
}

void MprisBus::tryLater()
{
    m_retry = WorkItem::make([this] { connectToBus(); });
    m_mainQueue.asyncAfter(m_delay, m_retry);
    m_delay = std::min(longestDelay, m_delay * 2);
}
