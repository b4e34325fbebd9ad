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

    /// Who has asked and is not answered yet.
    struct Waiting
    {
        InfoCallback callback;
        /// How many commands' effects the answer is to show besides what is known now.
        int effects;
    };

    QVariantMap info();
    void getInfo(InfoCallback callback);
    bool send(int command);
    void handleChange();
    void awaitEffect();
    void handleEffects(int count);
    void handleCover();
    void answerSoon(InfoCallback callback);
    void answerWaiting();
    void post(const QString& name);

    MainQueue& m_mainQueue;
    ThreadSerialQueue m_background;
    std::unique_ptr<MprisRegistry> m_registry;
    MprisArtwork m_artwork;
    std::map<QString, std::any> m_symbols;
    std::multimap<QString, std::weak_ptr<Handler>> m_observers;
    bool m_isPlaying = false;
    /// How many commands' effects are awaited, and until when the next of them is.
    int m_effects = 0;
    std::shared_ptr<WorkItem> m_effect;
    /// Set while the cover of a new track is awaited.
    std::shared_ptr<WorkItem> m_cover;
    /// What the next effect differs from.
    MprisProperties m_beforeEffect;
    std::vector<Waiting> m_waiting;
};
