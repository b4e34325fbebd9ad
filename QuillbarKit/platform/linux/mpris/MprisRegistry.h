#pragma once

#include "platform/linux/applications/RunningPlayers.h"
#include "platform/linux/mpris/MprisBus.h"

#include <QDBusMessage>
#include <QObject>
#include <QStringList>

#include <functional>
#include <map>
#include <memory>

class Clock;
class MainQueue;
class MprisPlayer;
class QDBusServiceWatcher;
class SerialQueue;

/// The players on the session bus, and which of them the desktop shows as playing now. Main thread only;
/// nothing in it waits for the bus or a player.
class MprisRegistry final : public QObject, public RunningPlayers
{
    Q_OBJECT

public:
    /// The queues and the clock outlive it.
    MprisRegistry(MainQueue& mainQueue, SerialQueue& background, const Clock& clock,
                  QObject* parent = nullptr);
    ~MprisRegistry() override;

    /// Null when no player has anything to show.
    MprisPlayer* current() const { return m_current; }

    QList<RunningPlayer> players() const override;
    void raise(qint64 pid) const override;

Q_SIGNALS:
    /// Another player is the current one, or the state of the current one has changed.
    void changed();

private:
    struct Entry
    {
        std::unique_ptr<MprisPlayer> player;
        bool wasPlaying = false;
        quint64 startedPlaying = 0;
    };

    void handleConnected();
    void handleLost();
    void handleOwner(const QString& name, const QString& owner);
    void ask(const QString& method, const QVariantList& arguments,
             std::function<void(const QVariant&)> answer);
    void handlePlayer(const QString& owner);
    void choose();

    MainQueue& m_mainQueue;
    const Clock& m_clock;
    MprisBus m_bus;
    std::unique_ptr<QDBusServiceWatcher> m_watcher;
    /// Unique name by well-known name. Some players go by several.
    std::map<QString, QString> m_owners;
    /// By unique name.
    std::map<QString, Entry> m_players;
    MprisPlayer* m_current = nullptr;
    quint64 m_starts = 0;
};
