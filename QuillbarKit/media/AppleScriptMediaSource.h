#pragma once

#include "media/MediaSource.h"
#include "media/ScriptedPlayer.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>

class Clock;
class HttpSession;
class MainQueue;
class RepeatingTimer;
class ScriptEngine;
class ScriptRunner;
class SerialQueue;

/// Drives two players, Spotify and Music, by scripts. Main thread only; the scripts run one after the other
/// on a queue, so nothing here waits for a player, and a read sees what the command before it has done.
///
/// Each command is followed by a read that goes to onChange. No callback comes once the source is destroyed.
class AppleScriptMediaSource final : public MediaSource
{
public:
    using Callback = std::function<void(const std::optional<NowPlaying>&)>;

    /// `scriptQueue` is labelled "com.quillbar.applescript-media"; `runner` is used on it alone. What is
    /// passed by reference outlives the source, and the queue's work.
    AppleScriptMediaSource(ScriptRunner& runner, HttpSession& session, const Clock& clock,
                           MainQueue& mainQueue, std::shared_ptr<SerialQueue> scriptQueue);
    ~AppleScriptMediaSource() override;
    AppleScriptMediaSource(const AppleScriptMediaSource&) = delete;
    AppleScriptMediaSource& operator=(const AppleScriptMediaSource&) = delete;

    /// Reads at once, then every 2 seconds.
    void start() override;
    void stop() override;
    void send(MediaCommand command) override;
    void seek(double seconds) override;
    void setShuffle(bool enabled) override;
    void setRepeat(RepeatMode mode) override;
    void setLoved(bool loved) override;

    /// Reads once and hands over what plays; onChange hears nothing of it.
    void currentNowPlaying(Callback then);

    /// Called when a cover that was looked for in the background has come, or may have: time to read again.
    std::function<void()>& onArtworkResolved();

private:
    /// Runs the script, if there is one for the player that is there, and reads.
    void tell(std::function<std::optional<QString>(ScriptedPlayer)> script);
    void read();
    Callback toOnChange();
    Callback whileAlive(Callback then);

    struct Alive
    {};

    MainQueue& m_mainQueue;
    std::unique_ptr<RepeatingTimer> m_timer;
    std::shared_ptr<SerialQueue> m_scriptQueue;
    std::shared_ptr<ScriptEngine> m_engine;
    /// Gone with the source: what is still under way is then dropped.
    std::shared_ptr<Alive> m_alive;
};
