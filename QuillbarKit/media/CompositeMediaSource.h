#pragma once

#include "media/AppleScriptMediaSource.h"
#include "media/MediaRemoteClient.h"
#include "media/MediaSource.h"

#include <memory>
#include <optional>

class Clock;
class HttpSession;
class MainQueue;
class NowPlayingFramework;
class RepeatingTimer;
class ScriptRunner;
class SerialQueue;
class Workspace;

/// The source that the program uses: the desktop's now-playing framework and, whenever that has nothing,
/// scripts. Each look decides anew which of the two is asked; commands go to the one that the last look
/// chose. Main thread only.
///
/// It looks once a second, after each command, and when a cover has been found. While nothing plays at all
/// and the framework tells of changes by itself, the beat sleeps until it does.
class CompositeMediaSource final : public MediaSource
{
public:
    /// All of it outlives the source.
    struct Means
    {
        NowPlayingFramework& framework;
        const Workspace& workspace;
        ScriptRunner& scriptRunner;
        HttpSession& httpSession;
        const Clock& clock;
        MainQueue& mainQueue;
    };

    /// `scriptQueue` is where scripts run; nothing else should.
    CompositeMediaSource(const Means& means, std::shared_ptr<SerialQueue> scriptQueue);
    ~CompositeMediaSource() override;
    CompositeMediaSource(const CompositeMediaSource&) = delete;
    CompositeMediaSource& operator=(const CompositeMediaSource&) = delete;

    /// Looks at once, too.
    void start() override;
    /// A look under way still delivers.
    void stop() override;
    void send(MediaCommand command) override;
    void seek(double seconds) override;
    // Scripts alone can do these.
    void setShuffle(bool enabled) override;
    void setRepeat(RepeatMode mode) override;
    void setLoved(bool loved) override;

    /// Whether the last look found that the framework had nothing.
    bool usingScript() const { return m_usingScript; }

private:
    void tick();
    void deliver(const std::optional<NowPlaying>& snapshot, quint64 look);
    void hearNews();

    struct Alive
    {};

    MainQueue& m_mainQueue;
    MediaRemoteClient m_remote;
    AppleScriptMediaSource m_script;
    bool m_usingScript = false;
    std::unique_ptr<RepeatingTimer> m_pollTimer;
    /// Counts looks begun and news heard: a look during which it has moved says nothing of what comes next.
    quint64 m_latestLook = 0;
    /// Gone with the source, for who holds it weakly.
    std::shared_ptr<Alive> m_alive = std::make_shared<Alive>();
};
