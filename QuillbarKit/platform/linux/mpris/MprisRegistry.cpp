#include "platform/linux/mpris/MprisRegistry.h"

#include "platform/linux/mpris/MprisChoice.h"
#include "platform/linux/mpris/MprisPlayer.h"
#include "support/MainQueue.h"

#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>

#include <algorithm>
#include <utility>

namespace {
const auto busName = QStringLiteral("org.freedesktop.DBus");
const auto playerNames = QStringLiteral("org.mpris.MediaPlayer2");

bool isPlayerName(const QString& name)
{
    // That one mirrors another player, which is here as well.
    return name.startsWith(playerNames + u'.') && name != playerNames + QStringLiteral(".playerctld");
}
} // namespace

MprisRegistry::MprisRegistry(MainQueue& mainQueue, SerialQueue& background, const Clock& clock,
                             QObject* parent)
    : QObject(parent), m_mainQueue(mainQueue), m_clock(clock), m_bus(mainQueue, background)
{
    connect(&m_bus, &MprisBus::connected, this, &MprisRegistry::handleConnected);
    connect(&m_bus, &MprisBus::lost, this, &MprisRegistry::handleLost);
    m_bus.connectToBus();
}

MprisRegistry::~MprisRegistry() = default;

void MprisRegistry::handleConnected()
{
    // Before the list, so that none comes or goes in between.
    m_watcher = std::make_unique<QDBusServiceWatcher>(playerNames + u'*', m_bus.connection());
    connect(m_watcher.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString& name, const QString&, const QString& owner) { handleOwner(name, owner); });
    ask(QStringLiteral("ListNames"), {}, [this](const QVariant& answer) {
        const auto names = answer.toStringList();
        for (const auto& name : names) {
            if (!isPlayerName(name) || m_owners.contains(name))
                continue;
            ask(QStringLiteral("GetNameOwner"), {name},
                [this, name](const QVariant& owner) { handleOwner(name, owner.toString()); });
        }
    });
}

void MprisRegistry::handleLost()
{
    m_watcher.reset();
    m_owners.clear();
    m_current = nullptr;
    m_players.clear();
    Q_EMIT changed();
}

void MprisRegistry::ask(const QString& method, const QVariantList& arguments,
                        std::function<void(const QVariant&)> answer)
{
    auto message =
        QDBusMessage::createMethodCall(busName, QStringLiteral("/org/freedesktop/DBus"), busName, method);
    message.setArguments(arguments);
    // Below the watcher, so that no answer of a bus that is gone counts.
    const auto* call = new QDBusPendingCallWatcher(m_bus.connection().asyncCall(message), m_watcher.get());
    connect(call, &QDBusPendingCallWatcher::finished, this,
            [answer = std::move(answer)](QDBusPendingCallWatcher* call) {
                call->deleteLater();
                const auto reply = call->reply();
                if (reply.type() == QDBusMessage::ReplyMessage)
                    answer(reply.arguments().value(0));
            });
}

void MprisRegistry::handleOwner(const QString& name, const QString& owner)
{
    if (!isPlayerName(name))
        return;
    const auto former = std::exchange(m_owners[name], owner);
    if (owner.isEmpty())
        m_owners.erase(name);
    if (former == owner)
        return;
    const bool hasOther =
        std::ranges::any_of(m_owners, [&former](const auto& entry) { return entry.second == former; });
    if (!hasOther) {
        if (const auto gone = m_players.find(former); gone != m_players.end()) {
            if (m_current == gone->second.player.get())
                m_current = nullptr;
            m_players.erase(gone);
            choose();
            Q_EMIT changed();
        }
    }
    if (owner.isEmpty() || m_players.contains(owner))
        return;
    auto player = std::make_unique<MprisPlayer>(m_bus.connection(), owner, m_mainQueue, m_clock);
    connect(player.get(), &MprisPlayer::changed, this, [this, owner] { handlePlayer(owner); });
    m_players[owner].player = std::move(player);
}

void MprisRegistry::handlePlayer(const QString& owner)
{
    const auto found = m_players.find(owner);
    if (found == m_players.end())
        return;
    auto& entry = found->second;
    const bool isPlaying = entry.player->isAvailable() && entry.player->properties().isPlaying();
    if (isPlaying && !entry.wasPlaying)
        entry.startedPlaying = ++m_starts;
    entry.wasPlaying = isPlaying;
    const auto* before = m_current;
    choose();
    if (m_current != before || m_current == entry.player.get())
        Q_EMIT changed();
}

void MprisRegistry::choose()
{
    QList<MprisPlayer*> players;
    QList<MprisChoice::Candidate> candidates;
    for (const auto& [owner, entry] : m_players) {
        players.append(entry.player.get());
        candidates.append({entry.player->isAvailable() && entry.player->properties().hasTrack(),
                           entry.wasPlaying, entry.startedPlaying});
    }
    const auto chosen = MprisChoice::choose(candidates, players.indexOf(m_current));
    m_current = chosen < 0 ? nullptr : players.at(chosen);
}

QList<RunningPlayer> MprisRegistry::players() const
{
    QList<RunningPlayer> players;
    for (const auto& [owner, entry] : m_players) {
        const auto& player = *entry.player;
        players.append({player.pid(), player.desktopEntry(), player.identity(), player.canRaise()});
    }
    return players;
}

void MprisRegistry::raise(qint64 pid) const
{
    for (const auto& [owner, entry] : m_players) {
        if (entry.player->pid() == pid)
            entry.player->raise();
    }
}
