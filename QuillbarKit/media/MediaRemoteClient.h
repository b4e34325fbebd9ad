#pragma once

#include "media/MediaSource.h"
#include "platform/NowPlayingFramework.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

class MainQueue;
class RepeatingTimer;
class Workspace;

/// Reads and commands whatever program the desktop's now-playing framework tells of. Each of the framework's
/// functions may be absent: without the one that reads nothing plays, a command without its function is
/// dropped. Main thread only.
class MediaRemoteClient final : public MediaSource
{
public:
    using Callback = std::function<void(const std::optional<NowPlaying>&)>;

    /// What is passed outlives the client. The framework's functions are looked up here, once.
    MediaRemoteClient(NowPlayingFramework& framework, const Workspace& workspace, MainQueue& mainQueue);
    ~MediaRemoteClient() override;
    MediaRemoteClient(const MediaRemoteClient&) = delete;
    MediaRemoteClient& operator=(const MediaRemoteClient&) = delete;

    /// Whether there is a function to read with.
    bool isAvailable() const { return static_cast<bool>(m_getInfo); }

    /// Reads once and hands over what plays; onChange hears nothing of it. No callback comes once the client
    /// is destroyed.
    void fetchOnce(Callback callback);

    /// Whether the framework tells of each change by itself, to those who observe.
    bool tellsOfChanges() const { return m_getInfo && m_register; }

    /// Has `handler` called at each notification of the framework until stop(). It may come in the middle of
    /// a change.
    void observe(const std::function<void()>& handler);

    /// Reads at once, at each notification, and once a second.
    void start() override;
    void stop() override;
    void send(MediaCommand command) override;
    void seek(double seconds) override;

private:
    void refresh();
    void fetchInfo(const std::optional<QString>& bundleIdentifier, const Callback& callback) const;
    std::optional<QString> bundleIdentifier(qint32 pid);

    struct Alive
    {};

    NowPlayingFramework& m_framework;
    const Workspace& m_workspace;
    MainQueue& m_mainQueue;
    NowPlayingFramework::GetInfo m_getInfo;
    NowPlayingFramework::Register m_register;
    NowPlayingFramework::SendCommand m_sendCommand;
    NowPlayingFramework::SetElapsed m_setElapsed;
    NowPlayingFramework::GetPID m_getPID;
    std::vector<std::shared_ptr<void>> m_observers;
    std::unique_ptr<RepeatingTimer> m_pollTimer;
    /// The process that played last and its program, so that a process is looked at once and not every time.
    std::optional<std::pair<qint32, QString>> m_application;
    /// Gone with the client: what is still under way is then dropped.
    std::shared_ptr<Alive> m_alive = std::make_shared<Alive>();
};
