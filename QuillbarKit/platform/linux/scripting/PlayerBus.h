#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <mutex>
#include <optional>

class Clock;
class QDBusPendingCall;
class QEventLoop;

/// A connection of the scripts' own to the session bus, for calls that wait. Made at the first call, and
/// again after the bus has gone and come back. One thread at a time, not the main one, but for cancel() and
/// isCancelled().
class PlayerBus
{
public:
    /// `clock` outlives this.
    explicit PlayerBus(const Clock& clock);
    ~PlayerBus();
    PlayerBus(const PlayerBus&) = delete;
    PlayerBus& operator=(const PlayerBus&) = delete;

    /// The bus names of the players that run, sorted; without the one that only mirrors the others. None
    /// without a bus.
    QStringList players();

    /// Waits for the answer for 2 seconds at most, and starts no program.
    QDBusMessage call(const QDBusMessage& message);

    /// All properties of that interface of a player; none where it doesn't tell. A player that has not
    /// answered in time is not waited for in the 5 seconds that follow: every call to it fails at once.
    std::optional<QVariantMap> properties(const QString& player, const QString& interface);

    /// Ends the waiting: the call that is under way, and every later one, fails at once.
    void cancel();
    bool isCancelled() const;

private:
    bool connect();
    QDBusMessage wait(const QDBusPendingCall& call);

    const Clock& m_clock;
    QDBusConnection m_connection;
    QString m_connectionName;
    /// Until when, on the monotonic clock, a player is not waited for.
    QHash<QString, double> m_silentUntil;

    mutable std::mutex m_mutex;
    // These two under the mutex.
    bool m_isCancelled = false;
    /// Of the call that is waited for, null when none is.
    QEventLoop* m_waiting = nullptr;
};
