#include "media/MediaRemoteClient.h"

#include "media/NowPlayingParser.h"
#include "platform/Workspace.h"
#include "support/MainQueue.h"
#include "support/RepeatingTimer.h"

namespace {
constexpr double pollSeconds = 1;

/// The framework's function of that name and type; empty when there is none.
template <typename Function>
Function function(const NowPlayingFramework& framework, const QString& name)
{
    const auto symbol = framework.symbol(name);
    const auto* found = std::any_cast<Function>(&symbol);
    return found ? *found : Function();
}

int number(MediaCommand command)
{
    switch (command) {
    case MediaCommand::TogglePlayPause:
        return 2;
    case MediaCommand::Next:
        return 4;
    case MediaCommand::Previous:
        return 5;
    }
    Q_UNREACHABLE();
}
} // namespace

MediaRemoteClient::MediaRemoteClient(NowPlayingFramework& framework, const Workspace& workspace,
                                     MainQueue& mainQueue)
    : m_framework(framework), m_workspace(workspace), m_mainQueue(mainQueue),
      m_getInfo(function<NowPlayingFramework::GetInfo>(framework,
                                                       QStringLiteral("MRMediaRemoteGetNowPlayingInfo"))),
      m_register(function<NowPlayingFramework::Register>(
          framework, QStringLiteral("MRMediaRemoteRegisterForNowPlayingNotifications"))),
      m_sendCommand(
          function<NowPlayingFramework::SendCommand>(framework, QStringLiteral("MRMediaRemoteSendCommand"))),
      m_setElapsed(function<NowPlayingFramework::SetElapsed>(framework,
                                                             QStringLiteral("MRMediaRemoteSetElapsedTime"))),
      m_getPID(function<NowPlayingFramework::GetPID>(
          framework, QStringLiteral("MRMediaRemoteGetNowPlayingApplicationPID")))
{}

MediaRemoteClient::~MediaRemoteClient() = default;

void MediaRemoteClient::fetchOnce(Callback callback)
{
    if (!m_getInfo) {
        callback(std::nullopt);
        return;
    }
    if (!m_getPID) {
        fetchInfo(std::nullopt, callback);
        return;
    }
    m_getPID([this, alive = std::weak_ptr(m_alive), callback = std::move(callback)](qint32 pid) {
        if (!alive.expired())
            fetchInfo(bundleIdentifier(pid), callback);
    });
}

void MediaRemoteClient::fetchInfo(const std::optional<QString>& bundleIdentifier,
                                  const Callback& callback) const
{
    m_getInfo([alive = std::weak_ptr(m_alive), bundleIdentifier, callback](const QVariantMap& info) {
        if (!alive.expired())
            callback(NowPlayingParser::parse(info, bundleIdentifier));
    });
}

std::optional<QString> MediaRemoteClient::bundleIdentifier(qint32 pid)
{
    if (m_application && m_application->first == pid)
        return m_application->second;
    m_application.reset();
    if (pid <= 0)
        return std::nullopt;
    auto identifier = m_workspace.applicationForProcess(pid);
    if (identifier)
        m_application = {pid, *identifier};
    return identifier;
}

void MediaRemoteClient::send(MediaCommand command)
{
    if (m_sendCommand)
        m_sendCommand(number(command), {});
}

void MediaRemoteClient::seek(double seconds)
{
    if (m_setElapsed)
        m_setElapsed(seconds);
}

void MediaRemoteClient::observe(const std::function<void()>& handler)
{
    if (m_register)
        m_register();
    for (const auto& name :
         {QStringLiteral("kMRMediaRemoteNowPlayingInfoDidChangeNotification"),
          QStringLiteral("kMRMediaRemoteNowPlayingApplicationIsPlayingDidChangeNotification")})
        m_observers.push_back(m_framework.addObserver(name, handler));
}

void MediaRemoteClient::start()
{
    if (!isAvailable())
        return;
    const auto refreshSoon = [this, alive = std::weak_ptr(m_alive)] {
        m_mainQueue.async([this, alive] {
            if (!alive.expired())
                refresh();
        });
    };
    observe(refreshSoon);
    refresh();
    m_pollTimer = std::make_unique<RepeatingTimer>(m_mainQueue, pollSeconds, refreshSoon);
}

void MediaRemoteClient::stop()
{
    m_observers.clear();
    m_pollTimer.reset();
}

void MediaRemoteClient::refresh()
{
    fetchOnce([this](const std::optional<NowPlaying>& snapshot) {
        if (onChange)
            onChange(snapshot);
    });
}
