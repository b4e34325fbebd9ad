#include "platform/linux/mpris/MprisNowPlayingFramework.h"

#include "platform/linux/dbus/SessionBus.h"
#include "platform/linux/mpris/MprisPlayer.h"
#include "platform/linux/mpris/MprisRegistry.h"
#include "support/MainQueue.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace {
const auto infoDidChange = QStringLiteral("kMRMediaRemoteNowPlayingInfoDidChangeNotification");
const auto isPlayingDidChange =
    QStringLiteral("kMRMediaRemoteNowPlayingApplicationIsPlayingDidChangeNotification");

/// How long whoever asks right after a command waits for the player to follow it, in seconds.
constexpr double effectSeconds = 0.25;
/// How long whoever asks after a change of track waits for its cover, in seconds: one from a file comes in
/// time, so that nobody sees the track without it.
constexpr double coverSeconds = 0.25;

enum Command { TogglePlayPause = 2, NextTrack = 4, PreviousTrack = 5 };

QString key(const QString& name)
{
    return QStringLiteral("kMRMediaRemoteNowPlayingInfo") + name;
}
} // namespace

MprisNowPlayingFramework::MprisNowPlayingFramework(HttpSession& session, MainQueue& mainQueue,
                                                   const Clock& clock, QObject* parent)
    : QObject(parent), m_mainQueue(mainQueue), m_background(QStringLiteral("com.vennor.quillbar.players")),
      m_artwork(mainQueue, m_background, session)
{
    if (!SessionBus::isAnnounced())
        return;
    m_registry = std::make_unique<MprisRegistry>(mainQueue, m_background, clock);
    connect(m_registry.get(), &MprisRegistry::changed, this, &MprisNowPlayingFramework::handleChange);
    connect(&m_artwork, &MprisArtwork::changed, this, [this] { post(infoDidChange); });
    connect(&m_artwork, &MprisArtwork::readingEnded, this, &MprisNowPlayingFramework::handleCover);

    m_symbols[QStringLiteral("MRMediaRemoteGetNowPlayingInfo")] =
        GetInfo([this](InfoCallback callback) { getInfo(std::move(callback)); });
    // The bus tells of every change anyway.
    m_symbols[QStringLiteral("MRMediaRemoteRegisterForNowPlayingNotifications")] = Register([] {});
    m_symbols[QStringLiteral("MRMediaRemoteSendCommand")] =
        SendCommand([this](int command, const QVariantMap&) { return send(command); });
    m_symbols[QStringLiteral("MRMediaRemoteSetElapsedTime")] = SetElapsed([this](double seconds) {
        if (auto* player = m_registry->current())
            player->seek(seconds);
    });
    m_symbols[QStringLiteral("MRMediaRemoteGetNowPlayingApplicationPID")] =
        GetPID([this](std::function<void(qint32)> callback) {
            m_mainQueue.async([target = QPointer(this), callback = std::move(callback)] {
                const auto* player = target ? target->m_registry->current() : nullptr;
                callback(player ? static_cast<qint32>(player->pid()) : 0);
            });
        });
}

MprisNowPlayingFramework::~MprisNowPlayingFramework()
{
    for (const auto& item : {m_effect, m_cover}) {
        if (item)
            item->cancel();
    }
}

const RunningPlayers* MprisNowPlayingFramework::players() const
{
    return m_registry.get();
}

std::any MprisNowPlayingFramework::symbol(const QString& name) const
{
    const auto found = m_symbols.find(name);
    return found == m_symbols.end() ? std::any() : found->second;
}

std::shared_ptr<void> MprisNowPlayingFramework::addObserver(const QString& name, Handler handler)
{
    std::erase_if(m_observers, [](const auto& observer) { return observer.second.expired(); });
    auto observer = std::make_shared<Handler>(std::move(handler));
    m_observers.emplace(name, observer);
    return observer;
}

void MprisNowPlayingFramework::post(const QString& name)
{
    std::vector<std::weak_ptr<Handler>> observers;
    const auto [begin, end] = m_observers.equal_range(name);
    for (auto observer = begin; observer != end; ++observer)
        observers.push_back(observer->second);
    // A handler may end its own observation or another's, or begin one.
    for (const auto& observer : observers) {
        if (const auto handler = observer.lock())
            (*handler)();
    }
}

