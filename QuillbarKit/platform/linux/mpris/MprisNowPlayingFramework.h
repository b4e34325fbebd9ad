#pragma once

#include "platform/NowPlayingFramework.h"
#include "platform/linux/mpris/MprisArtwork.h"
#include "platform/linux/mpris/MprisProperties.h"
#include "support/ThreadSerialQueue.h"

#include <QObject>

#include <map>
#include <memory>
#include <vector>

class Clock;
class HttpSession;
class MainQueue;
class MprisRegistry;
class RunningPlayers;
class WorkItem;

/// What plays now, from the media players on the session bus. A session that has no bus has no such
/// framework: then every function is absent.
class MprisNowPlayingFramework final : public QObject, public NowPlayingFramework
{
    Q_OBJECT

public:
    /// All of these outlive it. Covers on the web come through `session`.
    MprisNowPlayingFramework(HttpSession& session, MainQueue& mainQueue, const Clock& clock,
                             QObject* parent = nullptr);
    ~MprisNowPlayingFramework() override;

    std::any symbol(const QString& name) const override;
    std::shared_ptr<void> addObserver(const QString& name, std::function<void()> handler) override;

    /// Null without a bus.
    const RunningPlayers* players() const;

private:
    using Handler = std::function<void()>;
    using InfoCallback = std::function<void(const QVariantMap&)>;

    QVariantMap info();
    void getInfo(InfoCallback callback);
    bool send(int command);
    void handleChange();
    void handleEffect();
    void handleCover();
    void answerSoon(InfoCallback callback);
    void answerWaiting();
    void after(double seconds, std::shared_ptr<WorkItem>& item, void (MprisNowPlayingFramework::*action)());
    void post(const QString& name);

    MainQueue& m_mainQueue;
    ThreadSerialQueue m_background;
    std::unique_ptr<MprisRegistry> m_registry;
    MprisArtwork m_artwork;
    std::map<QString, std::any> m_symbols;
    std::multimap<QString, std::weak_ptr<Handler>> m_observers;
    bool m_isPlaying = false;
    /// Set while the effect of a command is awaited.
    std::shared_ptr<WorkItem> m_effect;
    /// Set while the cover of a new track is awaited.
    std::shared_ptr<WorkItem> m_cover;
    MprisProperties m_beforeCommand;
    std::vector<InfoCallback> m_waiting;
};
