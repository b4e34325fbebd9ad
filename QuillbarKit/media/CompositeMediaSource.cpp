#include "media/CompositeMediaSource.h"

#include "support/MainQueue.h"
#include "support/RepeatingTimer.h"

namespace {
constexpr double pollSeconds = 1;
}

CompositeMediaSource::CompositeMediaSource(const Means& means, std::shared_ptr<SerialQueue> scriptQueue)
    : m_mainQueue(means.mainQueue), m_remote(means.framework, means.workspace, means.mainQueue),
      m_script(means.scriptRunner, means.httpSession, means.clock, means.mainQueue, std::move(scriptQueue))
{
    m_script.onArtworkResolved() = [this, alive = std::weak_ptr(m_alive)] {
        if (!alive.expired())
            tick();
    };
}

CompositeMediaSource::~CompositeMediaSource() = default;

void CompositeMediaSource::start()
{
    m_remote.stop();
    if (m_remote.tellsOfChanges())
        m_remote.observe([this] { hearNews(); });
    tick();
    m_pollTimer = std::make_unique<RepeatingTimer>(m_mainQueue, pollSeconds, [this] { tick(); });
}

void CompositeMediaSource::stop()
{
    m_remote.stop();
    m_pollTimer.reset();
}

void CompositeMediaSource::tick()
{
    const auto look = ++m_latestLook;
    m_remote.fetchOnce([this, look](const std::optional<NowPlaying>& snapshot) {
        m_usingScript = !snapshot;
        if (snapshot) {
            deliver(snapshot, look);
            return;
        }
        m_script.currentNowPlaying(
            [this, look](const std::optional<NowPlaying>& scripted) { deliver(scripted, look); });
    });
}

void CompositeMediaSource::deliver(const std::optional<NowPlaying>& snapshot, quint64 look)
{
    if (onChange)
        onChange(snapshot);
    if (!m_pollTimer)
        return;
    if (snapshot)
        m_pollTimer->wake();
    else if (m_remote.tellsOfChanges() && look == m_latestLook)
        m_pollTimer->doze();
}

void CompositeMediaSource::hearNews()
{
    ++m_latestLook;
    if (m_pollTimer)
        m_pollTimer->wake();
}

void CompositeMediaSource::send(MediaCommand command)
{
    if (m_usingScript)
        m_script.send(command);
    else
        m_remote.send(command);
    tick();
}

void CompositeMediaSource::seek(double seconds)
{
    if (m_usingScript)
        m_script.seek(seconds);
    else
        m_remote.seek(seconds);
    tick();
}

void CompositeMediaSource::setShuffle(bool enabled)
{
    if (m_usingScript)
        m_script.setShuffle(enabled);
    tick();
}

void CompositeMediaSource::setRepeat(RepeatMode mode)
{
    if (m_usingScript)
        m_script.setRepeat(mode);
    tick();
}

void CompositeMediaSource::setLoved(bool loved)
{
    if (m_usingScript)
        m_script.setLoved(loved);
    tick();
}