QVariantMap MprisNowPlayingFramework::info()
{
    auto* player = m_registry->current();
    if (!player)
        return {};
    const auto& properties = player->properties();
    const auto place = player->place();
    QVariantMap info{{key(QStringLiteral("Title")), properties.track->title},
                     {key(QStringLiteral("Artist")), properties.track->artist},
                     {key(QStringLiteral("Album")), properties.track->album},
                     {key(QStringLiteral("Duration")), player->length()},
                     {key(QStringLiteral("ElapsedTime")), place.position},
                     {key(QStringLiteral("PlaybackRate")), properties.playbackRate()},
                     {key(QStringLiteral("Timestamp")), place.timestamp}};
    if (!m_artwork.bytes().isEmpty())
        info.insert(key(QStringLiteral("ArtworkData")), m_artwork.bytes());
    player->lookAtPosition();
    return info;
}

void MprisNowPlayingFramework::getInfo(InfoCallback callback)
{
    if (m_effects > 0 || m_cover)
        m_waiting.push_back({std::move(callback), m_effects});
    else
        answerSoon(std::move(callback));
}

void MprisNowPlayingFramework::answerSoon(InfoCallback callback)
{
    m_mainQueue.async([target = QPointer(this), callback = std::move(callback)] {
        // The track may have changed since.
        if (target && target->m_cover)
            target->m_waiting.push_back({callback, 0});
        else
            callback(target ? target->info() : QVariantMap());
    });
}

void MprisNowPlayingFramework::answerWaiting()
{
    if (m_cover)
        return;
    for (auto& waiting : std::exchange(m_waiting, {})) {
        if (waiting.effects > 0)
            m_waiting.push_back(std::move(waiting));
        else
            answerSoon(std::move(waiting.callback));
    }
}

bool MprisNowPlayingFramework::send(int command)
{
    auto* player = m_registry->current();
    if (!player)
        return false;
    const bool isSent = (command == TogglePlayPause && player->togglePlayPause()) ||
                        (command == NextTrack && player->next()) ||
                        (command == PreviousTrack && player->previous());
    if (isSent) {
        m_beforeEffect = player->properties();
        ++m_effects;
        awaitEffect();
    }
    return isSent;
}

void MprisNowPlayingFramework::awaitEffect()
{
    if (m_effect)
        m_effect->cancel();
    m_effect = WorkItem::make([this] { handleEffects(m_effects); });
    m_mainQueue.asyncAfter(effectSeconds, m_effect);
}

void MprisNowPlayingFramework::handleEffects(int count)
{
    m_effects -= count;
    for (auto& waiting : m_waiting)
        waiting.effects = std::max(0, waiting.effects - count);
    if (m_effects > 0)
        awaitEffect();
    else if (const auto item = std::exchange(m_effect, nullptr))
        item->cancel();
    answerWaiting();
}

void MprisNowPlayingFramework::handleCover()
{
    if (const auto item = std::exchange(m_cover, nullptr))
        item->cancel();
    answerWaiting();
}

void MprisNowPlayingFramework::handleChange()
{
    const auto* player = m_registry->current();
    const bool begins = m_artwork.follow(player ? player->properties().track : std::nullopt,
                                         player ? player->owner() : QString(), player ? player->pid() : 0);
    // Not put off by the next track: one that changes faster than covers come is shown without.
    if (begins && m_artwork.isReading() && !m_cover) {
        m_cover = WorkItem::make([this] { handleCover(); });
        m_mainQueue.asyncAfter(coverSeconds, m_cover);
    }
    if (!m_artwork.isReading())
        handleCover();
    if (!player) {
        handleEffects(m_effects);
    } else if (m_effects > 0 && player->properties() != m_beforeEffect) {
        m_beforeEffect = player->properties();
        handleEffects(1);
    }
    post(infoDidChange);
    const bool isPlaying = player && player->properties().isPlaying();
    if (std::exchange(m_isPlaying, isPlaying) != isPlaying)
        post(isPlayingDidChange);
}
