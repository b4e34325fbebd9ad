#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

class Clock;

/// A connection of the scripts' own to the session bus, for calls that wait. Made at the first call, and
/// again after the bus has gone and come back. One thread at a time, not the main one.
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

    /// Waits for the answer for 2 seconds at most, and starts no program. Who has let that time pass once is
    /// not waited for in the 10 seconds that follow: every call fails at once.
    QDBusMessage call(const QDBusMessage& message);

    /// All properties of that interface of a player; none where it doesn't tell.
    std::optional<QVariantMap> properties(const QString& player, const QString& interface);

private:
    bool connect();

    const Clock& m_clock;
    QDBusConnection m_connection;
    QString m_connectionName;
    /// Until when, on the monotonic clock, a service is not waited for.
    QHash<QString, double> m_silentUntil;
};
