#include "platform/linux/scripting/PlayerBus.h"

#include "platform/linux/dbus/SessionBus.h"
#include "platform/linux/mpris/MprisMetadataParser.h"
#include "support/Clock.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QEventLoop>

#include <atomic>

namespace {
const auto playerPrefix = QStringLiteral("org.mpris.MediaPlayer2.");
const auto mirror = QStringLiteral("org.mpris.MediaPlayer2.playerctld");
const auto busService = QStringLiteral("org.freedesktop.DBus");

constexpr int answerMilliseconds = 2000;
constexpr double silenceSeconds = 5;

QDBusMessage cancelled()
{
    return QDBusMessage::createError(QDBusError::Failed, QStringLiteral("No player is waited for any more."));
}

QString nextConnectionName()
{
    static std::atomic<int> count = 0;
    return QStringLiteral("quillbar-scripts-%1").arg(++count);
}
} // namespace

PlayerBus::PlayerBus(const Clock& clock) : m_clock(clock), m_connection(QString()) {}

PlayerBus::~PlayerBus()
{
    if (!m_connectionName.isEmpty())
        QDBusConnection::disconnectFromBus(m_connectionName);
}

QStringList PlayerBus::players()
{
    const auto reply = call(QDBusMessage::createMethodCall(
        busService, QStringLiteral("/org/freedesktop/DBus"), busService, QStringLiteral("ListNames")));
    if (reply.type() != QDBusMessage::ReplyMessage)
        return {};
    QStringList players;
    const auto names = reply.arguments().value(0).toStringList();
    for (const auto& name : names) {
        if (name.startsWith(playerPrefix) && name != mirror)
            players.append(name);
    }
    players.sort();
    // A player that comes back under its name is a new one.
    m_silentUntil.removeIf([&players](const auto& entry) {
        return entry.key() != busService && !players.contains(entry.key());
    });
    return players;
}

QDBusMessage PlayerBus::call(const QDBusMessage& message)
{
    const QString service = message.service();
    if (isCancelled())
        return cancelled();
    if (!connect())
        return QDBusMessage::createError(QDBusError::Disconnected,
                                         QStringLiteral("There is no session bus."));
    if (m_clock.monotonicSeconds() < m_silentUntil.value(service))
        return QDBusMessage::createError(QDBusError::Failed, service + QStringLiteral(" doesn’t answer."));
    QDBusMessage call = message;
    call.setAutoStartService(false);
    return wait(m_connection.asyncCall(call, answerMilliseconds));
}

QDBusMessage PlayerBus::wait(const QDBusPendingCall& call)
{
    // A loop, since a call that the library itself waits for can't be ended from outside.
    const QDBusPendingCallWatcher watcher(call);
    QEventLoop answer;
    QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &answer, &QEventLoop::quit);
    std::unique_lock lock(m_mutex);
    if (!m_isCancelled) {
        m_waiting = &answer;
        lock.unlock();
        answer.exec();
        lock.lock();
        m_waiting = nullptr;
    }
    return watcher.isFinished() ? watcher.reply() : cancelled();
}

void PlayerBus::cancel()
{
    const std::lock_guard lock(m_mutex);
    m_isCancelled = true;
    if (m_waiting)
        QMetaObject::invokeMethod(m_waiting, &QEventLoop::quit, Qt::QueuedConnection);
}

bool PlayerBus::isCancelled() const
{
    const std::lock_guard lock(m_mutex);
    return m_isCancelled;
}

std::optional<QVariantMap> PlayerBus::properties(const QString& player, const QString& interface)
{
    auto message = QDBusMessage::createMethodCall(player, QStringLiteral("/org/mpris/MediaPlayer2"),
                                                  QStringLiteral("org.freedesktop.DBus.Properties"),
                                                  QStringLiteral("GetAll"));
    message << interface;
    const auto reply = call(message);
    // A command may take its time, so this alone tells a player that hangs.
    if (SessionBus::isSilence(reply))
        m_silentUntil.insert(player, m_clock.monotonicSeconds() + silenceSeconds);
    if (reply.type() != QDBusMessage::ReplyMessage)
        return std::nullopt;
    return MprisMetadataParser::unwrapped(reply.arguments().value(0)).toMap();
}

bool PlayerBus::connect()
{
    if (m_connection.isConnected())
        return true;
    if (!m_connectionName.isEmpty())
        QDBusConnection::disconnectFromBus(m_connectionName);
    m_connectionName.clear();
    if (!SessionBus::isAnnounced())
        return false;
    m_connectionName = nextConnectionName();
    m_connection = QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName);
    m_silentUntil.clear();
    return m_connection.isConnected();
}
